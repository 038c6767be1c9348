// Builds large trees and large differences fast, for benchmarks and paging tests.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "filetree/FileTree.h"

namespace arraysim {

// A flat layout: `files` files spread over directories of `filesPerDirectory` each, named
// /d0000000/f00000000.dat, /d0000000/f00000001.dat, ... /d0000001/f00001000.dat, ...
struct TreeShape {
  std::size_t files = 0;
  std::size_t filesPerDirectory = 1000;
  std::uint64_t fileSize = 4096;
};

// Changes spread evenly over the generated files. A file is modified or deleted, never both;
// new files (named n<hex>.dat) go round-robin into the generated directories.
struct ChangeShape {
  std::size_t created = 0;
  std::size_t modified = 0;
  std::size_t deleted = 0;
};

class TreeGenerator {
 public:
  explicit TreeGenerator(TreeShape shape);

  // Adds the files of the shape to the tree.
  void populate(FileTree& tree) const;
  // Applies the changes to the generated directories and answers how many objects the change
  // list will report for them: every changed file, plus each directory that gained or lost a
  // name (its times change).
  std::size_t change(FileTree& tree, const ChangeShape& changes) const;

  std::size_t directoryCount() const;
  static std::string directoryPath(std::size_t index);

 private:
  TreeShape shape_;
};

}  // namespace arraysim
