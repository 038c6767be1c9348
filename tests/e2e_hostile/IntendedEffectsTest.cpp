// Names that are ordinary to users but not to a URL or a body: the call does what it says to the
// caller's own object, found again by the same name, and nothing else.
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "TwoTenants.h"

namespace zrtest {
namespace {

using A = ZrManageHuawei;
using V = const std::string&;
const std::string kA = kTenantA;

class IntendedEffects : public ArrayClientTest {
 protected:
  void SetUp() override {
    ArrayClientTest::SetUp();
    SeedTwoTenants(sim());
    tenantB_ = TenantView(sim(), kTenantB);
    array_ = loggedInFacade();
  }
  void TearDown() override { EXPECT_EQ(TenantView(sim(), kTenantB), tenantB_) << "tenant B changed"; }

  nlohmann::json tenantB_;
  std::unique_ptr<ZrManageHuawei> array_;
};

// Created, created again (the same object), found by name: one object of A with exactly that name.
struct NamedObject {
  const char* type;
  std::function<std::string(A&, V)> create;
  std::function<std::string(A&, V)> find;
};

TEST_F(IntendedEffects, NamesWithUrlAndJsonCharactersAreCreatedOnceAndFoundAgain) {
  const NamedObject objects[] = {
      {"cifshare", [](A& a, V n) { std::string id; a.createCIFSShare(id, n, "/fs11/", "11", kA); return id; },
       [](A& a, V n) { _HuaweiShareInfo i; a.getShareInfoByName(i, "unc", n, kA); return i.id; }},
      {"host", [](A& a, V n) { _HuaweiLUNHostInfo i; a.createHost(i, n, kA, false); return i.id; },
       [](A& a, V n) { std::string id; a.getHostIDFromHostName(n, id, kA); return id; }},
      {"hostgroup", [](A& a, V n) { _HuaweiHostGroupInfo i; a.createHostGroup(i, n, kA); return i.id; },
       [](A& a, V n) { std::string id; a.getHostGroupIDFromName(n, id, kA); return id; }},
      {"lungroup", [](A& a, V n) { _HuaweiLunGroupInfo i; a.createLUNGroup(i, n, kA, "0"); return i.id; },
       [](A& a, V n) { std::string id; a.getLUNGroupIDFromName(n, id, kA); return id; }},
      {"mappingview", [](A& a, V n) { _HuaweiLUNMappingView i; a.createMappingView(i, n, kA); return i.id; },
       [](A& a, V n) { _HuaweiLUNMappingView i; a.getMappingViewInfoByName(i, n, kA); return i.id; }},
  };
  for (const char* name : {"R&D docs", "50% off+", "a#b=c&d", "q\"uote\\d"}) {
    for (const auto& object : objects) {
      SCOPED_TRACE(std::string(object.type) + " [" + name + "]");
      // The name itself arrives whole: the hostile matrix's create rows.
      const auto id = object.create(*array_, name);
      ASSERT_FALSE(id.empty());
      EXPECT_EQ(object.create(*array_, name), id);
      EXPECT_EQ(object.find(*array_, name), id);
      const auto record = sim().store().get(object.type, id);
      ASSERT_TRUE(record);
      EXPECT_EQ((*record)["vstoreId"], kA);
    }
  }
}

}  // namespace
}  // namespace zrtest
