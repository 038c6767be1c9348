#include "http/PercentDecoding.h"

namespace arraysim {
namespace {

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  while (true) {
    const auto end = text.find(separator);
    pieces.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + 1);
  }
}

}  // namespace

std::string PercentDecoded(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && HexValue(text[i + 1]) >= 0 && HexValue(text[i + 2]) >= 0) {
      decoded += static_cast<char>(HexValue(text[i + 1]) * 16 + HexValue(text[i + 2]));
      i += 2;
    } else {
      decoded += text[i];
    }
  }
  return decoded;
}

std::vector<std::string> DecodedSegments(std::string_view path) {
  std::vector<std::string> segments;
  for (const auto segment : Split(path, '/')) segments.push_back(PercentDecoded(segment));
  return segments;
}

std::vector<std::pair<std::string, std::string>> DecodedQuery(std::string_view query) {
  std::vector<std::pair<std::string, std::string>> parameters;
  if (query.empty()) return parameters;
  for (const auto piece : Split(query, '&')) {
    if (piece.empty()) continue;
    const auto equals = piece.find('=');
    parameters.emplace_back(PercentDecoded(piece.substr(0, equals)),
                            equals == std::string_view::npos ? std::string() : PercentDecoded(piece.substr(equals + 1)));
  }
  return parameters;
}

}  // namespace arraysim
