// The file tree of one simulated file system, with cheap snapshots.
//
// Directories are shared between the live tree and every snapshot taken of it. Taking a
// snapshot only bumps the tree's generation; a later change copies the directories on its path
// that still belong to an older generation (copy on write), so a snapshot of a million files
// costs nothing until the files change, and two images that share a directory compare equal
// without looking inside it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace arraysim {

// Kinds of objects, with the numbers that the change list sends as "fType".
enum class FileType : int { File = 1, Directory = 2 };

// What the change list reports about one object. Times are seconds of the simulated clock.
struct FileAttributes {
  std::uint64_t inode = 0;
  std::uint64_t size = 0;
  std::uint64_t crTime = 0;
  std::uint64_t cTime = 0;
  std::uint64_t mTime = 0;
  std::uint64_t aTime = 0;
  std::uint64_t owner = 0;
  std::uint64_t group = 0;
  std::uint32_t links = 1;
  std::uint32_t dosAttr = 0;

  bool operator==(const FileAttributes& other) const;
  bool operator!=(const FileAttributes& other) const { return !(*this == other); }
};

struct DirectoryNode;

// One name in a directory; `directory` holds the children of a directory entry.
struct DirectoryEntry {
  std::string name;
  FileType type = FileType::File;
  FileAttributes attributes;
  std::shared_ptr<DirectoryNode> directory;
};

// The children of a directory, sorted by name (byte order).
struct DirectoryNode {
  std::uint64_t generation = 0;
  std::vector<DirectoryEntry> entries;

  const DirectoryEntry* find(std::string_view name) const;
};

// A frozen tree: what a snapshot keeps. Never changed after it was made.
struct TreeImage {
  FileAttributes rootAttributes;
  std::shared_ptr<const DirectoryNode> root;
};

// The live tree of a file system. Paths are absolute or relative to the root, with '/' between
// names ("/dir/file.txt" and "dir/file.txt" are the same object). Misuse (a missing object, a
// name taken, a file where a directory is needed) throws std::invalid_argument. Every change
// advances the simulated clock by one second, stamps the object it touches and, when names
// come or go, the directory that holds them. Not thread-safe: its owner locks.
class FileTree {
 public:
  FileTree();

  // Makes the directory and any missing parents; nothing happens when it exists.
  void makeDirectory(std::string_view path);
  // Creates the file (and missing parents) with this size, or changes the size of the file
  // that is there.
  void writeFile(std::string_view path, std::uint64_t size);
  // Creates a file with exactly these attributes; an inode of 0 is replaced by a fresh one.
  void createFile(std::string_view path, const FileAttributes& attributes);
  // Marks the object as modified without changing its size.
  void touch(std::string_view path);
  // Replaces the attributes of an existing object.
  void setAttributes(std::string_view path, const FileAttributes& attributes);
  // Removes a file, or a directory with all it holds.
  void remove(std::string_view path);
  // Moves an object to a new name, possibly in another directory; the inode stays.
  void rename(std::string_view from, std::string_view to);

  bool exists(std::string_view path) const;
  std::optional<FileAttributes> attributes(std::string_view path) const;
  std::optional<FileType> type(std::string_view path) const;
  // Files and directories below the root.
  std::size_t objectCount() const;

  // Returns the current tree as an image; later changes no longer reach it.
  TreeImage freeze();

  // For bulk builders: the writable node of a directory (made with its parents when missing).
  // The caller keeps the entries sorted by name and gives new entries fresh attributes.
  DirectoryNode& writableDirectory(std::string_view path);
  // Attributes for a new object: a fresh inode and the next tick of the clock.
  FileAttributes freshAttributes(FileType type, std::uint64_t size = 0);
  std::uint64_t tick() { return ++clock_; }

 private:
  struct Location {
    DirectoryNode* parent;
    FileAttributes* parentAttributes;
    std::string name;
  };

  Location locate(std::string_view path, bool makeParents);
  DirectoryEntry& existing(std::string_view path);
  const DirectoryEntry* lookup(std::string_view path) const;
  DirectoryNode& writable(std::shared_ptr<DirectoryNode>& slot);
  void insert(Location& location, DirectoryEntry entry);
  void stamp(FileAttributes& attributes, bool contentChanged);

  std::uint64_t generation_ = 1;
  std::uint64_t clock_ = 1700000000;
  std::uint64_t nextInode_ = 64;
  FileAttributes rootAttributes_;
  std::shared_ptr<DirectoryNode> root_;
};

// Splits a path into its names, dropping empty ones.
std::vector<std::string_view> SplitPath(std::string_view path);

}  // namespace arraysim
