// A libcurl share of DNS answers and TLS sessions, so that a handle made for a new client neither
// looks the host up again nor makes a full handshake. Open connections are not shared: each stays
// in the connection cache of the recycled handle that opened it (HandlePool.h) and goes to the next
// client with that handle. A shared cache would take the share's lock several times per request,
// and buys nothing here: a client always runs on one handle of the pool. Safe for clients on
// several threads.
#pragma once

#include <curl/curl.h>

#include <array>
#include <mutex>

namespace zrcurl {

class ConnectionShare {
 public:
  ConnectionShare();
  // Closes the pooled connections; every client using the share must be gone by then.
  ~ConnectionShare();
  ConnectionShare(const ConnectionShare&) = delete;
  ConnectionShare& operator=(const ConnectionShare&) = delete;

  // Null when libcurl could not make the share; clients then go without.
  CURLSH* Handle() const { return share_; }

 private:
  static void Lock(CURL* handle, curl_lock_data data, curl_lock_access access, void* self);
  static void Unlock(CURL* handle, curl_lock_data data, void* self);
  std::mutex& MutexFor(curl_lock_data data);

  // One lock per kind of shared data, so DNS look-ups do not wait for the connection pool.
  std::array<std::mutex, CURL_LOCK_DATA_LAST> mutexes_;
  CURLSH* share_ = nullptr;
};

}  // namespace zrcurl
