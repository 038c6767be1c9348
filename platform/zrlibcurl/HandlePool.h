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
#include <string>
#include <vector>

#include "CookieFileCache.h"
#include "RequestHeaders.h"

namespace zrcurl {

// Paths named one after another, each kept with its room when the list is cleared, so that the
// next client naming the same files copies them into memory it has.
class PathList {
 public:
  void add(const char* path) {
    if (used_ == paths_.size()) paths_.emplace_back();
    paths_[used_++].assign(path);
  }
  void clear() { used_ = 0; }
  bool empty() const { return used_ == 0; }
  const std::string* begin() const { return paths_.data(); }
  const std::string* end() const { return paths_.data() + used_; }

 private:
  std::vector<std::string> paths_;
  size_t used_ = 0;
};

// A libcurl handle with what one client leaves for the next on it: the room of its buffers and
// header lines, the header list libcurl was given, and the places libcurl writes bodies and error
// texts to, set on the handle once, when it is made. Owned by one client at a time.
struct HandleSlot {
  HandleSlot() = default;
  ~HandleSlot();  // frees the handle, then the list it used
  HandleSlot(const HandleSlot&) = delete;
  HandleSlot& operator=(const HandleSlot&) = delete;

  CURL* handle = nullptr;
  // Made for this client: the generation's settings are still to be applied.
  bool fresh = true;
  // The cookie lines the handle's cookie engine holds, and nothing else; null: no engine.
  std::shared_ptr<const CookieLines> keptCookies;
  // The client the handle's bodies go to (CURLOPT_WRITEDATA is the slot); null while idle.
  void* receiver = nullptr;
  char errorText[CURL_ERROR_SIZE] = {};
  // CURLOPT_FAILONERROR as last set; -1 before the first client.
  long failOnError = -1;
  // The handle is set verbose, or has a body of its client: to be cleared when it comes back.
  bool verbose = false;
  bool hasPostFields = false;
  bool plainGet = false;  // set for a GET without body by the last request
  RequestHeaders headers;
  curl_slist* sentHeaders = nullptr;  // the list the handle was given (the headers' own)
  std::string url;                    // the URL the handle was given
  PathList cookieFiles;  // named since the last request
  std::vector<std::shared_ptr<const CookieLines>> cookieLines;  // room for those files' lines
  std::string body;
};

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
