#include "filetree/FileTree.h"

#include <algorithm>
#include <stdexcept>

namespace arraysim {
namespace {

constexpr std::uint32_t kDosArchive = 0x20;
constexpr std::uint32_t kDosDirectory = 0x10;
constexpr std::uint64_t kRootInode = 2;

std::vector<DirectoryEntry>::iterator LowerBound(DirectoryNode& node, std::string_view name) {
  return std::lower_bound(node.entries.begin(), node.entries.end(), name,
                          [](const DirectoryEntry& entry, std::string_view key) { return entry.name < key; });
}

std::invalid_argument Misuse(const std::string& what, std::string_view path) {
  return std::invalid_argument(what + ": \"" + std::string(path) + "\"");
}

void MarkModified(FileAttributes& attributes, std::uint64_t now) {
  attributes.mTime = now;
  attributes.cTime = now;
}

}  // namespace

bool FileAttributes::operator==(const FileAttributes& other) const {
  return inode == other.inode && size == other.size && crTime == other.crTime && cTime == other.cTime &&
         mTime == other.mTime && aTime == other.aTime && owner == other.owner && group == other.group &&
         links == other.links && dosAttr == other.dosAttr;
}

const DirectoryEntry* DirectoryNode::find(std::string_view name) const {
  auto it = std::lower_bound(entries.begin(), entries.end(), name,
                             [](const DirectoryEntry& entry, std::string_view key) { return entry.name < key; });
  return it != entries.end() && it->name == name ? &*it : nullptr;
}

std::vector<std::string_view> SplitPath(std::string_view path) {
  std::vector<std::string_view> names;
  while (!path.empty()) {
    const auto slash = path.find('/');
    const auto name = path.substr(0, slash);
    if (!name.empty()) names.push_back(name);
    if (slash == std::string_view::npos) break;
    path.remove_prefix(slash + 1);
  }
  return names;
}

FileTree::FileTree() : root_(std::make_shared<DirectoryNode>()) {
  root_->generation = generation_;
  rootAttributes_.inode = kRootInode;
  rootAttributes_.crTime = rootAttributes_.cTime = rootAttributes_.mTime = rootAttributes_.aTime = clock_;
  rootAttributes_.links = 2;
  rootAttributes_.dosAttr = kDosDirectory;
}

FileAttributes FileTree::freshAttributes(FileType type, std::uint64_t size) {
  FileAttributes attributes;
  attributes.inode = nextInode_++;
  attributes.size = size;
  attributes.crTime = attributes.cTime = attributes.mTime = attributes.aTime = tick();
  attributes.links = type == FileType::Directory ? 2 : 1;
  attributes.dosAttr = type == FileType::Directory ? kDosDirectory : kDosArchive;
  return attributes;
}

DirectoryNode& FileTree::writable(std::shared_ptr<DirectoryNode>& slot) {
  if (slot->generation != generation_) {
    auto copy = std::make_shared<DirectoryNode>(*slot);
    copy->generation = generation_;
    slot = std::move(copy);
  }
  return *slot;
}

FileTree::Location FileTree::locate(std::string_view path, bool makeParents) {
  const auto names = SplitPath(path);
  if (names.empty()) throw Misuse("the root directory cannot be used here", path);
  DirectoryNode* node = &writable(root_);
  FileAttributes* attributes = &rootAttributes_;
  for (std::size_t i = 0; i + 1 < names.size(); ++i) {
    auto it = LowerBound(*node, names[i]);
    if (it == node->entries.end() || it->name != names[i]) {
      if (!makeParents) throw Misuse("no such directory", path);
      DirectoryEntry directory{std::string(names[i]), FileType::Directory, freshAttributes(FileType::Directory),
                               std::make_shared<DirectoryNode>()};
      directory.directory->generation = generation_;
      MarkModified(*attributes, tick());
      it = node->entries.insert(it, std::move(directory));
    } else if (it->type != FileType::Directory) {
      throw Misuse("a file stands where a directory is needed", path);
    }
    attributes = &it->attributes;
    node = &writable(it->directory);
  }
  return Location{node, attributes, std::string(names.back())};
}

void FileTree::insert(Location& location, DirectoryEntry entry) {
  auto it = LowerBound(*location.parent, location.name);
  if (it != location.parent->entries.end() && it->name == location.name) {
    throw Misuse("the name is taken", location.name);
  }
  entry.name = location.name;
  location.parent->entries.insert(it, std::move(entry));
  MarkModified(*location.parentAttributes, tick());
}

DirectoryEntry& FileTree::existing(std::string_view path) {
  auto location = locate(path, false);
  auto it = LowerBound(*location.parent, location.name);
  if (it == location.parent->entries.end() || it->name != location.name) throw Misuse("no such object", path);
  return *it;
}

const DirectoryEntry* FileTree::lookup(std::string_view path) const {
  const DirectoryNode* node = root_.get();
  const DirectoryEntry* entry = nullptr;
  for (const auto name : SplitPath(path)) {
    if (node == nullptr) return nullptr;
    entry = node->find(name);
    if (entry == nullptr) return nullptr;
    node = entry->directory.get();
  }
  return entry;
}

void FileTree::makeDirectory(std::string_view path) {
  if (SplitPath(path).empty()) return;
  auto location = locate(path, true);
  if (const auto* present = location.parent->find(location.name)) {
    if (present->type != FileType::Directory) throw Misuse("a file has this name", path);
    return;
  }
  DirectoryEntry directory{location.name, FileType::Directory, freshAttributes(FileType::Directory),
                           std::make_shared<DirectoryNode>()};
  directory.directory->generation = generation_;
  insert(location, std::move(directory));
}

void FileTree::writeFile(std::string_view path, std::uint64_t size) {
  auto location = locate(path, true);
  auto it = LowerBound(*location.parent, location.name);
  if (it != location.parent->entries.end() && it->name == location.name) {
    if (it->type != FileType::File) throw Misuse("a directory has this name", path);
    it->attributes.size = size;
    MarkModified(it->attributes, tick());
    return;
  }
  insert(location, DirectoryEntry{location.name, FileType::File, freshAttributes(FileType::File, size), nullptr});
}

void FileTree::createFile(std::string_view path, const FileAttributes& attributes) {
  auto location = locate(path, true);
  DirectoryEntry file{location.name, FileType::File, attributes, nullptr};
  if (file.attributes.inode == 0) file.attributes.inode = nextInode_++;
  insert(location, std::move(file));
}

void FileTree::touch(std::string_view path) { MarkModified(existing(path).attributes, tick()); }

void FileTree::setAttributes(std::string_view path, const FileAttributes& attributes) {
  existing(path).attributes = attributes;
}

void FileTree::remove(std::string_view path) {
  auto location = locate(path, false);
  auto it = LowerBound(*location.parent, location.name);
  if (it == location.parent->entries.end() || it->name != location.name) throw Misuse("no such object", path);
  location.parent->entries.erase(it);
  MarkModified(*location.parentAttributes, tick());
}

void FileTree::rename(std::string_view from, std::string_view to) {
  const auto source = SplitPath(from);
  const auto target = SplitPath(to);
  if (source.empty() || target.empty()) throw Misuse("the root directory cannot be renamed", from);
  if (target.size() >= source.size() && std::equal(source.begin(), source.end(), target.begin())) {
    throw Misuse("an object cannot move into itself", to);
  }
  if (lookup(from) == nullptr) throw Misuse("no such object", from);
  if (lookup(to) != nullptr) throw Misuse("the name is taken", to);
  // Check the target's parents before anything changes, so a refused rename leaves no trace.
  std::string parents;
  for (std::size_t i = 0; i + 1 < target.size(); ++i) {
    parents.append("/").append(target[i]);
    const auto type = this->type(parents);
    if (type && *type != FileType::Directory) throw Misuse("a file stands where a directory is needed", to);
  }

  auto source_location = locate(from, false);
  auto it = LowerBound(*source_location.parent, source_location.name);
  DirectoryEntry moved = std::move(*it);
  source_location.parent->entries.erase(it);
  MarkModified(*source_location.parentAttributes, tick());

  moved.attributes.cTime = tick();
  auto target_location = locate(to, true);
  insert(target_location, std::move(moved));
}

bool FileTree::exists(std::string_view path) const {
  return SplitPath(path).empty() || lookup(path) != nullptr;
}

std::optional<FileAttributes> FileTree::attributes(std::string_view path) const {
  if (SplitPath(path).empty()) return rootAttributes_;
  const auto* entry = lookup(path);
  if (entry == nullptr) return std::nullopt;
  return entry->attributes;
}

std::optional<FileType> FileTree::type(std::string_view path) const {
  if (SplitPath(path).empty()) return FileType::Directory;
  const auto* entry = lookup(path);
  if (entry == nullptr) return std::nullopt;
  return entry->type;
}

namespace {
std::size_t CountBelow(const DirectoryNode& node) {
  std::size_t count = node.entries.size();
  for (const auto& entry : node.entries) {
    if (entry.directory) count += CountBelow(*entry.directory);
  }
  return count;
}
}  // namespace

std::size_t FileTree::objectCount() const { return CountBelow(*root_); }

TreeImage FileTree::freeze() {
  TreeImage image{rootAttributes_, root_};
  ++generation_;
  return image;
}

DirectoryNode& FileTree::writableDirectory(std::string_view path) {
  if (SplitPath(path).empty()) return writable(root_);
  makeDirectory(path);
  auto location = locate(path, false);
  auto it = LowerBound(*location.parent, location.name);
  return writable(it->directory);
}

}  // namespace arraysim
