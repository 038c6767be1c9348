// The array's filters match parts of names and identifiers: of the records a filtered list
// answers, only the one whose key is exactly the value asked for counts.
#pragma once

#include <string>
#include <vector>

template <typename Record>
const Record* exactRecord(const std::vector<Record>& records, std::string Record::*key, const std::string& value) {
  for (const Record& record : records) {
    if (record.*key == value) return &record;
  }
  return nullptr;
}
