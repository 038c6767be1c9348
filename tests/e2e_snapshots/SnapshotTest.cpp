// File-system snapshots over HTTPS: take (with the SnapDiff fallback), read, delete.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"

namespace zrtest {
namespace {

using testing::Contains;
using testing::Not;

const char kCreateLog[] = "ZrManageHuawei::createFileSystemSnapshot";
const char kInfoLog[] = "ZrManageHuawei::getFileSystemSnapshotInfo";
const char kDeleteLog[] = "ZrManageHuawei::deleteFileSystemSnapshot";
const char kPresentLog[] = "ZrManageHuawei::isSnapshotPresent";

class Snapshots : public ArrayClientTest {
 protected:
  // File system 7 ("fs1") of vStore 3 and file system 8 ("fs2") outside any vStore.
  void SetUp() override {
    ArrayClientTest::SetUp();
    arraysim::FileSystemInfo tenant;
    tenant.id = "7";
    tenant.vstoreId = "3";
    sim().fileSystems().create("fs1", tenant);
    arraysim::FileSystemInfo plain;
    plain.id = "8";
    sim().fileSystems().create("fs2", plain);
  }

  std::vector<std::string> bodies() {
    std::vector<std::string> all;
    for (const auto& request : requests()) all.push_back(request.body);
    return all;
  }
};

// ---- Creation ----

struct CreateCase {
  const char* name;
  unsigned long long fileSystemId;
  const char* vstoreId;
  bool snapDiff;
  const char* body;
};

void PrintTo(const CreateCase& row, std::ostream* out) { *out << row.name; }

class SnapshotCreateBody : public Snapshots, public testing::WithParamInterface<CreateCase> {};

TEST_P(SnapshotCreateBody, IsHandBuiltAndTheAnswerIsTheArraysId) {
  const CreateCase& row = GetParam();
  auto array = loggedInFacade();
  LogCapture log;

  std::string snapshot = "s1";
  ASSERT_TRUE(array->createFileSystemSnapshot(row.fileSystemId, snapshot, row.snapDiff, row.vstoreId));
  const std::string expectedId = std::to_string(row.fileSystemId) + "@1";
  EXPECT_EQ(snapshot, expectedId);  // data.ID, not the name
  EXPECT_EQ(requestLines(), std::vector<std::string>{"POST fssnapshot"});
  EXPECT_EQ(lastRequest().body, row.body);
  const auto made = sim().snapshots().info(expectedId);
  ASSERT_TRUE(made.has_value());
  EXPECT_EQ(made->name, "s1");
  EXPECT_EQ(made->snapDiffEnabled, row.snapDiff);
  EXPECT_TRUE(log.HasLine(0, kCreateLog, "Successfully created snapshot[" + expectedId + "]")) << log.Dump();
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SnapshotCreateBody,
    testing::Values(
        CreateCase{"VStoreAndSnapDiff", 7, "3", true,
                   R"({"NAME":"s1", "PARENTID":"7", "PARENTTYPE":"40", "vstoreId":"3", "ENABLESNAPDIFF":"true" })"},
        CreateCase{"NoVStoreNoSnapDiff", 8, "-12345", false,
                   R"({"NAME":"s1", "PARENTID":"8", "PARENTTYPE":"40", "ENABLESNAPDIFF":"false" })"}),
    [](const testing::TestParamInfo<CreateCase>& info) { return std::string(info.param.name); });

// The array refuses the SnapDiff option (code 1073754130) a number of times; each refusal is
// answered by the same request without the option, however often it comes.
struct Refusal {
  const char* name;
  bool snapDiff;
  int snapDiffRefusals;  // refusals of requests that ask for SnapDiff (only the first does)
  int anyRefusals;       // refusals of any request
};

void PrintTo(const Refusal& row, std::ostream* out) { *out << row.name; }

class SnapDiffRefusal : public Snapshots, public testing::WithParamInterface<Refusal> {};

TEST_P(SnapDiffRefusal, IsRetriedWithoutTheOption) {
  const Refusal& row = GetParam();
  sim().fileSystems().refuseSnapDiff("7", row.snapDiffRefusals);
  sim().fileSystems().refuseSnapshots("7", row.anyRefusals);
  auto array = loggedInFacade();
  LogCapture log;

  std::string snapshot = "nightly";
  ASSERT_TRUE(array->createFileSystemSnapshot(7, snapshot, row.snapDiff, "3"));
  EXPECT_EQ(snapshot, "7@1");

  const int refusals = row.snapDiffRefusals + row.anyRefusals;
  const auto body = [](const char* flag) {
    return std::string(R"({"NAME":"nightly", "PARENTID":"7", "PARENTTYPE":"40", "vstoreId":"3", "ENABLESNAPDIFF":")") +
           flag + "\" }";
  };
  std::vector<std::string> expected(refusals + 1, body("false"));
  expected.front() = body(row.snapDiff ? "true" : "false");
  EXPECT_EQ(bodies(), expected);

  int retryLines = 0;
  for (const auto& line : log.Lines()) {
    if (line.level == 0 && line.name == kCreateLog &&
        line.text ==
            "File System with Id[7] does not support SnapDiff functionality. Trying again by turning off "
            "ENABLESNAPDIFF option.") {
      ++retryLines;
    }
  }
  EXPECT_EQ(retryLines, refusals) << log.Dump();
  EXPECT_FALSE(log.ContainsLineWith(-1, "Unable to create snapshot.")) << log.Dump();
  EXPECT_FALSE(sim().snapshots().info("7@1")->snapDiffEnabled);
}

INSTANTIATE_TEST_SUITE_P(Counts, SnapDiffRefusal,
                         testing::Values(Refusal{"Once", true, 1, 0}, Refusal{"WhateverIsAsked", true, 0, 3},
                                         Refusal{"WhenTheOptionWasNeverAsked", false, 0, 2}),
                         [](const testing::TestParamInfo<Refusal>& info) { return std::string(info.param.name); });

TEST_F(Snapshots, CreateRefusedForAnotherReasonKeepsTheNameAndIsNotRetried) {
  sim().snapshots().take("7", "taken");
  auto array = loggedInFacade();
  LogCapture log;

  std::string snapshot = "taken";  // the array refuses a second snapshot of that name
  EXPECT_FALSE(array->createFileSystemSnapshot(7, snapshot, true, "3"));
  EXPECT_EQ(snapshot, "taken");
  EXPECT_EQ(requestLines(), std::vector<std::string>{"POST fssnapshot"});
  EXPECT_TRUE(log.HasLine(-1, kCreateLog, "Unable to create snapshot.")) << log.Dump();
}

// Only the array's own refusal is retried: a connection lost after a refusal ends the call instead
// of sending again for as long as the array is unreachable.
TEST_F(Snapshots, CreateLosingTheConnectionAfterARefusalStops) {
  sim().faults().add(arraysim::FaultRule::On("POST", "fssnapshot").arrayError(1073754130, "no SnapDiff"));
  sim().faults().add(arraysim::FaultRule::On("POST", "fssnapshot").abortAnswer());
  auto array = loggedInFacade();
  LogCapture log;
  std::string snapshot = "nightly";
  EXPECT_FALSE(array->createFileSystemSnapshot(7, snapshot, true, "3"));
  EXPECT_EQ(snapshot, "nightly");
  EXPECT_EQ(requestLines().size(), 2u);
  EXPECT_TRUE(log.HasLine(-1, kCreateLog, "Unable to create snapshot.")) << log.Dump();
}

TEST_F(Snapshots, CreateWithoutANameSendsNothing) {
  auto array = loggedInFacade();
  LogCapture log;
  std::string snapshot;
  EXPECT_FALSE(array->createFileSystemSnapshot(7, snapshot, true, "3"));
  EXPECT_TRUE(requests().empty());
  EXPECT_TRUE(log.HasLine(-1, "HuaweiJSONCreateSnapshot::buildRequest", "Unable to build the request. Invalid parameters!!"))
      << log.Dump();
  EXPECT_TRUE(log.HasLine(-1, kCreateLog, "Unable to build the request body")) << log.Dump();
}

// ---- Reading ----

TEST_F(Snapshots, InfoCopiesTheArraysRecord) {
  const std::string id = sim().snapshots().take("7", "weekly");
  sim().snapshots().setType(id, "34");
  auto array = loggedInFacade();
  LogCapture log;

  _HuaweiSnapshotInfo info;
  info.notExist = true;  // the fresh record of the request replaces this
  info.name = "stale";
  ASSERT_TRUE(array->getFileSystemSnapshotInfo(id, info, "3"));
  EXPECT_EQ(info.id, id);
  EXPECT_EQ(info.name, "weekly");
  EXPECT_EQ(info.parentId, "7");
  EXPECT_EQ(info.parentName, "fs1");
  EXPECT_EQ(info.snapType, "34");
  EXPECT_FALSE(info.notExist);
  EXPECT_TRUE(log.HasLine(0, kInfoLog, "Successfully got the snapshot information for [" + id + "].")) << log.Dump();

  ASSERT_TRUE(array->getFileSystemSnapshotInfo(id, info, "-12345"));
  EXPECT_EQ(requestLines(), (std::vector<std::string>{"GET fssnapshot/" + id + "?vstoreId=3", "GET fssnapshot/" + id}));
}

TEST_F(Snapshots, InfoOfAnAbsentSnapshotMarksOnlyIdentifierAndFlag) {
  auto array = loggedInFacade();
  LogCapture log;
  _HuaweiSnapshotInfo info;
  info.id = "old";
  info.name = "kept";
  info.parentId = "p";
  info.parentName = "pn";
  info.snapType = "6";

  EXPECT_FALSE(array->getFileSystemSnapshotInfo("7@9", info, "3"));
  EXPECT_EQ(info.id, "7@9");
  EXPECT_TRUE(info.notExist);
  EXPECT_EQ(info.name, "kept");
  EXPECT_EQ(info.parentId, "p");
  EXPECT_EQ(info.parentName, "pn");
  EXPECT_EQ(info.snapType, "6");
  EXPECT_TRUE(log.HasLine(-1, kInfoLog, "Unable to get the snapshot information.")) << log.Dump();

  // Another refusal marks nothing.
  const std::string id = sim().snapshots().take("7", "there");
  sim().faults().add(arraysim::FaultRule::On("GET", "fssnapshot/" + id).arrayError(1077949002, "Busy."));
  _HuaweiSnapshotInfo other;
  EXPECT_FALSE(array->getFileSystemSnapshotInfo(id, other, "3"));
  EXPECT_FALSE(other.notExist);
  EXPECT_EQ(other.id, "");
}

TEST_F(Snapshots, PresenceAndTheExternallyDeletedLine) {
  const std::string id = sim().snapshots().take("7", "there");
  auto array = loggedInFacade();
  LogCapture log;
  const std::string deletedLine = "Snapshot [7@9] does not exist on the array. It must have been externally deleted.";

  EXPECT_TRUE(array->isSnapshotPresent(id, "3"));
  EXPECT_FALSE(log.ContainsText("externally deleted"));

  EXPECT_FALSE(array->isSnapshotPresent("7@9", "3"));
  EXPECT_TRUE(log.HasLine(0, kPresentLog, deletedLine)) << log.Dump();

  log.Clear();
  sim().faults().add(arraysim::FaultRule::On("GET", "fssnapshot/" + id).arrayError(1077949002, "Busy."));
  EXPECT_FALSE(array->isSnapshotPresent(id, "3"));  // any failure reads as absent
  EXPECT_FALSE(log.ContainsText("externally deleted")) << log.Dump();
}

// The code of a failure is read from the transport's last classified answer. A lost connection
// classifies nothing, so the code of the answer before it still stands.
TEST_F(Snapshots, PresenceAfterALostConnectionReadsTheLastClassifiedCode) {
  const std::string id = sim().snapshots().take("7", "there");
  auto array = loggedInFacade();
  EXPECT_FALSE(array->isSnapshotPresent("7@9", "3"));  // the last classified code is now "absent"

  LogCapture log;
  sim().faults().add(arraysim::FaultRule::On("GET", "fssnapshot/" + id).abortAnswer());
  _HuaweiSnapshotInfo info;
  EXPECT_FALSE(array->getFileSystemSnapshotInfo(id, info, "3"));
  EXPECT_TRUE(info.notExist);
  EXPECT_EQ(info.id, id);

  sim().faults().add(arraysim::FaultRule::On("GET", "fssnapshot/" + id).abortAnswer());
  EXPECT_FALSE(array->isSnapshotPresent(id, "3"));
  EXPECT_TRUE(log.HasLine(0, kPresentLog,
                          "Snapshot [" + id + "] does not exist on the array. It must have been externally deleted."))
      << log.Dump();
}

// An empty answer classifies nothing either: the "externally deleted" line follows the
// transport's last classified code.
TEST_F(Snapshots, PresenceAfterAnEmptyAnswerReadsTheLastClassifiedCode) {
  const std::string id = sim().snapshots().take("7", "there");
  auto array = loggedInFacade();
  EXPECT_FALSE(array->isSnapshotPresent("7@9", "3"));

  LogCapture log;
  sim().faults().add(arraysim::FaultRule::On("GET", "fssnapshot/" + id).emptyBody());
  EXPECT_FALSE(array->isSnapshotPresent(id, "3"));
  EXPECT_TRUE(log.HasLine(0, kPresentLog,
                          "Snapshot [" + id + "] does not exist on the array. It must have been externally deleted."))
      << log.Dump();
}

// ---- Deletion ----

struct DeleteForm {
  const char* name;
  const char* snapType;
  const char* vstoreId;
  const char* lookup;    // the resource of the GET that learns the type
  const char* deletion;  // the resource of the DELETE
};

void PrintTo(const DeleteForm& row, std::ostream* out) { *out << row.name; }

class SnapshotDeleteForm : public Snapshots, public testing::WithParamInterface<DeleteForm> {};

TEST_P(SnapshotDeleteForm, FollowsTheTypeLearnedFromTheArray) {
  const DeleteForm& row = GetParam();
  const std::string id = sim().snapshots().take("7", "old");
  ASSERT_EQ(id, "7@1");
  sim().snapshots().setType(id, row.snapType);
  auto array = loggedInFacade();
  LogCapture log;

  EXPECT_TRUE(array->deleteFileSystemSnapshot(id, row.vstoreId));
  EXPECT_EQ(requestLines(), (std::vector<std::string>{std::string("GET ") + row.lookup,
                                                      std::string("DELETE ") + row.deletion}));
  EXPECT_TRUE(requests().back().body.empty());
  EXPECT_FALSE(sim().snapshots().exists(id));
  EXPECT_TRUE(log.HasLine(0, kDeleteLog, "Successfully deleted the Snapshot ID[7@1]")) << log.Dump();
}

INSTANTIATE_TEST_SUITE_P(
    Forms, SnapshotDeleteForm,
    testing::Values(DeleteForm{"IncrementalBackup", "8", "-12345", "fssnapshot/7@1",
                               "fssnapshot/7@1?DELINCREMENTALBACKUPSNAP=true"},
                    DeleteForm{"IncrementalBackupOfVStore", "8", "3", "fssnapshot/7@1?vstoreId=3",
                               "fssnapshot/7@1?DELINCREMENTALBACKUPSNAP=true&vstoreId=3"},
                    DeleteForm{"OtherType", "1", "-12345", "fssnapshot/7@1", "fssnapshot/7@1"},
                    DeleteForm{"OtherTypeOfVStore", "1", "3", "fssnapshot/7@1?vstoreId=3",
                               "fssnapshot/7@1?vstoreId=3"}),
    [](const testing::TestParamInfo<DeleteForm>& info) { return std::string(info.param.name); });

TEST_F(Snapshots, DeletingAnAbsentSnapshotSucceeds) {
  auto array = loggedInFacade();
  LogCapture log;

  EXPECT_TRUE(array->deleteFileSystemSnapshot("7@9", "-12345"));
  EXPECT_EQ(requestLines(), (std::vector<std::string>{"GET fssnapshot/7@9",
                                                      "DELETE fssnapshot/7@9?DELINCREMENTALBACKUPSNAP=true"}));
  EXPECT_TRUE(log.HasLine(-1, kInfoLog, "Unable to get the snapshot information.")) << log.Dump();
  EXPECT_TRUE(log.HasLine(-1, kDeleteLog, "Unable to get the snapshot information for [7@9]")) << log.Dump();
  EXPECT_TRUE(log.HasLine(0, "HuaweiRestAPI::isError",
                          "Tried to delete a snapshot that does not exist. Considering the operation as success."))
      << log.Dump();
  EXPECT_THAT(log.Lines(), Contains(LogLineIs(-1, "HuaweiJSONDeleteSnapshot::parseResponse",
                                              testing::EndsWith("Error Code[1073754118]"))))
      << log.Dump();
  EXPECT_TRUE(log.HasLine(0, kDeleteLog, "Successfully deleted the Snapshot ID[7@9]")) << log.Dump();
}

// A type that could not be learned is taken for an incremental-backup snapshot.
TEST_F(Snapshots, DeletionGoesOnWhenTheLookupFails) {
  const std::string id = sim().snapshots().take("8", "plain");
  sim().snapshots().setType(id, "1");
  sim().faults().add(arraysim::FaultRule::On("GET", "fssnapshot/" + id).htmlPage());
  auto array = loggedInFacade();

  EXPECT_TRUE(array->deleteFileSystemSnapshot(id, "-12345"));
  EXPECT_EQ(requestLines(), (std::vector<std::string>{"GET fssnapshot/" + id,
                                                      "DELETE fssnapshot/" + id + "?DELINCREMENTALBACKUPSNAP=true"}));
  EXPECT_FALSE(sim().snapshots().exists(id));
}

TEST_F(Snapshots, DeletingWithoutAnIdentifierSendsNothing) {
  auto array = loggedInFacade();
  LogCapture log;
  EXPECT_FALSE(array->deleteFileSystemSnapshot("", "3"));
  EXPECT_TRUE(requests().empty());
  EXPECT_TRUE(log.HasLine(-1, kDeleteLog, "The input parameter [Snapshot ID] is empty")) << log.Dump();
  EXPECT_THAT(log.Lines(), Not(Contains(LogLineIs(testing::_, kInfoLog, testing::_))));
}

}  // namespace
}  // namespace zrtest
