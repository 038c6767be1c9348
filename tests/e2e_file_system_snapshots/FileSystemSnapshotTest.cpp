// File-system snapshots over HTTPS: take (with the SnapDiff fallback), read, delete.
#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"

namespace zrtest {
namespace {

const char kCreateLog[] = "ZrManageHuawei::createFileSystemSnapshot";
const char kInfoLog[] = "ZrManageHuawei::getFileSystemSnapshotInfo";
const char kDeleteLog[] = "ZrManageHuawei::deleteFileSystemSnapshot";
const char kPresentLog[] = "ZrManageHuawei::isSnapshotPresent";
const char kRetryLine[] =
    "File System with Id[7] does not support SnapDiff functionality. Trying again by turning off ENABLESNAPDIFF option.";

std::string Body(const char* name, const char* parent, const char* vstore, bool snapDiff) {
  return std::string(R"({"NAME":")") + name + R"(", "PARENTID":")" + parent + R"(", "PARENTTYPE":"40", )" +
         (*vstore ? std::string(R"("vstoreId":")") + vstore + "\", " : "") + R"("ENABLESNAPDIFF":")" +
         (snapDiff ? "true" : "false") + "\" }";
}

std::string Gone(const std::string& id) {
  return "Snapshot [" + id + "] does not exist on the array. It must have been externally deleted.";
}

class FileSystemSnapshots : public ArrayClientTest {
 protected:
  // File system 7 ("fs1") of vStore 3 and file system 8 ("fs2") outside any vStore.
  void SetUp() override {
    ArrayClientTest::SetUp();
    sim().fileSystems().create("fs1", FileSystemOf("7", "3"));
    sim().fileSystems().create("fs2", FileSystemOf("8"));
    array_ = loggedInFacade();
  }
  std::vector<std::string> bodies() {
    std::vector<std::string> all;
    for (const auto& request : requests()) all.push_back(request.body);
    return all;
  }

  std::unique_ptr<ZrManageHuawei> array_;
};

// The hand-built body goes out, and the array's identifier comes back, not the name. Each
// refusal of SnapDiff (code 1073754130) is answered by the same request without the option,
// however often it comes and whatever was asked.
TEST_F(FileSystemSnapshots, CreateAnswersTheArraysIdAndRetriesSnapDiffRefusalsWithoutTheOption) {
  const struct {
    bool snapDiff;
    int snapDiffRefusals, anyRefusals;
  } cases[] = {{true, 0, 0}, {true, 1, 0}, {true, 0, 3}, {false, 0, 2}};
  for (const auto& c : cases) {
    const std::string name = "nightly" + std::to_string(&c - cases);
    sim().fileSystems().refuseSnapDiff("7", c.snapDiffRefusals);
    sim().fileSystems().refuseSnapshots("7", c.anyRefusals);
    sim().requests().clear();
    LogCapture log;
    std::string snapshot = name;
    ASSERT_TRUE(array_->createFileSystemSnapshot(7, snapshot, c.snapDiff, "3"));
    EXPECT_EQ(snapshot, "7@" + std::to_string(&c - cases + 1));
    EXPECT_TRUE(log.HasLine(0, kCreateLog, "Successfully created snapshot[" + snapshot + "]")) << log.Dump();
    const long refusals = c.snapDiffRefusals + c.anyRefusals;
    std::vector<std::string> expected(refusals + 1, Body(name.c_str(), "7", "3", false));
    expected.front() = Body(name.c_str(), "7", "3", c.snapDiff);
    EXPECT_EQ(bodies(), expected);
    const auto lines = log.Lines();
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const tklog::LogLine& l) { return l.level == 0 && l.text == kRetryLine; }),
              refusals);
    EXPECT_EQ(sim().fileSystemSnapshots().info(snapshot)->snapDiffEnabled, c.snapDiff && refusals == 0);
  }
}

// Only the array's SnapDiff refusal is retried: another refusal, or a connection lost after a
// SnapDiff refusal, ends the call. (A call without a name builds nothing: BodyAndUrlBuildersTest.)
TEST_F(FileSystemSnapshots, CreateFailuresKeepTheName) {
  sim().fileSystemSnapshots().take("7", "taken");
  std::string snapshot = "taken";
  EXPECT_FALSE(array_->createFileSystemSnapshot(7, snapshot, true, "3"));
  sim().faults().add(arraysim::FaultRule::On("POST", "fssnapshot").arrayError(1073754130, "no SnapDiff"));
  sim().faults().add(arraysim::FaultRule::On("POST", "fssnapshot").abortAnswer());
  EXPECT_FALSE(array_->createFileSystemSnapshot(7, snapshot, true, "3"));
  EXPECT_EQ(snapshot, "taken");
  EXPECT_EQ(requests().size(), 3u);
}

TEST_F(FileSystemSnapshots, InfoCopiesTheRecordOrMarksItAbsent) {
  const std::string id = sim().fileSystemSnapshots().take("7", "weekly");
  sim().fileSystemSnapshots().setType(id, "34");
  LogCapture log;
  _HuaweiSnapshotInfo info;
  info.notExist = true;  // the fresh record of the request replaces this
  ASSERT_TRUE(array_->getFileSystemSnapshotInfo(id, info, "3"));
  EXPECT_EQ(info.id + "|" + info.name + "|" + info.parentId + "|" + info.parentName + "|" + info.snapType,
            id + "|weekly|7|fs1|34");
  EXPECT_FALSE(info.notExist);
  EXPECT_TRUE(log.HasLine(0, kInfoLog, "Successfully got the snapshot information for [" + id + "]."));
  ASSERT_TRUE(array_->getFileSystemSnapshotInfo(id, info, "-12345"));
  EXPECT_EQ(requestLines(), (std::vector<std::string>{"GET fssnapshot/" + id + "?vstoreId=3", "GET fssnapshot/" + id}));

  // Absent: only the identifier and the flag change.
  EXPECT_FALSE(array_->getFileSystemSnapshotInfo("7@9", info, "3"));
  EXPECT_EQ(info.id + "|" + info.name + "|" + info.snapType, "7@9|weekly|34");
  EXPECT_TRUE(info.notExist);
  // Another refusal marks nothing.
  sim().faults().add(arraysim::FaultRule::On("GET", "fssnapshot").arrayError(1077949002, "Busy."));
  _HuaweiSnapshotInfo other;
  EXPECT_FALSE(array_->getFileSystemSnapshotInfo(id, other, "3"));
  EXPECT_FALSE(other.notExist);
  EXPECT_EQ(other.id, "");
}

// The code of a failure is read from the transport's last classified answer: a lost connection
// or an empty answer classifies nothing, so the code of the answer before it still stands.
TEST_F(FileSystemSnapshots, PresenceFollowsTheLastClassifiedCode) {
  const std::string id = sim().fileSystemSnapshots().take("7", "there");
  LogCapture log;
  EXPECT_TRUE(array_->isSnapshotPresent(id, "3"));
  sim().faults().add(arraysim::FaultRule::On("GET", "fssnapshot").arrayError(1077949002, "Busy."));
  EXPECT_FALSE(array_->isSnapshotPresent(id, "3"));  // any failure reads as absent
  EXPECT_FALSE(log.ContainsText("externally deleted")) << log.Dump();

  EXPECT_FALSE(array_->isSnapshotPresent("7@9", "3"));
  EXPECT_TRUE(log.HasLine(0, kPresentLog, Gone("7@9"))) << log.Dump();
  sim().faults().add(arraysim::FaultRule::On("GET", "fssnapshot").abortAnswer());
  _HuaweiSnapshotInfo info;
  EXPECT_FALSE(array_->getFileSystemSnapshotInfo(id, info, "3"));
  EXPECT_TRUE(info.notExist);
  EXPECT_EQ(info.id, id);
  for (auto fault : {arraysim::FaultRule::On("GET", "fssnapshot").abortAnswer(),
                     arraysim::FaultRule::On("GET", "fssnapshot").emptyBody()}) {
    log.Clear();
    sim().faults().add(fault);
    EXPECT_FALSE(array_->isSnapshotPresent(id, "3"));
    EXPECT_TRUE(log.HasLine(0, kPresentLog, Gone(id))) << log.Dump();
  }
}

// A plain snapshot outside any vStore is deleted without the incremental-backup flag. (Its
// vStore form: FileSystemSnapshotAndChangeListShapeTest.)
TEST_F(FileSystemSnapshots, DeletionFollowsTheTypeLearnedFromTheArray) {
  const std::string id = sim().fileSystemSnapshots().take("7", "old");
  sim().fileSystemSnapshots().setType(id, "1");
  LogCapture log;
  EXPECT_TRUE(array_->deleteFileSystemSnapshot(id, "-12345"));
  EXPECT_EQ(requestLines(), (std::vector<std::string>{"GET fssnapshot/" + id, "DELETE fssnapshot/" + id}));
  EXPECT_FALSE(sim().fileSystemSnapshots().exists(id));
  EXPECT_TRUE(log.HasLine(0, kDeleteLog, "Successfully deleted the Snapshot ID[" + id + "]"));
}

// An absent snapshot counts as deleted; a type that could not be learned is taken for an
// incremental-backup snapshot.
TEST_F(FileSystemSnapshots, DeletionOfAnAbsentOrUnreadableSnapshotGoesOn) {
  LogCapture log;
  EXPECT_TRUE(array_->deleteFileSystemSnapshot("7@9", "-12345"));
  EXPECT_TRUE(log.HasLine(0, "HuaweiRestAPI::isError",
                          "Tried to delete a snapshot that does not exist. Considering the operation as success."));
  EXPECT_TRUE(log.HasLine(0, kDeleteLog, "Successfully deleted the Snapshot ID[7@9]")) << log.Dump();

  const std::string id = sim().fileSystemSnapshots().take("8", "plain");
  sim().fileSystemSnapshots().setType(id, "1");
  sim().faults().add(arraysim::FaultRule::On("GET", "fssnapshot/" + id).htmlPage());
  EXPECT_TRUE(array_->deleteFileSystemSnapshot(id, "-12345"));
  EXPECT_EQ(requestLines(), (std::vector<std::string>{"GET fssnapshot/7@9", "DELETE fssnapshot/7@9?DELINCREMENTALBACKUPSNAP=true",
                                                      "GET fssnapshot/" + id,
                                                      "DELETE fssnapshot/" + id + "?DELINCREMENTALBACKUPSNAP=true"}));
  EXPECT_FALSE(sim().fileSystemSnapshots().exists(id));
}

}  // namespace
}  // namespace zrtest
