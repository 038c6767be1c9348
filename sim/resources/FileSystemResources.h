// File systems: GET filesystem[?vstoreId=], GET filesystem/<id>, and each file system's live
// file tree, which tests change between snapshots.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Faults.h"
#include "filetree/FileTree.h"
#include "http/Router.h"

namespace arraysim {

// A file system's TYPE, and the PARENTTYPE of what belongs to one (snapshots, change lists).
constexpr char kFileSystemType[] = "40";

struct FileSystemInfo {
  std::string id;  // decimal, as clients compute with it
  std::string name;
  std::string healthStatus = "1";
  std::string runningStatus = "27";
  std::string vstoreId;  // empty: outside any vStore; the key is then left out of the answer
  std::string vstoreName;
};

struct FileSystem {
  FileSystemInfo info;
  FileTree tree;
  int snapDiffRefusals = 0;   // snapshots asked with ENABLESNAPDIFF "true" to refuse, or kAlways
  int snapshotRefusals = 0;   // snapshots of either kind to refuse, or kAlways
  std::uint64_t snapshotsTaken = 0;
};

class FileSystemResources;

// A handle on the live tree of one file system, for tests. Each call locks the array's state,
// so it is safe while clients are talking to the simulator. See FileTree for the rules.
class LiveFiles {
 public:
  LiveFiles(FileSystemResources& owner, std::string fileSystemId);

  LiveFiles& makeDirectory(const std::string& path);
  LiveFiles& writeFile(const std::string& path, std::uint64_t size = 0);
  LiveFiles& createFile(const std::string& path, const FileAttributes& attributes);
  LiveFiles& touch(const std::string& path);
  LiveFiles& setAttributes(const std::string& path, const FileAttributes& attributes);
  LiveFiles& remove(const std::string& path);
  LiveFiles& rename(const std::string& from, const std::string& to);

  bool exists(const std::string& path) const;
  std::optional<FileAttributes> attributes(const std::string& path) const;
  std::size_t objectCount() const;
  // Several changes under one lock, or anything the calls above do not offer.
  void edit(const std::function<void(FileTree&)>& change);

 private:
  FileSystemResources& owner_;
  std::string id_;
};

class FileSystemResources {
 public:
  explicit FileSystemResources(std::recursive_mutex& mutex);

  // Creates a file system and answers its identifier. `info.id` may be given (decimal);
  // otherwise the next free number is taken. Throws std::invalid_argument on a taken id.
  std::string create(const std::string& name, FileSystemInfo info = {});
  void remove(const std::string& id);
  bool exists(const std::string& id) const;
  std::optional<FileSystemInfo> info(const std::string& id) const;
  std::vector<FileSystemInfo> list() const;  // in identifier order
  std::optional<std::string> idOf(const std::string& name) const;
  void setHealthStatus(const std::string& id, const std::string& healthStatus);

  LiveFiles files(const std::string& id);

  // Makes the next `count` snapshot requests with ENABLESNAPDIFF "true" fail with
  // 1073754130 (kAlways: all of them).
  void refuseSnapDiff(const std::string& id, int count);
  // Makes the next `count` snapshot requests fail with 1073754130 whatever they ask.
  void refuseSnapshots(const std::string& id, int count);

  // Runs `use` on the file system under the lock; throws std::invalid_argument if unknown.
  template <typename Use>
  auto with(const std::string& id, Use&& use) -> decltype(use(std::declval<FileSystem&>())) {
    std::lock_guard<std::recursive_mutex> lock(mutex_);
    return use(existing(id));
  }
  // Lookup for the other resource families, which hold the lock already.
  FileSystem* find(const std::string& id);
  const FileSystem* find(const std::string& id) const;

  void clear();
  void registerRoutes(Router& router);

 private:
  FileSystem& existing(const std::string& id);
  Reply list(const ArrayRequest& request) const;
  Reply getOne(const ArrayRequest& request) const;

  std::recursive_mutex& mutex_;
  std::map<std::uint64_t, FileSystem> fileSystems_;
};

// The JSON record of a file system as the array lists it.
nlohmann::json FileSystemRecord(const FileSystemInfo& info);

}  // namespace arraysim
