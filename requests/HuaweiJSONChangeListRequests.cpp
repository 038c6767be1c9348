#include "HuaweiJSONChangeListRequests.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <list>
#include <string_view>

#include "ArrayNumbers.h"
#include "CLogWriterInterface.h"
#include "ConvertToString.h"
#include "DeletionAnswer.h"
#include "HandBuiltBody.h"
#include "PrintfToString.h"
#include "ResponseReading.h"
#include "TkDebug.h"

namespace {

const int kFileSystemParentType = 40;
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
    for (; read + 8 <= to; read += 8) {
      // Eight bytes at a time: the backslash bytes are found with an exact per-byte test and
      // squeezed out of the word in a register, highest first, before the word is stored whole.
      std::uint64_t word;
      std::memcpy(&word, text + read, 8);
      const std::uint64_t probe = word ^ 0x5C5C5C5C5C5C5C5CULL;
      std::uint64_t backslashes =
          ~(((probe & 0x7F7F7F7F7F7F7F7FULL) + 0x7F7F7F7F7F7F7F7FULL) | probe) & 0x8080808080808080ULL;
      int kept = 8;
      while (backslashes != 0) {
        const int bit = 63 - __builtin_clzll(backslashes);
        const int shift = bit - 7;  // first bit of that byte
        const std::uint64_t below = word & ((1ULL << shift) - 1);
        word = shift == 56 ? below : (below | ((word >> (shift + 8)) << shift));
        backslashes &= ~(1ULL << bit);
        --kept;
      }
      std::memcpy(text + write, &word, 8);  // write <= read: only bytes already read are overwritten
      write += static_cast<std::string::size_type>(kept);
    }
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

HuaweiJSONGetChangeListSession::HuaweiJSONGetChangeListSession(unsigned long long const& jobId,
                                                               std::string const& baseSnapshotId,
                                                               std::string const& incrementalSnapshotId,
                                                               std::string const& parentId)
    : HuaweiJSONBase(jobId),
      m_parentId(parentId),
      m_baseSnapshotId(baseSnapshotId),
      m_incrementalSnapshotId(incrementalSnapshotId) {}

bool HuaweiJSONGetChangeListSession::buildRequest(std::string& body) {
  body.clear();
  if (m_baseSnapshotId.empty() || m_incrementalSnapshotId.empty()) {
    TkDebug(nullptr).DebugLvl("HuaweiJSONGetChangeListSession::buildRequest", -1, m_jobId,
                              "Unable to build the request. Invalid parameters!!");
    return false;
  }
  body = HandBuiltBody()
             .add("parentID", m_parentId)
             .add("baseSnapshotId", m_baseSnapshotId)
             .add("incrementalSnapshotId", m_incrementalSnapshotId)
             .add("parentType", ConvertToString::to_string<int>(kFileSystemParentType))
             .str();
  return true;
}

bool HuaweiJSONGetChangeListSession::parseResponse(std::string& response) {
  jsonxx::Object answer;
  if (!HuaweiResponse::parseObject("HuaweiJSONGetChangeListSession::parseResponse", m_jobId, response, answer)) {
    return false;
  }
  m_sessionId = answer.get<jsonxx::Object>("data").get<std::string>("id");
  return true;
}

bool HuaweiJSONDeleteChangeListSession::parseResponse(std::string& response) {
  return HuaweiResponse::readDeletionAnswer("HuaweiJSONDeleteChangeListSession::parseResponse", m_jobId, response);
}

HuaweiJSONGetChangeListResult::HuaweiJSONGetChangeListResult(unsigned long long const& jobId)
    : HuaweiJSONBase(jobId),
      m_specialCharacters{{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&#40;", '('}, {"&#41;", ')'}} {}

bool HuaweiJSONGetChangeListResult::parseResponse(std::string& response) {
  static const char kLog[] = "HuaweiJSONGetChangeListResult::parseResponse";
  TkDebug debug(nullptr);
  debug.DebugLvl(kLog, 5, m_jobId, "Parsing the JSON response...");

  // "changeList":"[{\"inode\":...}]" becomes "changeList":[{"inode":...}]. Every backslash goes,
  // also one that a file name held.
  HuaweiPageRepair::repair(response);

  jsonxx::Object answer;
  answer.parse(response);
  if (answer.empty()) {
    debug.DebugLvl(kLog, -1, m_jobId, "Error when parsing the JSON response.");
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
    _HuaweiSnapshotChangeList& change = changes.emplace_back();
    if (!readChange(changeList.get<jsonxx::Object>(i), change)) {
      debug.DebugLvl(kLog, -1, m_jobId, "Unable to modify the file name[%s] with special characters.",
                     change.filePath.c_str());
      return false;
    }
  }
  m_info.changes = std::move(changes);
  return true;
}

namespace {

// The entry keys, told apart by length and first letter (each pair is unique); -1 for any other.
int changeKeyOf(const std::string& key) {
  if (key.empty()) return -1;
  switch (key.size() * 256 + static_cast<unsigned char>(key[0])) {
    case 5 * 256 + 'a': return 0;   // aTime
    case 10 * 256 + 'c': return 1;  // changeType
    case 5 * 256 + 'c': return 2;   // cTime
    case 6 * 256 + 'c': return 3;   // crTime
    case 7 * 256 + 'd': return 4;   // dosAttr
    case 5 * 256 + 'f': return 5;   // fType
    case 8 * 256 + 'f': return 6;   // filePath
    case 5 * 256 + 'g': return 7;   // group
    case 5 * 256 + 'i': return 8;   // inode
    case 5 * 256 + 'l': return 9;   // links
    case 5 * 256 + 'm': return 10;  // mTime
    case 5 * 256 + 'o': return 11;  // owner
    case 4 * 256 + 's': return 12;  // size
    default: return -1;
  }
}

}  // namespace

bool HuaweiJSONGetChangeListResult::readChange(jsonxx::Object& entry, _HuaweiSnapshotChangeList& change) {
  // One walk over the entry's sorted members finds every key; the keys are then read in the
  // array's order, and one that is absent or mistyped goes through the asserting getter, which
  // ends the process at the same place as a direct read would.
  enum Key { kATime, kChangeType, kCTime, kCrTime, kDosAttr, kFType, kFilePath, kGroup, kInode, kLinks, kMTime,
             kOwner, kSize, kKeyCount };
  static const std::string_view kNames[kKeyCount] = {"aTime", "changeType", "cTime", "crTime", "dosAttr",
                                                "fType", "filePath", "group", "inode", "links",
                                                "mTime", "owner", "size"};
  jsonxx::Value* found[kKeyCount] = {};
  for (const auto& member : entry.kv_map()) {
    const int key = changeKeyOf(member.first);
    if (key >= 0 && std::string_view(member.first) == kNames[key]) found[key] = member.second;
  }
  const auto number = [&](Key key) -> long double {
    if (found[key] == nullptr || !found[key]->is<jsonxx::Number>()) return entry.get<long double>(std::string(kNames[key]));
    return found[key]->get<jsonxx::Number>();
  };

  using HuaweiNumbers::toSigned32;
  using HuaweiNumbers::toUnsigned64;
  change.inode = toUnsigned64(number(kInode));
  change.changeType = toSigned32(number(kChangeType));
  change.fType = toSigned32(number(kFType));
  if (found[kFilePath] == nullptr || !found[kFilePath]->is<jsonxx::String>()) entry.get<std::string>("filePath");
  change.filePath = std::move(found[kFilePath]->get<jsonxx::String>());  // the tree is dropped after the page
  if (change.filePath.find('&') != std::string::npos && !handleSpecialCharactersInFileName(change.filePath)) {
    return false;
  }
  change.crTime = toUnsigned64(number(kCrTime));
  change.cTime = toUnsigned64(number(kCTime));
  change.mTime = toUnsigned64(number(kMTime));
  change.aTime = toUnsigned64(number(kATime));
  change.owner = toUnsigned64(number(kOwner));
  change.group = toUnsigned64(number(kGroup));
  change.size = toUnsigned64(number(kSize));
  change.links = toSigned32(number(kLinks));
  change.dosAttr = HuaweiNumbers::toUnsigned32(number(kDosAttr));
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
      const auto entity = m_specialCharacters.find(name.substr(i, j - i + 1));
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

_HuaweiSnapshotChangeListInfo HuaweiJSONGetChangeListResult::getChangeListInfo(std::string const& sessionId) {
  m_info.sessionId = sessionId;
  return m_info;
}
