// The header lines of one client: the content type given at init, which survives a reset, and
// the lines appended since. Kept with a recycled handle, so that the next client finds the room
// of the lines and the list libcurl was given: a request that sends the same lines as the list
// was built from (the session's token, the content type) sends that list without building it again.
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
  void SetInitialContentType(const char* line) { Keep(initialContentType_, line ? line : ""); }

  // Each false for a value that would break the header block (line breaks) or is malformed.
  bool AddLine(const char* line);
  bool ReplaceContentType(const std::string& value);
  bool SetAccept(const std::string& value);

  // Forgets everything appended; the initial content type stays (each client sets its own at init).
  void Clear();

  // The list for libcurl, valid until the next Build (null when there is no line); null
  // with `complete` false when libcurl runs out of memory. withBody: the request sends a body.
  curl_slist* Build(bool withBody, bool& complete);

 private:
  // Sets `text`, noting whether that changed it.
  void Keep(std::string& text, const char* value);

  std::string initialContentType_;
  std::string contentTypeOverride_;
  std::string accept_;
  // The first `used_` are the lines appended; the rest keep their room, and their text, for the
  // next ones: a line appended as it stood there changes nothing.
  std::vector<std::string> lines_;
  size_t used_ = 0;
  // The list built last, from the first `builtUsed_` lines as they stood then; `changed_` tells
  // whether a text has changed since.
  HeaderList built_;
  size_t builtUsed_ = 0;
  bool builtWithBody_ = false;
  bool changed_ = true;
};

}  // namespace zrcurl
