// One request through a fresh ZRLibCurl, the way the transport sends it, and the files around
// it, for the client tests.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "TestCertificateSet.h"
#include "ZRLibCurl.h"
#include "ZRLibCurlOptions.h"

namespace platformtest {

struct Exchange {
  bool sent = false;
  long status = 0;
  std::string body;
};

using HeaderSettings = std::vector<std::pair<_http_hdr_type_, std::string>>;

inline Exchange SendOnce(_http_req_type_ method, const std::string& url, const std::string& body = "",
                         const HeaderSettings& headers = {}) {
  ZRLibCurl client;
  Exchange exchange;
  if (!client.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr)) return exchange;
  for (const auto& [kind, value] : headers) {
    if (!client.ZRLibCurlAppendHeader(kind, value.c_str())) return exchange;
  }
  exchange.sent = client.ZRLibCurlSendHttpReq(method, url.c_str(), body.empty() ? nullptr : body.data(),
                                              body.size(), false, nullptr);
  unsigned long size = 0;
  if (const char* text = client.GetHttpResponse(size, false)) exchange.body.assign(text, size);
  exchange.status = client.GetHttpErrorCode();
  return exchange;
}

inline ZRLibCurlOptions TrustingLocalCa() {
  ZRLibCurlOptions options;
  options.caBundlePath = LocalCertificates().caCertPath;
  return options;
}

// One line of a Netscape cookie file.
inline std::string CookieLine(const std::string& name, const std::string& value, const std::string& domain = "127.0.0.1",
                              const std::string& path = "/", const std::string& expires = "0") {
  return domain + "\tFALSE\t" + path + "\tFALSE\t" + expires + "\t" + name + "\t" + value + "\n";
}

// Writes the file in place (same inode when it exists) and gives its path.
inline std::string WriteFile(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
  return path;
}

inline std::string Contents(const std::string& path) {
  std::ifstream in(path);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// Client settings are process-wide: every test starts trusting the local CA and leaves the defaults.
class ClientTest : public testing::Test {
 protected:
  void SetUp() override { ZRLibCurlSetOptions(TrustingLocalCa()); }
  void TearDown() override { ZRLibCurlSetOptions(ZRLibCurlOptions()); }
};

}  // namespace platformtest
