// Initiators, hosts and host groups: what is their own beyond the shared shape.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "LunSnapshotAndHostScene.h"

namespace zrtest {
namespace {

class Hosts : public LunSnapshotAndHostTest {};

TEST_F(Hosts, ExistingHostsAndGroupsAreAdoptedByName) {
  _HuaweiLUNHostInfo host;
  host.vstoreName = "kept?";
  ASSERT_FALSE(array_->createHost(host, "h1", "3", true).IsError());
  EXPECT_EQ(requests()[0].body, R"({"NAME":"h1", "OPERATIONSYSTEM":"7" ,"vstoreId":"3" })");
  EXPECT_EQ(requestLines()[1], "GET host?filter=NAME:h1&vstoreId=3");
  EXPECT_EQ(host.id, scene_["host"]);
  EXPECT_EQ(host.operatingSystem, "7");  // as asked, not as the array has it
  EXPECT_EQ(host.vstoreName, "");

  _HuaweiHostGroupInfo group;
  group.vstoreName = "kept";
  ASSERT_FALSE(array_->createHostGroup(group, "g1", "3").IsError());
  EXPECT_EQ(group.id, scene_["group"]);
  EXPECT_EQ(group.vstoreName, "kept");
  _HuaweiHostGroupInfo fresh;
  ASSERT_FALSE(array_->createHostGroup(fresh, "g2", "3").IsError());
  EXPECT_EQ(lastRequest().body, R"({"NAME":"g2" ,"vstoreId":"3" })");
  EXPECT_EQ(fresh.vstoreId, "3");
  EXPECT_EQ(fresh.vstoreName, "");

  // A longer name that the filter finds is not the host.
  sim().store().insert("host", {{"NAME", "h5-long"}, {"OPERATIONSYSTEM", "0"}, {"vstoreId", "3"}});
  sim().faults().add(arraysim::FaultRule::On("POST", "host").exactly().arrayError(1077948993, "The name already exists."));
  EXPECT_EQ(array_->createHost(host, "h5", "3", false).AsString(),
            "[ERROR] Unable to get the information for the host with Name[h5].");
}

TEST_F(Hosts, GroupMembership) {
  LogCapture log;
  const std::string group = scene_["group"], host = scene_["host"], outsider = scene_["outsider"];
  ASSERT_FALSE(array_->addHostToHostGroup(group, host, "-12345").IsError());
  EXPECT_EQ(lastRequest().body, "{\"ID\":\"" + group + "\", \"ASSOCIATEOBJID\":\"" + host + "\", \"ASSOCIATEOBJTYPE\":21}");
  EXPECT_TRUE(log.HasLine(0, "ZrManageHuawei::addHostToHostGroup",
                          "The host [" + host + "] is already associated to the host group [" + group + "]"));
  EXPECT_FALSE(array_->isHostAssociatedToHostGroup(group, host, "3").IsError());
  EXPECT_EQ(array_->isHostAssociatedToHostGroup(group, outsider, "3").AsString(),
            "[ERROR] Unable to find the host [" + outsider + "] associated with the host group [" + group + "].");

  // An empty group: the list succeeds, the membership test fails with the inner success's text.
  _HuaweiHostGroupInfo empty;
  ASSERT_FALSE(array_->createHostGroup(empty, "g-empty", "3").IsError());
  std::vector<_HuaweiLUNHostInfo> hosts(2);
  EXPECT_FALSE(array_->getHostAssociatedToHostGroup(empty.id, hosts, "3").IsError());
  EXPECT_TRUE(hosts.empty());
  const CXoError notMember = array_->isHostAssociatedToHostGroup(empty.id, host, "3");
  EXPECT_TRUE(notMember.IsError());
  EXPECT_EQ(notMember.AsString(), "");
}

TEST_F(Hosts, InitiatorLookupShowsTheHostNameWhereCreationKeepsEachField) {
  _HuaweiInitiator found;
  ASSERT_FALSE(array_->getInitiatorInfoFromID(found, "iqn.1", true, "3").IsError());
  EXPECT_EQ(found.name, "h1");
  EXPECT_EQ(found.parentName, "");
  EXPECT_EQ(found.parentId, scene_["host"]);

  std::string hostId = "stale";
  ASSERT_FALSE(array_->getHostIDFromInitiatorID("wwn1", false, hostId, "3").IsError());
  EXPECT_EQ(hostId, "");  // free
  EXPECT_EQ(array_->getInitiatorInfoFromID(found, "wwn9", false, "3").AsString(),
            "[ERROR] The [FC] initiator information with ID [wwn9] does not exist");

  _HuaweiInitiator made;
  bool exists = false;
  ASSERT_FALSE(array_->createInitiator(made, "iqn.2", scene_["host"], true, exists, "3").IsError());
  EXPECT_EQ(lastRequest().body, "{\"ID\":\"iqn.2\" ,\"PARENTID\":\"" + scene_["host"] + "\" ,\"vstoreId\":\"3\" }");
  EXPECT_EQ(made.name, "");
  EXPECT_EQ(made.parentName, "h1");
  EXPECT_FALSE(exists);

  LogCapture log;
  EXPECT_EQ(array_->createInitiator(made, "iqn.1", "", true, exists, "-12345").AsString(),
            "The initiator with ID[iqn.1] already exists");
  EXPECT_EQ(lastRequest().body, R"({"ID":"iqn.1" })");
  EXPECT_TRUE(exists);
  EXPECT_TRUE(log.HasLine(3, "ZrManageHuawei::createInitiator", "[ERROR] Failed to create initiator with ID [iqn.1] Host ID [EMPTY]"));
  EXPECT_EQ(array_->createInitiator(made, "iqn.3", "404", true, exists, "3").AsString(),
            "[ERROR] The given host with ID [404] does not exist. Specify an existing host and add the initiator to the host");

  // Re-binding: the PUT names the initiator in its path and the host in its body.
  ASSERT_FALSE(array_->updateInitiatorWithHostID("wwn1", scene_["outsider"], false, "3").IsError());
  EXPECT_EQ(lastRequest().body, "{\"PARENTID\":\"" + scene_["outsider"] + "\" ,\"vstoreId\":\"3\" }");
  ASSERT_FALSE(array_->getHostIDFromInitiatorID("wwn1", false, hostId, "3").IsError());
  EXPECT_EQ(hostId, scene_["outsider"]);

  std::vector<_HuaweiInitiator> all(3);
  sim().store().erase("fc_initiator", "wwn1");
  EXPECT_EQ(array_->getInitiatorInfo(all, false, "3").AsString(), "[ERROR] Unable to get the initiator information");
  EXPECT_TRUE(all.empty());
}

}  // namespace
}  // namespace zrtest
