// Fresh clients share connections, and a change of settings starts a fresh pool.
#include <vector>

#include <gtest/gtest.h>

#include "ClientExchange.h"
#include "HttpsTestServer.h"

namespace platformtest {
namespace {

class ZRLibCurlSharing : public ClientTest {
 protected:
  HttpsTestServer server_{LocalCertificates()};
};

// The connection count grows by the given number with each round of three requests.
TEST_F(ZRLibCurlSharing, FreshClientsReuseTheConnectionOnlyWhenSharing) {
  ZRLibCurlOptions unshared = TrustingLocalCa();
  unshared.shareConnections = false;
  const std::pair<ZRLibCurlOptions, size_t> rounds[] = {{TrustingLocalCa(), 1}, {unshared, 4}, {TrustingLocalCa(), 5}};
  for (const auto& [options, connections] : rounds) {
    ZRLibCurlSetOptions(options);
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/lun")).sent);
    EXPECT_EQ(server_.ConnectionCount(), connections);
  }
}

TEST_F(ZRLibCurlSharing, NewOptionsKeepClientsInFlightWorking) {
  ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/before")).sent);
  ZRLibCurl inFlight;
  ASSERT_TRUE(inFlight.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
  ZRLibCurlSetOptions(TrustingLocalCa());  // the client above still holds the old pool
  EXPECT_TRUE(inFlight.ZRLibCurlSendHttpReq(HTTP_REQ_GET, server_.Url("/old-pool").c_str(), nullptr, 0, false, nullptr));
  ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/new-pool")).sent);
  EXPECT_EQ(server_.ConnectionCount(), 2u) << "the old pool's connection, then one of the new pool";
}

}  // namespace
}  // namespace platformtest
