// How the array reads a request target: the path is split at '/' first and each segment is
// then percent-decoded, so "%2F" stays inside its segment; the query is split at '&' and each
// key and value is decoded after the split, so "%26" and "%3D" stay inside their value. A '%'
// that does not start two hex digits stands as written; '+' is a plus, not a blank.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace arraysim {

std::string PercentDecoded(std::string_view text);
// "lun/12%23" -> {"lun", "12#"}.
std::vector<std::string> DecodedSegments(std::string_view path);
// "a=1&b=x%26y&&7" -> {{"a","1"}, {"b","x&y"}, {"7",""}}: empty pieces are dropped, a piece
// without '=' is a key with an empty value.
std::vector<std::pair<std::string, std::string>> DecodedQuery(std::string_view query);

}  // namespace arraysim
