// The cookie file named with HTTP_HDR_COOKIE_FILE: its cookies are sent as libcurl sends those of
// a file it reads itself, and a file written again is read again, however quickly that happens.
#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <curl/curl.h>
#include <gtest/gtest.h>

#include "ClientExchange.h"
#include "HttpsTestServer.h"

namespace platformtest {
namespace {

std::string CookieLine(const std::string& name, const std::string& value, const std::string& domain = "127.0.0.1",
                       const std::string& path = "/", const std::string& expires = "0") {
  return domain + "\tFALSE\t" + path + "\tFALSE\t" + expires + "\t" + name + "\t" + value + "\n";
}

// Rewrites the file in place: same inode.
void Rewrite(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

class ZRLibCurlCookieFile : public ClientTest {
 protected:
  void SetUp() override { ZRLibCurlSetOptions(TrustingLocalCa()); }

  // The Cookie header of a GET through a fresh client naming the file; "-" when none was sent.
  std::string CookieSent(const std::string& file) {
    const size_t before = server_.Requests().size();
    EXPECT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/system/"), "", {{HTTP_HDR_COOKIE_FILE, file}}).sent);
    const std::vector<RecordedRequest> requests = server_.Requests();
    if (requests.size() != before + 1) return "no request";
    return requests.back().HasHeader("Cookie") ? requests.back().Header("Cookie") : "-";
  }

  HttpsTestServer server_{LocalCertificates()};
};

TEST_F(ZRLibCurlCookieFile, EachNewLoginIsSentFromTheNextRequestOn) {
  const std::string jar = ScratchDirectory() + "/cookie-file-logins";
  std::remove(jar.c_str());
  for (const std::string session : {"first", "second", "third"}) {
    ZRLibCurl login;
    ASSERT_TRUE(login.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr));
    ASSERT_TRUE(login.ZRLibCurlAppendHeader(HTTP_HDR_COOKIE_JAR, jar.c_str()));
    ASSERT_TRUE(login.ZRLibCurlSendHttpReq(HTTP_REQ_POST, server_.Url("/login/" + session).c_str(), "{}", 2, false,
                                           nullptr));
    login.ZRLibCurlDeInit();
    EXPECT_EQ(CookieSent(jar), "session=" + session);
    EXPECT_EQ(CookieSent(jar), "session=" + session);
  }
}

TEST_F(ZRLibCurlCookieFile, AFileRewrittenInPlaceAtOnceIsReadAgain) {
  const std::string file = ScratchDirectory() + "/cookie-file-in-place";
  Rewrite(file, CookieLine("session", "alpha"));
  EXPECT_EQ(CookieSent(file), "session=alpha");
  Rewrite(file, CookieLine("session", "bravo"));  // same size, same inode, most likely the same time stamps
  EXPECT_EQ(CookieSent(file), "session=bravo");
  Rewrite(file, "");
  EXPECT_EQ(CookieSent(file), "-");
}

// A rewrite within one tick of the file system's clock leaves size, inode and modification time
// as they were; here the modification time is put back by hand, long after the first read.
TEST_F(ZRLibCurlCookieFile, ARewriteKeepingSizeAndModificationTimeIsReadAgain) {
  const std::string file = ScratchDirectory() + "/cookie-file-same-time";
  Rewrite(file, CookieLine("session", "alpha"));
  struct stat before {};
  ASSERT_EQ(::stat(file.c_str(), &before), 0);
  std::this_thread::sleep_for(std::chrono::milliseconds(1100));  // long enough for the lines to be trusted
  EXPECT_EQ(CookieSent(file), "session=alpha");
  EXPECT_EQ(CookieSent(file), "session=alpha");

  Rewrite(file, CookieLine("session", "bravo"));
  const timespec times[2] = {before.st_atim, before.st_mtim};
  ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
  struct stat after {};
  ASSERT_EQ(::stat(file.c_str(), &after), 0);
  ASSERT_EQ(after.st_ino, before.st_ino);
  ASSERT_EQ(after.st_size, before.st_size);
  ASSERT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
  EXPECT_EQ(CookieSent(file), "session=bravo");
}

TEST_F(ZRLibCurlCookieFile, AFileReplacedByAnotherIsReadAgain) {
  const std::string file = ScratchDirectory() + "/cookie-file-replaced";
  const std::string next = file + ".next";
  Rewrite(file, CookieLine("session", "alpha"));
  EXPECT_EQ(CookieSent(file), "session=alpha");
  Rewrite(next, CookieLine("session", "bravo"));
  ASSERT_EQ(std::rename(next.c_str(), file.c_str()), 0);
  EXPECT_EQ(CookieSent(file), "session=bravo");
  ASSERT_EQ(std::remove(file.c_str()), 0);
  EXPECT_EQ(CookieSent(file), "-");
}

// Whatever a cookie file holds, the request carries the cookies libcurl itself sends when it reads
// the file: each case goes once through the client and once through a plain libcurl handle.
struct FileCase {
  const char* name;
  std::vector<std::optional<std::string>> files;  // nullopt: no file at that path
  const char* expectedCookie;                     // "-": no Cookie header
};

void PrintTo(const FileCase& fileCase, std::ostream* out) { *out << fileCase.name; }

size_t Discard(char*, size_t size, size_t count, void*) { return size * count; }

class ZRLibCurlCookieFileContents : public ZRLibCurlCookieFile, public testing::WithParamInterface<FileCase> {
 protected:
  std::vector<std::string> WriteFiles() {
    std::vector<std::string> paths;
    for (const std::optional<std::string>& text : GetParam().files) {
      paths.push_back(ScratchDirectory() + "/cookie-case-" + GetParam().name + "-" + std::to_string(paths.size()));
      std::remove(paths.back().c_str());
      if (text) Rewrite(paths.back(), *text);
    }
    return paths;
  }

  bool SendThroughLibcurl(const std::string& url, const std::vector<std::string>& files) {
    CURL* handle = curl_easy_init();
    curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
    curl_easy_setopt(handle, CURLOPT_CAINFO, LocalCertificates().caCertPath.c_str());
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_PROXY, "");
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &Discard);
    for (const std::string& file : files) curl_easy_setopt(handle, CURLOPT_COOKIEFILE, file.c_str());
    const bool sent = curl_easy_perform(handle) == CURLE_OK;
    curl_easy_cleanup(handle);
    return sent;
  }
};

TEST_P(ZRLibCurlCookieFileContents, SendTheCookiesLibcurlSends) {
  const std::vector<std::string> files = WriteFiles();
  const std::string url = server_.Url("/dir/page");
  HeaderSettings headers;
  for (const std::string& file : files) headers.emplace_back(HTTP_HDR_COOKIE_FILE, file);
  ASSERT_TRUE(SendOnce(HTTP_REQ_GET, url, "", headers).sent);
  ASSERT_TRUE(SendThroughLibcurl(url, files));

  const std::vector<RecordedRequest> requests = server_.Requests();
  ASSERT_EQ(requests.size(), 2u);
  const auto cookie = [](const RecordedRequest& request) {
    return request.HasHeader("Cookie") ? request.Header("Cookie") : "-";
  };
  EXPECT_EQ(cookie(requests[0]), cookie(requests[1])) << "the client, then libcurl";
  EXPECT_EQ(cookie(requests[0]), GetParam().expectedCookie);
}

const std::string kLong(6000, 'x');

INSTANTIATE_TEST_SUITE_P(
    Files, ZRLibCurlCookieFileContents,
    testing::Values(
        FileCase{"PathsOfTheRequest", {CookieLine("a", "1") + CookieLine("b", "2", "127.0.0.1", "/dir")}, "b=2; a=1"},
        FileCase{"CommentsBlankLinesAndHttpOnly",
                 {"# written by hand\n\n#HttpOnly_" + CookieLine("session", "s3cr3t") + "#" + CookieLine("c", "3")},
                 "session=s3cr3t"},
        FileCase{"LeadingBlanksAndCarriageReturns",
                 {" \t127.0.0.1\tFALSE\t/\tFALSE\t0\tc\t3\r\n127.0.0.1\tFALSE\t/\tFALSE\t0\td\t4\r\n"},
                 "d=4; c=3"},
        FileCase{"OtherHostsOtherPathsAndExpiredCookies",
                 {CookieLine("e", "5", "10.1.2.3") + CookieLine("f", "6", "127.0.0.1", "/other") +
                  CookieLine("g", "7", "127.0.0.1", "/", "1") + CookieLine("h", "8")},
                 "h=8"},
        FileCase{"WordsLibcurlTakesAsCommands", {CookieLine("i", "9") + "ALL\nSESS\nFLUSH\nRELOAD\n"}, "i=9"},
        FileCase{"UnterminatedLastLine", {CookieLine("j", "10") + "127.0.0.1\tFALSE\t/\tFALSE\t0\tk\t11"}, "k=11; j=10"},
        FileCase{"SetCookieLines", {"Set-Cookie: l=12; Path=/\n" + CookieLine("m", "13")}, "m=13; l=12"},
        FileCase{"LineLongerThanLibcurlReads", {CookieLine("n", "14") + CookieLine("o", kLong) + CookieLine("p", "15")},
                 "p=15; n=14"},
        FileCase{"NulByte", {CookieLine("q", "16") + std::string("\0\n", 2) + CookieLine("r", "17")}, "q=16"},
        FileCase{"EmptyFile", {""}, "-"},
        FileCase{"MissingFile", {std::nullopt}, "-"},
        FileCase{"LaterFileWins", {CookieLine("s", "18") + CookieLine("t", "19"), CookieLine("s", "20")}, "t=19; s=20"},
        FileCase{"OneOfTwoFilesMissing", {CookieLine("u", "21"), std::nullopt}, "u=21"}),
    [](const testing::TestParamInfo<FileCase>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace platformtest
