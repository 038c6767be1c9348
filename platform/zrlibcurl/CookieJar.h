// The cookie jar holds session cookies, so only its owner may read it: mode 0600. The client writes
// it itself, in place, rather than through libcurl: libcurl writes a temporary file that for a
// path in the root directory lands in the working directory, and loses the jar when renaming it
// across file systems fails.
//
// Whatever lies at the jar's path and is not a plain file of this process's user with a single
// link (a hard link to another file, a symbolic link, a file of another owner) is removed, never
// opened for writing, and the jar created anew, exclusively.
#pragma once

#include <curl/curl.h>

#include <string>

namespace zrcurl {

// Makes sure the jar can be written: an own private file at the path, created empty if needed.
// False with the path and the reason when that is impossible.
bool PrepareCookieJar(const std::string& path, std::string& error);

// Replaces the jar's contents by the cookies, Netscape lines as CURLINFO_COOKIELIST gives them.
bool SaveCookieJar(const std::string& path, const curl_slist* cookies, std::string& error);

// False with the reason when a cookie file exists but cannot be read. A missing file sends no
// cookies, as with libcurl.
bool CookieFileReadable(const std::string& path, std::string& error);

}  // namespace zrcurl
