// File-system snapshots: POST fssnapshot, GET fssnapshot/<id>, DELETE fssnapshot/<id>.
// A snapshot keeps a frozen image of its file system's tree at the time it was taken.
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "filetree/FileTree.h"
#include "http/Router.h"
#include "resources/FileSystemResources.h"

namespace arraysim {

struct FileSystemSnapshotInfo {
  std::string id;  // "<file system id>@<n>"
  std::string name;
  std::string parentId;
  std::string parentName;
  std::string snapType = "8";  // "8": a snapshot for incremental backup
  std::string vstoreId;        // the file system's vStore
  bool snapDiffEnabled = false;
};

struct FileSystemSnapshot {
  FileSystemSnapshotInfo info;
  TreeImage image;
};

class FileSystemSnapshotResources {
 public:
  FileSystemSnapshotResources(std::recursive_mutex& mutex, FileSystemResources& fileSystems);

  // Takes a snapshot of the file system's live tree now and answers its identifier.
  // Throws std::invalid_argument for an unknown file system or a name taken on it.
  std::string take(const std::string& fileSystemId, const std::string& name, bool enableSnapDiff = true);
  void setType(const std::string& id, const std::string& snapType);
  void remove(const std::string& id);
  bool exists(const std::string& id) const;
  std::optional<FileSystemSnapshotInfo> info(const std::string& id) const;
  std::vector<FileSystemSnapshotInfo> list() const;
  // The frozen tree; throws std::invalid_argument for an unknown snapshot.
  TreeImage image(const std::string& id) const;
  // Lookup for the other resource families, which hold the lock already.
  const FileSystemSnapshot* find(const std::string& id) const;

  void clear();
  void registerRoutes(Router& router);

 private:
  std::string takeLocked(FileSystem& fs, const std::string& name, bool enableSnapDiff);
  bool nameTaken(const std::string& fileSystemId, const std::string& name) const;
  Reply create(const ArrayRequest& request);
  Reply get(const ArrayRequest& request) const;
  Reply erase(const ArrayRequest& request);
  const FileSystemSnapshot* visible(const ArrayRequest& request) const;

  std::recursive_mutex& mutex_;
  FileSystemResources& fileSystems_;
  std::map<std::string, FileSystemSnapshot> snapshots_;
};

}  // namespace arraysim
