#include "HandlePool.h"

namespace zrcurl {
namespace {

// Back to a handle no client has touched. curl_easy_reset forgets the options but keeps the
// cookie engine with its cookies, and it drops the list of cookie files (kept after a transfer)
// without freeing it. So first the jar, if one is set, is written, as curl_easy_cleanup would;
// then a null cookie file frees the list and the engine; then the options are reset.
void Scrub(CURL* handle) {
  curl_easy_setopt(handle, CURLOPT_COOKIELIST, "FLUSH");
  curl_easy_setopt(handle, CURLOPT_COOKIEFILE, static_cast<char*>(nullptr));
  curl_easy_reset(handle);
}

}  // namespace

HandlePool::HandlePool(bool recycle) : recycle_(recycle) {
  if (recycle_) idle_.reserve(kMaxIdle);
}

HandlePool::~HandlePool() {
  for (CURL* handle : idle_) curl_easy_cleanup(handle);
}

CURL* HandlePool::Take() {
  if (recycle_) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!idle_.empty()) {
      CURL* handle = idle_.back();  // the most recently used one, still warm in the caches
      idle_.pop_back();
      return handle;
    }
  }
  return curl_easy_init();
}

void HandlePool::Give(CURL* handle) {
  if (!handle) return;
  if (recycle_) {
    Scrub(handle);
    std::lock_guard<std::mutex> lock(mutex_);
    if (!retired_ && idle_.size() < kMaxIdle) {
      idle_.push_back(handle);  // within the capacity reserved up front: cannot throw
      return;
    }
  }
  curl_easy_cleanup(handle);
}

void HandlePool::Retire() {
  std::vector<CURL*> idle;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    retired_ = true;
    idle.swap(idle_);
  }
  for (CURL* handle : idle) curl_easy_cleanup(handle);
}

}  // namespace zrcurl
