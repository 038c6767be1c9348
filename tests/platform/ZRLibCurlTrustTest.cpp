// Which servers a client accepts: verification is on unless switched off by opt-in, and
// connections verified under one set of trust settings never serve the next.
#include <functional>

#include <gtest/gtest.h>

#include "ClientExchange.h"
#include "HttpsTestServer.h"
#include "LogCapture.h"

namespace platformtest {
namespace {

class ZRLibCurlTrust : public ClientTest {};

TEST_F(ZRLibCurlTrust, AcceptsOnlyServersTheSettingsTrust) {
  using Configure = std::function<void(ZRLibCurlOptions&)>;
  const auto ca = [](const arraysim::CertificateFiles& files) {
    return [&files](ZRLibCurlOptions& o) { o.caBundlePath = files.caCertPath; };
  };
  const auto pinned = [](const arraysim::CertificateFiles& pin) {
    return [&pin](ZRLibCurlOptions& o) {
      o.caBundlePath = LocalCertificates().caCertPath;
      o.pinnedPublicKey = arraysim::PublicKeyPin(pin.serverCertPath);
    };
  };
  const struct {
    const arraysim::CertificateFiles& server;
    Configure configure;
    const char* refusal;  // in a client log line; nullptr: accepted
  } cases[] = {
      {LocalCertificates(), [](ZRLibCurlOptions&) {}, "certificate problem"},  // the system store
      {LocalCertificates(), ca(LocalCertificates()), nullptr},
      {LocalCertificates(), ca(OtherCertificates()), "certificate problem"},
      {LocalCertificates(), pinned(LocalCertificates()), nullptr},
      {LocalCertificates(), pinned(OtherCertificates()), "pinned public key"},
      {ForeignAddressCertificates(), ca(ForeignAddressCertificates()), "subject name"},
      {LocalCertificates(), [](ZRLibCurlOptions& o) { o.caBundlePath = "/nonexistent/ca.pem"; },
       "cannot load the CA bundle /nonexistent/ca.pem"},
      {LocalCertificates(), [](ZRLibCurlOptions& o) { o.verifyPeer = false; }, nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    ZRLibCurlOptions options;
    c.configure(options);
    ZRLibCurlSetOptions(options);
    HttpsTestServer server(c.server);
    zrtest::LogCapture log;
    const Exchange exchange = SendOnce(HTTP_REQ_GET, server.Url("/system/"));
    EXPECT_EQ(exchange.sent, c.refusal == nullptr) << log.Dump();
    EXPECT_EQ(exchange.status, c.refusal == nullptr ? 200 : 0);
    EXPECT_EQ(server.Requests().size(), c.refusal == nullptr ? 1u : 0u) << "a refused server must not see the request";
    if (c.refusal != nullptr) {
      EXPECT_TRUE(log.ContainsLineWith(-1, c.refusal)) << log.Dump();
    }
    ZRLibCurlSetOptions(ZRLibCurlOptions());  // closes the pooled connection before the server stops
  }
}

TEST_F(ZRLibCurlTrust, SwitchedOffVerificationWarnsForEveryClient) {
  ZRLibCurlOptions options;
  options.verifyPeer = false;
  ZRLibCurlSetOptions(options);
  zrtest::LogCapture log;
  for (int i = 0; i < 2; ++i) ZRLibCurl().ZRLibCurlInit("Content-Type: application/json", true, true, nullptr);
  int warnings = 0;
  for (const tklog::LogLine& line : log.Lines()) {
    warnings += line.level <= 0 && line.text.find("verification is switched off") != std::string::npos;
  }
  EXPECT_EQ(warnings, 2) << log.Dump();
}

}  // namespace
}  // namespace platformtest
