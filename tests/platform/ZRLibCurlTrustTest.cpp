#include <functional>
#include <optional>

#include <gtest/gtest.h>

#include "ClientExchange.h"
#include "HttpsTestServer.h"
#include "LogCapture.h"

namespace platformtest {
namespace {

struct TrustCase {
  const char* name;
  const arraysim::CertificateFiles& (*serverCertificates)();
  std::function<void(ZRLibCurlOptions&)> configure;
  bool accepted;
  const char* loggedReason;  // in a client log line when refused
};

void PrintTo(const TrustCase& trustCase, std::ostream* out) { *out << trustCase.name; }

std::string CaseName(const testing::TestParamInfo<TrustCase>& info) { return info.param.name; }

class ZRLibCurlTrust : public testing::TestWithParam<TrustCase> {
 protected:
  // Fresh settings close the pooled connection first, so the server stops without waiting for it.
  void TearDown() override {
    ZRLibCurlSetOptions(ZRLibCurlOptions());
    server_.reset();
  }
  std::optional<HttpsTestServer> server_;
};

TEST_P(ZRLibCurlTrust, AcceptsOnlyServersTheSettingsTrust) {
  const TrustCase& trustCase = GetParam();
  HttpsTestServer& server = server_.emplace(trustCase.serverCertificates());
  ZRLibCurlOptions options;
  trustCase.configure(options);
  ZRLibCurlSetOptions(options);
  zrtest::LogCapture log;

  const Exchange exchange = SendOnce(HTTP_REQ_GET, server.Url("/system/"));

  EXPECT_EQ(exchange.sent, trustCase.accepted) << log.Dump();
  if (trustCase.accepted) {
    EXPECT_EQ(exchange.status, 200);
    EXPECT_EQ(server.Requests().size(), 1u);
  } else {
    EXPECT_EQ(exchange.status, 0);
    EXPECT_EQ(exchange.body, "");
    EXPECT_TRUE(server.Requests().empty()) << "a refused server must not see the request";
    EXPECT_TRUE(log.ContainsLineWith(-1, trustCase.loggedReason)) << log.Dump();
  }
}

INSTANTIATE_TEST_SUITE_P(
    Servers, ZRLibCurlTrust,
    testing::Values(
        TrustCase{"UnknownCaRefusedBySystemStore", LocalCertificates, [](ZRLibCurlOptions&) {}, false,
                  "certificate problem"},
        TrustCase{"AcceptedWithItsCaGiven", LocalCertificates,
                  [](ZRLibCurlOptions& o) { o.caBundlePath = LocalCertificates().caCertPath; }, true, ""},
        TrustCase{"RefusedWithAnotherCaGiven", LocalCertificates,
                  [](ZRLibCurlOptions& o) { o.caBundlePath = OtherCertificates().caCertPath; }, false,
                  "certificate problem"},
        TrustCase{"AcceptedWithTheRightPin", LocalCertificates,
                  [](ZRLibCurlOptions& o) {
                    o.caBundlePath = LocalCertificates().caCertPath;
                    o.pinnedPublicKey = arraysim::PublicKeyPin(LocalCertificates().serverCertPath);
                  },
                  true, ""},
        TrustCase{"RefusedWithAWrongPin", LocalCertificates,
                  [](ZRLibCurlOptions& o) {
                    o.caBundlePath = LocalCertificates().caCertPath;
                    o.pinnedPublicKey = arraysim::PublicKeyPin(OtherCertificates().serverCertPath);
                  },
                  false, "pinned public key"},
        TrustCase{"RefusedForAnotherAddress", ForeignAddressCertificates,
                  [](ZRLibCurlOptions& o) { o.caBundlePath = ForeignAddressCertificates().caCertPath; }, false,
                  "subject name"},
        TrustCase{"RefusedWhenTheCaBundleIsMissing", LocalCertificates,
                  [](ZRLibCurlOptions& o) { o.caBundlePath = "/nonexistent/ca.pem"; }, false,
                  "cannot load the CA bundle /nonexistent/ca.pem"},
        TrustCase{"AcceptedUnverifiedOnlyByOptIn", LocalCertificates,
                  [](ZRLibCurlOptions& o) { o.verifyPeer = false; }, true, ""}),
    CaseName);

TEST(ZRLibCurlTrustWarning, SwitchedOffVerificationWarnsForEveryClient) {
  ZRLibCurlOptions options;
  options.verifyPeer = false;
  ZRLibCurlSetOptions(options);
  zrtest::LogCapture log;
  for (int i = 0; i < 2; ++i) {
    ZRLibCurl client;
    ASSERT_TRUE(client.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
  }
  ZRLibCurlSetOptions(ZRLibCurlOptions());
  int warnings = 0;
  for (const tklog::LogLine& line : log.Lines()) {
    warnings += line.level <= 0 && line.text.find("verification is switched off") != std::string::npos;
  }
  EXPECT_EQ(warnings, 2) << log.Dump();
}

// Connections verified under one set of trust settings must not serve clients made under the
// next: a pooled connection would skip the new pin check.
TEST(ZRLibCurlTrustChange, NewSettingsDoNotReusePooledConnections) {
  HttpsTestServer server(LocalCertificates());
  ZRLibCurlSetOptions(TrustingLocalCa());
  ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server.Url("/first")).sent);

  ZRLibCurlOptions pinned = TrustingLocalCa();
  pinned.pinnedPublicKey = arraysim::PublicKeyPin(OtherCertificates().serverCertPath);
  ZRLibCurlSetOptions(pinned);
  EXPECT_FALSE(SendOnce(HTTP_REQ_GET, server.Url("/second")).sent);
  ZRLibCurlSetOptions(ZRLibCurlOptions());
  EXPECT_EQ(server.Requests().size(), 1u);
}

}  // namespace
}  // namespace platformtest
