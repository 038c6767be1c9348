#include "store/Query.h"

#include "http/PercentDecoding.h"

namespace arraysim {
namespace {

std::vector<std::string> Split(const std::string& text, const std::string& separator) {
  std::vector<std::string> pieces;
  std::size_t start = 0;
  while (true) {
    const auto end = text.find(separator, start);
    pieces.push_back(text.substr(start, end - start));
    if (end == std::string::npos) return pieces;
    start = end + separator.size();
  }
}

bool IsIdentifierKey(const std::string& key) {
  return key.size() >= 2 && key.compare(key.size() - 2, 2, "ID") == 0;
}

std::optional<Filter> ParseFilter(const std::string& text) {
  const auto colon = text.find(':');
  if (colon == std::string::npos || colon == 0) return std::nullopt;
  Filter filter;
  filter.key = text.substr(0, colon);
  filter.exact = text.compare(colon, 2, "::") == 0 || IsIdentifierKey(filter.key);
  filter.value = text.substr(colon + (text.compare(colon, 2, "::") == 0 ? 2 : 1));
  return filter;
}

std::optional<std::size_t> Number(const std::string& text) {
  if (text.empty() || text.size() > 18 || text.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
  return static_cast<std::size_t>(std::stoull(text));
}

}  // namespace

bool Filter::matches(const Record& record) const {
  const auto it = record.find(key);
  if (it == record.end() || !it->is_string()) return false;
  const auto& text = it->get_ref<const std::string&>();
  return exact ? text == value : text.find(value) != std::string::npos;
}

std::optional<Query> Query::Parse(const std::string& text) {
  Query query;
  for (const auto& piece : Split(text, "&")) {
    const auto equals = piece.find('=');
    if (equals == std::string::npos) continue;
    const auto rawValue = piece.substr(equals + 1);
    query.parameters_.emplace_back(PercentDecoded(piece.substr(0, equals)), PercentDecoded(rawValue));
    const auto& [key, value] = query.parameters_.back();
    if (key == "filter") {
      // Conditions are split where the sender wrote " and " itself; an encoded blank belongs
      // to the value ("NAME::R%26D%20and%20co" is one name).
      for (const auto& condition : Split(rawValue, " and ")) {
        auto filter = ParseFilter(PercentDecoded(condition));
        if (!filter) return std::nullopt;
        query.filters_.push_back(std::move(*filter));
      }
    } else if (key == "range") {
      const auto dash = value.find('-');
      if (value.size() < 5 || value.front() != '[' || value.back() != ']' || dash == std::string::npos) return std::nullopt;
      const auto first = Number(value.substr(1, dash - 1));
      const auto last = Number(value.substr(dash + 1, value.size() - dash - 2));
      if (!first || !last || *first > *last) return std::nullopt;
      query.range_ = {*first, *last};
    }
  }
  return query;
}

std::optional<std::string> Query::value(const std::string& key) const {
  for (const auto& parameter : parameters_) {
    if (parameter.first == key) return parameter.second;
  }
  return std::nullopt;
}

bool Query::matches(const Record& record) const {
  for (const auto& filter : filters_) {
    if (!filter.matches(record)) return false;
  }
  return true;
}

std::vector<Record> Query::select(const std::vector<Record>& records) const {
  std::vector<Record> kept;
  for (const auto& record : records) {
    if (matches(record)) kept.push_back(record);
  }
  if (!range_) return kept;
  const auto first = std::min(range_->first, kept.size());
  const auto last = std::min(range_->second, kept.size());
  return {kept.begin() + static_cast<std::ptrdiff_t>(first), kept.begin() + static_cast<std::ptrdiff_t>(last)};
}

}  // namespace arraysim
