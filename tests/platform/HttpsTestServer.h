// A local HTTPS server for client tests: listens on 127.0.0.1 at a port of its choosing, records
// every request, and answers:
//   /login        200, sets the cookie "session=s3cr3t"
//   /login/<v>    200, sets the cookie "session=<v>"
//   anything else 200, JSON body naming the path
#pragma once

#include <httplib.h>

#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "LocalCertificates.h"

namespace platformtest {

struct RecordedRequest {
  std::string method;
  std::string path;
  std::string body;
  httplib::Headers headers;
  int remotePort = 0;

  // The value of a header, empty when absent.
  std::string Header(const std::string& name) const;
  bool HasHeader(const std::string& name) const { return headers.count(name) > 0; }
};

class HttpsTestServer {
 public:
  explicit HttpsTestServer(const arraysim::CertificateFiles& files);
  ~HttpsTestServer();
  HttpsTestServer(const HttpsTestServer&) = delete;
  HttpsTestServer& operator=(const HttpsTestServer&) = delete;

  std::string Url(const std::string& path) const;

  std::vector<RecordedRequest> Requests() const;
  // TCP connections the requests came over, told apart by the client's port.
  size_t ConnectionCount() const;

 private:
  void Answer(const httplib::Request& request, httplib::Response& response);

  httplib::SSLServer server_;
  int port_ = 0;
  std::thread thread_;
  mutable std::mutex mutex_;
  std::vector<RecordedRequest> requests_;
};

}  // namespace platformtest
