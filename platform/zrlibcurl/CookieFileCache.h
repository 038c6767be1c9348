// The cookie lines of Netscape cookie files, read once and kept while the file stays the same.
// libcurl opens, reads and parses a cookie file for every request that names it; the transport
// names the session's file on every request. Here the file is looked at with one stat: its device,
// inode, size and change times (to the nanosecond) key the lines read before, and the lines go to
// libcurl's cookie engine as CURLOPT_COOKIELIST entries, so libcurl still decides which cookies a
// request gets (domain, path, secure, expiry).
//
// A rewrite within the file system's timestamp granularity can leave the key unchanged. Lines read
// less than a second after the file's last change are therefore read again on the next request,
// until they are older than that; and every cookie jar this process writes makes all files be
// read again.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace zrcurl {

using CookieLines = std::vector<std::string>;

// The cookie lines of the file, in file order, each as libcurl's own reader would pass it on. Null
// when the file is better left to libcurl itself (missing, not a regular file, too large, or
// holding anything but plain Netscape lines and comments).
std::shared_ptr<const CookieLines> CookieFileLines(const std::string& path);

// To be called after this process wrote a cookie file.
void CookieFileWritten();

// How long after a file's last change its lines are trusted to stay as read (one second). A seam
// for tests, which set zero to reach the trusted state without waiting.
void SetCookieFileSettleTime(std::chrono::nanoseconds settle);

}  // namespace zrcurl
