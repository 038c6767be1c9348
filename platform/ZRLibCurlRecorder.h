// A seam for recording: every exchange that brings an answer back is handed to the recorder set
// here, by every client of the process. Nothing is recorded while none is set, and the clients then
// pay two tests of a pointer per request.
#pragma once

#include <cstddef>

// One exchange as it went over the wire. The texts are the client's own and live only for the
// call; no header is given, so neither the token nor the cookies are.
struct ZRLibCurlExchange {
  const char* method;  // "GET", "POST", "PUT" or "DELETE"
  const char* url;     // as given to the client, scheme and authority included
  const char* request;  // the body sent; null when none
  std::size_t requestLength;
  long status;           // HTTP status of the answer
  const char* answer;    // the body received; null when it went to the caller's write callback
  std::size_t answerLength;
  double milliseconds;   // from the start of the transfer to the end of the answer
};

class ZRLibCurlRecorder {
 public:
  virtual ~ZRLibCurlRecorder() = default;
  // Called from the thread that made the exchange, by many threads at once; must not throw.
  virtual void record(const ZRLibCurlExchange& exchange) noexcept = 0;
};

// Sets the recorder of clients initialised from now on; null ends recording for them. The recorder
// is not owned and must outlive every client that took it.
void ZRLibCurlSetRecorder(ZRLibCurlRecorder* recorder);
