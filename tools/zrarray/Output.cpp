#include "Output.h"

#include <algorithm>
#include <vector>

namespace zrarray {

namespace {

std::string Cell(const Json& value) { return value.is_string() ? value.get<std::string>() : JsonText(value); }

// Columns padded to their widest cell, two blanks apart; the last column is not padded.
std::string Columns(const std::vector<std::vector<std::string>>& rows) {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  std::string text;
  for (const auto& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      text += row[i];
      if (i + 1 < row.size()) text += std::string(widths[i] - row[i].size() + 2, ' ');
    }
    text += '\n';
  }
  return text;
}

}  // namespace

std::string JsonText(const Json& value, int indent) {
  return value.dump(indent, ' ', false, Json::error_handler_t::replace);
}

std::string TableText(const Json& value) {
  std::vector<std::vector<std::string>> rows;
  if (value.is_object()) {
    for (const auto& [field, fieldValue] : value.items()) rows.push_back({field, Cell(fieldValue)});
  } else if (value.is_array() && !value.empty() && value.front().is_object()) {
    std::vector<std::string> header;
    for (const auto& [field, unused] : value.front().items()) header.push_back(field);
    rows.push_back(header);
    for (const Json& item : value) {
      std::vector<std::string> row;
      for (const std::string& field : header) row.push_back(item.contains(field) ? Cell(item[field]) : "");
      rows.push_back(row);
    }
  } else if (value.is_array()) {
    for (const Json& item : value) rows.push_back({Cell(item)});
    if (rows.empty()) return "(none)\n";
  } else {
    rows.push_back({Cell(value)});
  }
  return Columns(rows);
}

bool Print(std::FILE* stream, const Json& value, Format format) {
  const std::string text = format == Format::Json ? JsonText(value, 2) + "\n" : TableText(value);
  return std::fwrite(text.data(), 1, text.size(), stream) == text.size() && std::fflush(stream) == 0;
}

}  // namespace zrarray
