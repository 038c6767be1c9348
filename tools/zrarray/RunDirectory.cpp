#include "RunDirectory.h"

#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <csignal>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace zrarray {

namespace {

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

// The runtime directory as the XDG rules have it: ours alone. Another one is passed over, not
// trusted with a live session cookie.
bool PrivateToUs(const std::string& directory) {
  struct stat status {};
  return !directory.empty() && directory.front() == '/' && stat(directory.c_str(), &status) == 0 &&
         S_ISDIR(status.st_mode) && status.st_uid == geteuid() && (status.st_mode & 077) == 0 &&
         access(directory.c_str(), W_OK | X_OK) == 0;
}

// A temporary directory: any directory we may write in (mkdtemp's 0700 keeps others out of ours).
bool Writable(const std::string& directory) {
  struct stat status {};
  return !directory.empty() && directory.front() == '/' && stat(directory.c_str(), &status) == 0 &&
         S_ISDIR(status.st_mode) && access(directory.c_str(), W_OK | X_OK) == 0;
}

// The library ends the process with abort() when an answer lacks a value it requires, after
// removing its cookie files: the directory is then empty, and goes too.
char g_abandoned[PATH_MAX];

extern "C" void RemoveOnAbort(int) {
  rmdir(g_abandoned);
  std::signal(SIGABRT, SIG_DFL);
  raise(SIGABRT);  // delivered when the handler returns: the process ends as it would have
}

}  // namespace

std::string RunDirectory::ParentDirectory() {
  const std::string runtime = Environment("XDG_RUNTIME_DIR");
  if (PrivateToUs(runtime)) return runtime;
  const std::string temporary = Environment("TMPDIR");
  if (Writable(temporary)) return temporary;
  return "/tmp";
}

RunDirectory::RunDirectory() {
  const std::string parent = ParentDirectory();
  std::string pattern = parent + (parent.back() == '/' ? "" : "/") + "zrarray-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("cannot make a private directory for the session's cookie file in " + parent + ": " +
                             std::strerror(errno));
  }
  path_ = pattern;
  if (path_.size() < sizeof g_abandoned) {
    path_.copy(g_abandoned, path_.size());
    std::signal(SIGABRT, RemoveOnAbort);
  }
}

RunDirectory::~RunDirectory() { remove(); }

void RunDirectory::remove() const {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace zrarray
