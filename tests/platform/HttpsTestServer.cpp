#include "HttpsTestServer.h"

#include <chrono>
#include <set>
#include <stdexcept>

#include "http/UnobservedWorkers.h"

namespace platformtest {

std::string RecordedRequest::Header(const std::string& name) const {
  const auto found = headers.find(name);
  return found == headers.end() ? std::string() : found->second;
}

HttpsTestServer::HttpsTestServer(const arraysim::CertificateFiles& files)
    : server_(files.serverCertPath.c_str(), files.serverKeyPath.c_str()) {
  if (!server_.is_valid()) throw std::runtime_error("the test server cannot use its certificate");
  server_.set_tcp_nodelay(true);
  server_.set_keep_alive_max_count(100000);
  server_.set_keep_alive_timeout(2);  // bounds the wait for idle pooled connections at shutdown
  // A worker stays with its connection while the connection is kept alive: enough workers for the
  // connections of the busiest concurrency test, so that none waits for another to time out.
  server_.new_task_queue = [] { return new arraysim::UnobservedWorkers(16); };
  const auto handler = [this](const httplib::Request& request, httplib::Response& response) {
    Answer(request, response);
  };
  server_.Get(".*", handler);
  server_.Post(".*", handler);
  server_.Put(".*", handler);
  server_.Delete(".*", handler);

  port_ = server_.bind_to_any_port("127.0.0.1");
  if (port_ <= 0) throw std::runtime_error("the test server cannot bind");
  thread_ = std::thread([this] { server_.listen_after_bind(); });
  while (!server_.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

HttpsTestServer::~HttpsTestServer() {
  server_.stop();
  thread_.join();
}

std::string HttpsTestServer::Url(const std::string& path) const {
  return "https://127.0.0.1:" + std::to_string(port_) + path;
}

std::vector<RecordedRequest> HttpsTestServer::Requests() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return requests_;
}

size_t HttpsTestServer::ConnectionCount() const {
  std::set<int> ports;
  for (const RecordedRequest& request : Requests()) ports.insert(request.remotePort);
  return ports.size();
}

void HttpsTestServer::Answer(const httplib::Request& request, httplib::Response& response) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    requests_.push_back({request.method, request.path, request.body, request.headers, request.remote_port});
  }
  const std::string loginPrefix = "/login/";
  if (request.path == "/login") {
    response.set_header("Set-Cookie", "session=s3cr3t; Path=/; Secure; HttpOnly");
  } else if (request.path.compare(0, loginPrefix.size(), loginPrefix) == 0) {
    response.set_header("Set-Cookie", "session=" + request.path.substr(loginPrefix.size()) + "; Path=/; Secure; HttpOnly");
  }
  response.set_content("{\"path\":\"" + request.path + "\"}", "application/json");
}

}  // namespace platformtest
