// The header lines of one client: the content type given at init, which survives a reset, and
// the lines appended since. Kept with a recycled handle, so that the next client finds the room
// of the lines and the list libcurl was given: a request that sends the same lines as the one
// before (the session's token, the content type) sends the same list without building it again.
#pragma once

#include <curl/curl.h>

#include <memory>
#include <string>
#include <vector>

namespace zrcurl {

struct SlistFree {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using HeaderList = std::unique_ptr<curl_slist, SlistFree>;

class RequestHeaders {
 public:
  void SetInitialContentType(const char* line) { initialContentType_.assign(line ? line : ""); }

  // Each false for a value that would break the header block (line breaks) or is malformed.
  bool AddLine(const char* line);
  bool ReplaceContentType(const std::string& value);
  bool SetAccept(const std::string& value);

  // Forgets everything appended; the initial content type stays.
  void Clear();
  // Forgets everything, the initial content type too, as for a new client.
  void Reset();

  // The list for libcurl, valid until the next Build or Reset (null when there is no line); null
  // with `complete` false when libcurl runs out of memory. withBody: the request sends a body.
  curl_slist* Build(bool withBody, bool& complete);

 private:
  // Calls visit(line) for each line to send, in order.
  template <typename Visit>
  void ForEachLine(bool withBody, Visit visit) const;

  std::string initialContentType_;
  std::string contentTypeOverride_;
  std::string accept_;
  // The first `used_` are the lines appended; the rest keep their room for the next ones.
  std::vector<std::string> lines_;
  size_t used_ = 0;
  HeaderList built_;
  std::string builtFrom_;
  std::string rendering_;
};

}  // namespace zrcurl
