#include "PasswordSource.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>

namespace zrarray {

namespace {

// A password is one line: the line end that editors and `echo` add is not part of it.
std::string WithoutLineEnd(std::string text) {
  if (!text.empty() && text.back() == '\n') text.pop_back();
  if (!text.empty() && text.back() == '\r') text.pop_back();
  return text;
}

std::string NonEmpty(std::string password, const std::string& source) {
  if (password.empty()) throw UsageError("the password from " + source + " is empty");
  return password;
}

class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  ~FileDescriptor() {
    if (fd_ >= 0) close(fd_);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  int get() const { return fd_; }

 private:
  int fd_;
};

// Echo off while the password is typed, back on whatever happens.
class HiddenInput {
 public:
  HiddenInput() : active_(isatty(STDIN_FILENO) == 1 && tcgetattr(STDIN_FILENO, &saved_) == 0) {
    if (!active_) return;
    termios silent = saved_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(STDIN_FILENO, TCSANOW, &silent);
    std::cerr << "Password: " << std::flush;
  }
  ~HiddenInput() {
    if (!active_) return;
    tcsetattr(STDIN_FILENO, TCSANOW, &saved_);
    std::cerr << "\n";
  }
  HiddenInput(const HiddenInput&) = delete;
  HiddenInput& operator=(const HiddenInput&) = delete;

 private:
  termios saved_{};
  bool active_;
};

}  // namespace

std::string PasswordFromFile(const std::string& path) {
  // The checks are made on the open file, so the file read is the file checked.
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
  if (file.get() < 0) throw UsageError("cannot open the password file " + path + ": " + std::strerror(errno));
  struct stat status {};
  if (fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    throw UsageError("the password file " + path + " is not a regular file");
  }
  if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
    char mode[8];
    std::snprintf(mode, sizeof mode, "%04o", static_cast<unsigned>(status.st_mode & 07777));
    throw UsageError("the password file " + path + " has mode " + mode +
                     ", which lets others read or change it; make it 0600 (chmod 600 " + path + ")");
  }
  std::string text;
  char buffer[4096];
  for (ssize_t got; (got = read(file.get(), buffer, sizeof buffer)) != 0;) {
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) throw UsageError("cannot read the password file " + path + ": " + std::strerror(errno));
    text.append(buffer, static_cast<std::size_t>(got));
  }
  return NonEmpty(WithoutLineEnd(text), "the password file " + path);
}

std::string PasswordFromStandardInput() {
  std::string line;
  {
    const HiddenInput hidden;
    std::getline(std::cin, line);
  }
  return NonEmpty(WithoutLineEnd(line), "standard input");
}

std::string PasswordFromEnvironment(const std::string& variable) {
  const char* value = std::getenv(variable.c_str());
  if (value == nullptr) throw UsageError("the environment variable " + variable + " is not set");
  return NonEmpty(value, "the environment variable " + variable);
}

}  // namespace zrarray
