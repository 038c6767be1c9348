#include "HandlePool.h"

#include <utility>

namespace zrcurl {
namespace {

// Clears what points into the client that used the handle (its buffers, its header list, its
// body), so that an idle handle refers to nothing freed. The next client sets its own.
void ForgetClient(CURL* handle) {
  curl_easy_setopt(handle, CURLOPT_WRITEDATA, static_cast<void*>(nullptr));
  curl_easy_setopt(handle, CURLOPT_ERRORBUFFER, static_cast<char*>(nullptr));
  curl_easy_setopt(handle, CURLOPT_HTTPHEADER, static_cast<curl_slist*>(nullptr));
  curl_easy_setopt(handle, CURLOPT_POSTFIELDS, static_cast<char*>(nullptr));
  curl_easy_setopt(handle, CURLOPT_DEBUGFUNCTION, static_cast<curl_debug_callback>(nullptr));
  curl_easy_setopt(handle, CURLOPT_VERBOSE, 0L);
}

}  // namespace

// curl_easy_reset would keep the cookie engine with its cookies; a null cookie file frees the
// list of cookie files (which libcurl keeps after a transfer) and the engine. The jar, if libcurl
// was given one, is written first, as curl_easy_cleanup would.
void DropCookieEngine(CURL* handle) {
  curl_easy_setopt(handle, CURLOPT_COOKIELIST, "FLUSH");
  curl_easy_setopt(handle, CURLOPT_COOKIEFILE, static_cast<char*>(nullptr));
}

HandlePool::HandlePool(bool recycle) : recycle_(recycle) {
  if (recycle_) idle_.reserve(kMaxIdle);
}

HandlePool::~HandlePool() {
  for (const PooledHandle& idle : idle_) curl_easy_cleanup(idle.handle);
}

PooledHandle HandlePool::Take() {
  if (recycle_) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!idle_.empty()) {
      PooledHandle handle = std::move(idle_.back());  // the most recently used one, still warm in the caches
      idle_.pop_back();
      return handle;
    }
  }
  return PooledHandle{curl_easy_init(), true, nullptr};
}

void HandlePool::Give(CURL* handle, bool cookieEngineOn, std::shared_ptr<const CookieLines> keptCookies) {
  if (!handle) return;
  if (recycle_) {
    ForgetClient(handle);
    if (cookieEngineOn && !keptCookies) DropCookieEngine(handle);
    std::lock_guard<std::mutex> lock(mutex_);
    if (!retired_ && idle_.size() < kMaxIdle) {
      // Within the capacity reserved up front: cannot throw.
      idle_.push_back(PooledHandle{handle, false, std::move(keptCookies)});
      return;
    }
  }
  curl_easy_cleanup(handle);
}

void HandlePool::Retire() {
  std::vector<PooledHandle> idle;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    retired_ = true;
    idle.swap(idle_);
  }
  for (const PooledHandle& handle : idle) curl_easy_cleanup(handle.handle);
}

}  // namespace zrcurl
