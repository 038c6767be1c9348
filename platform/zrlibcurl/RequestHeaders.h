// The header lines of one client: the content type given at init, which survives a reset, and
// the lines appended since.
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
  void SetInitialContentType(const std::string& line) { initialContentType_ = line; }

  // Each false for a value that would break the header block (line breaks) or is malformed.
  bool AddLine(std::string line);
  bool ReplaceContentType(const std::string& value);
  bool SetAccept(const std::string& value);

  // Forgets everything appended; the initial content type stays.
  void Clear();

  // The list for libcurl, valid until this object changes (null when there is no line); false
  // when libcurl runs out of memory. withBody: the request sends a body.
  bool Build(bool withBody, HeaderList& list) const;

 private:
  std::string initialContentType_;
  std::string contentTypeOverride_;
  std::string accept_;
  std::vector<std::string> lines_;
};

}  // namespace zrcurl
