// The cookie file named with HTTP_HDR_COOKIE_FILE: its cookies are sent as libcurl sends those of
// a file it reads itself, and a file written again is read again, however quickly that happens.
#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include <curl/curl.h>
#include <gtest/gtest.h>

#include "ClientExchange.h"
#include "HttpsTestServer.h"
#include "zrlibcurl/CookieFileCache.h"

namespace platformtest {
namespace {

class ZRLibCurlCookieFile : public ClientTest {
 protected:
  // The Cookie header of a GET through a fresh client naming the files; "-" when none was sent.
  std::string CookieSent(const std::vector<std::string>& files) {
    HeaderSettings headers;
    for (const std::string& file : files) headers.emplace_back(HTTP_HDR_COOKIE_FILE, file);
    const size_t before = server_.Requests().size();
    EXPECT_TRUE(SendOnce(HTTP_REQ_GET, server_.Url("/dir/page"), "", headers).sent);
    const std::vector<RecordedRequest> requests = server_.Requests();
    if (requests.size() != before + 1) return "no request";
    return requests.back().HasHeader("Cookie") ? requests.back().Header("Cookie") : "-";
  }
  std::string file_ = ScratchDirectory() + "/" + testing::UnitTest::GetInstance()->current_test_info()->name();
  HttpsTestServer server_{LocalCertificates()};
};

TEST_F(ZRLibCurlCookieFile, AFileRewrittenOrReplacedIsReadAgain) {
  WriteFile(file_, CookieLine("session", "alpha"));
  EXPECT_EQ(CookieSent({file_}), "session=alpha");
  WriteFile(file_, CookieLine("session", "bravo"));  // same size, same inode, most likely the same time stamps
  EXPECT_EQ(CookieSent({file_}), "session=bravo");
  WriteFile(file_ + ".next", CookieLine("session", "delta"));
  ASSERT_EQ(std::rename((file_ + ".next").c_str(), file_.c_str()), 0);
  EXPECT_EQ(CookieSent({file_}), "session=delta");
  WriteFile(file_, "");
  EXPECT_EQ(CookieSent({file_}), "-");
  ASSERT_EQ(std::remove(file_.c_str()), 0);
  EXPECT_EQ(CookieSent({file_}), "-");
}

// Lines trusted at once stand for lines read long after the file's last change. A rewrite that
// keeps inode, size and modification time, as one within a tick of the file system's clock does,
// is still seen by its change time.
TEST_F(ZRLibCurlCookieFile, ARewriteKeepingSizeAndModificationTimeIsReadAgain) {
  struct TrustedAtOnce {
    TrustedAtOnce() { zrcurl::SetCookieFileSettleTime(std::chrono::nanoseconds(0)); }
    ~TrustedAtOnce() { zrcurl::SetCookieFileSettleTime(std::chrono::seconds(1)); }
  } trustedAtOnce;
  WriteFile(file_, CookieLine("session", "alpha"));
  struct stat before {}, after {};
  ASSERT_EQ(::stat(file_.c_str(), &before), 0);
  EXPECT_EQ(CookieSent({file_}), "session=alpha");
  EXPECT_EQ(CookieSent({file_}), "session=alpha");
  const timespec times[2] = {before.st_atim, before.st_mtim};
  do {  // until the change time moves on, at most one tick
    WriteFile(file_, CookieLine("session", "bravo"));
    ASSERT_EQ(::utimensat(AT_FDCWD, file_.c_str(), times, 0), 0);
    ASSERT_EQ(::stat(file_.c_str(), &after), 0);
  } while (after.st_ctim.tv_sec == before.st_ctim.tv_sec && after.st_ctim.tv_nsec == before.st_ctim.tv_nsec);
  EXPECT_EQ(std::to_string(after.st_ino) + "|" + std::to_string(after.st_size) + "|" + std::to_string(after.st_mtim.tv_nsec),
            std::to_string(before.st_ino) + "|" + std::to_string(before.st_size) + "|" + std::to_string(before.st_mtim.tv_nsec));
  EXPECT_EQ(CookieSent({file_}), "session=bravo");
}

size_t Discard(char*, size_t size, size_t count, void*) { return size * count; }

// Whatever a cookie file holds, the request carries the cookies libcurl itself sends when it reads
// the file: each case goes once through the client and once through a plain libcurl handle.
TEST_F(ZRLibCurlCookieFile, ContentsSendTheCookiesLibcurlSends) {
  const std::string longValue(6000, 'x');
  const struct {
    std::vector<std::optional<std::string>> files;  // nullopt: no file at that path
    const char* cookie;
  } cases[] = {
      {{CookieLine("a", "1") + CookieLine("b", "2", "127.0.0.1", "/dir")}, "b=2; a=1"},
      {{"# by hand\n\n#HttpOnly_" + CookieLine("session", "s3cr3t") + "#" + CookieLine("c", "3")}, "session=s3cr3t"},
      {{" \t127.0.0.1\tFALSE\t/\tFALSE\t0\tc\t3\r\n127.0.0.1\tFALSE\t/\tFALSE\t0\td\t4\r\n"}, "d=4; c=3"},
      {{CookieLine("e", "5", "10.1.2.3") + CookieLine("f", "6", "127.0.0.1", "/other") +
        CookieLine("g", "7", "127.0.0.1", "/", "1") + CookieLine("h", "8")},
       "h=8"},
      {{CookieLine("i", "9") + "ALL\nSESS\nFLUSH\nRELOAD\n"}, "i=9"},
      {{CookieLine("j", "10") + "127.0.0.1\tFALSE\t/\tFALSE\t0\tk\t11"}, "k=11; j=10"},
      {{"Set-Cookie: l=12; Path=/\n" + CookieLine("m", "13")}, "m=13; l=12"},
      {{CookieLine("n", "14") + CookieLine("o", longValue) + CookieLine("p", "15")}, "p=15; n=14"},
      {{CookieLine("q", "16") + std::string("\0\n", 2) + CookieLine("r", "17")}, "q=16"},
      {{CookieLine("s", "18") + CookieLine("t", "19"), CookieLine("s", "20")}, "t=19; s=20"},
      {{CookieLine("u", "21"), std::nullopt}, "u=21"},
  };
  for (const auto& c : cases) {
    std::vector<std::string> paths;
    for (const auto& text : c.files) {
      paths.push_back(file_ + "-" + std::to_string(&c - cases) + "-" + std::to_string(paths.size()));
      if (text) WriteFile(paths.back(), *text);
    }
    EXPECT_EQ(CookieSent(paths), c.cookie);
    CURL* handle = curl_easy_init();
    curl_easy_setopt(handle, CURLOPT_URL, server_.Url("/dir/page").c_str());
    curl_easy_setopt(handle, CURLOPT_CAINFO, LocalCertificates().caCertPath.c_str());
    curl_easy_setopt(handle, CURLOPT_PROXY, "");
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &Discard);
    for (const std::string& path : paths) curl_easy_setopt(handle, CURLOPT_COOKIEFILE, path.c_str());
    ASSERT_EQ(curl_easy_perform(handle), CURLE_OK);
    curl_easy_cleanup(handle);
    const RecordedRequest byLibcurl = server_.Requests().back();
    EXPECT_EQ(byLibcurl.HasHeader("Cookie") ? byLibcurl.Header("Cookie") : "-", c.cookie) << "libcurl itself";
  }
}

}  // namespace
}  // namespace platformtest
