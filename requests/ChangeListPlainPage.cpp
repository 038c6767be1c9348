#include "ChangeListPlainPage.h"

#include <array>
#include <cstdint>
#include <list>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

// How a quote stands in the text of a list: as itself in a list that is an array, escaped in the
// list string that the array sends.
enum QuoteForm { kPlainQuote = 1, kEscapedQuote = 2 };

// What stands before each value of an entry written as the array writes it: "{" or "," and the
// name with its quotes and colon, and the opening quote of the file name: at most 16 bytes.
struct EntryLiterals {
  char bytes[HuaweiChangeEntry::kKeyCount][16];
  std::size_t sizes[HuaweiChangeEntry::kKeyCount];
};
constexpr EntryLiterals entryLiterals(QuoteForm form) {
  EntryLiterals literals{};
  for (int i = 0; i < HuaweiChangeEntry::kKeyCount; ++i) {
    char* const out = literals.bytes[i];
    std::size_t size = 0;
    const auto quote = [&] {
      if (form == kEscapedQuote) out[size++] = '\\';
      out[size++] = '"';
    };
    out[size++] = i == 0 ? '{' : ',';
    for (const char c : kWireNames[i]) {
      if (c == '"') {
        quote();
      } else {
        out[size++] = c;
      }
    }
    out[size++] = ':';
    if (HuaweiChangeEntry::kWireOrder[i] == HuaweiChangeEntry::kFilePath) quote();
    literals.sizes[i] = size;
  }
  return literals;
}
template <QuoteForm kForm>
constexpr EntryLiterals kLiterals = entryLiterals(kForm);

// For the steps of scanEntry(): a call per value would cost a quarter of its reading.
#define ZR_IN_LINE __attribute__((always_inline))

// The unsigned integer of at most 15 digits at p, 16 bytes read at a time: its end, or null for
// any other text (more digits, a sign, ...), which read_integer() then takes. Needs the 16 bytes
// from p on and the 16 before the end of the digits to lie in [begin, end).
ZR_IN_LINE inline const char* shortInteger(const char* begin, const char* p, const char* end, std::uint64_t& value) {
#if defined(__SSE2__)
  if (end - p < 16) return nullptr;
  const __m128i zeroChar = _mm_set1_epi8('0'), nine = _mm_set1_epi8(9);
  const __m128i ahead = _mm_sub_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)), zeroChar);
  const unsigned digitBytes =
      static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_min_epu8(ahead, nine), ahead)));
  const int digits = __builtin_ctz(~digitBytes);  // bit 16 of ~digitBytes is set
  if (digits == 0 || digits >= 16 || (p - begin) + digits < 16) return nullptr;
  // The digits at the end of a block of 16, the bytes before them zeroed: a 16-digit number with
  // leading zeros, whose pairs, fours and eights are summed by multiply-adds.
  static constexpr unsigned char kKeepLast[32] = {0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,
                                                  0,    0,    0,    0,    0,    0xff, 0xff, 0xff, 0xff, 0xff, 0xff,
                                                  0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff};
  const __m128i block = _mm_sub_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p + digits - 16)), zeroChar);
  const __m128i kept = _mm_and_si128(block, _mm_loadu_si128(reinterpret_cast<const __m128i*>(kKeepLast + digits)));
  const __m128i zero = _mm_setzero_si128();
  const __m128i tens = _mm_setr_epi16(10, 1, 10, 1, 10, 1, 10, 1);
  const __m128i pairs = _mm_packs_epi32(_mm_madd_epi16(_mm_unpacklo_epi8(kept, zero), tens),
                                        _mm_madd_epi16(_mm_unpackhi_epi8(kept, zero), tens));
  const __m128i fours = _mm_madd_epi16(pairs, _mm_setr_epi16(100, 1, 100, 1, 100, 1, 100, 1));
  const __m128i eights =
      _mm_madd_epi16(_mm_packs_epi32(fours, fours), _mm_setr_epi16(10000, 1, 10000, 1, 10000, 1, 10000, 1));
  const auto high = static_cast<std::uint32_t>(_mm_cvtsi128_si32(eights));
  const auto low = static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_si128(eights, 4)));
  value = std::uint64_t{high} * 100000000u + low;
  return p + digits;
#else
  (void)begin, (void)p, (void)end, (void)value;
  return nullptr;
#endif
}

// What a file name holds besides plain bytes, found while its end is sought.
constexpr unsigned kAmpersand = 1, kNul = 2;

// The first quote or backslash from p on, or end; `marks` tells what came before it.
const char* nameEnd(const char* p, const char* end, unsigned& marks) {
  unsigned ampersands = 0, nuls = 0;
  const auto marked = [&] { return (ampersands != 0 ? kAmpersand : 0) | (nuls != 0 ? kNul : 0); };
#if defined(__SSE2__)
  const __m128i quote = _mm_set1_epi8('"'), backslash = _mm_set1_epi8('\\'), ampersand = _mm_set1_epi8('&');
  const __m128i zero = _mm_setzero_si128();
  for (; end - p >= 16; p += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const auto mask = [&](__m128i c) { return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, c))); };
    const unsigned stops = mask(quote) | mask(backslash);
    const unsigned before = stops == 0 ? 0xffffu : (stops & (0 - stops)) - 1;
    ampersands |= mask(ampersand) & before;
    nuls |= mask(zero) & before;
    if (stops != 0) {
      marks = marked();
      return p + __builtin_ctz(stops);
    }
  }
#endif
  for (; p != end && *p != '"' && *p != '\\'; ++p) {
    ampersands |= *p == '&';
    nuls |= *p == '\0';
  }
  marks = marked();
  return p;
}

// Reads at `p` one entry as the array writes it: no white space, every key once in the array's
// order, integers, and a file name without escapes, which `strings.name(text, marks, out)` stores.
// Answers where the entry ends, or null for an entry in any other form (which the general reader
// then takes, or refuses) with `change` partly written. `begin` is where the text begins.
template <QuoteForm kForm, class Strings>
const char* scanEntry(const char* begin, const char* p, const char* end, _HuaweiSnapshotChangeList& change,
                      Strings& strings) {
  using namespace HuaweiChangeEntry;
  constexpr const EntryLiterals& literals = kLiterals<kForm>;
  std::uint64_t numbers[kKeyCount];
  const auto literal = [&](int i) ZR_IN_LINE {
    if (end - p < 16 || !jsonxx::detail::same_bytes(p, literals.bytes[i], literals.sizes[i])) return false;
    p += literals.sizes[i];
    return true;
  };
  const auto number = [&](int i) ZR_IN_LINE {
    if (!literal(i)) return false;
    std::uint64_t& value = numbers[kWireOrder[i]];
    if (const char* const after = shortInteger(begin, p, end, value)) {
      p = after;
      return true;
    }
    bool negative = false;
    const char* const after = jsonxx::detail::read_integer(p, end, value, negative);
    if (after == nullptr) return false;
    if (negative) value = 0 - value;
    p = after;
    return true;
  };
  const auto name = [&](int i) ZR_IN_LINE {
    if (!literal(i)) return false;
    unsigned marks;
    const char* const close = nameEnd(p, end, marks);
    const bool closed = kForm == kPlainQuote ? close != end && *close == '"'
                                             : end - close >= 2 && close[0] == '\\' && close[1] == '"';
    if (!closed || !strings.name(std::string_view(p, static_cast<std::size_t>(close - p)), marks, change.filePath)) {
      return false;
    }
    p = close + kForm;
    return true;
  };
  static_assert(kWireOrder[3] == kFilePath, "the file name is the fourth value of an entry");
  const bool read = number(0) && number(1) && number(2) && name(3) && number(4) && number(5) && number(6) &&
                    number(7) && number(8) && number(9) && number(10) && number(11) && number(12);
  if (!read || p == end || *p != '}') return nullptr;
  storeNumbers(numbers, change);
  return p + 1;
}

// Every reader below refuses a repeated key: the document model would keep its last value.

// The records of a page: the spare nodes in their order while there are any, their paths keeping
// their buffers, then new ones. Every field of a record is written when its entry is read.
class Records {
 public:
  using List = std::list<_HuaweiSnapshotChangeList>;
  Records(List& list, List* spare) : list_(list), spare_(spare) {
    if (spare_ != nullptr) taken_ = spare_->begin();
  }
  _HuaweiSnapshotChangeList& next() {
    if (spare_ == nullptr || taken_ == spare_->end()) return list_.emplace_back();
    return *taken_++;
  }
  // Puts the spare nodes taken before the new ones, in one move: the list is complete.
  void finish() {
    if (spare_ != nullptr) list_.splice(list_.begin(), *spare_, spare_->begin(), taken_);
  }

 private:
  List& list_;
  List* const spare_;
  List::iterator taken_;
};

template <class Strings>
bool readEntry(PlainReader& in, _HuaweiSnapshotChangeList& change, Strings& strings);

// The entries of a list that is an array: each in the array's own form is scanned, any other is
// read key by key.
template <class Strings>
bool readArray(PlainReader& in, Records& records, Strings& strings) {
  return in.array([&] {
    _HuaweiSnapshotChangeList& change = records.next();
    if (const char* const after = scanEntry<kPlainQuote>(in.begin(), in.position(), in.end(), change, strings)) {
      in.advance_to(after);
      return true;
    }
    return readEntry(in, change, strings);
  });
}

// How the strings of a page are read. A repaired page holds no escapes: its strings are taken as
// they stand, and its list is a plain array.
struct RepairedStrings {
  bool name(std::string_view text, unsigned /*marks*/, std::string& out) {
    out.assign(text);
    return true;
  }
  bool path(PlainReader& in, std::string& out) { return cursor(in, out); }
  bool cursor(PlainReader& in, std::string& out) {
    std::string_view text;
    if (!in.string(text)) return false;
    out.assign(text);
    return true;
  }
  bool list(PlainReader& in, Records& records) { return readArray(in, records, *this); }
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

template <class Strings>
bool readData(PlainReader& in, _HuaweiSnapshotChangeListInfo& page, std::list<_HuaweiSnapshotChangeList>* spare,
              Strings& strings) {
  Records records{page.changes, spare};
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
      if (!strings.list(in, records)) return false;
      records.finish();
      return true;
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
  if (!plain || !haveData || (wholeText && !in.at_end())) {
    if (spare != nullptr) spare->splice(spare->end(), read.changes);  // for the next way of reading
    return false;
  }
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
    return read(in, out, text, "the file name") && named(text, out);
  }
  bool name(std::string_view text, unsigned marks, std::string& out) {
    out.assign(text);
    return marks == 0 || named(text, out);
  }
  bool cursor(PlainReader& in, std::string& out) {
    std::string_view text;
    return read(in, out, text, "the string");
  }
  bool list(PlainReader& in, Records& records) {
    if (in.peek() == '[') return readArray(in, records, *this);
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
    return readArray(entries, records, *this) && entries.at_end();
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
  // The entities of a decoded name `out` decoded in turn; `text` is the name as it was sent.
  bool named(std::string_view text, std::string& out) {
    const char* why = HuaweiFileNameEntities::decode(out);
    if (why == nullptr && out.find('\0') != std::string::npos) why = "a NUL character, which no file name holds";
    return why == nullptr || refuse("the file name", text, why);
  }
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

// The strings of a page read as the array sends it, in one pass that neither repairs nor decodes
// its text: the list string is read where it stands, its quotes escaped, when it holds nothing
// but entries in the array's form; no other string may hold an escape. Any other text is left to
// the readers above, so a name is refused only by them.
class SentStrings {
 public:
  explicit SentStrings(bool exactNames) : exactNames_(exactNames) {}

  bool name(std::string_view text, unsigned marks, std::string& out) {
    out.assign(text);
    if (!exactNames_) {
      ampersands_ |= (marks & kAmpersand) != 0;
      return true;
    }
    return (marks & kNul) == 0 && ((marks & kAmpersand) == 0 || HuaweiFileNameEntities::decode(out) == nullptr);
  }
  // Whether a name holds an ampersand, which may open an entity.
  bool ampersands() const { return ampersands_; }
  bool path(PlainReader&, std::string&) { return false; }  // an entry that is not scanned is not read here
  bool cursor(PlainReader& in, std::string& out) { return RepairedStrings().cursor(in, out); }
  bool list(PlainReader& in, Records& records) {
    if (in.peek() != '"') return false;
    const char* p = in.position();
    const char* const end = in.end();
    if (end - p < 4 || p[1] != '[') return false;
    listBegin_ = p;
    p += 2;
    if (*p != ']') {
      for (;;) {
        p = scanEntry<kEscapedQuote>(in.begin(), p, end, records.next(), *this);
        if (p == nullptr || p == end) return false;
        if (*p != ',') break;
        ++p;
      }
    }
    if (end - p < 2 || p[0] != ']' || p[1] != '"') return false;
    listEnd_ = p + 2;
    in.advance_to(listEnd_);
    return true;
  }
  // Whether the repair of `text` gives what was read: no backslash but those of the list's
  // quotes, and the list's "[ and ]" the first of the text (no bracket before the list).
  bool repairable(const std::string& text) const {
    if (listBegin_ == nullptr) return false;
    const std::string_view before(text.data(), static_cast<std::size_t>(listBegin_ - text.data()));
    const std::string_view after(listEnd_, static_cast<std::size_t>(text.data() + text.size() - listEnd_));
    return before.find_first_of("[]\\") == std::string_view::npos && after.find('\\') == std::string_view::npos;
  }

 private:
  const bool exactNames_;
  bool ampersands_ = false;
  const char* listBegin_ = nullptr;
  const char* listEnd_ = nullptr;
};

}  // namespace

bool readSentPlain(const std::string& text, _HuaweiSnapshotChangeListInfo& page, bool& ampersands,
                   std::list<_HuaweiSnapshotChangeList>* spare) {
  PlainReader in(text);
  SentStrings strings(false);
  _HuaweiSnapshotChangeListInfo read;
  read.sessionId = page.sessionId;
  read.sessionFailed = page.sessionFailed;
  if (!readPage(in, read, spare, strings, false)) return false;
  if (!strings.repairable(text)) {
    if (spare != nullptr) spare->splice(spare->end(), read.changes);
    return false;
  }
  page = std::move(read);
  ampersands = strings.ampersands();
  return true;
}

bool readPlain(const std::string& text, _HuaweiSnapshotChangeListInfo& page,
               std::list<_HuaweiSnapshotChangeList>* spare) {
  PlainReader in(text);
  RepairedStrings strings;
  return readPage(in, page, spare, strings, false);
}

ExactReading readExact(std::string& text, _HuaweiSnapshotChangeListInfo& page,
                       std::list<_HuaweiSnapshotChangeList>* spare) {
  ExactReading reading;
  PlainReader sent(text);
  SentStrings sentStrings(true);
  if (readPage(sent, page, spare, sentStrings, true)) return reading;
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
