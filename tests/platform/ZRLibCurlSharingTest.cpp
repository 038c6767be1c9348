#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ClientExchange.h"
#include "HttpsTestServer.h"

namespace platformtest {
namespace {

constexpr int kRequests = 5;

class ZRLibCurlSharing : public ClientTest, public testing::WithParamInterface<bool> {
 protected:
  HttpsTestServer server_{LocalCertificates()};
};

TEST_P(ZRLibCurlSharing, FreshClientsReuseTheConnectionOnlyWhenSharing) {
  const bool share = GetParam();
  ZRLibCurlOptions options = TrustingLocalCa();
  options.shareConnections = share;
  ZRLibCurlSetOptions(options);

  for (int i = 0; i < kRequests; ++i) ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/lun")).sent) << i;

  ASSERT_EQ(server_.Requests().size(), static_cast<size_t>(kRequests));
  EXPECT_EQ(server_.ConnectionCount(), share ? 1u : static_cast<size_t>(kRequests));
}

INSTANTIATE_TEST_SUITE_P(Modes, ZRLibCurlSharing, testing::Bool(), [](const testing::TestParamInfo<bool>& info) {
  return info.param ? "SharingOn" : "SharingOff";
});

using ZRLibCurlSharingChange = ZRLibCurlSharing;

TEST_F(ZRLibCurlSharingChange, NewOptionsStartAFreshPoolAndKeepClientsInFlightWorking) {
  ZRLibCurlSetOptions(TrustingLocalCa());
  ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/before")).sent);

  ZRLibCurl inFlight;
  ASSERT_TRUE(inFlight.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
  ZRLibCurlSetOptions(TrustingLocalCa());  // the client above still holds the old pool
  EXPECT_TRUE(inFlight.ZRLibCurlSendHttpReq(HTTP_REQ_GET, server_.Url("/old-pool").c_str(), nullptr, 0, false,
                                            nullptr));
  ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/new-pool")).sent);

  EXPECT_EQ(server_.Requests().size(), 3u);
  EXPECT_EQ(server_.ConnectionCount(), 2u) << "the old pool's connection, then one of the new pool";
}

TEST_F(ZRLibCurlSharingChange, ManyThreadsSendThroughOneShare) {
  ZRLibCurlSetOptions(TrustingLocalCa());
  constexpr int kThreads = 4;
  constexpr int kEach = 25;
  std::atomic<int> succeeded{0};
  std::vector<std::thread> senders;
  for (int t = 0; t < kThreads; ++t) {
    senders.emplace_back([&, t] {
      for (int i = 0; i < kEach; ++i) {
        const std::string body = "{\"thread\":" + std::to_string(t) + ",\"i\":" + std::to_string(i) + "}";
        const Exchange exchange = SendOnce(HTTP_REQ_POST, server_.Url("/t" + std::to_string(t)), body);
        succeeded += exchange.sent && exchange.body == "{\"path\":\"/t" + std::to_string(t) + "\"}";
      }
    });
  }
  for (std::thread& sender : senders) sender.join();

  EXPECT_EQ(succeeded.load(), kThreads * kEach);
  EXPECT_EQ(server_.Requests().size(), static_cast<size_t>(kThreads * kEach));
  EXPECT_LE(server_.ConnectionCount(), static_cast<size_t>(kThreads)) << "idle pooled connections are reused";
}

}  // namespace
}  // namespace platformtest
