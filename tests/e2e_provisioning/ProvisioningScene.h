// The objects that the provisioning and clone tests start from, put straight into the
// simulator's store.
#pragma once

#include <string>

#include "ArrayClientTest.h"

namespace zrtest {

// Pool "0" ("pool1"); LUNs 1 to 4 in it; LUN group 1 holding LUN 1; clone 1 of LUN 1 with LUN 2
// synchronised and LUN 3 split off; clone 2 of LUN 1 without secondaries. LUN 4 is free.
inline void ArrangeProvisioning(arraysim::ArraySimulator& sim) {
  auto& store = sim.store();
  store.insert("storagepool", {{"ID", "0"}, {"NAME", "pool1"}, {"PARENTID", "0"}});
  for (const char* id : {"1", "2", "3", "4"}) {
    store.insert("lun", {{"ID", id}, {"NAME", std::string("lun") + id}, {"PARENTID", "0"}, {"RUNNINGSTATUS", "27"},
                         {"CAPACITY", "2097152"}, {"SPLITMIRRORIDS", id == std::string("1") ? R"(["1","2"])" : "[]"}});
  }
  store.insert("lungroup", {{"ID", "1"}, {"NAME", "group1"}});
  store.associate({"lungroup", "1"}, {"lun", "1"});
  store.insert("splitmirror", {{"ID", "1"}, {"NAME", "clone1"}, {"PRILUNID", "1"}});
  store.insert("splitmirror", {{"ID", "2"}, {"NAME", "clone2"}, {"PRILUNID", "1"}});
  for (const auto& [id, status] : {std::pair<const char*, const char*>{"2", "1"}, {"3", "26"}}) {
    store.insert("splitmirrortargetlun", {{"ID", id}, {"NAME", std::string("lun") + id}, {"PARENTID", "1"},
                                          {"SPEED", "2"}, {"RESUMEPOLICY", "1"}, {"RUNNINGSTATUS", status},
                                          {"PROCESS", "100"}});
  }
}

inline _HuaweiCloneSecondaryLUN Secondary(const char* id, const std::string& cloneId) {
  _HuaweiCloneSecondaryLUN lun;
  lun.id = id;
  lun.parentId = cloneId;
  lun.speed = HuaweiApiValue::COPY_SPEED_HIGH;
  lun.resumePolicy = HuaweiApiValue::RESUME_POLICY_AUTOMATIC;
  return lun;
}

// The suite's own tests: the objects above and a facade that has logged in.
class ProvisioningTest : public ArrayClientTest {
 protected:
  void SetUp() override {
    ArrayClientTest::SetUp();
    ArrangeProvisioning(sim());
    array_ = loggedInFacade();
  }

  std::unique_ptr<ZrManageHuawei> array_;
};

}  // namespace zrtest
