// A libcurl handle of the pool together with what one client leaves on it for the next.
#pragma once

#include <curl/curl.h>

#include <memory>
#include <string>
#include <vector>

#include "CookieFileCache.h"
#include "RequestHeaders.h"

namespace zrcurl {

// Paths named one after another, each kept with its room when the list is cleared, so that the
// next client naming the same files copies them into memory it has.
class PathList {
 public:
  void add(const char* path) {
    if (used_ == paths_.size()) paths_.emplace_back();
    paths_[used_++].assign(path);
  }
  void clear() { used_ = 0; }
  bool empty() const { return used_ == 0; }
  const std::string* begin() const { return paths_.data(); }
  const std::string* end() const { return paths_.data() + used_; }

 private:
  std::vector<std::string> paths_;
  size_t used_ = 0;
};

// A libcurl handle with what one client leaves for the next on it: the room of its buffers and
// header lines, the header list libcurl was given, and the places libcurl writes bodies and error
// texts to, set on the handle once, when it is made. Owned by one client at a time.
struct HandleSlot {
  HandleSlot() = default;
  ~HandleSlot();  // frees the handle, then the list it used
  HandleSlot(const HandleSlot&) = delete;
  HandleSlot& operator=(const HandleSlot&) = delete;

  CURL* handle = nullptr;
  // Made for this client: the generation's settings are still to be applied.
  bool fresh = true;
  // The cookie lines the handle's cookie engine holds, and nothing else; null: no engine.
  std::shared_ptr<const CookieLines> keptCookies;
  // The client the handle's bodies go to (CURLOPT_WRITEDATA is the slot); null while idle.
  void* receiver = nullptr;
  char errorText[CURL_ERROR_SIZE] = {};
  // CURLOPT_FAILONERROR as last set; -1 before the first client.
  long failOnError = -1;
  // The handle is set verbose, or has a body of its client: to be cleared when it comes back.
  bool verbose = false;
  bool hasPostFields = false;
  bool plainGet = false;  // set for a GET without body by the last request
  RequestHeaders headers;
  curl_slist* sentHeaders = nullptr;  // the list the handle was given (the headers' own)
  std::string url;                    // the URL the handle was given
  PathList cookieFiles;  // named since the last request
  std::vector<std::shared_ptr<const CookieLines>> cookieLines;  // room for those files' lines
  std::string body;
};

}  // namespace zrcurl
