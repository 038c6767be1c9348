#include "Generation.h"

namespace arraysim {

GeneratedSnapshotPair GenerateSnapshotPair(ArrayModel& model, const GenerationPlan& plan) {
  std::lock_guard<std::recursive_mutex> lock(model.mutex());
  const TreeGenerator generator(plan.tree);
  FileSystemInfo info;
  info.vstoreId = plan.vstoreId;

  GeneratedSnapshotPair pair;
  pair.fileSystemId = model.fileSystems().create(plan.fileSystemName, info);
  model.fileSystems().with(pair.fileSystemId, [&](FileSystem& fs) { generator.populate(fs.tree); });
  auto& snapshots = model.fileSystemSnapshots();
  pair.baseSnapshotId = snapshots.take(pair.fileSystemId, plan.fileSystemName + "-base");
  model.fileSystems().with(pair.fileSystemId,
                           [&](FileSystem& fs) { pair.changeCount = generator.change(fs.tree, plan.changes); });
  pair.incrementalSnapshotId = snapshots.take(pair.fileSystemId, plan.fileSystemName + "-incremental");
  return pair;
}

}  // namespace arraysim
