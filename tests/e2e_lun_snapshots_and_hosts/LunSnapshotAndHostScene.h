// Objects that the LUN and host tests work on, put straight into the simulator's store: LUN 7
// of vStore 3 with an inactive and an active snapshot, a host in a group, a second host outside
// it, an iSCSI initiator bound to the first host and a free FC initiator.
#pragma once

#include <string>

#include "ArrayClientTest.h"
#include "ShapeRow.h"

namespace zrtest {

inline ShapeScene ArrangeLunSnapshotAndHostScene(arraysim::ArraySimulator& sim) {
  auto& store = sim.store();
  const auto in3 = [](nlohmann::json record) { return record["vstoreId"] = "3", record; };
  ShapeScene scene;
  store.insert("lun", in3({{"ID", "7"}, {"NAME", "lun7"}, {"PARENTID", "0"}, {"RUNNINGSTATUS", "27"}}));
  const auto snapshot = [&](const char* name, const char* state) {
    return store.insert("snapshot", in3({{"NAME", name}, {"PARENTID", "7"}, {"PARENTNAME", "lun7"}, {"RUNNINGSTATUS", state}}));
  };
  scene["snapshot"] = snapshot("snap", "43");
  scene["active"] = snapshot("snap-active", "41");
  scene["host"] = store.insert("host", in3({{"NAME", "h1"}, {"OPERATIONSYSTEM", "0"}}));
  scene["outsider"] = store.insert("host", in3({{"NAME", "h3"}, {"OPERATIONSYSTEM", "7"}}));
  scene["group"] = store.insert("hostgroup", in3({{"NAME", "g1"}}));
  store.associate({"hostgroup", scene["group"]}, {"host", scene["host"]});
  store.insert("iscsi_initiator", in3({{"ID", "iqn.1"}, {"NAME", "port-a"}, {"PARENTID", scene["host"]}, {"PARENTNAME", "h1"}}));
  store.insert("fc_initiator", in3({{"ID", "wwn1"}, {"NAME", "port-b"}}));
  return scene;
}

// The suite's own tests: the scene above and a facade that has logged in.
class LunSnapshotAndHostTest : public ArrayClientTest {
 protected:
  void SetUp() override {
    ArrayClientTest::SetUp();
    scene_ = ArrangeLunSnapshotAndHostScene(sim());
    array_ = loggedInFacade();
  }

  ShapeScene scene_;
  std::unique_ptr<ZrManageHuawei> array_;
};

}  // namespace zrtest
