#include "changelist/ChangeListPage.h"

#include <charconv>
#include <cstdint>

namespace arraysim {
namespace {

void AppendNumber(std::string& out, const char* key, std::uint64_t value) {
  out.append(key);
  char digits[24];
  const auto result = std::to_chars(digits, digits + sizeof digits, value);
  out.append(digits, result.ptr);
}

void AppendEntry(std::string& out, const TreeDifference& difference, std::size_t index, std::string& path) {
  const auto& entry = difference.entry(index);
  const auto& a = entry.attributes;
  AppendNumber(out, "{\"inode\":", a.inode);
  AppendNumber(out, ",\"changeType\":", static_cast<std::uint64_t>(difference.changeType(index)));
  AppendNumber(out, ",\"fType\":", static_cast<std::uint64_t>(entry.type));
  out.append(",\"filePath\":");
  path.clear();
  difference.appendPath(index, path);
  AppendJsonString(out, EncodeFileName(path));
  AppendNumber(out, ",\"crTime\":", a.crTime);
  AppendNumber(out, ",\"cTime\":", a.cTime);
  AppendNumber(out, ",\"mTime\":", a.mTime);
  AppendNumber(out, ",\"aTime\":", a.aTime);
  AppendNumber(out, ",\"owner\":", a.owner);
  AppendNumber(out, ",\"group\":", a.group);
  AppendNumber(out, ",\"size\":", a.size);
  AppendNumber(out, ",\"links\":", a.links);
  AppendNumber(out, ",\"dosAttr\":", a.dosAttr);
  out.push_back('}');
}

}  // namespace

std::string EncodeFileName(std::string_view name) {
  std::string encoded;
  encoded.reserve(name.size() + 8);
  for (const char c : name) {
    switch (c) {
      case '&': encoded.append("&amp;"); break;
      case '<': encoded.append("&lt;"); break;
      case '>': encoded.append("&gt;"); break;
      case '(': encoded.append("&#40;"); break;
      case ')': encoded.append("&#41;"); break;
      case '\'': encoded.append("&#39;"); break;
      default: encoded.push_back(c);
    }
  }
  return encoded;
}

void AppendJsonString(std::string& out, std::string_view text) {
  static const char kHex[] = "0123456789abcdef";
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

std::string ChangeListArrayText(const TreeDifference& difference, std::size_t begin, std::size_t end) {
  std::string text;
  std::string path;
  text.reserve((end - begin) * 220 + 2);
  text.push_back('[');
  for (std::size_t index = begin; index < end; ++index) {
    if (index != begin) text.push_back(',');
    AppendEntry(text, difference, index, path);
  }
  text.push_back(']');
  return text;
}

}  // namespace arraysim
