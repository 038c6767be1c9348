#include "changelist/ChangeListPage.h"

#include <charconv>
#include <cstdint>

namespace arraysim {
namespace {

constexpr char kHex[] = "0123456789abcdef";

// A JSON quote inside the string that carries the array.
constexpr char kQuote[] = "\\\"";

void AppendNumber(std::string& out, std::string_view key, std::uint64_t value) {
  out.append(key);
  char digits[24];
  const auto result = std::to_chars(digits, digits + sizeof digits, value);
  out.append(digits, result.ptr);
}

// What a byte of a name becomes: its entity, then the escape of the array's text, then the
// escape of the string that carries that text. Empty for a byte that stays as it is.
std::string_view NameByte(unsigned char byte, char (&control)[8]) {
  switch (byte) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '(': return "&#40;";
    case ')': return "&#41;";
    case '\'': return "&#39;";
    case '"': return "\\\\\\\"";   // \" of the array's text, escaped again
    case '\\': return "\\\\\\\\";  // \\ likewise
    default: break;
  }
  if (byte >= 0x20) return {};
  // \u00XX of the array's text; its backslash escaped again.
  control[0] = '\\', control[1] = '\\', control[2] = 'u', control[3] = '0', control[4] = '0';
  control[5] = kHex[byte >> 4], control[6] = kHex[byte & 0xF];
  return std::string_view(control, 7);
}

void AppendName(std::string& out, std::string_view name) {
  out.append(kQuote);
  std::size_t plain = 0;  // start of the run of bytes not yet written
  char control[8];
  for (std::size_t i = 0; i < name.size(); ++i) {
    const std::string_view replaced = NameByte(static_cast<unsigned char>(name[i]), control);
    if (replaced.empty()) continue;
    out.append(name.data() + plain, i - plain).append(replaced);
    plain = i + 1;
  }
  out.append(name.data() + plain, name.size() - plain).append(kQuote);
}

void AppendEntry(std::string& out, const TreeDifference& difference, std::size_t index, std::string& path) {
  const auto& entry = difference.entry(index);
  const auto& a = entry.attributes;
  AppendNumber(out, "{\\\"inode\\\":", a.inode);
  AppendNumber(out, ",\\\"changeType\\\":", static_cast<std::uint64_t>(difference.changeType(index)));
  AppendNumber(out, ",\\\"fType\\\":", static_cast<std::uint64_t>(entry.type));
  out.append(",\\\"filePath\\\":");
  path.clear();
  difference.appendPath(index, path);
  AppendName(out, path);
  AppendNumber(out, ",\\\"crTime\\\":", a.crTime);
  AppendNumber(out, ",\\\"cTime\\\":", a.cTime);
  AppendNumber(out, ",\\\"mTime\\\":", a.mTime);
  AppendNumber(out, ",\\\"aTime\\\":", a.aTime);
  AppendNumber(out, ",\\\"owner\\\":", a.owner);
  AppendNumber(out, ",\\\"group\\\":", a.group);
  AppendNumber(out, ",\\\"size\\\":", a.size);
  AppendNumber(out, ",\\\"links\\\":", a.links);
  AppendNumber(out, ",\\\"dosAttr\\\":", a.dosAttr);
  out.push_back('}');
}

}  // namespace

void AppendJsonString(std::string& out, std::string_view text) {
  out.push_back('"');
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out.push_back('\\');
      out.push_back(c);
    } else if (byte < 0x20) {
      out.append("\\u00");
      out.push_back(kHex[byte >> 4]);
      out.push_back(kHex[byte & 0xF]);
    } else {
      out.push_back(c);
    }
  }
  out.push_back('"');
}

void AppendChangeListString(std::string& out, const TreeDifference& difference, std::size_t begin, std::size_t end) {
  std::string path;
  out.reserve(out.size() + (end - begin) * 280 + 4);
  out.append("\"[");
  for (std::size_t index = begin; index < end; ++index) {
    if (index != begin) out.push_back(',');
    AppendEntry(out, difference, index, path);
  }
  out.append("]\"");
}

}  // namespace arraysim
