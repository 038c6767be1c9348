#include "filetree/TreeGenerator.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <vector>

namespace arraysim {
namespace {

std::string Numbered(const char* format, unsigned long long value) {
  char buffer[32];
  const int length = std::snprintf(buffer, sizeof buffer, format, value);
  return std::string(buffer, static_cast<std::size_t>(length));
}

// A multiplier coprime with `count`, so that i -> (i * step) % count visits every file once
// while scattering neighbours: changes land all over the tree, not in its first directories.
std::uint64_t ScatterStep(std::uint64_t count) {
  std::uint64_t step = 7919;
  while (count > 1 && std::gcd(step, count) != 1) step += 2;
  return step;
}

void InsertSorted(std::vector<DirectoryEntry>& entries, DirectoryEntry entry) {
  if (entries.empty() || entries.back().name < entry.name) {
    entries.push_back(std::move(entry));
    return;
  }
  auto at = std::lower_bound(entries.begin(), entries.end(), entry.name,
                             [](const DirectoryEntry& e, const std::string& name) { return e.name < name; });
  entries.insert(at, std::move(entry));
}

}  // namespace

TreeGenerator::TreeGenerator(TreeShape shape) : shape_(shape) {
  if (shape_.filesPerDirectory == 0) shape_.filesPerDirectory = 1;
}

std::size_t TreeGenerator::directoryCount() const {
  return std::max<std::size_t>(1, (shape_.files + shape_.filesPerDirectory - 1) / shape_.filesPerDirectory);
}

std::string TreeGenerator::directoryPath(std::size_t index) { return Numbered("/d%07llu", index); }

void TreeGenerator::populate(FileTree& tree) const {
  std::size_t file = 0;
  for (std::size_t d = 0; d < directoryCount(); ++d) {
    auto& directory = tree.writableDirectory(directoryPath(d));
    const std::size_t end = std::min(shape_.files, file + shape_.filesPerDirectory);
    directory.entries.reserve(directory.entries.size() + (end - file));
    for (; file < end; ++file) {
      InsertSorted(directory.entries, DirectoryEntry{Numbered("f%08llu.dat", file), FileType::File,
                                                     tree.freshAttributes(FileType::File, shape_.fileSize), nullptr});
    }
  }
}

std::size_t TreeGenerator::change(FileTree& tree, const ChangeShape& changes) const {
  const std::uint64_t total = shape_.files;
  const std::uint64_t modified = std::min<std::uint64_t>(changes.modified, total);
  const std::uint64_t deleted = std::min<std::uint64_t>(changes.deleted, total - modified);
  const std::uint64_t step = ScatterStep(total);
  const std::size_t directories = directoryCount();

  std::size_t reported = 0;
  std::uint64_t ordinal = 0;
  for (std::size_t d = 0; d < directories; ++d) {
    const auto path = directoryPath(d);
    auto& directory = tree.writableDirectory(path);
    bool namesChanged = false;
    auto& entries = directory.entries;
    for (auto& entry : entries) {
      if (entry.type != FileType::File || ordinal >= total) continue;
      const std::uint64_t rank = (ordinal++ * step) % total;
      if (rank < modified) {
        entry.attributes.size += shape_.fileSize;
        entry.attributes.mTime = entry.attributes.cTime = tree.tick();
        ++reported;
      } else if (rank < modified + deleted) {
        entry.name.clear();  // marks it for the sweep below
        ++reported;
        namesChanged = true;
      }
    }
    entries.erase(std::remove_if(entries.begin(), entries.end(), [](const DirectoryEntry& e) { return e.name.empty(); }),
                  entries.end());
    for (std::size_t c = d; c < changes.created; c += directories) {
      auto attributes = tree.freshAttributes(FileType::File, shape_.fileSize);
      InsertSorted(entries, DirectoryEntry{Numbered("n%016llx.dat", attributes.inode), FileType::File, attributes, nullptr});
      ++reported;
      namesChanged = true;
    }
    if (namesChanged) {
      tree.touch(path);
      ++reported;
    }
  }
  return reported;
}

}  // namespace arraysim
