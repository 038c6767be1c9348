// Idle libcurl easy handles of one settings generation, handed to the next client instead of a new
// one. A new easy handle builds its own internal multi handle (a socket pair, descriptor flags,
// signal handling) and frees it again with the handle: several system calls per request that a
// recycled handle skips. Only generations that share connections recycle: without sharing, every
// client must start from nothing (its own connection, TLS session and DNS answers), and a kept
// handle would carry them to the next client.
//
// A handle comes back reset to libcurl's defaults with its cookie engine dropped, so nothing of
// one client (options, callbacks, headers, cookies received or loaded, pending cookie files)
// reaches the next. Every client applies its settings afresh.
#pragma once

#include <curl/curl.h>

#include <mutex>
#include <vector>

namespace zrcurl {

class HandlePool {
 public:
  // Idle handles kept at most; more clients at once get fresh handles, freed after use.
  static constexpr size_t kMaxIdle = 8;

  explicit HandlePool(bool recycle);
  // Frees the idle handles; the generation's share must still be alive.
  ~HandlePool();
  HandlePool(const HandlePool&) = delete;
  HandlePool& operator=(const HandlePool&) = delete;

  // An idle handle, or a new one; null when libcurl cannot make one. The caller owns it alone
  // until it gives it back.
  CURL* Take();
  // Takes a handle back, or frees it when it cannot be kept. Either way a cookie jar set on it is
  // written, as freeing the handle would.
  void Give(CURL* handle);
  // Frees the idle handles and every handle given back from now on: the settings they were made
  // for are no longer current.
  void Retire();

 private:
  const bool recycle_;
  std::mutex mutex_;
  bool retired_ = false;
  std::vector<CURL*> idle_;
};

}  // namespace zrcurl
