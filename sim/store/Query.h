// The query language of the array's list requests, evaluated the same way for every resource:
//   filter=NAME:part     the key's value contains the text
//   filter=NAME::whole   the key's value equals the text
//   filter=ID:7          keys ending in "ID" (ID, FSID, PARENTID) compare whole either way,
//                        so ID:5 does not find 15
//   several filters      repeated filter= parameters, or "A::x and B::y" in one; all must hold
//   range=[a-b]          the items a to b-1 of what the filters kept
// The text may start with "&" (lun/12?&vstoreId=3) or be empty (lun/12?); a piece without "="
// (nfshare?filter=FSID:12&range=[0-1]&7) is nobody's parameter and is ignored. Keys, values
// and filter conditions are percent-decoded after the split, so "%26" is a '&' of a value;
// plain text, as the array's own examples write it, reads the same.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "store/ObjectStore.h"

namespace arraysim {

struct Filter {
  std::string key;
  std::string value;
  bool exact = false;

  bool matches(const Record& record) const;
};

class Query {
 public:
  // Nothing when a filter or the range is malformed, which the array answers as an incorrect
  // parameter.
  static std::optional<Query> Parse(const std::string& text);

  // The first value of a parameter, decoded.
  std::optional<std::string> value(const std::string& key) const;
  bool matches(const Record& record) const;
  // The records the filters keep, narrowed to the range.
  std::vector<Record> select(const std::vector<Record>& records) const;

 private:
  std::vector<std::pair<std::string, std::string>> parameters_;
  std::vector<Filter> filters_;
  std::optional<std::pair<std::size_t, std::size_t>> range_;
};

}  // namespace arraysim
