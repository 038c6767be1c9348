// Clients made one after another, or on several threads at once, run on recycled libcurl handles:
// nothing one client set, sent or received may show in the next one.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ClientExchange.h"
#include "HttpsTestServer.h"
#include "LogCapture.h"
#include "LoopbackPorts.h"
#include "zrlibcurl/CookieFileCache.h"

namespace platformtest {
namespace {

class ZRLibCurlRecycling : public ClientTest {
 protected:
  HttpsTestServer server_{LocalCertificates()};
};

std::string calledBack;

unsigned long CallBack(void* data, unsigned long size, unsigned long count, void*) {
  calledBack.append(static_cast<const char*>(data), size * count);
  return size * count;
}

TEST_F(ZRLibCurlRecycling, NothingOfOneClientReachesTheNext) {
  const std::string alpha = WriteFile(ScratchDirectory() + "/recycling-alpha", CookieLine("a", "alpha"));
  const std::string beta = WriteFile(ScratchDirectory() + "/recycling-beta", CookieLine("b", "beta"));
  const std::string jar = ScratchDirectory() + "/recycling-jar";
  calledBack.clear();
  {
    ZRLibCurl first;
    ASSERT_TRUE(first.ZRLibCurlInit("Content-Type: application/json", true, true, &CallBack));
    for (const auto& [kind, value] : HeaderSettings{{HTTP_HDR_CUSTOM, "iBaseToken: first"},
                                                    {HTTP_HDR_ACCEPT, "text/plain"},
                                                    {HTTP_HDR_CONTENT_TYPE, "text/xml"},
                                                    {HTTP_HDR_COOKIE_FILE, alpha},
                                                    {HTTP_HDR_COOKIE_JAR, jar}}) {
      ASSERT_TRUE(first.ZRLibCurlAppendHeader(kind, value.c_str()));
    }
    // Verbose, and the answer sets a cookie that the first client's cookie engine takes in.
    ASSERT_TRUE(first.ZRLibCurlSendHttpReq(HTTP_REQ_PUT, server_.Url("/login/received").c_str(), "{\"x\":1}", 7,
                                           true, nullptr));
  }
  EXPECT_EQ(calledBack, "{\"path\":\"/login/received\"}");
  zrtest::LogCapture log;
  ZRLibCurl second;
  ASSERT_TRUE(second.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
  unsigned long size = 99;
  EXPECT_EQ(second.GetHttpResponse(size, false), nullptr);
  EXPECT_EQ(second.GetHttpErrorCode(), 0);
  ASSERT_TRUE(second.ZRLibCurlSendHttpReq(HTTP_REQ_GET, server_.Url("/plain").c_str(), nullptr, 0, false, nullptr));
  const char* body = second.GetHttpResponse(size, false);
  EXPECT_EQ(std::string(body ? body : "", size), "{\"path\":\"/plain\"}") << "the body goes to this client";
  EXPECT_EQ(calledBack, "{\"path\":\"/login/received\"}");
  EXPECT_FALSE(log.ContainsLineWith(7, "GET /plain")) << "verbose output was the first client's choice";
  second.ZRLibCurlDeInit();
  EXPECT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/login/third"), "", {{HTTP_HDR_COOKIE_FILE, beta}}).sent);
  const Exchange failed = SendOnce(HTTP_REQ_GET, "https://127.0.0.1:" + std::to_string(ClosedPort()) + "/");
  EXPECT_EQ(std::to_string(failed.sent) + "|" + std::to_string(failed.status) + "|" + failed.body, "0|0|");

  const std::vector<RecordedRequest> requests = server_.Requests();
  ASSERT_EQ(requests.size(), 3u);
  EXPECT_EQ(requests[0].Header("Cookie") + "|" + requests[0].Header("iBaseToken"), "a=alpha|first");
  const RecordedRequest& plain = requests[1];
  for (const char* header : {"Content-Length", "iBaseToken", "Cookie"}) EXPECT_FALSE(plain.HasHeader(header)) << header;
  EXPECT_EQ(plain.Header("Content-Type"), "application/json");
  EXPECT_NE(plain.Header("Accept"), "text/plain");
  EXPECT_EQ(requests[2].Header("Cookie"), "b=beta") << "neither the first file's cookie nor the one received";
  const std::string saved = Contents(jar);
  EXPECT_NE(saved.find("received"), std::string::npos) << saved;
  EXPECT_EQ(saved.find("third"), std::string::npos) << "only the client that named the jar writes it";
}

// A handle keeps the header list of the client before while the lines stay the same; each row is
// one client after the one above, on the same recycled handle.
TEST_F(ZRLibCurlRecycling, EachClientSendsItsOwnHeaderLines) {
  const struct {
    const char* token;   // nullptr: no token line
    const char* accept;  // nullptr: none named
    const char* sent;    // iBaseToken|Accept as received, "-" for none
  } clients[] = {{"a", nullptr, "a|*/*"},          {"a", nullptr, "a|*/*"}, {"b", nullptr, "b|*/*"},
                 {nullptr, nullptr, "-|*/*"},      {"b", "text/plain", "b|text/plain"},
                 {"b", nullptr, "b|*/*"}};
  for (const auto& client : clients) {
    HeaderSettings headers;
    if (client.token) headers.emplace_back(HTTP_HDR_CUSTOM, std::string("iBaseToken: ") + client.token);
    if (client.accept) headers.emplace_back(HTTP_HDR_ACCEPT, client.accept);
    ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/headers"), "", headers).sent);
    const RecordedRequest sent = server_.Requests().back();
    const auto shown = [&sent](const char* name) { return sent.HasHeader(name) ? sent.Header(name) : "-"; };
    EXPECT_EQ(shown("iBaseToken") + "|" + shown("Accept"), client.sent);
  }
}

// A handle goes to the next client with its cookie engine only while the engine holds what one
// cookie file says; each row is one client after the one above, on the same recycled handle.
TEST_F(ZRLibCurlRecycling, AKeptCookieEngineHoldsWhatTheFileSays) {
  struct TrustedAtOnce {  // lines read at once are kept, as lines of a file written long ago
    TrustedAtOnce() { zrcurl::SetCookieFileSettleTime(std::chrono::nanoseconds(0)); }
    ~TrustedAtOnce() { zrcurl::SetCookieFileSettleTime(std::chrono::seconds(1)); }
  } trustedAtOnce;
  const std::string alpha = WriteFile(ScratchDirectory() + "/kept-alpha", CookieLine("session", "alpha"));
  const std::string beta = WriteFile(ScratchDirectory() + "/kept-beta", CookieLine("b", "beta"));
  const struct {
    const char* path;
    std::string cookieFile;  // empty: none named
    const char* rewriteAlphaFirst;
    const char* cookie;  // the Cookie header sent; "-" for none
  } clients[] = {
      {"/login/received", alpha, nullptr, "session=alpha"},  // the answer sets session=received
      {"/a", alpha, nullptr, "session=alpha"},
      {"/b", alpha, nullptr, "session=alpha"},
      {"/c", "", nullptr, "-"},
      {"/d", alpha, nullptr, "session=alpha"},
      {"/e", beta, nullptr, "b=beta"},
      {"/f", alpha, nullptr, "session=alpha"},
      {"/g", alpha, "delta", "session=delta"},
  };
  for (const auto& client : clients) {
    if (client.rewriteAlphaFirst) WriteFile(alpha, CookieLine("session", client.rewriteAlphaFirst));
    HeaderSettings headers;
    if (!client.cookieFile.empty()) headers.emplace_back(HTTP_HDR_COOKIE_FILE, client.cookieFile);
    EXPECT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url(client.path), "", headers).sent) << client.path;
    const RecordedRequest sent = server_.Requests().back();
    EXPECT_EQ(sent.path + " " + (sent.HasHeader("Cookie") ? sent.Header("Cookie") : "-"),
              std::string(client.path) + " " + client.cookie);
  }
}

// More threads than handles are kept idle, every other request without token and cookie file, so
// that handles go from thread to thread and from a client with cookies to one without.
TEST_F(ZRLibCurlRecycling, ClientsOnManyThreadsKeepTheirOwnHeadersAndCookies) {
  constexpr int kThreads = 10, kEach = 12;
  std::atomic<int> answered{0};
  std::vector<std::thread> senders;
  for (int t = 0; t < kThreads; ++t) {
    senders.emplace_back([&, t] {
      const std::string name = "t" + std::to_string(t);
      const HeaderSettings session = {{HTTP_HDR_CUSTOM, "iBaseToken: " + name},
                                      {HTTP_HDR_COOKIE_FILE, WriteFile(ScratchDirectory() + "/thread-" + name, CookieLine(name, "v"))}};
      for (int i = 0; i < kEach; ++i) {
        const std::string path = "/" + name + (i % 2 ? "/plain/" : "/session/") + std::to_string(i);
        const Exchange exchange = i % 2 ? SendOnce(HTTP_REQ_POST, server_.Url(path), "{}")
                                        : SendOnce(HTTP_REQ_GET, server_.Url(path), "", session);
        answered += exchange.sent && exchange.body == "{\"path\":\"" + path + "\"}";
      }
    });
  }
  for (std::thread& sender : senders) sender.join();
  EXPECT_EQ(answered.load(), kThreads * kEach);
  for (const RecordedRequest& request : server_.Requests()) {
    const std::string thread = request.path.substr(1, request.path.find('/', 1) - 1);
    const bool withSession = request.path.find("/session/") != std::string::npos;
    EXPECT_EQ(request.Header("iBaseToken") + "|" + request.Header("Cookie"),
              withSession ? thread + "|" + thread + "=v" : "|")
        << request.path;
  }
}

}  // namespace
}  // namespace platformtest
