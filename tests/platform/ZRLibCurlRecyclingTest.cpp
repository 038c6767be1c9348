// Clients made one after another, or on several threads at once, run on recycled libcurl handles:
// nothing one client set, sent or received may show in the next one.
#include <atomic>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ClientExchange.h"
#include "HttpsTestServer.h"
#include "LogCapture.h"
#include "SilentListener.h"

namespace platformtest {
namespace {

std::string CookieLine(const std::string& name, const std::string& value) {
  return "127.0.0.1\tFALSE\t/\tFALSE\t0\t" + name + "\t" + value + "\n";
}

std::string WriteScratchFile(const std::string& name, const std::string& text) {
  const std::string path = ScratchDirectory() + "/" + name;
  std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
  return path;
}

std::string Contents(const std::string& path) {
  std::ifstream in(path);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

class ZRLibCurlRecycling : public ClientTest {
 protected:
  void SetUp() override { ZRLibCurlSetOptions(TrustingLocalCa()); }
  HttpsTestServer server_{LocalCertificates()};
};

std::string calledBack;

unsigned long CallBack(void* data, unsigned long size, unsigned long count, void*) {
  calledBack.append(static_cast<const char*>(data), size * count);
  return size * count;
}

TEST_F(ZRLibCurlRecycling, NothingOfOneClientReachesTheNext) {
  const std::string alpha = WriteScratchFile("recycling-alpha", CookieLine("a", "alpha"));
  const std::string beta = WriteScratchFile("recycling-beta", CookieLine("b", "beta"));
  calledBack.clear();
  {
    ZRLibCurl first;
    ASSERT_TRUE(first.ZRLibCurlInit("Content-Type: application/json", true, true, &CallBack));
    ASSERT_TRUE(first.ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, "iBaseToken: first"));
    ASSERT_TRUE(first.ZRLibCurlAppendHeader(HTTP_HDR_ACCEPT, "text/plain"));
    ASSERT_TRUE(first.ZRLibCurlAppendHeader(HTTP_HDR_CONTENT_TYPE, "text/xml"));
    ASSERT_TRUE(first.ZRLibCurlAppendHeader(HTTP_HDR_COOKIE_FILE, alpha.c_str()));
    // The answer sets a cookie, which the first client's cookie engine takes in.
    ASSERT_TRUE(first.ZRLibCurlSendHttpReq(HTTP_REQ_PUT, server_.Url("/login/received").c_str(), "{\"x\":1}", 7,
                                           true, nullptr));
  }
  const std::string firstBody = calledBack;
  EXPECT_EQ(firstBody, "{\"path\":\"/login/received\"}");

  zrtest::LogCapture log;
  ZRLibCurl second;
  ASSERT_TRUE(second.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
  unsigned long size = 99;
  EXPECT_EQ(second.GetHttpResponse(size, false), nullptr);
  EXPECT_EQ(second.GetHttpErrorCode(), 0);
  ASSERT_TRUE(second.ZRLibCurlSendHttpReq(HTTP_REQ_GET, server_.Url("/plain").c_str(), nullptr, 0, false, nullptr));
  const char* body = second.GetHttpResponse(size, false);
  ASSERT_NE(body, nullptr);
  EXPECT_EQ(std::string(body, size), "{\"path\":\"/plain\"}") << "the body goes to this client, not to a callback";
  EXPECT_EQ(calledBack, firstBody);
  EXPECT_FALSE(log.ContainsLineWith(7, "GET /plain")) << "verbose output was the first client's choice";
  second.ZRLibCurlDeInit();

  const Exchange third = SendOnce(HTTP_REQ_GET, server_.Url("/third"), "", {{HTTP_HDR_COOKIE_FILE, beta}});
  EXPECT_TRUE(third.sent);
  const Exchange failed = SendOnce(HTTP_REQ_GET, "https://127.0.0.1:" + std::to_string(ClosedPort()) + "/");
  EXPECT_FALSE(failed.sent);
  EXPECT_EQ(failed.status, 0);
  EXPECT_EQ(failed.body, "");

  const std::vector<RecordedRequest> requests = server_.Requests();
  ASSERT_EQ(requests.size(), 3u);
  EXPECT_EQ(requests[0].Header("Cookie"), "a=alpha");
  EXPECT_EQ(requests[0].Header("iBaseToken"), "first");
  const RecordedRequest& plain = requests[1];
  EXPECT_EQ(plain.method, "GET");
  EXPECT_EQ(plain.body, "");
  EXPECT_FALSE(plain.HasHeader("Content-Length"));
  EXPECT_FALSE(plain.HasHeader("iBaseToken"));
  EXPECT_FALSE(plain.HasHeader("Cookie")) << plain.Header("Cookie");
  EXPECT_EQ(plain.Header("Content-Type"), "application/json");
  EXPECT_NE(plain.Header("Accept"), "text/plain");
  EXPECT_EQ(requests[2].Header("Cookie"), "b=beta") << "neither the first file's cookie nor the one received";
}

TEST_F(ZRLibCurlRecycling, AJarIsWrittenOnlyByTheClientThatNamedIt) {
  const std::string jar = ScratchDirectory() + "/recycling-jar";
  std::remove(jar.c_str());
  {
    ZRLibCurl login;
    ASSERT_TRUE(login.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
    ASSERT_TRUE(login.ZRLibCurlAppendHeader(HTTP_HDR_COOKIE_JAR, jar.c_str()));
    ASSERT_TRUE(login.ZRLibCurlSendHttpReq(HTTP_REQ_POST, server_.Url("/login/mine").c_str(), "{}", 2, false, nullptr));
  }
  // The next client reads the jar and is answered with another cookie, which stays in its memory.
  const Exchange later = SendOnce(HTTP_REQ_GET, server_.Url("/login/other"), "", {{HTTP_HDR_COOKIE_FILE, jar}});
  ASSERT_TRUE(later.sent);

  const std::string saved = Contents(jar);
  EXPECT_NE(saved.find("mine"), std::string::npos) << saved;
  EXPECT_EQ(saved.find("other"), std::string::npos) << saved;
  ASSERT_EQ(server_.Requests().size(), 2u);
  EXPECT_EQ(server_.Requests()[1].Header("Cookie"), "session=mine");
}

// A change of options must reach the very next client: a recycled handle must not carry the
// connection pool (or its own connection) of the settings before.
TEST_F(ZRLibCurlRecycling, ChangedOptionsAreNotServedByRecycledHandles) {
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/shared")).sent);
  EXPECT_EQ(server_.ConnectionCount(), 1u);

  ZRLibCurlOptions unshared = TrustingLocalCa();
  unshared.shareConnections = false;
  ZRLibCurlSetOptions(unshared);
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/alone")).sent);
  EXPECT_EQ(server_.ConnectionCount(), 4u) << "each unshared client opens its own connection";

  ZRLibCurlSetOptions(TrustingLocalCa());
  for (int i = 0; i < 2; ++i) ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/shared-again")).sent);
  EXPECT_EQ(server_.ConnectionCount(), 5u) << "a fresh pool, then its connection reused";
}

// More threads than handles are kept idle, every other request without token and cookie file, so
// that handles go from thread to thread and from a client with cookies to one without.
TEST_F(ZRLibCurlRecycling, ClientsOnManyThreadsKeepTheirOwnHeadersAndCookies) {
  constexpr int kThreads = 10;
  constexpr int kEach = 12;
  std::vector<std::string> files;
  for (int t = 0; t < kThreads; ++t) {
    const std::string name = "t" + std::to_string(t);
    files.push_back(WriteScratchFile("recycling-thread-" + name, CookieLine(name, "v")));
  }
  std::atomic<int> answered{0};
  std::vector<std::thread> senders;
  for (int t = 0; t < kThreads; ++t) {
    senders.emplace_back([&, t] {
      for (int i = 0; i < kEach; ++i) {
        const bool withSession = i % 2 == 0;
        const std::string path = "/t" + std::to_string(t) + (withSession ? "/session/" : "/plain/") + std::to_string(i);
        const HeaderSettings headers = {{HTTP_HDR_CUSTOM, "iBaseToken: t" + std::to_string(t)},
                                        {HTTP_HDR_COOKIE_FILE, files[t]}};
        const Exchange exchange =
            withSession ? SendOnce(HTTP_REQ_GET, server_.Url(path), "", headers)
                        : SendOnce(HTTP_REQ_POST, server_.Url(path), "{}");
        answered += exchange.sent && exchange.body == "{\"path\":\"" + path + "\"}";
      }
    });
  }
  for (std::thread& sender : senders) sender.join();

  EXPECT_EQ(answered.load(), kThreads * kEach);
  const std::vector<RecordedRequest> requests = server_.Requests();
  ASSERT_EQ(requests.size(), static_cast<size_t>(kThreads * kEach));
  for (const RecordedRequest& request : requests) {
    const std::string thread = request.path.substr(1, request.path.find('/', 1) - 1);
    if (request.path.find("/session/") != std::string::npos) {
      EXPECT_EQ(request.Header("iBaseToken"), thread) << request.path;
      EXPECT_EQ(request.Header("Cookie"), thread + "=v") << request.path;
    } else {
      EXPECT_FALSE(request.HasHeader("iBaseToken")) << request.path;
      EXPECT_FALSE(request.HasHeader("Cookie")) << request.path << ": " << request.Header("Cookie");
      EXPECT_EQ(request.body, "{}") << request.path;
    }
  }
}

}  // namespace
}  // namespace platformtest
