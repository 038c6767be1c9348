#include "RequestHeaders.h"

#include <cstring>
#include <utility>

namespace zrcurl {
namespace {

// Two memchr scans, which go a vector at a time, rather than a test of every character.
bool IsSafe(const std::string& text) {
  return std::memchr(text.data(), '\r', text.size()) == nullptr && std::memchr(text.data(), '\n', text.size()) == nullptr;
}

bool Append(HeaderList& list, const std::string& line) {
  curl_slist* grown = curl_slist_append(list.get(), line.c_str());
  if (!grown) return false;
  list.release();
  list.reset(grown);
  return true;
}

}  // namespace

bool RequestHeaders::AddLine(std::string line) {
  if (!IsSafe(line) || line.find(':') == std::string::npos) return false;
  lines_.push_back(std::move(line));
  return true;
}

bool RequestHeaders::ReplaceContentType(const std::string& value) {
  if (!IsSafe(value)) return false;
  contentTypeOverride_ = "Content-Type: " + value;
  return true;
}

bool RequestHeaders::SetAccept(const std::string& value) {
  if (!IsSafe(value)) return false;
  accept_ = "Accept: " + value;
  return true;
}

void RequestHeaders::Clear() {
  contentTypeOverride_.clear();
  accept_.clear();
  lines_.clear();
}

bool RequestHeaders::Build(bool withBody, HeaderList& list) const {
  list.reset();
  const std::string& contentType = contentTypeOverride_.empty() ? initialContentType_ : contentTypeOverride_;
  // No "Expect: 100-continue" pause before large bodies: the servers answer at once. Without a
  // body there is nothing to expect, and libcurl reads one header less on every check.
  bool complete = !withBody || Append(list, "Expect:");
  if (complete && !contentType.empty()) complete = Append(list, contentType);
  if (complete && !accept_.empty()) complete = Append(list, accept_);
  for (const std::string& line : lines_) {
    if (complete) complete = Append(list, line);
  }
  if (!complete) list.reset();
  return complete;
}

}  // namespace zrcurl
