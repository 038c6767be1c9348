#include "ChangeListPlainPage.h"

#include <array>
#include <cstdint>
#include <list>
#include <string_view>

#include "ChangeListEntry.h"
#include "FileNameEntities.h"
#include "JsonStringDecoder.h"
#include "jsonxx_plain.h"

namespace HuaweiChangeListPage {
namespace {

using jsonxx::PlainReader;

// The names of an entry as the array writes them, one after the other.
constexpr auto kWireNames = [] {
  std::array<std::string_view, HuaweiChangeEntry::kKeyCount> names{};
  for (int i = 0; i < HuaweiChangeEntry::kKeyCount; ++i) {
    names[i] = HuaweiChangeEntry::kQuotedNames[HuaweiChangeEntry::kWireOrder[i]];
  }
  return names;
}();

// Every reader below refuses a repeated key: the document model would keep its last value.

// How the strings of a page are read. A repaired page holds no escapes: its strings are taken as
// they stand, and its list is a plain array.
struct RepairedStrings {
  bool path(PlainReader& in, std::string& out) { return cursor(in, out); }
  bool cursor(PlainReader& in, std::string& out) {
    std::string_view text;
    if (!in.string(text)) return false;
    out.assign(text);
    return true;
  }
  template <class Element>
  bool list(PlainReader& in, Element element) {
    return in.array([&] { return element(in); });
  }
};

template <class Strings>
bool readEntry(PlainReader& in, _HuaweiSnapshotChangeList& change, Strings& strings) {
  using namespace HuaweiChangeEntry;
  std::uint64_t numbers[kKeyCount] = {};
  unsigned seen = 0;
  // The array writes the keys in one order: the name after the last one read is tried first.
  int expected = 0;
  const auto guess = [&] { return expected < kKeyCount ? kWireNames[expected] : std::string_view(); };
  const bool plain = in.object(guess, [&](std::string_view name) {
    const bool asGuessed = expected < kKeyCount && name.data() == kWireNames[expected].data() + 1;
    const int key = asGuessed ? kWireOrder[expected] : keyOf(name);
    expected = asGuessed ? expected + 1 : kKeyCount;
    if (key < 0) return in.skip_value();
    if (seen & (1u << key)) return false;
    seen |= 1u << key;
    PlainReader::Integer number;
    if (key == kFilePath) return strings.path(in, change.filePath);
    if (!in.integer(number)) return false;
    numbers[key] = number.wrapped();
    return true;
  });
  if (!plain || seen != (1u << kKeyCount) - 1) return false;
  storeNumbers(numbers, change);
  return true;
}

// The next record of the page: a spare node moved to the end of the page's list, its path keeping
// its buffer, or a new one.
_HuaweiSnapshotChangeList& nextRecord(std::list<_HuaweiSnapshotChangeList>& records,
                                      std::list<_HuaweiSnapshotChangeList>* spare) {
  if (spare == nullptr || spare->empty()) return records.emplace_back();
  records.splice(records.end(), *spare, spare->begin());
  records.back().clear();
  return records.back();
}

template <class Strings>
bool readData(PlainReader& in, _HuaweiSnapshotChangeListInfo& page, std::list<_HuaweiSnapshotChangeList>* spare,
              Strings& strings) {
  // The page's own keys; the rest of "data" is passed over.
  struct Cursor {
    std::string_view name;
    std::string _HuaweiSnapshotChangeListInfo::*field;
  };
  static const Cursor kCursor[] = {
      {"numChanges", &_HuaweiSnapshotChangeListInfo::numChanges},
      {"progress", &_HuaweiSnapshotChangeListInfo::progress},
      {"linkPos", &_HuaweiSnapshotChangeListInfo::linkPos},
      {"linkPosType", &_HuaweiSnapshotChangeListInfo::linkPosType},
      {"posObj", &_HuaweiSnapshotChangeListInfo::posObj},
      {"posOffset", &_HuaweiSnapshotChangeListInfo::posOffset},
      {"posType", &_HuaweiSnapshotChangeListInfo::posType}};
  constexpr unsigned kChangeList = 1u << 7, kAll = (1u << 8) - 1;
  unsigned seen = 0;
  const bool plain = in.object([&](std::string_view name) {
    if (name == "changeList") {
      if (seen & kChangeList) return false;
      seen |= kChangeList;
      return strings.list(in, [&](PlainReader& list) {
        return readEntry(list, nextRecord(page.changes, spare), strings);
      });
    }
    for (unsigned i = 0; i < sizeof kCursor / sizeof *kCursor; ++i) {
      if (name != kCursor[i].name) continue;
      if ((seen & (1u << i)) || !strings.cursor(in, page.*kCursor[i].field)) return false;
      seen |= 1u << i;
      return true;
    }
    return in.skip_value();
  });
  return plain && seen == kAll;
}

// `wholeText`: nothing but white space may follow the page's object.
template <class Strings>
bool readPage(PlainReader& in, _HuaweiSnapshotChangeListInfo& page, std::list<_HuaweiSnapshotChangeList>* spare,
              Strings& strings, bool wholeText) {
  _HuaweiSnapshotChangeListInfo read;
  bool haveData = false;
  const bool plain = in.object([&](std::string_view name) {
    if (name != "data") return in.skip_value();
    if (haveData) return false;
    haveData = true;
    return readData(in, read, spare, strings);
  });
  if (!plain || !haveData || (wholeText && !in.at_end())) return false;
  read.sessionId.swap(page.sessionId);
  read.sessionFailed = page.sessionFailed;
  page = std::move(read);
  return true;
}

// The strings of a page as the array writes them: every escape decoded, and the list a string
// holding the JSON text of the array, which is decoded where it stands in the page (a copy of a
// page-sized string costs page faults) and then read as such. The first string that cannot be
// decoded stops the page with its reason.
class ExactStrings {
 public:
  explicit ExactStrings(std::string& text) : text_(text) {}

  bool path(PlainReader& in, std::string& out) {
    std::string_view text;
    if (!read(in, out, text, "the file name")) return false;
    const char* why = HuaweiFileNameEntities::decode(out);
    if (why == nullptr && out.find('\0') != std::string::npos) why = "a NUL character, which no file name holds";
    return why == nullptr || refuse("the file name", text, why);
  }
  bool cursor(PlainReader& in, std::string& out) {
    std::string_view text;
    return read(in, out, text, "the string");
  }
  template <class Element>
  bool list(PlainReader& in, Element element) {
    if (in.peek() == '[') return in.array([&] { return element(in); });
    const std::size_t begin = static_cast<std::size_t>(in.position() - text_.data());
    std::string_view text;
    if (!in.escaped_string(text)) return false;
    const std::size_t body = static_cast<std::size_t>(text.data() - text_.data());
    std::size_t size = text.size();
    const std::string sent(text.substr(0, kShown + 1));  // the decoding overwrites the text
    if (const char* why = HuaweiJsonString::decode(&text_[body], size)) return refuse("the change list", sent, why);
    list_ = std::string_view(text_.data() + body, size);
    listBegin_ = begin;
    listEnd_ = static_cast<std::size_t>(in.position() - text_.data());
    PlainReader entries(list_);
    return entries.array([&] { return element(entries); }) && entries.at_end();
  }

  const std::string& why() const { return why_; }
  // The page with the list string replaced by the list's own text, once the list was decoded.
  std::string withPlainList() const {
    if (list_.data() == nullptr) return text_;
    return text_.substr(0, listBegin_).append(list_).append(text_, listEnd_, std::string::npos);
  }
  // Whether the decoded list, if any, is JSON text in the array's form.
  bool listIsJson() const {
    PlainReader list(list_);
    return list_.data() == nullptr || (list.skip_value() && list.at_end());
  }

 private:
  // A string, decoded; `text` is what stood between its quotes, `what` names it in a reason.
  bool read(PlainReader& in, std::string& out, std::string_view& text, const char* what) {
    if (in.string(text)) {
      out.assign(text);
      return true;
    }
    if (!in.escaped_string(text)) return false;
    out.assign(text);
    const char* const why = HuaweiJsonString::decode(out);
    return why == nullptr || refuse(what, text, why);
  }
  // The reason names the text as it was sent, cut after kShown bytes: a list string is a page.
  bool refuse(const char* what, std::string_view text, const char* why) {
    if (why_.empty()) {
      why_.append(what).append(" \"").append(text.substr(0, kShown)).append(text.size() > kShown ? "...\"" : "\"");
      why_.append(" cannot be decoded: ").append(why);
    }
    return false;
  }

  static constexpr std::size_t kShown = 256;

  std::string& text_;
  std::string_view list_;
  std::size_t listBegin_ = 0;
  std::size_t listEnd_ = 0;
  std::string why_;
};

}  // namespace

bool readPlain(const std::string& text, _HuaweiSnapshotChangeListInfo& page,
               std::list<_HuaweiSnapshotChangeList>* spare) {
  PlainReader in(text);
  RepairedStrings strings;
  return readPage(in, page, spare, strings, false);
}

ExactReading readExact(std::string& text, _HuaweiSnapshotChangeListInfo& page,
                       std::list<_HuaweiSnapshotChangeList>* spare) {
  ExactReading reading;
  PlainReader in(text);
  ExactStrings strings(text);
  if (readPage(in, page, spare, strings, true)) return reading;
  reading.outcome = ExactReading::kUndecodable;
  reading.why = strings.why();
  if (!reading.why.empty()) return reading;
  const std::string document = strings.withPlainList();
  PlainReader whole(document);
  if (!strings.listIsJson()) {
    reading.why = "the change list is not JSON text in the array's form";
  } else if (!whole.skip_value() || !whole.at_end()) {
    reading.why = "the page is not JSON text in the array's form";
  } else {
    reading.outcome = ExactReading::kOtherShape;
    reading.documentText = document;
  }
  return reading;
}

}  // namespace HuaweiChangeListPage
