// The shared shape of the snapshot and change-list session operations, one row each.
#include "OperationShape.h"
#include "ShapeCall.h"

namespace zrtest {

// File system 7 of vStore 3 with three snapshots, and a change-list session between the first two.
ShapeScene ArrangeShapeScene(arraysim::ArraySimulator& sim, ZrManageHuawei& array) {
  sim.fileSystems().create("fs1", FileSystemOf("7", "3"));
  sim.files("7").writeFile("/a.txt", 1);
  ShapeScene scene{{"base", sim.fileSystemSnapshots().take("7", "base")}};
  sim.files("7").writeFile("/a.txt", 2);
  scene["incremental"] = sim.fileSystemSnapshots().take("7", "incremental");
  scene["snapshot"] = sim.fileSystemSnapshots().take("7", "spare");
  scene["session"] = array.createSnapshotChangeListSession("7", scene["base"], scene["incremental"], 40);
  EXPECT_FALSE(scene["session"].empty());
  return scene;
}

namespace {

using Z = ZrManageHuawei;

INSTANTIATE_TEST_SUITE_P(
    SnapshotsAndChangeLists, OperationShape,
    testing::Values(
        // The name goes in, the snapshot's identifier comes out.
        ShapeRow("createFileSystemSnapshot", calling(&Z::createFileSystemSnapshot, 7, "new", true, "3"), {"POST fssnapshot"},
                 "ZrManageHuawei::createFileSystemSnapshot", "Unable to create snapshot."),
        ShapeRow("getFileSystemSnapshotInfo", calling(&Z::getFileSystemSnapshotInfo, "{snapshot}", out, "3"),
                 {"GET fssnapshot/{snapshot}?vstoreId=3"}, "ZrManageHuawei::getFileSystemSnapshotInfo",
                 "Unable to get the snapshot information."),
        ShapeRow("deleteFileSystemSnapshot", calling(&Z::deleteFileSystemSnapshot, "{snapshot}", "3"),
                 {"GET fssnapshot/{snapshot}?vstoreId=3",
                  "DELETE fssnapshot/{snapshot}?DELINCREMENTALBACKUPSNAP=true&vstoreId=3"},
                 "ZrManageHuawei::deleteFileSystemSnapshot", "Unable to delete the snapshot")
            .emptyArgumentSays(0, "The input parameter [Snapshot ID] is empty"),
        ShapeRow("createSnapshotChangeListSession",
                 [](ZrManageHuawei& a, const ShapeScene& scene) {
                   return FirstGeneration(
                       !a.createSnapshotChangeListSession("7", scene.at("base"), scene.at("incremental"), 40).empty());
                 },
                 {"POST fs_snapchangelist_session"}, "ZrManageHuawei::createSnapshotChangeListSession",
                 "Unable to create change list session information"),
        ShapeRow("deleteSnapshotChangeListSession", calling(&Z::deleteSnapshotChangeListSession, "{session}"),
                 {"DELETE fs_snapchangelist_session/{session}"}, "ZrManageHuawei::deleteSnapshotChangeListSession",
                 "Unable to delete change list session information")),
    RowName);

}  // namespace
}  // namespace zrtest
