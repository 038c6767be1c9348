#include "HandlePool.h"

#include <new>
#include <utility>

namespace zrcurl {
namespace {

constexpr size_t kKeptBodyBytes = 64 * 1024;

// Clears what points into the client that used the handle (the body it sent) and the verbosity it
// chose, so that an idle handle refers to nothing freed and the next client starts quiet. The
// header list, body and error buffers are the slot's and stay valid.
void ForgetClient(HandleSlot& slot) {
  slot.receiver = nullptr;
  if (slot.hasPostFields) {
    curl_easy_setopt(slot.handle, CURLOPT_POSTFIELDS, static_cast<char*>(nullptr));  // makes it a POST
    slot.plainGet = false;
  }
  if (slot.verbose) {
    curl_easy_setopt(slot.handle, CURLOPT_DEBUGFUNCTION, static_cast<curl_debug_callback>(nullptr));
    curl_easy_setopt(slot.handle, CURLOPT_VERBOSE, 0L);
  }
  slot.hasPostFields = false;
  slot.verbose = false;
  slot.headers.Clear();
  slot.cookieFiles.clear();
  slot.cookieLines.clear();
  // The room of an ordinary answer stays for the next one; a large one goes back now.
  if (slot.body.capacity() > kKeptBodyBytes) {
    std::string().swap(slot.body);
  } else {
    slot.body.clear();
  }
  slot.errorText[0] = '\0';
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

HandlePool::~HandlePool() = default;

std::unique_ptr<HandleSlot> HandlePool::Take() {
  if (recycle_) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!idle_.empty()) {
      std::unique_ptr<HandleSlot> slot = std::move(idle_.back());  // the most recently used one, still warm
      idle_.pop_back();
      return slot;
    }
  }
  std::unique_ptr<HandleSlot> slot(new (std::nothrow) HandleSlot);
  if (slot) slot->handle = curl_easy_init();
  return slot;
}

void HandlePool::Give(std::unique_ptr<HandleSlot> slot, bool cookieEngineOn,
                      std::shared_ptr<const CookieLines> keptCookies) {
  if (!slot || !slot->handle) return;
  if (recycle_) {
    ForgetClient(*slot);
    if (cookieEngineOn && !keptCookies) DropCookieEngine(slot->handle);
    slot->keptCookies = std::move(keptCookies);
    std::lock_guard<std::mutex> lock(mutex_);
    if (!retired_ && idle_.size() < kMaxIdle) {
      idle_.push_back(std::move(slot));  // within the capacity reserved up front: cannot throw
      return;
    }
  }
  // Freed here, outside the lock.
}

void HandlePool::Retire() {
  std::vector<std::unique_ptr<HandleSlot>> idle;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    retired_ = true;
    idle.swap(idle_);
  }
}

}  // namespace zrcurl
