// The HTTPS listener: one handler for every request, served on a pool of threads.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "http/HttpExchange.h"

namespace httplib {
class SSLServer;
}

namespace arraysim {

class HttpsServer {
 public:
  using Handler = std::function<HttpAnswer(const IncomingRequest&)>;

  HttpsServer(const std::string& certPath, const std::string& keyPath, std::size_t threads, Handler handler);
  ~HttpsServer();
  HttpsServer(const HttpsServer&) = delete;
  HttpsServer& operator=(const HttpsServer&) = delete;

  // Listens on address:port (0: any free port) and answers the port; connections are accepted
  // when this returns. Throws std::runtime_error when the address cannot be bound.
  int start(const std::string& address, int port);
  // Stops accepting, closes the kept-alive connections and waits for the workers.
  void stop();

 private:
  struct Connection {
    std::string localAddress;
    int localPort;
    std::string remoteAddress;
    int remotePort;
  };

  void remember(int socket, Connection connection);
  void closeRememberedConnections();

  std::unique_ptr<httplib::SSLServer> server_;
  std::thread listener_;
  Handler handler_;
  std::mutex connectionsMutex_;
  // Keyed by socket; an entry may outlive its connection, so it is checked before use.
  std::map<int, Connection> connections_;
};

}  // namespace arraysim
