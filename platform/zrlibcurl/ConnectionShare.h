// A libcurl share of DNS answers, TLS sessions and open connections, so that a fresh client per
// request reuses the connection of the one before. Safe for clients on several threads.
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
