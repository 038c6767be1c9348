#include "CookieJar.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace zrcurl {

namespace {
constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;
}

bool PrepareCookieJar(const std::string& path, std::string& error) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, kOwnerOnly);
  if (fd < 0) {
    error = "cannot create the cookie jar " + path + ": " + std::strerror(errno);
    return false;
  }
  const bool narrowed = ::fchmod(fd, kOwnerOnly) == 0;
  if (!narrowed) error = "cannot set mode 0600 on the cookie jar " + path + ": " + std::strerror(errno);
  ::close(fd);
  return narrowed;
}

void RestrictCookieJar(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && (status.st_mode & 0777) != kOwnerOnly) {
    ::chmod(path.c_str(), kOwnerOnly);
  }
}

}  // namespace zrcurl
