// HTTPS client used by the transport: one object per request, made with new and freed with delete.
// Implemented on libcurl. Process-wide trust, time-out and connection-sharing settings live in
// ZRLibCurlOptions.h; nothing here reads the environment or a configuration file.
#pragma once

#include <memory>
#include <string>

enum _http_req_type_ {
  HTTP_REQ_GET = 0,
  HTTP_REQ_POST = 1,
  HTTP_REQ_PUT = 2,
  HTTP_REQ_DELETE = 3,
};

enum _http_hdr_type_ {
  HTTP_HDR_CUSTOM = 0,        // one complete header line, "Name: value"
  HTTP_HDR_CONTENT_TYPE = 1,  // replaces the content type given at init
  HTTP_HDR_ACCEPT = 2,        // value of an Accept header
  HTTP_HDR_COOKIE_FILE = 3,   // path of a file whose cookies are sent with the request
  HTTP_HDR_COOKIE_JAR = 4,    // path of a file into which received cookies are stored (mode 0600),
                              // created at once; false with the reason logged at level -1 when it cannot be
};

// Receives the response body when given to ZRLibCurlInit; null makes the client gather it itself.
// userData is the ZRLibCurl object that receives the body.
typedef unsigned long (*ZRLibCurlWriteCallback)(void* data, unsigned long size, unsigned long count,
                                                void* userData);

class ZRLibCurl {
 public:
  ZRLibCurl();
  ~ZRLibCurl();
  ZRLibCurl(const ZRLibCurl&) = delete;
  ZRLibCurl& operator=(const ZRLibCurl&) = delete;

  // Prepares the handle. contentTypeHeader is a complete header line such as
  // "Content-Type: application/json"; it is sent with every request and survives
  // ZRLibCurlFreeHttpHeaderList. failOnTransportErrorOnly keeps its libcurl meaning.
  // followRedirects is accepted and ignored: redirects are never followed, and an answer with a
  // 3xx status is a failed exchange. False when libcurl cannot give a handle.
  bool ZRLibCurlInit(const char* contentTypeHeader, bool failOnTransportErrorOnly, bool followRedirects,
                     ZRLibCurlWriteCallback writeCallback);
  void ZRLibCurlDeInit();

  bool ZRLibCurlAppendHeader(_http_hdr_type_ kind, const char* value);
  // Empties the list of headers appended so far (the init content type stays).
  void ZRLibCurlFreeHttpHeaderList();

  // Sends one request and waits for the answer. True when a response came back, whatever its
  // HTTP status but a redirect; false when the exchange failed, with the cause logged at level -1.
  // With a cookie jar, the exchange fails also when the jar cannot be written, and with cookie
  // files when one exists but cannot be read.
  bool ZRLibCurlSendHttpReq(_http_req_type_ method, const char* url, const void* data, unsigned long length,
                            bool verbose, const char* reserved);

  // Body of the last response, owned by the client and zero-terminated; null when there is none.
  // With detach the caller takes the body over and frees it with free(); the client forgets it.
  const char* GetHttpResponse(unsigned long& size, bool detach);
  // Hands the body of the last response over to `body` without copying it, and forgets it: a large
  // answer is then held once. False, with `body` untouched, when there is none.
  bool ZRLibCurlTakeHttpResponse(std::string& body);
  // HTTP status of the last response, 0 when none came back.
  long GetHttpErrorCode();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};
