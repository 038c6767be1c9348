#include "RequestHeaders.h"

#include <cstring>
#include <utility>

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

bool RequestHeaders::AddLine(const char* line) {
  const size_t size = std::strlen(line);
  if (!IsSafe(line, size) || std::memchr(line, ':', size) == nullptr) return false;
  if (used_ == lines_.size()) lines_.emplace_back();
  lines_[used_++].assign(line, size);
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
  used_ = 0;
}

void RequestHeaders::Reset() {
  Clear();
  initialContentType_.clear();
}

template <typename Visit>
void RequestHeaders::ForEachLine(bool withBody, Visit visit) const {
  const std::string& contentType = contentTypeOverride_.empty() ? initialContentType_ : contentTypeOverride_;
  if (withBody) visit(kNoExpect);
  if (!contentType.empty()) visit(contentType.c_str());
  if (!accept_.empty()) visit(accept_.c_str());
  for (size_t i = 0; i < used_; ++i) visit(lines_[i].c_str());
}

curl_slist* RequestHeaders::Build(bool withBody, bool& complete) {
  complete = true;
  // The key of a list: its lines as libcurl reads them, up to their first zero byte, each ended by
  // one; two requests with the same key send the same header lines.
  rendering_.clear();
  ForEachLine(withBody, [this](const char* line) { rendering_.append(line).push_back('\0'); });
  if (built_ && rendering_ == builtFrom_) return built_.get();
  built_.reset();
  builtFrom_.clear();
  curl_slist* list = nullptr;
  ForEachLine(withBody, [&](const char* line) {
    if (!complete) return;
    curl_slist* grown = curl_slist_append(list, line);
    if (grown) {
      list = grown;
    } else {
      complete = false;
    }
  });
  if (!complete) {
    curl_slist_free_all(list);
    return nullptr;
  }
  built_.reset(list);
  builtFrom_.swap(rendering_);
  return list;
}

}  // namespace zrcurl
