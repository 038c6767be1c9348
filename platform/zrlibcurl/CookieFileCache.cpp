#include "CookieFileCache.h"

#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <mutex>
#include <string_view>
#include <unordered_map>

namespace zrcurl {
namespace {

// A session's cookie file holds a few lines; anything larger is left to libcurl.
constexpr off_t kMaxFileSize = 256 * 1024;
// libcurl skips lines that do not fit its 5000-byte line buffer; long lines are left to it.
constexpr size_t kMaxLineLength = 4096;
// Files remembered at most; past that the cache starts over.
constexpr size_t kMaxFiles = 64;
// Far above the granularity of file timestamps on local Linux file systems (one clock tick).
std::atomic<long long> settleTimeNs{1000000000LL};

struct FileKey {
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  timespec modified{};
  timespec changed{};
};

bool SameTime(const timespec& a, const timespec& b) { return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec; }

bool operator==(const FileKey& a, const FileKey& b) {
  return a.device == b.device && a.inode == b.inode && a.size == b.size && SameTime(a.modified, b.modified) &&
         SameTime(a.changed, b.changed);
}

FileKey KeyOf(const struct stat& status) {
  return {status.st_dev, status.st_ino, status.st_size, status.st_mtim, status.st_ctim};
}

long long Nanoseconds(const timespec& time) { return time.tv_sec * 1000000000LL + time.tv_nsec; }

struct Entry {
  FileKey key;
  unsigned long long jarWrites = 0;  // the count of jar writes when the file was read
  bool settled = false;              // read long enough after its last change to be trusted
  std::shared_ptr<const CookieLines> lines;
};

struct Cache {
  std::mutex mutex;
  std::unordered_map<std::string, Entry> entries;
};

// Never destroyed: clients may be made and freed from static destructors at exit.
Cache& TheCache() {
  static Cache* cache = new Cache;
  return *cache;
}

std::atomic<unsigned long long> jarWrites{0};

bool HasPrefixIgnoringCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && ::strncasecmp(text.data(), prefix.data(), prefix.size()) == 0;
}

// Splits the file into the lines libcurl's reader hands to its cookie parser: cut at the first
// carriage return, leading blanks skipped. Comments (except "#HttpOnly_" cookies), empty lines and
// lines without a tab, which cannot be cookies, are left out. False for anything libcurl reads
// its own way: NUL bytes, an unterminated last line, very long lines, "Set-Cookie:" lines.
bool SplitCookieLines(std::string_view text, CookieLines& lines) {
  if (text.find('\0') != std::string_view::npos) return false;
  if (!text.empty() && text.back() != '\n') return false;
  while (!text.empty()) {
    const size_t end = text.find('\n');
    if (end > kMaxLineLength) return false;
    std::string_view line = text.substr(0, std::min(end, text.find('\r')));
    text.remove_prefix(end + 1);
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (HasPrefixIgnoringCase(line, "Set-Cookie:")) return false;
    if (line.empty() || line.find('\t') == std::string_view::npos) continue;
    if (line.front() == '#' && line.compare(0, 10, "#HttpOnly_") != 0) continue;
    lines.emplace_back(line);
  }
  return true;
}

// Reads and splits the file; null when it is unusual or changes while it is read.
std::shared_ptr<const CookieLines> ReadCookieLines(const std::string& path, FileKey& key) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return nullptr;
  struct stat status {};
  std::string text;
  bool complete = ::fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= kMaxFileSize;
  if (complete) {
    key = KeyOf(status);
    // One byte more than the size, to see the end of the file in the same read.
    text.resize(static_cast<size_t>(status.st_size) + 1);
    size_t filled = 0;
    while (filled < text.size()) {
      const ssize_t got = ::read(fd, &text[filled], text.size() - filled);
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) break;
      filled += static_cast<size_t>(got);
    }
    complete = filled == static_cast<size_t>(status.st_size);
    text.resize(filled);
  }
  ::close(fd);
  auto lines = std::make_shared<CookieLines>();
  if (!complete || !SplitCookieLines(text, *lines)) return nullptr;
  return lines;
}

}  // namespace

std::shared_ptr<const CookieLines> CookieFileLines(const std::string& path) {
  // "" only turns the cookie engine on and "-" is standard input: both libcurl's.
  if (path.empty() || (path.size() == 1 && path[0] == '-')) return nullptr;
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);  // before the file is looked at
  const unsigned long long writes = jarWrites.load(std::memory_order_acquire);
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;

  Cache& cache = TheCache();
  {
    std::lock_guard<std::mutex> lock(cache.mutex);
    const auto found = cache.entries.find(path);
    if (found != cache.entries.end() && found->second.settled && found->second.jarWrites == writes &&
        found->second.key == KeyOf(status)) {
      return found->second.lines;
    }
  }

  FileKey key;
  std::shared_ptr<const CookieLines> lines = ReadCookieLines(path, key);
  std::lock_guard<std::mutex> lock(cache.mutex);
  if (!lines) {
    cache.entries.erase(path);
    return nullptr;
  }
  if (cache.entries.size() >= kMaxFiles && cache.entries.count(path) == 0) cache.entries.clear();
  const long long age = Nanoseconds(now) - std::max(Nanoseconds(key.modified), Nanoseconds(key.changed));
  cache.entries[path] = Entry{key, writes, age >= settleTimeNs.load(std::memory_order_relaxed), lines};
  return lines;
}

void CookieFileWritten() { jarWrites.fetch_add(1, std::memory_order_acq_rel); }

void SetCookieFileSettleTime(std::chrono::nanoseconds settle) {
  settleTimeNs.store(settle.count(), std::memory_order_relaxed);
}

}  // namespace zrcurl
