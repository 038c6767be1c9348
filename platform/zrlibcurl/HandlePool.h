// Idle libcurl easy handles of one settings generation, handed to the next client instead of a new
// one. A new easy handle builds its own internal multi handle (a socket pair, descriptor flags,
// signal handling) and frees it again with the handle: several system calls per request that a
// recycled handle skips. Only generations that share connections recycle: a kept handle carries its
// open connection (in its own connection cache) to the next client, and without sharing every
// client must start from nothing (its own connection, TLS session and DNS answers).
//
// A kept handle keeps the generation's settings, and what every client sets alike (no redirects,
// the body callback, where bodies and error texts go: into its slot), so they are applied once,
// when the handle is made. What a client sets for itself (method, body, URL, headers, failure mode)
// it sets on every request, or leaves as the client before set it to the same value; verbosity
// only when it asks for it. A body the client pointed to, and verbosity, are cleared when the
// handle comes back. The cookie engine goes with the handle only when it holds exactly the cookies
// of one cookie file as read (keptCookies); the next client uses it only when it names that same
// file, unchanged, and drops it otherwise. Anything else in the engine (cookies received, a jar,
// several files) is dropped when the handle comes back.
#pragma once

#include <curl/curl.h>

#include <memory>
#include <mutex>
#include <vector>

#include "CookieFileCache.h"
#include "HandleSlot.h"

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

  // An idle slot, or a new one (its handle null when libcurl cannot make one; the slot null when
  // there is no memory). The caller owns it alone until it gives it back.
  std::unique_ptr<HandleSlot> Take();
  // Takes a slot back, or frees it when it cannot be kept. keptCookies: the lines its cookie
  // engine holds and nothing else; null when the engine is off (cookieEngineOn false) or holds
  // anything else.
  void Give(std::unique_ptr<HandleSlot> slot, bool cookieEngineOn, std::shared_ptr<const CookieLines> keptCookies);
  // Frees the idle handles and every handle given back from now on: the settings they were made
  // for are no longer current.
  void Retire();

 private:
  const bool recycle_;
  std::mutex mutex_;
  bool retired_ = false;
  std::vector<std::unique_ptr<HandleSlot>> idle_;
};

// Turns the handle's cookie engine off and forgets its cookies and cookie files.
void DropCookieEngine(CURL* handle);

}  // namespace zrcurl
