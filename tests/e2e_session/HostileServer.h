// An array that misbehaves: a TLS server on <address>:8088 that reads each request and answers it
// with the fault it is given, one connection at a time. It records what reached it and whether
// each client closed its connection in the end.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

#include "TestCertificates.h"

typedef struct ssl_ctx_st SSL_CTX;
typedef struct ssl_st SSL;

namespace faulttest {

struct Fault {
  std::string head;      // sent at once: status line, headers, perhaps a start of the body
  std::string trickle;   // then sent one byte at a time, a pause between bytes
  bool silent = false;   // send nothing at all and wait for the client to give up
  bool closeCleanly = true;  // end TLS with its closing alert; false cuts the connection
};

class HostileServer {
 public:
  HostileServer(const std::string& address, const arraysim::CertificateFiles& certificates);
  ~HostileServer();
  HostileServer(const HostileServer&) = delete;
  HostileServer& operator=(const HostileServer&) = delete;

  // The answer to the next connections, and the certificate they are served with.
  void Answer(const Fault& fault, const arraysim::CertificateFiles& certificates);
  // Waits until the connection in hand, if any, is done with.
  void WaitIdle();

  int Connections() const { return connections_; }
  int Requests() const { return requests_; }
  // Connections whose client had not closed its end once the fault was played.
  int LeftOpen() const { return leftOpen_; }

 private:
  void Serve();
  void Play(int socket);
  bool ReadRequest(SSL* ssl);
  static bool WaitForClientClose(int socket);

  int listener_ = -1;
  std::atomic<bool> stop_{false};
  std::mutex mutex_;  // held while a connection is played
  Fault fault_;
  SSL_CTX* context_ = nullptr;
  std::atomic<int> connections_{0};
  std::atomic<int> requests_{0};
  std::atomic<int> leftOpen_{0};
  std::thread thread_;
};

}  // namespace faulttest
