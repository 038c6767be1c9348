#include <functional>
#include <stdexcept>

#include <gtest/gtest.h>

#include "filetree/FileTree.h"
#include "filetree/TreeDifference.h"
#include "filetree/TreeGenerator.h"

namespace {

using namespace arraysim;

TEST(FileTreeTest, SnapshotsKeepTheirTreeAndShareWhatDidNotChange) {
  FileTree tree;
  tree.writeFile("/x/a", 1);
  tree.writeFile("/y/b", 1);
  const auto first = tree.freeze();
  tree.writeFile("/x/a", 2);
  const auto second = tree.freeze();

  const auto changes = DifferenceBetween(first, second);
  ASSERT_EQ(changes.size(), 1u);
  EXPECT_EQ(changes[0].path, "/x/a");
  EXPECT_EQ(changes[0].attributes.size, 2u);
  EXPECT_TRUE(DifferenceBetween(first, first).empty());
  EXPECT_EQ(first.root->find("y")->directory, second.root->find("y")->directory) << "untouched directories are shared";
  EXPECT_NE(first.root->find("x")->directory, second.root->find("x")->directory);
}

TEST(FileTreeTest, MisuseThrowsAndChangesNothing) {
  const std::function<void(FileTree&)> misuses[] = {
      [](FileTree& t) { t.remove("/missing"); },
      [](FileTree& t) { t.writeFile("/d", 1); },
      [](FileTree& t) { t.makeDirectory("/f"); },
      [](FileTree& t) { t.writeFile("/f/under-a-file", 1); },
      [](FileTree& t) { t.createFile("/f", FileAttributes{}); },
      [](FileTree& t) { t.rename("/d", "/d/inside"); },
      [](FileTree& t) { t.rename("/d", "/f"); },
      [](FileTree& t) { t.remove("/"); },
  };
  for (std::size_t i = 0; i < std::size(misuses); ++i) {
    FileTree tree;
    tree.writeFile("/d/e", 1);
    tree.writeFile("/f", 1);
    const auto before = tree.freeze();
    EXPECT_THROW(misuses[i](tree), std::invalid_argument) << "case " << i;
    EXPECT_TRUE(DifferenceBetween(before, tree.freeze()).empty()) << "case " << i;
  }
}

TEST(FileTreeTest, GeneratorReportsExactlyTheDifferenceItMade) {
  FileTree tree;
  const TreeGenerator generator(TreeShape{10000, 128, 4096});
  generator.populate(tree);
  EXPECT_EQ(tree.objectCount(), 10000u + generator.directoryCount());
  const auto base = tree.freeze();
  const auto reported = generator.change(tree, ChangeShape{500, 1000, 700});
  const auto changes = DifferenceBetween(base, tree.freeze());
  EXPECT_EQ(changes.size(), reported);

  std::size_t created = 0, modifiedFiles = 0, deleted = 0;
  for (const auto& change : changes) {
    created += change.changeType == ChangeType::Created;
    deleted += change.changeType == ChangeType::Deleted;
    modifiedFiles += change.changeType == ChangeType::Modified && change.fileType == FileType::File;
  }
  EXPECT_EQ(created, 500u);
  EXPECT_EQ(modifiedFiles, 1000u);
  EXPECT_EQ(deleted, 700u);
}

}  // namespace
