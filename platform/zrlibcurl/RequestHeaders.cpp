#include "RequestHeaders.h"

#include <cstring>

namespace zrcurl {
namespace {

// memchr scans, which go a vector at a time, rather than a test of every character.
bool IsSafe(const char* text, size_t size) {
  return std::memchr(text, '\r', size) == nullptr && std::memchr(text, '\n', size) == nullptr;
}

bool IsSafe(const std::string& text) { return IsSafe(text.data(), text.size()); }

// No "Expect: 100-continue" pause before large bodies: the servers answer at once. Without a
// body there is nothing to expect, and libcurl reads one header less on every check.
constexpr char kNoExpect[] = "Expect:";

}  // namespace

void RequestHeaders::Keep(std::string& text, const char* value) {
  if (text.compare(value) == 0) return;
  text.assign(value);
  changed_ = true;
}

bool RequestHeaders::AddLine(const char* line) {
  const size_t size = std::strlen(line);
  if (!IsSafe(line, size) || std::memchr(line, ':', size) == nullptr) return false;
  if (used_ == lines_.size()) {
    lines_.emplace_back(line, size);
    changed_ = true;
  } else {
    std::string& kept = lines_[used_];
    if (kept.size() != size || std::memcmp(kept.data(), line, size) != 0) {
      kept.assign(line, size);
      changed_ = true;
    }
  }
  ++used_;
  return true;
}

bool RequestHeaders::ReplaceContentType(const std::string& value) {
  if (!IsSafe(value)) return false;
  Keep(contentTypeOverride_, ("Content-Type: " + value).c_str());
  return true;
}

bool RequestHeaders::SetAccept(const std::string& value) {
  if (!IsSafe(value)) return false;
  Keep(accept_, ("Accept: " + value).c_str());
  return true;
}

void RequestHeaders::Clear() {
  if (!contentTypeOverride_.empty() || !accept_.empty()) changed_ = true;
  contentTypeOverride_.clear();
  accept_.clear();
  used_ = 0;
}

curl_slist* RequestHeaders::Build(bool withBody, bool& complete) {
  complete = true;
  if (built_ && !changed_ && used_ == builtUsed_ && withBody == builtWithBody_) return built_.get();
  built_.reset();
  const std::string& contentType = contentTypeOverride_.empty() ? initialContentType_ : contentTypeOverride_;
  curl_slist* list = nullptr;
  const auto append = [&](const char* line) {
    curl_slist* grown = complete ? curl_slist_append(list, line) : nullptr;
    if (grown) {
      list = grown;
    } else {
      complete = false;
    }
  };
  if (withBody) append(kNoExpect);
  if (!contentType.empty()) append(contentType.c_str());
  if (!accept_.empty()) append(accept_.c_str());
  for (size_t i = 0; i < used_; ++i) append(lines_[i].c_str());
  if (!complete) {
    curl_slist_free_all(list);
    return nullptr;
  }
  built_.reset(list);
  builtUsed_ = used_;
  builtWithBody_ = withBody;
  changed_ = false;
  return list;
}

}  // namespace zrcurl
