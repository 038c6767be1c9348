// The true difference between two images of one file tree: what a change-list session hands
// out, and what tests compare a client's walk with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "filetree/FileTree.h"

namespace arraysim {

// The numbers that the change list sends as "changeType".
enum class ChangeType : int { Created = 0, Modified = 1, Deleted = 2 };

// One changed object. `path` is the plain name from the root ("/dir/file.txt"), not encoded.
// `attributes` are those of the incremental image, or of the base one for a deletion.
struct Change {
  ChangeType changeType = ChangeType::Modified;
  FileType fileType = FileType::File;
  std::string path;
  FileAttributes attributes;

  bool operator==(const Change& other) const;
  bool operator!=(const Change& other) const { return !(*this == other); }
};

// The difference, computed once and kept compact: an entry points into the two images (which
// it keeps alive) instead of copying names and attributes, so a million changes cost little.
//
// Order: depth first, names in byte order, a directory before what it holds.
// - an object only in the incremental image is Created, and so is everything below it;
// - an object only in the base image is Deleted, and so is everything below it;
// - an object in both whose attributes differ is Modified;
// - an object whose kind changed is Deleted, then Created;
// - a renamed object is Deleted under its old name and Created under its new one.
// The root itself is never reported. Directories shared by both images are skipped unread.
class TreeDifference {
 public:
  TreeDifference(TreeImage base, TreeImage incremental);

  std::size_t size() const { return items_.size(); }
  bool empty() const { return items_.empty(); }
  Change at(std::size_t index) const;
  std::vector<Change> all() const;

  // Cheap access for writing pages.
  ChangeType changeType(std::size_t index) const { return items_[index].changeType; }
  const DirectoryEntry& entry(std::size_t index) const { return *items_[index].entry; }
  void appendPath(std::size_t index, std::string& out) const;

 private:
  friend class DifferenceWalk;
  struct Item {
    const DirectoryEntry* entry;
    std::uint32_t directory;  // index into directories_: the path of the directory holding it
    ChangeType changeType;
  };

  TreeImage base_;
  TreeImage incremental_;
  std::vector<std::string> directories_;  // "/", "/a/", "/a/b/", ...
  std::vector<Item> items_;
};

// The difference as a plain list.
std::vector<Change> DifferenceBetween(const TreeImage& base, const TreeImage& incremental);

}  // namespace arraysim
