// The cookie jar holds session cookies, so only its owner may read it: mode 0600. libcurl creates
// or replaces the file with the process umask, so the mode is set here before and after it writes.
#pragma once

#include <string>

namespace zrcurl {

// Creates the jar with mode 0600 if missing, or narrows an existing one. False with the reason
// when that is impossible, such as a path that is a symbolic link or lies in a missing directory.
bool PrepareCookieJar(const std::string& path, std::string& error);

// Narrows the jar to 0600 again after libcurl has written it.
void RestrictCookieJar(const std::string& path);

}  // namespace zrcurl
