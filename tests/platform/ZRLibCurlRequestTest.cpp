#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ClientExchange.h"
#include "HttpsTestServer.h"
#include "LogCapture.h"
#include "SilentListener.h"

namespace platformtest {
namespace {

class ZRLibCurlRequest : public ClientTest {
 protected:
  void SetUp() override { ZRLibCurlSetOptions(TrustingLocalCa()); }
  HttpsTestServer server_{LocalCertificates()};
};

struct MethodCase {
  _http_req_type_ method;
  const char* body;
  const char* methodSeen;
  const char* contentLengthSeen;  // empty: no Content-Length header
};

class ZRLibCurlMethods : public ZRLibCurlRequest, public testing::WithParamInterface<MethodCase> {};

TEST_P(ZRLibCurlMethods, MethodHeadersAndBodyReachTheServer) {
  const MethodCase& methodCase = GetParam();
  const Exchange exchange = SendOnce(methodCase.method, server_.Url("/lun/7?vstoreId=2"), methodCase.body,
                                     {{HTTP_HDR_CUSTOM, "iBaseToken: tok123"}});
  ASSERT_TRUE(exchange.sent);
  EXPECT_EQ(exchange.status, 200);
  EXPECT_EQ(exchange.body, "{\"path\":\"/lun/7\"}");

  const std::vector<RecordedRequest> requests = server_.Requests();
  ASSERT_EQ(requests.size(), 1u);
  const RecordedRequest& seen = requests[0];
  EXPECT_EQ(seen.method, methodCase.methodSeen);
  EXPECT_EQ(seen.body, methodCase.body);
  EXPECT_EQ(seen.Header("Content-Type"), "application/json");
  EXPECT_EQ(seen.Header("iBaseToken"), "tok123");
  EXPECT_EQ(seen.Header("Content-Length"), methodCase.contentLengthSeen);
  EXPECT_FALSE(seen.HasHeader("Expect"));
}

std::string MethodCaseName(const testing::TestParamInfo<MethodCase>& info) {
  return std::string(info.param.methodSeen) + (*info.param.body ? "WithBody" : "WithoutBody");
}

const std::string kLargeBody = "{\"data\":\"" + std::string(200000, 'z') + "\"}";

INSTANTIATE_TEST_SUITE_P(
    AllMethods, ZRLibCurlMethods,
    testing::Values(MethodCase{HTTP_REQ_GET, "", "GET", ""},
                    MethodCase{HTTP_REQ_POST, "{\"NAME\":\"snap\"}", "POST", "15"},
                    MethodCase{HTTP_REQ_POST, "", "POST", "0"},
                    MethodCase{HTTP_REQ_PUT, "{\"ID\":\"4\"}", "PUT", "10"},
                    MethodCase{HTTP_REQ_PUT, "", "PUT", "0"},
                    MethodCase{HTTP_REQ_DELETE, "", "DELETE", ""},
                    MethodCase{HTTP_REQ_DELETE, "{\"ID\":\"4\"}", "DELETE", "10"}),
    MethodCaseName);

TEST_F(ZRLibCurlRequest, LargeBodyGoesOutWhole) {
  ASSERT_TRUE(SendOnce(HTTP_REQ_POST, server_.Url("/filesystem"), kLargeBody).sent);
  ASSERT_EQ(server_.Requests().size(), 1u);
  EXPECT_EQ(server_.Requests()[0].body, kLargeBody);
}

TEST_F(ZRLibCurlRequest, FreeingTheHeaderListKeepsOnlyTheInitialContentType) {
  ZRLibCurl client;
  ASSERT_TRUE(client.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
  ASSERT_TRUE(client.ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, "iBaseToken: first"));
  ASSERT_TRUE(client.ZRLibCurlAppendHeader(HTTP_HDR_ACCEPT, "text/plain"));
  ASSERT_TRUE(client.ZRLibCurlAppendHeader(HTTP_HDR_CONTENT_TYPE, "text/xml"));
  ASSERT_TRUE(client.ZRLibCurlSendHttpReq(HTTP_REQ_GET, server_.Url("/one").c_str(), nullptr, 0, false, nullptr));
  client.ZRLibCurlFreeHttpHeaderList();
  ASSERT_TRUE(client.ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, "iBaseToken: second"));
  ASSERT_TRUE(client.ZRLibCurlSendHttpReq(HTTP_REQ_GET, server_.Url("/two").c_str(), nullptr, 0, false, nullptr));

  const std::vector<RecordedRequest> requests = server_.Requests();
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(requests[0].Header("iBaseToken"), "first");
  EXPECT_EQ(requests[0].Header("Accept"), "text/plain");
  EXPECT_EQ(requests[0].Header("Content-Type"), "text/xml");
  EXPECT_EQ(requests[1].headers.count("iBaseToken"), 1u);
  EXPECT_EQ(requests[1].Header("iBaseToken"), "second");
  EXPECT_EQ(requests[1].Header("Content-Type"), "application/json");
  EXPECT_NE(requests[1].Header("Accept"), "text/plain");
}

TEST_F(ZRLibCurlRequest, RefusesHeaderValuesThatWouldSmuggleLines) {
  ZRLibCurl client;
  ASSERT_TRUE(client.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
  EXPECT_FALSE(client.ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, "iBaseToken: a\r\nX-Injected: b"));
  EXPECT_FALSE(client.ZRLibCurlAppendHeader(HTTP_HDR_ACCEPT, "text/plain\nX-Injected: b"));
  EXPECT_FALSE(client.ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, nullptr));
}

TEST_F(ZRLibCurlRequest, HttpErrorStatusesStillDeliverTheBody) {
  for (int status : {400, 401, 404, 500, 503}) {
    const std::string path = "/status/" + std::to_string(status);
    const Exchange exchange = SendOnce(HTTP_REQ_GET, server_.Url(path));
    EXPECT_TRUE(exchange.sent) << status;
    EXPECT_EQ(exchange.status, status);
    EXPECT_EQ(exchange.body, "{\"path\":\"" + path + "\"}");
  }
}

TEST_F(ZRLibCurlRequest, DetachedBodyBelongsToTheCaller) {
  ZRLibCurl client;
  ASSERT_TRUE(client.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
  ASSERT_TRUE(client.ZRLibCurlSendHttpReq(HTTP_REQ_GET, server_.Url("/x").c_str(), nullptr, 0, false, nullptr));
  unsigned long size = 0;
  char* detached = const_cast<char*>(client.GetHttpResponse(size, true));
  ASSERT_NE(detached, nullptr);
  EXPECT_EQ(std::string(detached), "{\"path\":\"/x\"}");
  EXPECT_EQ(size, 13u);
  EXPECT_EQ(client.GetHttpResponse(size, false), nullptr);
  EXPECT_EQ(client.GetHttpErrorCode(), 200);
  std::free(detached);
}

TEST_F(ZRLibCurlRequest, CallerCallbackReceivesTheBody) {
  static std::string received;
  received.clear();
  ZRLibCurl client;
  ASSERT_TRUE(client.ZRLibCurlInit("Content-Type: application/json", true, true,
                                   [](void* data, unsigned long size, unsigned long count, void*) -> unsigned long {
                                     received.append(static_cast<const char*>(data), size * count);
                                     return size * count;
                                   }));
  ASSERT_TRUE(client.ZRLibCurlSendHttpReq(HTTP_REQ_GET, server_.Url("/cb").c_str(), nullptr, 0, false, nullptr));
  EXPECT_EQ(received, "{\"path\":\"/cb\"}");
}

mode_t ModeOf(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? (status.st_mode & 0777) : 0;
}

std::string Contents(const std::string& path) {
  std::ifstream in(path);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// The widest umask a host could run with, so that only the client's own care gives 0600.
class OpenUmask {
 public:
  OpenUmask() : previous_(::umask(0)) {}
  ~OpenUmask() { ::umask(previous_); }

 private:
  mode_t previous_;
};

class ZRLibCurlCookies : public ZRLibCurlRequest, public testing::WithParamInterface<bool> {};

TEST_P(ZRLibCurlCookies, JarIsPrivateAndItsCookiesGoBackOnLaterRequests) {
  const bool jarExistsBefore = GetParam();
  const std::string jar = ScratchDirectory() + (jarExistsBefore ? "/jar-existing" : "/jar-new");
  std::remove(jar.c_str());
  OpenUmask openUmask;
  if (jarExistsBefore) std::ofstream(jar) << "# old jar\n";

  {
    ZRLibCurl login;
    ASSERT_TRUE(login.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
    ASSERT_TRUE(login.ZRLibCurlAppendHeader(HTTP_HDR_COOKIE_JAR, jar.c_str()));
    EXPECT_EQ(ModeOf(jar), 0600u);
    ASSERT_TRUE(login.ZRLibCurlSendHttpReq(HTTP_REQ_POST, server_.Url("/login").c_str(), "{}", 2, false, nullptr));
    EXPECT_EQ(ModeOf(jar), 0600u) << "after the client flushed the jar";
    EXPECT_NE(Contents(jar).find("s3cr3t"), std::string::npos);
  }
  EXPECT_EQ(ModeOf(jar), 0600u) << "after the client was freed";

  ASSERT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/system/"), "", {{HTTP_HDR_COOKIE_FILE, jar}}).sent);
  const std::vector<RecordedRequest> requests = server_.Requests();
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_FALSE(requests[0].HasHeader("Cookie"));
  EXPECT_EQ(requests[1].Header("Cookie"), "session=s3cr3t");
}

INSTANTIATE_TEST_SUITE_P(JarCases, ZRLibCurlCookies, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& info) {
                           return info.param ? "JarExistsWithWideMode" : "JarIsNew";
                         });

// Whatever is planted at the jar's path is replaced, never written through.
TEST_F(ZRLibCurlRequest, JarReplacesWhatIsPlantedAtItsPathWithoutTouchingIt) {
  const std::string victim = ScratchDirectory() + "/victim";
  const std::string jar = ScratchDirectory() + "/planted-jar";
  const std::vector<std::pair<const char*, std::function<void()>>> plants = {
      {"hard link", [&] { ::link(victim.c_str(), jar.c_str()); }},
      {"symbolic link", [&] { ::symlink(victim.c_str(), jar.c_str()); }},
      {"file of another owner", [&] { std::ofstream(jar) << "# theirs\n"; ::chown(jar.c_str(), 1, 1); }},
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

TEST_F(ZRLibCurlRequest, MisuseReturnsFalseInsteadOfFailing) {
  ZRLibCurl notInitialised;
  EXPECT_FALSE(notInitialised.ZRLibCurlSendHttpReq(HTTP_REQ_GET, server_.Url("/").c_str(), nullptr, 0, false, nullptr));
  EXPECT_FALSE(notInitialised.ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, "A: b"));
  unsigned long size = 99;
  EXPECT_EQ(notInitialised.GetHttpResponse(size, false), nullptr);
  EXPECT_EQ(size, 0u);
  EXPECT_EQ(notInitialised.GetHttpErrorCode(), 0);

  ZRLibCurl client;
  ASSERT_TRUE(client.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
  EXPECT_FALSE(client.ZRLibCurlSendHttpReq(HTTP_REQ_GET, nullptr, nullptr, 0, false, nullptr));
  EXPECT_FALSE(client.ZRLibCurlSendHttpReq(HTTP_REQ_GET, "http://127.0.0.1:1/plain", nullptr, 0, false, nullptr));
  EXPECT_TRUE(server_.Requests().empty());
}

struct FailureCase {
  const char* name;
  std::string (*url)(int silentPort);
  const char* loggedReason;
};

class ZRLibCurlFailures : public ClientTest, public testing::WithParamInterface<FailureCase> {};

TEST_P(ZRLibCurlFailures, ReturnFalseWithTheReasonLogged) {
  SilentListener silent;
  ZRLibCurlOptions options = TrustingLocalCa();
  options.connectTimeoutMs = 300;
  options.totalTimeoutMs = 300;
  ZRLibCurlSetOptions(options);
  zrtest::LogCapture log;

  const Exchange exchange = SendOnce(HTTP_REQ_GET, GetParam().url(silent.Port()));

  EXPECT_FALSE(exchange.sent);
  EXPECT_EQ(exchange.status, 0);
  EXPECT_TRUE(log.ContainsLineWith(-1, GetParam().loggedReason)) << log.Dump();
}

INSTANTIATE_TEST_SUITE_P(
    Exchanges, ZRLibCurlFailures,
    testing::Values(
        FailureCase{"ServerNeverAnswers",
                    [](int port) { return "https://127.0.0.1:" + std::to_string(port) + "/system/"; }, "Timeout"},
        FailureCase{"NothingListens",
                    [](int) { return "https://127.0.0.1:" + std::to_string(ClosedPort()) + "/system/"; },
                    "connect"},
        FailureCase{"HostUnknown", [](int) { return std::string("https://no-such-array.invalid:8088/"); },
                    "resolve"}),
    [](const testing::TestParamInfo<FailureCase>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace platformtest
