#include "TransportSecurity.h"

#include <openssl/ssl.h>

#include <string>

#include "ClientSettings.h"
#include "CurlLog.h"

namespace zrcurl {
namespace {

// Called by libcurl for each new TLS context: hands it the shared store instead of a bundle
// loaded afresh for this one connection.
CURLcode UseSharedTrustStore(CURL*, void* sslContext, void* trustStore) try {
  std::string error;
  X509_STORE* store = static_cast<TrustStore*>(trustStore)->Get(error);
  if (!store) {
    Log(kErrorLevel, "No trusted certificates: %s", error.c_str());
    return CURLE_SSL_CACERT_BADFILE;
  }
  X509_STORE_up_ref(store);  // the context takes one reference and frees it with itself
  SSL_CTX_set_cert_store(static_cast<SSL_CTX*>(sslContext), store);
  return CURLE_OK;
} catch (...) {
  return CURLE_SSL_CACERT_BADFILE;  // nothing may unwind through libcurl
}

bool ApplyTrust(CURL* handle, ClientSettings& settings) {
  const ZRLibCurlOptions& options = settings.options;
  bool ok = true;
  // libcurl must not load a bundle of its own per connection; the shared store replaces it.
  ok &= curl_easy_setopt(handle, CURLOPT_CAINFO, static_cast<char*>(nullptr)) == CURLE_OK;
  ok &= curl_easy_setopt(handle, CURLOPT_CAPATH, static_cast<char*>(nullptr)) == CURLE_OK;
  if (options.verifyPeer) {
    ok &= curl_easy_setopt(handle, CURLOPT_SSL_VERIFYPEER, 1L) == CURLE_OK;
    ok &= curl_easy_setopt(handle, CURLOPT_SSL_VERIFYHOST, 2L) == CURLE_OK;
    ok &= curl_easy_setopt(handle, CURLOPT_SSL_CTX_FUNCTION, &UseSharedTrustStore) == CURLE_OK;
    ok &= curl_easy_setopt(handle, CURLOPT_SSL_CTX_DATA, &settings.trust) == CURLE_OK;
  } else {
    ok &= curl_easy_setopt(handle, CURLOPT_SSL_VERIFYPEER, 0L) == CURLE_OK;
    ok &= curl_easy_setopt(handle, CURLOPT_SSL_VERIFYHOST, 0L) == CURLE_OK;
  }
  if (!options.pinnedPublicKey.empty()) {
    ok &= curl_easy_setopt(handle, CURLOPT_PINNEDPUBLICKEY, options.pinnedPublicKey.c_str()) == CURLE_OK;
  }
  return ok;
}

}  // namespace

void WarnOfSettings(const ClientSettings& settings) {
  if (!settings.options.verifyPeer) {
    Log(kWarningLevel, "TLS certificate verification is switched off: the server's identity is not checked.");
  }
}

bool ApplyClientSettings(CURL* handle, ClientSettings& settings) {
  const ZRLibCurlOptions& options = settings.options;
  bool ok = ApplyTrust(handle, settings);
  ok &= curl_easy_setopt(handle, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2)) == CURLE_OK;
  ok &= curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, options.connectTimeoutMs) == CURLE_OK;
  ok &= curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, options.totalTimeoutMs) == CURLE_OK;
  ok &= curl_easy_setopt(handle, CURLOPT_LOW_SPEED_LIMIT, options.lowSpeedBytesPerSecond) == CURLE_OK;
  ok &= curl_easy_setopt(handle, CURLOPT_LOW_SPEED_TIME, options.lowSpeedSeconds) == CURLE_OK;
  // Signals cannot be used for time-outs in a threaded host.
  ok &= curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L) == CURLE_OK;
  // No proxy from the environment: the settings here are the only configuration.
  ok &= curl_easy_setopt(handle, CURLOPT_PROXY, "") == CURLE_OK;
  ok &= curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "https") == CURLE_OK;
  if (settings.share && settings.share->Handle()) {
    ok &= curl_easy_setopt(handle, CURLOPT_SHARE, settings.share->Handle()) == CURLE_OK;
  }
  return ok;
}

}  // namespace zrcurl
