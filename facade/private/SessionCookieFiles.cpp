#include "SessionCookieFiles.h"

#include <unistd.h>

#include <chrono>
#include <map>
#include <mutex>

#include "TkDebug.h"
#include "jsonxx.h"

namespace SessionCookieFiles {
namespace {

struct Held {
  std::timed_mutex mutex;
  std::map<const void*, std::string> paths;
};

// Never destroyed: the process may end from any thread, during static destruction too.
Held& held() {
  static Held* files = new Held;
  return *files;
}

// The process is about to end: say why through the log, where the operator looks, and take the
// live session cookies along.
void onRequiredValueMissing(const char* what) {
  TkDebug(nullptr).DebugLvl("jsonxx::assertion", -1,
                            "The array's answer lacks a required value: %s. The process ends here.", what);
  Held& files = held();
  // Another thread holds the lock for a moment at most; a wait without end is worse than a file left.
  std::unique_lock<std::timed_mutex> lock(files.mutex, std::chrono::seconds(1));
  if (!lock.owns_lock()) return;
  for (const auto& entry : files.paths) ::unlink(entry.second.c_str());
}

}  // namespace

void hold(const void* owner, const std::string& path) {
  static const bool hooked = (jsonxx::set_assertion_hook(&onRequiredValueMissing), true);
  (void)hooked;
  Held& files = held();
  std::lock_guard<std::timed_mutex> lock(files.mutex);
  files.paths[owner] = path;
}

void release(const void* owner) {
  Held& files = held();
  std::lock_guard<std::timed_mutex> lock(files.mutex);
  files.paths.erase(owner);
}

}  // namespace SessionCookieFiles
