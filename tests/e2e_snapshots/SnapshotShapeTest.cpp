// The shared shape of the snapshot and change-list session operations, one row each.
#include "FirstGenerationShape.h"

namespace zrtest {

// File system 7 of vStore 3 with three snapshots, and a change-list session between the first two.
ShapeScene ArrangeShapeScene(arraysim::ArraySimulator& sim, ZrManageHuawei& array) {
  arraysim::FileSystemInfo info;
  info.id = "7";
  info.vstoreId = "3";
  sim.fileSystems().create("fs1", info);
  ShapeScene scene;
  scene.fileSystemId = "7";
  sim.files("7").writeFile("/a.txt", 1);
  scene.baseSnapshotId = sim.snapshots().take("7", "base");
  sim.files("7").writeFile("/a.txt", 2);
  scene.incrementalSnapshotId = sim.snapshots().take("7", "incremental");
  scene.snapshotId = sim.snapshots().take("7", "spare");
  scene.sessionId = array.createSnapshotChangeListSession("7", scene.baseSnapshotId, scene.incrementalSnapshotId, 40);
  EXPECT_FALSE(scene.sessionId.empty());
  return scene;
}

namespace {

std::string Guard(const char* operation) {
  return std::string("Before calling ") + operation + "(), please initialize Huawei params using ZrManageHuawei::init().";
}

std::vector<ShapeRow> SnapshotRows() {
  std::vector<ShapeRow> rows;
  {
    ShapeRow row;
    row.name = "createFileSystemSnapshot";
    row.call = [](ZrManageHuawei& array, const ShapeScene&) {
      std::string snapshot = "new";
      return array.createFileSystemSnapshot(7, snapshot, true, "3");
    };
    row.sends = [](const ShapeScene&) { return std::vector<std::string>{"POST fssnapshot"}; };
    row.spoiled = [](const ShapeScene&) { return std::string("POST fssnapshot"); };
    row.logName = "ZrManageHuawei::createFileSystemSnapshot";
    row.guardText = Guard("createFileSystemSnapshot");
    row.requestFailedText = "Unable to create snapshot.";
    rows.push_back(row);
  }
  {
    ShapeRow row;
    row.name = "getFileSystemSnapshotInfo";
    row.call = [](ZrManageHuawei& array, const ShapeScene& scene) {
      _HuaweiSnapshotInfo info;
      return array.getFileSystemSnapshotInfo(scene.snapshotId, info, "3");
    };
    row.sends = [](const ShapeScene& scene) {
      return std::vector<std::string>{"GET fssnapshot/" + scene.snapshotId + "?vstoreId=3"};
    };
    row.spoiled = [](const ShapeScene& scene) { return "GET fssnapshot/" + scene.snapshotId + "?vstoreId=3"; };
    row.logName = "ZrManageHuawei::getFileSystemSnapshotInfo";
    row.guardText = Guard("getFileSystemSnapshotInfo");
    row.requestFailedText = "Unable to get the snapshot information.";
    rows.push_back(row);
  }
  {
    ShapeRow row;
    row.name = "deleteFileSystemSnapshot";
    row.call = [](ZrManageHuawei& array, const ShapeScene& scene) {
      return array.deleteFileSystemSnapshot(scene.snapshotId, "3");
    };
    row.sends = [](const ShapeScene& scene) {
      return std::vector<std::string>{"GET fssnapshot/" + scene.snapshotId + "?vstoreId=3",
                                      "DELETE fssnapshot/" + scene.snapshotId +
                                          "?DELINCREMENTALBACKUPSNAP=true&vstoreId=3"};
    };
    row.spoiled = [](const ShapeScene& scene) {
      return "DELETE fssnapshot/" + scene.snapshotId + "?DELINCREMENTALBACKUPSNAP=true&vstoreId=3";
    };
    row.logName = "ZrManageHuawei::deleteFileSystemSnapshot";
    row.guardText = Guard("deleteFileSystemSnapshot");
    row.requestFailedText = "Unable to delete the snapshot";
    rows.push_back(row);
  }
  {
    ShapeRow row;
    row.name = "createSnapshotChangeListSession";
    row.call = [](ZrManageHuawei& array, const ShapeScene& scene) {
      return !array.createSnapshotChangeListSession(scene.fileSystemId, scene.baseSnapshotId,
                                                    scene.incrementalSnapshotId, 40)
                  .empty();
    };
    row.sends = [](const ShapeScene&) { return std::vector<std::string>{"POST fs_snapchangelist_session"}; };
    row.spoiled = [](const ShapeScene&) { return std::string("POST fs_snapchangelist_session"); };
    row.logName = "ZrManageHuawei::createSnapshotChangeListSession";
    row.guardText = Guard("createSnapshotChangeListSession");
    row.requestFailedText = "Unable to create change list session information";
    rows.push_back(row);
  }
  {
    ShapeRow row;
    row.name = "deleteSnapshotChangeListSession";
    row.call = [](ZrManageHuawei& array, const ShapeScene& scene) {
      return array.deleteSnapshotChangeListSession(scene.sessionId);
    };
    row.sends = [](const ShapeScene& scene) {
      return std::vector<std::string>{"DELETE fs_snapchangelist_session/" + scene.sessionId};
    };
    row.spoiled = [](const ShapeScene& scene) { return "DELETE fs_snapchangelist_session/" + scene.sessionId; };
    row.logName = "ZrManageHuawei::deleteSnapshotChangeListSession";
    row.guardText = Guard("deleteSnapshotChangeListSession");
    row.requestFailedText = "Unable to delete change list session information";
    rows.push_back(row);
  }
  return rows;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(SnapshotsAndChangeLists, FirstGenerationShape, testing::ValuesIn(SnapshotRows()),
                         [](const testing::TestParamInfo<ShapeRow>& info) { return info.param.name; });

}  // namespace zrtest
