#include "filetree/TreeDifference.h"

#include <utility>

namespace arraysim {

class DifferenceWalk {
 public:
  explicit DifferenceWalk(TreeDifference& difference) : difference_(difference) {}

  void compare(const DirectoryNode& base, const DirectoryNode& incremental, std::uint32_t directory) {
    if (&base == &incremental) return;
    auto b = base.entries.begin();
    auto i = incremental.entries.begin();
    while (b != base.entries.end() || i != incremental.entries.end()) {
      if (i == incremental.entries.end() || (b != base.entries.end() && b->name < i->name)) {
        emitSubtree(*b++, ChangeType::Deleted, directory);
      } else if (b == base.entries.end() || i->name < b->name) {
        emitSubtree(*i++, ChangeType::Created, directory);
      } else {
        compareSameName(*b++, *i++, directory);
      }
    }
  }

 private:
  void compareSameName(const DirectoryEntry& base, const DirectoryEntry& incremental, std::uint32_t directory) {
    if (base.type != incremental.type) {
      emitSubtree(base, ChangeType::Deleted, directory);
      emitSubtree(incremental, ChangeType::Created, directory);
      return;
    }
    if (base.attributes != incremental.attributes) emit(incremental, ChangeType::Modified, directory);
    if (base.type == FileType::Directory && base.directory != incremental.directory) {
      compare(*base.directory, *incremental.directory, child(directory, base.name));
    }
  }

  void emitSubtree(const DirectoryEntry& entry, ChangeType changeType, std::uint32_t directory) {
    emit(entry, changeType, directory);
    if (!entry.directory || entry.directory->entries.empty()) return;
    const auto inside = child(directory, entry.name);
    for (const auto& each : entry.directory->entries) emitSubtree(each, changeType, inside);
  }

  void emit(const DirectoryEntry& entry, ChangeType changeType, std::uint32_t directory) {
    difference_.items_.push_back(TreeDifference::Item{&entry, directory, changeType});
  }

  std::uint32_t child(std::uint32_t directory, const std::string& name) {
    auto& directories = difference_.directories_;
    std::string path;
    path.reserve(directories[directory].size() + name.size() + 1);
    path.append(directories[directory]).append(name).push_back('/');
    directories.push_back(std::move(path));
    return static_cast<std::uint32_t>(directories.size() - 1);
  }

  TreeDifference& difference_;
};

bool Change::operator==(const Change& other) const {
  return changeType == other.changeType && fileType == other.fileType && path == other.path &&
         attributes == other.attributes;
}

TreeDifference::TreeDifference(TreeImage base, TreeImage incremental)
    : base_(std::move(base)), incremental_(std::move(incremental)), directories_{"/"} {
  DifferenceWalk(*this).compare(*base_.root, *incremental_.root, 0);
}

void TreeDifference::appendPath(std::size_t index, std::string& out) const {
  const auto& item = items_[index];
  out.append(directories_[item.directory]).append(item.entry->name);
}

Change TreeDifference::at(std::size_t index) const {
  const auto& item = items_[index];
  Change change;
  change.changeType = item.changeType;
  change.fileType = item.entry->type;
  appendPath(index, change.path);
  change.attributes = item.entry->attributes;
  return change;
}

std::vector<Change> TreeDifference::all() const {
  std::vector<Change> changes;
  changes.reserve(items_.size());
  for (std::size_t i = 0; i < items_.size(); ++i) changes.push_back(at(i));
  return changes;
}

std::vector<Change> DifferenceBetween(const TreeImage& base, const TreeImage& incremental) {
  return TreeDifference(base, incremental).all();
}

}  // namespace arraysim
