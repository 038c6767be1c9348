#include "http/HttpsServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include <httplib.h>
#include <openssl/ssl.h>

#include "http/UnobservedWorkers.h"

namespace arraysim {
namespace {

constexpr std::size_t kKeepAliveRequests = 100000;
constexpr time_t kKeepAliveSeconds = 5;
constexpr time_t kReadWriteSeconds = 30;
// Room for the canned answers of the memory benchmark, which go up to 100 MB.
constexpr std::size_t kLargestBody = 256 * 1024 * 1024;

IncomingRequest Incoming(const httplib::Request& request) {
  IncomingRequest incoming{request.method, request.target, {}, request.body};
  for (const auto& header : request.headers) incoming.headers.emplace_back(header.first, header.second);
  return incoming;
}

bool Describe(int socket, bool peer, std::string& address, int& port) {
  sockaddr_storage storage{};
  socklen_t length = sizeof storage;
  auto* raw = reinterpret_cast<sockaddr*>(&storage);
  if ((peer ? getpeername(socket, raw, &length) : getsockname(socket, raw, &length)) != 0) return false;
  char text[INET6_ADDRSTRLEN] = {};
  if (storage.ss_family == AF_INET) {
    const auto* v4 = reinterpret_cast<sockaddr_in*>(&storage);
    inet_ntop(AF_INET, &v4->sin_addr, text, sizeof text);
    port = ntohs(v4->sin_port);
  } else if (storage.ss_family == AF_INET6) {
    const auto* v6 = reinterpret_cast<sockaddr_in6*>(&storage);
    inet_ntop(AF_INET6, &v6->sin6_addr, text, sizeof text);
    port = ntohs(v6->sin6_port);
  } else {
    return false;
  }
  address = text;
  return true;
}

void Deliver(const httplib::Request& request, HttpAnswer& answer, httplib::Response& response) {
  response.status = answer.status;
  for (const auto& [name, value] : answer.headers) response.set_header(name, value);
  switch (answer.delivery) {
    case Delivery::Normal:
      // Moved rather than copied as set_content would: a change-list page is large.
      response.body = std::move(answer.body);
      response.headers.erase("Content-Type");
      response.set_header("Content-Type", answer.contentType);
      break;
    case Delivery::AbortBody:
      // The headers promise a body; the provider refuses to give it, and the connection closes.
      response.set_content_provider(
          std::max<std::size_t>(1, answer.body.size()), answer.contentType.c_str(),
          [](std::size_t, std::size_t, httplib::DataSink&) { return false; });
      break;
    case Delivery::Drop:
      // Shutting the socket down makes the client see the connection end with no answer;
      // the library's own attempt to answer then fails quietly (SIGPIPE is blocked).
      if (request.ssl != nullptr) shutdown(SSL_get_fd(request.ssl), SHUT_RDWR);
      break;
  }
}

}  // namespace

HttpsServer::HttpsServer(const std::string& certPath, const std::string& keyPath, std::size_t threads, Handler handler)
    : server_(std::make_unique<httplib::SSLServer>(certPath.c_str(), keyPath.c_str())), handler_(std::move(handler)) {
  if (!server_->is_valid()) throw std::runtime_error("cannot load the server certificate " + certPath);
  server_->new_task_queue = [threads] { return new UnobservedWorkers(threads); };
  // Only SO_REUSEADDR: httplib's default adds SO_REUSEPORT, which would let two simulators
  // share an address and steal each other's connections.
  server_->set_socket_options([](socket_t socket) {
    int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  });
  // A request that httplib itself refuses (a malformed target) leaves the rest of that request
  // unread on the connection, so every later request on it would be refused too: close it.
  server_->set_error_handler([](const httplib::Request&, httplib::Response& response) {
    if (response.body.empty()) response.set_header("Connection", "close");
  });
  server_->set_tcp_nodelay(true);  // otherwise every small answer waits for delayed ACKs
  server_->set_keep_alive_max_count(kKeepAliveRequests);
  server_->set_keep_alive_timeout(kKeepAliveSeconds);
  server_->set_read_timeout(kReadWriteSeconds, 0);
  server_->set_write_timeout(kReadWriteSeconds, 0);
  server_->set_payload_max_length(kLargestBody);

  const auto serve = [this](const httplib::Request& request, httplib::Response& response) {
    if (request.ssl != nullptr) {
      Connection connection{request.local_addr, request.local_port, request.remote_addr, request.remote_port};
      remember(SSL_get_fd(request.ssl), std::move(connection));
    }
    HttpAnswer answer;
    try {
      answer = handler_(Incoming(request));
    } catch (const std::exception& error) {
      answer.status = 500;
      answer.contentType = "text/plain";
      answer.body = error.what();
    }
    Deliver(request, answer, response);
  };
  server_->Get(".*", serve);
  server_->Post(".*", serve);
  server_->Put(".*", serve);
  server_->Delete(".*", serve);
  server_->Patch(".*", serve);
}

HttpsServer::~HttpsServer() { stop(); }

int HttpsServer::start(const std::string& address, int port) {
  if (port == 0) {
    port = server_->bind_to_any_port(address);
    if (port <= 0) throw std::runtime_error("cannot listen on " + address);
  } else if (!server_->bind_to_port(address, port)) {
    throw std::runtime_error("cannot listen on " + address + ":" + std::to_string(port));
  }
  listener_ = std::thread([this] {
    // The worker threads start from here and inherit the mask: a write to a connection that
    // the client (or a dropped-connection fault) closed must fail, not end the process.
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    server_->listen_after_bind();
  });
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!server_->is_running() && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return port;
}

void HttpsServer::stop() {
  if (!listener_.joinable()) return;
  server_->stop();
  // Workers wait on idle kept-alive connections until these time out; closing them now makes
  // stop() prompt.
  closeRememberedConnections();
  listener_.join();
}

void HttpsServer::remember(int socket, Connection connection) {
  std::lock_guard<std::mutex> lock(connectionsMutex_);
  connections_[socket] = std::move(connection);
}

void HttpsServer::closeRememberedConnections() {
  std::lock_guard<std::mutex> lock(connectionsMutex_);
  for (const auto& [socket, connection] : connections_) {
    // The number may have been reused by another socket since: touch only our connection.
    Connection now{};
    if (Describe(socket, false, now.localAddress, now.localPort) &&
        Describe(socket, true, now.remoteAddress, now.remotePort) && now.localAddress == connection.localAddress &&
        now.localPort == connection.localPort && now.remoteAddress == connection.remoteAddress &&
        now.remotePort == connection.remotePort) {
      shutdown(socket, SHUT_RDWR);
    }
  }
  connections_.clear();
}

}  // namespace arraysim
