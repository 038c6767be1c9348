// LUN groups over HTTPS: adoption by exact name, hand-built bodies, membership of snapshot LUNs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "LunGroupAndMappingViewScene.h"

namespace zrtest {
namespace {

class LunGroups : public ArrayClientTest {};

TEST_F(LunGroups, CreationAdoptsTheGroupOfExactlyThatName) {
  auto array = loggedInFacade();
  LogCapture log;
  _HuaweiLunGroupInfo first, second;
  ASSERT_FALSE(array->createLUNGroup(first, "g1", "-12345", "0").IsError());

  // A group whose name only begins with the one asked for comes first in the filter's answer.
  SeedNamed(sim(), "lungroup", "g1-old");
  second.appType = "kept";
  ASSERT_FALSE(array->createLUNGroup(second, "g1", "-12345", "0").IsError());
  EXPECT_EQ(second.id, first.id);
  EXPECT_EQ(second.appType, "kept");
  EXPECT_TRUE(log.HasLine(3, "createLUNGroup", "The lun group with Name [g1] already exists")) << log.Dump();

  std::string id;
  const CXoError partial = array->getLUNGroupIDFromName("g", id, "-12345");
  EXPECT_EQ(partial.AsString(), "[ERROR] Unable to get the information for the lun group with Name[g].");
  // The empty vStore text is no "none": it goes out as a value.
  (void)array->createLUNGroup(second, "g2", "", "0");
  EXPECT_EQ(lastRequest().body, R"({"NAME":"g2", "APPTYPE":0,"vstoreId":"" })");

  // A name taken by a group that the lookup cannot find fails in the lookup's words.
  sim().faults().add(arraysim::FaultRule::On("POST", "lungroup").exactly().arrayError(1077948993, "Exists"));
  _HuaweiLunGroupInfo ghost;
  EXPECT_EQ(array->createLUNGroup(ghost, "ghost", "-12345", "0").AsString(),
            "[ERROR] Unable to get the information for the lun group with Name[ghost].");
  EXPECT_TRUE(ghost.id.empty());
}

TEST_F(LunGroups, SnapshotLunsJoinTestAndLeaveTheGroup) {
  const std::string snap = SeedSnapshotLun(sim(), "snap", "3");
  const std::string group = SeedNamed(sim(), "lungroup", "g", "3");
  auto array = loggedInFacade();
  LogCapture log;
  ASSERT_FALSE(array->addSnapshotLuntoLunGroup(group, snap, "3").IsError());
  EXPECT_EQ(lastRequest().body,
            R"({"ID":")" + group + R"(", "ASSOCIATEOBJID":")" + snap + R"(", "ASSOCIATEOBJTYPE":27,"vstoreId":"3" })");
  ASSERT_FALSE(array->addSnapshotLuntoLunGroup(group, snap, "3").IsError());
  EXPECT_TRUE(log.HasLine(0, "addSnapshotLuntoLunGroup",
                          "The LUN [" + snap + "] is already associated to the LUN group [" + group + "]"));

  std::vector<_HuaweiLUNSnapshotInfo> members;
  ASSERT_FALSE(array->getSnapshotLunAssociatedToLunGroup(group, members, "3").IsError());
  ASSERT_EQ(members.size(), 1u);
  EXPECT_EQ(members[0].parentName, "lun9");
  EXPECT_EQ(members[0].vstoreId, "3");
  EXPECT_FALSE(array->isSnapshotLunAssociatedToLunGroup(group, snap, "3").IsError());
  // Both brackets carry the LUN.
  EXPECT_EQ(array->isSnapshotLunAssociatedToLunGroup(group, "77", "3").AsString(),
            "[ERROR] Unable to find the snapshot lun [77] associated with the lun group [77].");

  ASSERT_FALSE(array->removeSnapshotLunFromLunGroup(group, snap, "3").IsError());
  EXPECT_EQ(requestLines().back(),
            "DELETE lungroup/associate?ID=" + group + "&ASSOCIATEOBJID=" + snap + "&ASSOCIATEOBJTYPE=27&vstoreId=3");
  EXPECT_TRUE(log.HasLine(3, "removeSnapshotLunFromLunGroup",
                          "Successfully removed the lun [" + snap + "] from lungroup [" + group + "]"));

  // An empty group lists as a success and tests as a failure.
  ASSERT_FALSE(array->getSnapshotLunAssociatedToLunGroup(group, members, "3").IsError());
  EXPECT_TRUE(members.empty());
  EXPECT_TRUE(log.HasLine(0, "getSnapshotLunAssociatedToLunGroup",
                          "No snapshot luns are associated with the lun Group [" + group + "]."));
  EXPECT_TRUE(array->isSnapshotLunAssociatedToLunGroup(group, snap, "3").IsError());

  ASSERT_FALSE(array->deleteLunGroup(group, "3").IsError());
  EXPECT_EQ(requestLines().back(), "DELETE lungroup/" + group + "?vstoreId=3");
  EXPECT_EQ(array->deleteLunGroup(group, "3").AsString(), "[ERROR] Failed to delete the lun group with Id [" + group + "]");
}

}  // namespace
}  // namespace zrtest
