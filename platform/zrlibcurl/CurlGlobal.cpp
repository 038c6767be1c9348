#include "CurlGlobal.h"

#include <curl/curl.h>

namespace zrcurl {

void EnsureCurlGlobalInit() {
  // Never cleaned up: clients may live until the very end of the process. A function-local
  // static, so that every later call is one load, not a pthread_once.
  static const CURLcode initialised = curl_global_init(CURL_GLOBAL_DEFAULT);
  (void)initialised;
}

}  // namespace zrcurl
