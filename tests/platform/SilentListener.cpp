#include "SilentListener.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

namespace platformtest {
namespace {

int BindLoopback(int& port) {
  const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  if (fd < 0 || ::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
      ::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
    if (fd >= 0) ::close(fd);
    throw std::runtime_error("cannot bind a loopback port");
  }
  port = ntohs(address.sin_port);
  return fd;
}

}  // namespace

SilentListener::SilentListener() {
  socket_ = BindLoopback(port_);
  if (::listen(socket_, 16) != 0) throw std::runtime_error("cannot listen on a loopback port");
}

SilentListener::~SilentListener() { ::close(socket_); }

int ClosedPort() {
  int port = 0;
  ::close(BindLoopback(port));
  return port;
}

}  // namespace platformtest
