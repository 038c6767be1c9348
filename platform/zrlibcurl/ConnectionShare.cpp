#include "ConnectionShare.h"

#include "CurlGlobal.h"
#include "CurlLog.h"

namespace zrcurl {

ConnectionShare::ConnectionShare() {
  EnsureCurlGlobalInit();
  share_ = curl_share_init();
  if (!share_) {
    Log(kFailureLevel, "Cannot make a connection share; clients will not share connections.");
    return;
  }
  curl_share_setopt(share_, CURLSHOPT_LOCKFUNC, &ConnectionShare::Lock);
  curl_share_setopt(share_, CURLSHOPT_UNLOCKFUNC, &ConnectionShare::Unlock);
  curl_share_setopt(share_, CURLSHOPT_USERDATA, this);
  for (curl_lock_data data : {CURL_LOCK_DATA_DNS, CURL_LOCK_DATA_SSL_SESSION}) {
    const CURLSHcode result = curl_share_setopt(share_, CURLSHOPT_SHARE, data);
    if (result != CURLSHE_OK) {
      Log(kFailureLevel, "Cannot share data kind %d: %s", static_cast<int>(data), curl_share_strerror(result));
    }
  }
}

ConnectionShare::~ConnectionShare() {
  if (share_) curl_share_cleanup(share_);
}

std::mutex& ConnectionShare::MutexFor(curl_lock_data data) {
  const size_t index = static_cast<size_t>(data);
  return mutexes_[index < mutexes_.size() ? index : 0];
}

void ConnectionShare::Lock(CURL*, curl_lock_data data, curl_lock_access, void* self) {
  static_cast<ConnectionShare*>(self)->MutexFor(data).lock();
}

void ConnectionShare::Unlock(CURL*, curl_lock_data data, void* self) {
  static_cast<ConnectionShare*>(self)->MutexFor(data).unlock();
}

}  // namespace zrcurl
