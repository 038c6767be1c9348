#include "TrustStore.h"

#include <curl/curl.h>
#include <openssl/err.h>
#include <openssl/x509.h>
#include <openssl/x509_vfy.h>

#include <utility>

namespace zrcurl {
namespace {

std::string OpenSslReason() {
  char text[256] = "unknown reason";
  const unsigned long code = ERR_peek_last_error();
  if (code != 0) ERR_error_string_n(code, text, sizeof text);
  ERR_clear_error();
  return text;
}

// The bundle file and directory libcurl was built to trust, so that the shared store trusts
// exactly what a plain libcurl handle would.
std::pair<std::string, std::string> SystemLocations() {
  std::string file = X509_get_default_cert_file();
  std::string directory = X509_get_default_cert_dir();
  if (CURL* probe = curl_easy_init()) {
    char* text = nullptr;
    if (curl_easy_getinfo(probe, CURLINFO_CAINFO, &text) == CURLE_OK && text) file = text;
    text = nullptr;
    if (curl_easy_getinfo(probe, CURLINFO_CAPATH, &text) == CURLE_OK && text) directory = text;
    curl_easy_cleanup(probe);
  }
  return {file, directory};
}

}  // namespace

TrustStore::TrustStore(std::string caBundlePath) : caBundlePath_(std::move(caBundlePath)) {}

TrustStore::~TrustStore() { X509_STORE_free(store_); }

X509_STORE* TrustStore::Get(std::string& error) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!store_) store_ = Load(error);
  return store_;
}

X509_STORE* TrustStore::Load(std::string& error) const {
  X509_STORE* store = X509_STORE_new();
  if (!store) {
    error = "cannot make a certificate store: " + OpenSslReason();
    return nullptr;
  }
  // As libcurl does: an intermediate in the bundle may serve as trust anchor.
  X509_STORE_set_flags(store, X509_V_FLAG_PARTIAL_CHAIN);

  if (!caBundlePath_.empty()) {
    if (X509_STORE_load_file(store, caBundlePath_.c_str()) != 1) {
      error = "cannot load the CA bundle " + caBundlePath_ + ": " + OpenSslReason();
      X509_STORE_free(store);
      return nullptr;
    }
    return store;
  }

  const auto [file, directory] = SystemLocations();
  const bool fileLoaded = !file.empty() && X509_STORE_load_file(store, file.c_str()) == 1;
  // The directory is only looked into when a certificate is not found in the bundle.
  const bool directoryAdded = !directory.empty() && X509_STORE_load_path(store, directory.c_str()) == 1;
  ERR_clear_error();
  if (!fileLoaded && !directoryAdded) {
    error = "cannot load the system CA store (" + file + ", " + directory + ")";
    X509_STORE_free(store);
    return nullptr;
  }
  return store;
}

}  // namespace zrcurl
