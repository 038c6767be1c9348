// One exchange through the client: what reaches the server, what comes back, the cookie jar, and
// failures that return false with their reason logged.
#include <sys/stat.h>

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ClientExchange.h"
#include "HttpsTestServer.h"
#include "LogCapture.h"
#include "LoopbackPorts.h"

namespace platformtest {
namespace {

class ZRLibCurlRequest : public ClientTest {
 protected:
  HttpsTestServer server_{LocalCertificates()};
};

TEST_F(ZRLibCurlRequest, MethodHeadersAndBodyReachTheServer) {
  const std::string large = "{\"data\":\"" + std::string(200000, 'z') + "\"}";
  const struct {
    _http_req_type_ method;
    std::string body;
    const char* seen;  // method and Content-Length as the server saw them
  } cases[] = {{HTTP_REQ_GET, "", "GET "},          {HTTP_REQ_POST, "{\"NAME\":\"snap\"}", "POST 15"},
               {HTTP_REQ_POST, "", "POST 0"},        {HTTP_REQ_PUT, "{\"ID\":\"4\"}", "PUT 10"},
               {HTTP_REQ_PUT, "", "PUT 0"},          {HTTP_REQ_DELETE, "", "DELETE "},
               {HTTP_REQ_DELETE, "{\"ID\":\"4\"}", "DELETE 10"}, {HTTP_REQ_POST, large, "POST 200011"}};
  for (const auto& c : cases) {
    const size_t before = server_.Requests().size();
    const Exchange exchange =
        SendOnce(c.method, server_.Url("/lun/7?vstoreId=2"), c.body, {{HTTP_HDR_CUSTOM, "iBaseToken: tok123"}});
    EXPECT_TRUE(exchange.sent);
    EXPECT_EQ(std::to_string(exchange.status) + " " + exchange.body, "200 {\"path\":\"/lun/7\"}");
    ASSERT_EQ(server_.Requests().size(), before + 1);
    const RecordedRequest seen = server_.Requests().back();
    EXPECT_EQ(seen.method + " " + seen.Header("Content-Length"), c.seen);
    EXPECT_TRUE(seen.body == c.body) << c.seen;
    EXPECT_EQ(seen.Header("Content-Type") + "|" + seen.Header("iBaseToken"), "application/json|tok123");
    EXPECT_FALSE(seen.HasHeader("Expect"));
  }
}

TEST_F(ZRLibCurlRequest, HeaderListCanBeFreedAndRefusesSmuggledLines) {
  ZRLibCurl client;
  ASSERT_TRUE(client.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
  EXPECT_FALSE(client.ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, "iBaseToken: a\r\nX-Injected: b"));
  EXPECT_FALSE(client.ZRLibCurlAppendHeader(HTTP_HDR_ACCEPT, "text/plain\nX-Injected: b"));
  EXPECT_FALSE(client.ZRLibCurlAppendHeader(HTTP_HDR_CONTENT_TYPE, "text/xml\rX-Injected: b"));
  EXPECT_FALSE(client.ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, nullptr));
  ASSERT_TRUE(client.ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, "iBaseToken: first"));
  ASSERT_TRUE(client.ZRLibCurlAppendHeader(HTTP_HDR_ACCEPT, "text/plain"));
  ASSERT_TRUE(client.ZRLibCurlAppendHeader(HTTP_HDR_CONTENT_TYPE, "text/xml"));
  ASSERT_TRUE(client.ZRLibCurlSendHttpReq(HTTP_REQ_GET, server_.Url("/one").c_str(), nullptr, 0, false, nullptr));
  client.ZRLibCurlFreeHttpHeaderList();  // only the content type of the initialisation stays
  ASSERT_TRUE(client.ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, "iBaseToken: second"));
  ASSERT_TRUE(client.ZRLibCurlSendHttpReq(HTTP_REQ_GET, server_.Url("/two").c_str(), nullptr, 0, false, nullptr));
  const auto requests = server_.Requests();
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(requests[0].Header("iBaseToken") + "|" + requests[0].Header("Accept") + "|" + requests[0].Header("Content-Type"),
            "first|text/plain|text/xml");
  EXPECT_FALSE(requests[0].HasHeader("X-Injected"));
  EXPECT_EQ(requests[1].headers.count("iBaseToken"), 1u);
  EXPECT_EQ(requests[1].Header("iBaseToken") + "|" + requests[1].Header("Content-Type"), "second|application/json");
  EXPECT_NE(requests[1].Header("Accept"), "text/plain");
}

mode_t ModeOf(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? (status.st_mode & 0777) : 0;
}

// Under the widest umask a host could run with, only the client's own care gives 0600.
TEST_F(ZRLibCurlRequest, JarIsPrivateAndItsCookiesGoBackOnLaterRequests) {
  const mode_t umask = ::umask(0);
  for (const bool existedBefore : {false, true}) {
    const std::string jar = ScratchDirectory() + (existedBefore ? "/jar-existing" : "/jar-new");
    if (existedBefore) WriteFile(jar, "# old jar\n");
    {
      ZRLibCurl login;
      ASSERT_TRUE(login.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
      ASSERT_TRUE(login.ZRLibCurlAppendHeader(HTTP_HDR_COOKIE_JAR, jar.c_str()));
      EXPECT_EQ(ModeOf(jar), 0600u);
      ASSERT_TRUE(login.ZRLibCurlSendHttpReq(HTTP_REQ_POST, server_.Url("/login").c_str(), "{}", 2, false, nullptr));
      EXPECT_NE(Contents(jar).find("s3cr3t"), std::string::npos);
    }
    EXPECT_EQ(ModeOf(jar), 0600u) << "after the client flushed the jar";
    ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/system/"), "", {{HTTP_HDR_COOKIE_FILE, jar}}).sent);
    EXPECT_EQ(server_.Requests().back().Header("Cookie"), "session=s3cr3t");
  }
  ::umask(umask);
  EXPECT_FALSE(server_.Requests().front().HasHeader("Cookie"));
}

// Whatever is planted at the jar's path is replaced, never written through.
TEST_F(ZRLibCurlRequest, JarReplacesWhatIsPlantedAtItsPathWithoutTouchingIt) {
  const std::string victim = ScratchDirectory() + "/victim";
  const std::string jar = ScratchDirectory() + "/planted-jar";
  const std::vector<std::pair<const char*, std::function<void()>>> plants = {
      {"hard link", [&] { ::link(victim.c_str(), jar.c_str()); }},
      {"symbolic link", [&] { ::symlink(victim.c_str(), jar.c_str()); }},
      {"file of another owner", [&] { std::ofstream(jar) << "# theirs\n"; (void)::chown(jar.c_str(), 1, 1); }},
  };
  for (const auto& [name, plant] : plants) {
    std::remove(jar.c_str());
    std::ofstream(victim) << "# not a jar\n";
    ::chmod(victim.c_str(), 0644);
    plant();
    ZRLibCurl login;
    ASSERT_TRUE(login.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
    ASSERT_TRUE(login.ZRLibCurlAppendHeader(HTTP_HDR_COOKIE_JAR, jar.c_str())) << name;
    ASSERT_TRUE(login.ZRLibCurlSendHttpReq(HTTP_REQ_POST, server_.Url("/login").c_str(), "{}", 2, false, nullptr));
    struct stat status {};
    ASSERT_EQ(::lstat(jar.c_str(), &status), 0);
    EXPECT_TRUE(S_ISREG(status.st_mode) && status.st_nlink == 1 && status.st_uid == ::geteuid()) << name;
    EXPECT_EQ(status.st_mode & 0777, 0600u) << name;
    EXPECT_NE(Contents(jar).find("s3cr3t"), std::string::npos) << name;
    EXPECT_EQ(Contents(victim), "# not a jar\n") << name;
    EXPECT_EQ(ModeOf(victim), 0644u) << name;
  }
}

TEST_F(ZRLibCurlRequest, CookieFileThatCannotBeReadFailsTheRequest) {
  zrtest::LogCapture log;
  EXPECT_FALSE(SendOnce(HTTP_REQ_GET, server_.Url("/system/"), "", {{HTTP_HDR_COOKIE_FILE, ScratchDirectory()}}).sent);
  EXPECT_TRUE(log.ContainsLineWith(-1, "cannot read the cookie file " + ScratchDirectory())) << log.Dump();
  EXPECT_TRUE(server_.Requests().empty());
}

TEST_F(ZRLibCurlRequest, MisuseAndFailedExchangesReturnFalse) {
  ZRLibCurl idle;
  EXPECT_FALSE(idle.ZRLibCurlSendHttpReq(HTTP_REQ_GET, server_.Url("/").c_str(), nullptr, 0, false, nullptr));
  EXPECT_FALSE(idle.ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, "A: b"));
  ZRLibCurl client;
  ASSERT_TRUE(client.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
  EXPECT_FALSE(client.ZRLibCurlSendHttpReq(HTTP_REQ_GET, nullptr, nullptr, 0, false, nullptr));
  EXPECT_FALSE(client.ZRLibCurlSendHttpReq(HTTP_REQ_GET, "http://127.0.0.1:1/plain", nullptr, 0, false, nullptr));
  EXPECT_TRUE(server_.Requests().empty());

  // (An array that never answers: the session suite's fault rows.)
  const std::pair<std::string, const char*> failures[] = {
      {"https://127.0.0.1:" + std::to_string(ClosedPort()) + "/system/", "connect"},
      {"https://no-such-array.invalid:8088/", "resolve"}};
  for (const auto& [url, reason] : failures) {
    zrtest::LogCapture log;
    const Exchange exchange = SendOnce(HTTP_REQ_GET, url);
    EXPECT_FALSE(exchange.sent) << url;
    EXPECT_EQ(exchange.status, 0);
    EXPECT_TRUE(log.ContainsLineWith(-1, reason)) << log.Dump();
  }
}

}  // namespace
}  // namespace platformtest
