#include "HostileServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <openssl/ssl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <stdexcept>

namespace faulttest {
namespace {

constexpr int kArrayPort = 8088;
constexpr int kPatienceMs = 5000;  // for a client that would never close: the row fails, not hangs
constexpr auto kTricklePause = std::chrono::milliseconds(300);

bool ClientGone(int socket) {
  pollfd watch{socket, POLLRDHUP, 0};
  return ::poll(&watch, 1, 0) > 0;
}

// The request line and headers, and a body as long as Content-Length says.
bool ReadRequest(SSL* ssl) {
  std::string request;
  char buffer[4096];
  size_t headEnd = std::string::npos;
  size_t wanted = 0;
  while (headEnd == std::string::npos || request.size() < headEnd + 4 + wanted) {
    const int got = SSL_read(ssl, buffer, sizeof buffer);
    if (got <= 0) return false;
    request.append(buffer, static_cast<size_t>(got));
    if (headEnd == std::string::npos && (headEnd = request.find("\r\n\r\n")) != std::string::npos) {
      const size_t length = request.find("Content-Length: ");
      if (length != std::string::npos && length < headEnd) wanted = std::stoul(request.substr(length + 16));
    }
  }
  return true;
}

bool WaitForClientClose(int socket) {
  char discard[512];
  for (;;) {
    pollfd watch{socket, POLLIN, 0};
    if (::poll(&watch, 1, kPatienceMs) <= 0) return false;
    if (::recv(socket, discard, sizeof discard, 0) <= 0) return true;
  }
}

}  // namespace

HostileServer::HostileServer(const std::string& address, const arraysim::CertificateFiles& certificates) {
  std::signal(SIGPIPE, SIG_IGN);  // a client that hangs up mid-trickle must not end the test
  listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int on = 1;
  ::setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  sockaddr_in where{};
  where.sin_family = AF_INET;
  where.sin_port = htons(kArrayPort);
  if (::inet_pton(AF_INET, address.c_str(), &where.sin_addr) != 1 ||
      ::bind(listener_, reinterpret_cast<sockaddr*>(&where), sizeof where) != 0 || ::listen(listener_, 8) != 0) {
    ::close(listener_);
    throw std::runtime_error("cannot listen on " + address);
  }
  Answer(Fault(), certificates);
  thread_ = std::thread(&HostileServer::Serve, this);
}

HostileServer::~HostileServer() {
  stop_ = true;
  thread_.join();
  ::close(listener_);
  SSL_CTX_free(context_);
}

void HostileServer::Answer(const Fault& fault, const arraysim::CertificateFiles& certificates) {
  SSL_CTX* context = SSL_CTX_new(TLS_server_method());
  if (SSL_CTX_use_certificate_chain_file(context, certificates.serverCertPath.c_str()) != 1 ||
      SSL_CTX_use_PrivateKey_file(context, certificates.serverKeyPath.c_str(), SSL_FILETYPE_PEM) != 1) {
    SSL_CTX_free(context);
    throw std::runtime_error("cannot load " + certificates.serverCertPath);
  }
  std::lock_guard<std::mutex> lock(mutex_);
  fault_ = fault;
  SSL_CTX_free(context_);
  context_ = context;
}

void HostileServer::WaitIdle() {
  for (;;) {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      pollfd waiting{listener_, POLLIN, 0};
      if (::poll(&waiting, 1, 0) == 0) return;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

void HostileServer::Serve() {
  while (!stop_) {
    pollfd waiting{listener_, POLLIN, 0};
    if (::poll(&waiting, 1, 100) <= 0) continue;
    std::lock_guard<std::mutex> lock(mutex_);
    const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) continue;
    ++connections_;
    Play(socket);
    ::close(socket);
  }
}

void HostileServer::Play(int socket) {
  const timeval patience{kPatienceMs / 1000, 0};
  ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  SSL* ssl = SSL_new(context_);
  SSL_set_fd(ssl, socket);
  if (SSL_accept(ssl) == 1 && ReadRequest(ssl)) {
    if (!fault_.silent) {
      SSL_write(ssl, fault_.head.data(), static_cast<int>(fault_.head.size()));
      for (char byte : fault_.trickle) {
        std::this_thread::sleep_for(kTricklePause);
        if (ClientGone(socket) || SSL_write(ssl, &byte, 1) <= 0) break;
      }
      if (fault_.closeCleanly) SSL_shutdown(ssl);
      ::shutdown(socket, SHUT_WR);
    }
  }
  if (!WaitForClientClose(socket)) ++leftOpen_;
  SSL_free(ssl);
}

}  // namespace faulttest
