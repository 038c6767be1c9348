// The certificates a client trusts, loaded once and shared by every TLS handshake. Loading the
// system bundle costs milliseconds of CPU, far more than a handshake; libcurl would do it for
// each new connection.
#pragma once

#include <mutex>
#include <string>

typedef struct x509_store_st X509_STORE;

namespace zrcurl {

class TrustStore {
 public:
  // An empty path means the system store that libcurl would use by default.
  explicit TrustStore(std::string caBundlePath);
  ~TrustStore();
  TrustStore(const TrustStore&) = delete;
  TrustStore& operator=(const TrustStore&) = delete;

  // The loaded store, borrowed; null with the reason in error when it cannot be loaded. A failed
  // load is tried again on the next call, so a bundle that appears later is picked up.
  X509_STORE* Get(std::string& error);

 private:
  X509_STORE* Load(std::string& error) const;

  const std::string caBundlePath_;
  std::mutex mutex_;
  X509_STORE* store_ = nullptr;
};

}  // namespace zrcurl
