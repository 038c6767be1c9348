// A TCP port that accepts connections (the kernel completes them from the backlog) but never
// sends a byte: a server that never answers.
#pragma once

namespace platformtest {

class SilentListener {
 public:
  SilentListener();
  ~SilentListener();
  SilentListener(const SilentListener&) = delete;
  SilentListener& operator=(const SilentListener&) = delete;
  int Port() const { return port_; }

 private:
  int socket_ = -1;
  int port_ = 0;
};

// A port on 127.0.0.1 where nothing listens (bound a moment ago and released).
int ClosedPort();

}  // namespace platformtest
