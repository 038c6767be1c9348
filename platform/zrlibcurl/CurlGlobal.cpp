#include "CurlGlobal.h"

#include <curl/curl.h>

#include <mutex>

namespace zrcurl {

void EnsureCurlGlobalInit() {
  static std::once_flag once;
  // Never cleaned up: clients may live until the very end of the process.
  std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

}  // namespace zrcurl
