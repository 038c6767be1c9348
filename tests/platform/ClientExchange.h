// One request through a fresh ZRLibCurl, the way the transport sends it, for the client tests.
#pragma once

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

// Client settings are process-wide: every test starts from its own and leaves the defaults.
class ClientTest : public testing::Test {
 protected:
  void TearDown() override { ZRLibCurlSetOptions(ZRLibCurlOptions()); }
};

}  // namespace platformtest
