#include "CookieJar.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace zrcurl {

namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;
constexpr char kHeader[] = "# Netscape HTTP Cookie File\n";

std::string Reason(const char* what, const std::string& path) {
  return std::string("cannot ") + what + " the cookie file " + path + ": " + std::strerror(errno);
}

bool OwnPlainFile(int fd) {
  struct stat status {};
  return ::fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid() &&
         status.st_nlink == 1;
}

// A descriptor for writing the jar, or -1 with the reason. An existing entry is opened neither
// truncating nor following links, and kept only when it is a plain file of ours with one link.
// O_NONBLOCK keeps a planted FIFO from blocking the open.
int OpenOwnFile(const std::string& path, std::string& error) {
  int fd = ::open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (fd >= 0 && OwnPlainFile(fd)) {
    if (::fchmod(fd, kOwnerOnly) == 0) return fd;
    error = Reason("set mode 0600 on", path);
    ::close(fd);
    return -1;
  }
  if (fd >= 0) ::close(fd);
  if (::unlink(path.c_str()) != 0 && errno != ENOENT) {
    error = Reason("replace", path);
    return -1;
  }
  fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kOwnerOnly);
  if (fd < 0) {
    error = Reason("create", path);
    return -1;
  }
  // The umask can only have narrowed the mode, but the owner must still read the jar back.
  if (::fchmod(fd, kOwnerOnly) != 0) {
    error = Reason("set mode 0600 on", path);
    ::close(fd);
    return -1;
  }
  return fd;
}

bool WriteAll(int fd, const std::string& text) {
  size_t written = 0;
  while (written < text.size()) {
    const ssize_t done = ::write(fd, text.data() + written, text.size() - written);
    if (done < 0 && errno == EINTR) continue;
    if (done <= 0) return false;
    written += static_cast<size_t>(done);
  }
  return true;
}

}  // namespace

bool PrepareCookieJar(const std::string& path, std::string& error) {
  const int fd = OpenOwnFile(path, error);
  if (fd < 0) return false;
  ::close(fd);
  return true;
}

bool SaveCookieJar(const std::string& path, const curl_slist* cookies, std::string& error) {
  std::string text = kHeader;
  for (const curl_slist* cookie = cookies; cookie; cookie = cookie->next) {
    text += cookie->data;
    text += '\n';
  }
  const int fd = OpenOwnFile(path, error);
  if (fd < 0) return false;
  bool saved = ::ftruncate(fd, 0) == 0 && WriteAll(fd, text);
  if (!saved) error = Reason("write", path);
  if (::close(fd) != 0 && saved) {
    error = Reason("write", path);
    saved = false;
  }
  return saved;
}

bool CookieFileReadable(const std::string& path, std::string& error) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) {
    if (errno == ENOENT) return true;
    error = Reason("read", path);
    return false;
  }
  struct stat status {};
  const bool plain = ::fstat(fd, &status) == 0 && S_ISREG(status.st_mode);
  ::close(fd);
  if (!plain) error = "cannot read the cookie file " + path + ": not a plain file";
  return plain;
}

}  // namespace zrcurl
