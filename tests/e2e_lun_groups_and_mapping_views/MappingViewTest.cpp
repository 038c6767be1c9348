// Mapping views over HTTPS: adoption, attaching and detaching in the group-then-view order, the
// array's own words for refusals, and the lookup by id that trusts only a single answer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "LunGroupAndMappingViewScene.h"

namespace zrtest {
namespace {

class MappingViews : public ArrayClientTest {};

TEST_F(MappingViews, ViewsAreAdoptedAndGroupsAttachedAndDetachedRepeatably) {
  const std::string hostGroup = SeedNamed(sim(), "hostgroup", "hosts", "3");
  const std::string lunGroup = SeedNamed(sim(), "lungroup", "luns", "3");
  auto array = loggedInFacade();
  LogCapture log;
  _HuaweiLUNMappingView view, again;
  ASSERT_FALSE(array->createMappingView(view, "mv", "3").IsError());
  EXPECT_EQ(lastRequest().body, R"({"NAME":"mv" ,"vstoreId":"3" })");
  ASSERT_FALSE(array->createMappingView(again, "mv", "3").IsError());
  EXPECT_EQ(again.id, view.id);
  EXPECT_TRUE(log.HasLine(3, "createMappingView", "The mapping view with Name [mv] already exists"));

  const std::string body = R"({"ID":")" + view.id + R"(", "ASSOCIATEOBJID":")" + hostGroup +
                           R"(", "ASSOCIATEOBJTYPE":14,"vstoreId":"3" })";
  for (int round = 0; round < 2; ++round) {
    ASSERT_FALSE(array->addHostGroupToMappingView(hostGroup, view.id, "3").IsError());
    ASSERT_FALSE(array->addLunGroupToMappingView(lunGroup, view.id, "3").IsError());
  }
  EXPECT_TRUE(log.HasLine(0, "addHostGroupToMappingView", "REQUESSTT:[" + body + "]"));
  EXPECT_TRUE(log.HasLine(0, "addHostGroupToMappingView", "The hostgroup [" + hostGroup +
                                                              "] is already associated to the mappingview [" + view.id + "]"));
  EXPECT_TRUE(log.HasLine(0, "addLunGroupToMappingView", "The lungroup [" + lunGroup +
                                                             "] is already associated to the mappingview [" + view.id + "]"));

  std::vector<_HuaweiHostGroupInfo> hostGroups;
  std::vector<_HuaweiLunGroupInfo> lunGroups;
  std::vector<_HuaweiLUNMappingView> views;
  ASSERT_FALSE(array->getHostGroupAssociatedToMappingView(view.id, hostGroups, "3").IsError());
  ASSERT_FALSE(array->getLunGroupAssociatedToMappingView(view.id, lunGroups, "3").IsError());
  ASSERT_FALSE(array->getMappingViewAssociatedToLunGroup(lunGroup, views, "3").IsError());
  ASSERT_EQ(hostGroups.size() + lunGroups.size() + views.size(), 3u);
  EXPECT_EQ(hostGroups[0].name, "hosts");
  EXPECT_EQ(lunGroups[0].name, "luns");
  EXPECT_EQ(views[0].id, view.id);

  ASSERT_FALSE(array->removeHostGroupAssociatedToMappingView(hostGroup, view.id, "3").IsError());
  // Detaching an absent group succeeds; other refusals are the array's words. The description is
  // rendered as a format twice, in the transport's status and in the error, never with arguments
  // (the rules of the rendering are the format's own unit test's).
  EXPECT_FALSE(array->removeHostGroupAssociatedToMappingView("404", view.id, "3").IsError());
  EXPECT_TRUE(log.HasLine(0, "removeHostGroupAssociatedToMappingView", "The hostgroup [404] does not exist"));
  EXPECT_FALSE(array->removeLunGroupAssociatedToMappingView("404", view.id, "3").IsError());
  EXPECT_TRUE(log.HasLine(0, "removeLunGroupAssociatedToMappingView", "The lungroup [404] does not exist"));
  sim().faults().add(arraysim::FaultRule::On("PUT", "mappingview/remove_associate").arrayError(1077949002, "%s At 100%%%%"));
  EXPECT_EQ(array->removeLunGroupAssociatedToMappingView("404", view.id, "3").AsString(), "%s At 100%");
  EXPECT_TRUE(log.ContainsLineWith(-1, "API Error Code[1077949002], API Error Message [%s At 100%%]")) << log.Dump();
  ASSERT_FALSE(array->deleteMappingView(view.id, "3").IsError());
  // Detaching from a view that is gone succeeds; deleting it again does not.
  ASSERT_FALSE(array->removeLunGroupAssociatedToMappingView(lunGroup, view.id, "3").IsError());
  EXPECT_TRUE(log.HasLine(0, "removeLunGroupAssociatedToMappingView", "The mappingview [" + view.id + "] does not exist"));
  EXPECT_TRUE(array->deleteMappingView(view.id, "3").IsError());
}

TEST_F(MappingViews, LookupByIdTrustsOnlyASingleMatchingAnswerWhereListsTakeNoneAsEmpty) {
  SeedNamed(sim(), "mappingview", "mv");
  auto array = loggedInFacade();
  LogCapture log;
  _HuaweiLUNMappingView view;
  const std::string two = R"({"data":[{"ID":"1","NAME":"mv"},{"ID":"2","NAME":"mv2"}],"error":{"code":0,"description":"0"}})";
  sim().faults().add(arraysim::FaultRule::On("GET", "mappingview").cannedBody(two));
  EXPECT_EQ(array->getMappingViewInfoByID(view, "1", "-12345").AsString(),
            "[ERROR] Unable to get the information for mapping view with ID [1].");
  const std::string none = R"({"error":{"code":0,"description":"0"}})";
  sim().faults().add(arraysim::FaultRule::On("GET", "mappingview").cannedBody(none));
  sim().faults().add(arraysim::FaultRule::On("GET", "lungroup/associate").cannedBody(none));
  EXPECT_TRUE(array->getMappingViewInfoByID(view, "1", "-12345").IsError());
  std::vector<_HuaweiLunGroupInfo> groups{_HuaweiLunGroupInfo()};
  ASSERT_FALSE(array->getLunGroupAssociatedToMappingView("1", groups, "-12345").IsError());
  EXPECT_TRUE(groups.empty());
  EXPECT_TRUE(log.HasLine(0, "getLunGroupAssociatedToMappingView", "No lun groups are associated with the mappingview [1]."));
  EXPECT_TRUE(view.id.empty());
  ASSERT_FALSE(array->getMappingViewInfoByID(view, "1", "-12345").IsError());
  EXPECT_EQ(view.name, "mv");
}

}  // namespace
}  // namespace zrtest
