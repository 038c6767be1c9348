// A file system with a large tree and a pair of snapshots with a large difference between
// them, made in one call, for benchmarks and paging tests.
#pragma once

#include <cstddef>
#include <string>

#include "ArrayModel.h"
#include "filetree/TreeGenerator.h"

namespace arraysim {

struct GenerationPlan {
  std::string fileSystemName = "generated";
  std::string vstoreId;
  TreeShape tree;       // the files in the base snapshot
  ChangeShape changes;  // what differs in the incremental snapshot
};

struct GeneratedSnapshotPair {
  std::string fileSystemId;
  std::string baseSnapshotId;
  std::string incrementalSnapshotId;
  std::size_t changeCount = 0;  // entries of the change list between the two
};

// Snapshots are named "<fileSystemName>-base" and "<fileSystemName>-incremental".
GeneratedSnapshotPair GenerateSnapshotPair(ArrayModel& model, const GenerationPlan& plan);

}  // namespace arraysim
