// A misbehaving array: a TLS server on <address>:8088 that reads each request and answers it with
// the fault it is given, one connection at a time, and counts the clients that did not close.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

#include "LocalCertificates.h"

typedef struct ssl_ctx_st SSL_CTX;
typedef struct ssl_st SSL;

namespace faulttest {

struct Fault {
  std::string head;          // sent at once: status line, headers, perhaps a start of the body
  std::string trickle;       // then sent a byte at a time, with a pause between bytes
  bool silent = false;       // send nothing and wait for the client to give up
  bool closeCleanly = true;  // end TLS with its closing alert; false cuts the connection
};

class HostileServer {
 public:
  HostileServer(const std::string& address, const arraysim::CertificateFiles& certificates);
  ~HostileServer();

  // The answer to the next connections, and the certificate they are served with.
  void Answer(const Fault& fault, const arraysim::CertificateFiles& certificates);
  // Waits until no connection is waiting or in hand.
  void WaitIdle();
  int Connections() const { return connections_; }
  // Connections whose client had not closed its end well after the fault was played.
  int LeftOpen() const { return leftOpen_; }

 private:
  void Serve();
  void Play(int socket);

  int listener_ = -1;
  std::atomic<bool> stop_{false};
  std::mutex mutex_;  // held while a connection is played
  Fault fault_;
  SSL_CTX* context_ = nullptr;
  std::atomic<int> connections_{0};
  std::atomic<int> leftOpen_{0};
  std::thread thread_;
};

}  // namespace faulttest
