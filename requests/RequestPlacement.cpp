#include "RequestPlacement.h"

#include <cstdio>
#include <cstring>

namespace {

bool isControl(unsigned char byte) { return byte < 0x20 || byte == 0x7f; }

bool isAlphanumeric(unsigned char byte) {
  return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

// The bytes that stand as written in a place; every other byte is percent-encoded. A '?' inside a
// query is lawful but refused by some servers' request parsers, so it goes encoded.
bool keptInQuery(unsigned char byte) {
  return isAlphanumeric(byte) || (byte != 0 && std::strchr("-._~!$'()*,:@/[]", byte) != nullptr);
}

// ';' and '=' would start parameters of a segment for some servers; '&' and '+' mean nothing here.
bool keptInPath(unsigned char byte) {
  return isAlphanumeric(byte) || (byte != 0 && std::strchr("-._~!$&'()*+,:@", byte) != nullptr);
}

template <typename Kept>
std::string percentEncoded(const std::string& value, Kept kept) {
  static const char kHex[] = "0123456789ABCDEF";
  std::string placed;
  placed.reserve(value.size());
  for (const char c : value) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (kept(byte)) {
      placed += c;
    } else {
      placed += '%';
      placed += kHex[byte >> 4];
      placed += kHex[byte & 0x0f];
    }
  }
  return placed;
}

}  // namespace

namespace RequestPlacement {

std::string jsonString(const std::string& value) {
  std::string placed;
  placed.reserve(value.size());
  for (const char c : value) {
    switch (c) {
      case '"': placed += "\\\""; break;
      case '\\': placed += "\\\\"; break;
      case '\b': placed += "\\b"; break;
      case '\f': placed += "\\f"; break;
      case '\n': placed += "\\n"; break;
      case '\r': placed += "\\r"; break;
      case '\t': placed += "\\t"; break;
      default:
        if (isControl(static_cast<unsigned char>(c))) {
          char escape[8];
          std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(static_cast<unsigned char>(c)));
          placed += escape;
        } else {
          placed += c;  // bytes outside ASCII pass: UTF-8 is JSON's own encoding
        }
    }
  }
  return placed;
}

std::string jsonNumberOrString(const std::string& value) {
  const bool digits =
      !value.empty() && value.find_first_not_of("0123456789") == std::string::npos;
  return digits ? value : "\"" + jsonString(value) + "\"";
}

std::string queryValue(const std::string& value) { return percentEncoded(value, keptInQuery); }

const char* pathSegmentRefusal(const std::string& value) {
  if (value.empty()) return "it is empty";
  if (value == "." || value == "..") return "a '.' or '..' segment would move the path";
  for (const char c : value) {
    if (c == '/' || c == '\\') return "it holds a path separator";
    if (isControl(static_cast<unsigned char>(c))) return "it holds a control character";
  }
  return nullptr;
}

std::string pathSegment(const std::string& value) { return percentEncoded(value, keptInPath); }

}  // namespace RequestPlacement

std::string PlacementRefusal::text() const {
  return "The input parameter [" + m_argument + "] cannot be placed in the request: " +
         (m_reason != nullptr ? m_reason : "");
}
