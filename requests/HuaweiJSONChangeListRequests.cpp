#include "HuaweiJSONChangeListRequests.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <list>
#include <string_view>

#include "AnswerParsing.h"
#include "ArrayNumbers.h"
#include "BackslashSqueeze.h"
#include "ChangeListEntry.h"
#include "ChangeListPlainPage.h"
#include "CLogWriterInterface.h"
#include "PrintfToString.h"
#include "ResponseReading.h"
#include "TkDebug.h"
#include "ZrLibrarySettings.h"

namespace {

const char kPageLog[] = "HuaweiJSONGetChangeListResult::parseResponse";
const char kDecoderSignature[] = "bool HuaweiJSONGetChangeListResult::handleSpecialCharactersInFileName(std::string&)";

// The decoder writes through the host's log writer, asking its level first.
void writeDecoderLine(int level, int line, const char* format, ...) __attribute__((format(printf, 3, 4)));
void writeDecoderLine(int level, int line, const char* format, ...) {
  if (!g_ptrLogWriter || g_ptrLogWriter->GetLogLevel() < level) return;
  va_list arguments;
  va_start(arguments, format);
  const std::string text = zrplatform::VFormat(format, arguments);
  va_end(arguments);
  g_ptrLogWriter->WriteLog(level, kDecoderSignature, line, "%s", text.c_str());
}

}  // namespace

namespace HuaweiPageRepair {

void repair(std::string& page) {
  // The same result as: replace the first "[ with [, then the first ]" of that text with ], then
  // erase every backslash; done in one pass. Dropping the quote of "[ cannot create a ]", but it
  // breaks one that ends in that very quote, which the search therefore skips.
  const std::string::size_type openingQuote = page.find("\"[");
  std::string::size_type closingQuote = std::string::npos;
  for (std::string::size_type at = page.find("]\""); at != std::string::npos; at = page.find("]\"", at + 1)) {
    if (at + 1 != openingQuote) {
      closingQuote = at + 1;
      break;
    }
  }
  // Backslashes come every few bytes in a page, so a branch-free copy beats searching for them.
  char* const text = &page[0];
  std::string::size_type write = 0;
  const auto keepAllButBackslashes = [&](std::string::size_type from, std::string::size_type to) {
    std::string::size_type read = from;
    write = BackslashSqueeze::squeeze(text, read, to, write);
    for (; read < to; ++read) {
      const char c = text[read];
      text[write] = c;
      write += c != '\\';
    }
  };
  std::string::size_type dropped[2] = {openingQuote, closingQuote};
  if (dropped[1] < dropped[0]) std::swap(dropped[0], dropped[1]);
  std::string::size_type from = 0;
  for (const std::string::size_type at : dropped) {
    if (at == std::string::npos) break;
    keepAllButBackslashes(from, at);
    from = at + 1;
  }
  keepAllButBackslashes(from, page.size());
  page.resize(write);
}

}  // namespace HuaweiPageRepair

HuaweiJSONGetChangeListResult::HuaweiJSONGetChangeListResult(unsigned long long const& jobId)
    : HuaweiJSONBase(jobId),
      m_specialCharacters{{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&#40;", '('}, {"&#41;", ')'}} {}

bool HuaweiJSONGetChangeListResult::parseResponse(std::string& response) {
  TkDebug(nullptr).DebugLvl(kPageLog, 5, m_jobId, "Parsing the JSON response...");
  if (ZrLibraryGetSettings().changeListNames == ZrLibrarySettings::ChangeListNames::Exact) {
    return readExactPage(response);
  }
  // A page on which the repair would only drop the escapes of the list's quotes is read as it came:
  // the same records, without a pass over the page to repair it.
  bool ampersands = false;
  if (HuaweiChangeListPage::readSentPlain(response, m_info, ampersands, &m_spare)) {
    return !ampersands || decodeFileNames();
  }
  // "changeList":"[{\"inode\":...}]" becomes "changeList":[{"inode":...}]. Every backslash goes,
  // also one that a file name held.
  HuaweiPageRepair::repair(response);
  return readRepairedPage(response);
}

bool HuaweiJSONGetChangeListResult::decodeFileNames() {
  for (_HuaweiSnapshotChangeList& change : m_info.changes) {
    if (!decodeFileName(change.filePath)) {
      m_info.changes.clear();
      return false;
    }
  }
  return true;
}

bool HuaweiJSONGetChangeListResult::readRepairedPage(std::string const& page, bool documentModelOnly) {
  if (!documentModelOnly && HuaweiChangeListPage::readPlain(page, m_info, &m_spare)) return decodeFileNames();

  jsonxx::Object answer;
  HuaweiTransport::parseAnswer(kPageLog, m_jobId, page, answer);
  if (answer.empty()) {
    TkDebug(nullptr).DebugLvl(kPageLog, -1, m_jobId, "Error when parsing the JSON response.");
    return false;
  }

  jsonxx::Object& data = answer.get<jsonxx::Object>("data");
  jsonxx::Array& changeList = data.get<jsonxx::Array>("changeList");
  HuaweiResponse::readRequiredStrings(data, {{"numChanges", &m_info.numChanges},
                                             {"progress", &m_info.progress},
                                             {"linkPos", &m_info.linkPos},
                                             {"linkPosType", &m_info.linkPosType},
                                             {"posObj", &m_info.posObj},
                                             {"posOffset", &m_info.posOffset},
                                             {"posType", &m_info.posType}});

  std::list<_HuaweiSnapshotChangeList> changes;
  for (unsigned int i = 0; i < changeList.size(); ++i) {
    if (!readChange(changeList.get<jsonxx::Object>(i), changes.emplace_back())) return false;
  }
  m_info.changes = std::move(changes);
  return true;
}

bool HuaweiJSONGetChangeListResult::readExactPage(std::string& page) {
  using HuaweiChangeListPage::ExactReading;
  ExactReading reading = HuaweiChangeListPage::readExact(page, m_info, &m_spare);
  if (reading.outcome == ExactReading::kRead) return true;
  if (reading.outcome == ExactReading::kOtherShape) {
    // A value the page needs is absent or of another kind: the document model's readers say
    // which, and fail as they do for any page. What they would read besides is not exact.
    if (!readRepairedPage(reading.documentText, true)) return false;
    m_info.changes.clear();
    reading.why = "a value is repeated or not in the array's form";
  }
  TkDebug(nullptr).DebugLvl(kPageLog, -1, m_jobId, "Unable to read the change list with exact file names: %s.",
                            reading.why.c_str());
  return false;
}

bool HuaweiJSONGetChangeListResult::decodeFileName(std::string& name) {
  if (name.find('&') == std::string::npos || handleSpecialCharactersInFileName(name)) return true;
  TkDebug(nullptr).DebugLvl(kPageLog, -1, m_jobId, "Unable to modify the file name[%s] with special characters.",
                            name.c_str());
  return false;
}

bool HuaweiJSONGetChangeListResult::readChange(jsonxx::Object& entry, _HuaweiSnapshotChangeList& change) {
  // One walk over the entry's sorted members finds every key; the keys are then read in the
  // array's order, and one that is absent or mistyped goes through the asserting getter, which
  // ends the process at the same place as a direct read would.
  using namespace HuaweiChangeEntry;
  jsonxx::Value* found[kKeyCount] = {};
  for (const auto& member : entry.kv_map()) {
    const int key = keyOf(member.first);
    if (key >= 0) found[key] = member.second;
  }
  std::uint64_t numbers[kKeyCount] = {};
  const auto read = [&](Key key) {
    const long double number = found[key] == nullptr || !found[key]->is<jsonxx::Number>()
                                   ? entry.get<long double>(std::string(nameOf(key)))
                                   : found[key]->get<jsonxx::Number>();
    numbers[key] = HuaweiNumbers::toUnsigned64(number);
  };
  read(kInode);
  read(kChangeType);
  read(kFType);
  if (found[kFilePath] == nullptr || !found[kFilePath]->is<jsonxx::String>()) entry.get<std::string>("filePath");
  change.filePath = std::move(found[kFilePath]->get<jsonxx::String>());  // the tree is dropped after the page
  if (!decodeFileName(change.filePath)) return false;
  for (const Key key : kNumbersAfterPath) read(key);
  storeNumbers(numbers, change);
  return true;
}

bool HuaweiJSONGetChangeListResult::handleSpecialCharactersInFileName(std::string& name) {
  if (name.empty()) {
    writeDecoderLine(-1, __LINE__, "File name is empty!");
    return false;
  }
  writeDecoderLine(6, __LINE__, "Changelist file returned by array:[%s] ", name.c_str());

  // Only an exact key counts, so candidates longer than the longest key can never match.
  std::string::size_type longestKey = 0;
  for (const auto& entity : m_specialCharacters) longestKey = std::max(longestKey, entity.first.size());

  std::string decoded;
  decoded.reserve(name.size());
  std::string::size_type i = 0;
  while (i < name.size()) {
    if (name[i] != '&') {
      decoded += name[i++];
      continue;
    }
    bool matched = false;
    for (std::string::size_type j = i + 1; j < name.size() && j - i + 1 <= longestKey; ++j) {
      const auto entity = m_specialCharacters.find(std::string_view(name).substr(i, j - i + 1));
      if (entity != m_specialCharacters.end()) {
        decoded += entity->second;
        i = j + 1;
        matched = true;
        break;
      }
    }
    if (!matched) ++i;  // an ampersand that opens no known entity is dropped
  }

  writeDecoderLine(6, __LINE__, "Modified Changelist file:[%s] ", decoded.c_str());
  name = decoded;
  return true;
}

_HuaweiSnapshotChangeListInfo HuaweiJSONGetChangeListResult::getChangeListInfo(std::string const& sessionId) & {
  m_info.sessionId = sessionId;
  return m_info;
}

_HuaweiSnapshotChangeListInfo HuaweiJSONGetChangeListResult::getChangeListInfo(std::string const& sessionId) && {
  m_info.sessionId = sessionId;
  // The record has a copy constructor but no move constructor: returned as such, the page's
  // records would be copied one by one. Moved into the returned object, they change hands.
  _HuaweiSnapshotChangeListInfo info;
  info = std::move(m_info);
  return info;
}
