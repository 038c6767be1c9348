#include "FileNameEntities.h"

#include <cstdint>
#include <string_view>

#include "JsonStringDecoder.h"

namespace HuaweiFileNameEntities {
namespace {

struct Named {
  std::string_view entity;  // between '&' and ';'
  char character;
};
constexpr Named kNamed[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};

// The code point of "#N" or "#xH" (between '&' and ';'); false when `body` is neither. Seven
// digits at most: more cannot name a character.
bool numeric(std::string_view body, std::uint32_t& code) {
  if (body.size() < 2 || body[0] != '#') return false;
  const bool hex = body[1] == 'x' || body[1] == 'X';
  const std::string_view digits = body.substr(hex ? 2 : 1);
  if (digits.empty() || digits.size() > 7) return false;
  code = 0;
  for (const char c : digits) {
    std::uint32_t digit;
    if (c >= '0' && c <= '9') {
      digit = static_cast<std::uint32_t>(c - '0');
    } else if (hex && (c | 0x20) >= 'a' && (c | 0x20) <= 'f') {
      digit = static_cast<std::uint32_t>((c | 0x20) - 'a' + 10);
    } else {
      return false;
    }
    code = code * (hex ? 16 : 10) + digit;
  }
  return true;
}

}  // namespace

const char* decode(std::string& name) {
  std::string::size_type at = name.find('&');
  if (at == std::string::npos) return nullptr;
  std::string decoded(name, 0, at);
  while (at < name.size()) {
    const std::string::size_type semicolon = name.find(';', at + 1);
    const std::string::size_type next = name.find('&', at + 1);
    if (semicolon != std::string::npos && semicolon < next) {
      const std::string_view body = std::string_view(name).substr(at + 1, semicolon - at - 1);
      bool replaced = false;
      for (const Named& named : kNamed) {
        if (body == named.entity) {
          decoded += named.character;
          replaced = true;
          break;
        }
      }
      std::uint32_t code;
      if (!replaced && numeric(body, code)) {
        if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
          return "a character reference to no character";
        }
        char utf8[4];
        decoded.append(utf8, static_cast<std::string::size_type>(HuaweiJsonString::putUtf8(utf8, code)));
        replaced = true;
      }
      if (replaced) {
        at = semicolon + 1;
        const std::string::size_type end = next == std::string::npos ? name.size() : next;
        decoded.append(name, at, end - at);
        at = end;
        continue;
      }
    }
    // An ampersand of the name itself.
    const std::string::size_type end = next == std::string::npos ? name.size() : next;
    decoded.append(name, at, end - at);
    at = end;
  }
  name.swap(decoded);
  return nullptr;
}

}  // namespace HuaweiFileNameEntities
