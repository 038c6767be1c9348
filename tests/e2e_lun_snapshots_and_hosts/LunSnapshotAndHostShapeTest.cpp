// The shared shape of the LUN snapshot, initiator, host and host-group operations, one row each.
#include "LunSnapshotAndHostScene.h"
#include "OperationShape.h"
#include "ShapeCall.h"

namespace zrtest {

ShapeScene ArrangeShapeScene(arraysim::ArraySimulator& sim, ZrManageHuawei&) {
  return ArrangeLunSnapshotAndHostScene(sim);
}

namespace {

const char kLookupEmpty[] = "[ERROR] Empty response is returned from the array";
const char kChangeEmpty[] = "Empty response returned from the array";

using Z = ZrManageHuawei;

ShapeRow Lookup(std::string name, Calling call, std::string sends, std::string failed) {
  return ShapeRow(std::move(name), std::move(call), {std::move(sends)}, "", std::move(failed))
      .emptyResponseSays(kLookupEmpty)
      .guardsBare();
}

ShapeRow Change(std::string name, Calling call, std::vector<std::string> sends, std::string failed) {
  return ShapeRow(std::move(name), std::move(call), std::move(sends), "", std::move(failed)).emptyResponseSays(kChangeEmpty);
}

const ShapeRow kRows[] = {
    Lookup("getLUNInfo", calling(&Z::getLUNInfo, out, "7", "3"), "GET lun/7?vstoreId=3",
           "[ERROR] Unable to find the LUN with ID [7]")
        .guardNames("getLUNINfo")
        .emptyArgumentSays(1, "The entered LUN ID is empty"),
    Lookup("getLUNSnapshotInfo", calling(&Z::getLUNSnapshotInfo, out, "{snapshot}", out, "3"),
           "GET snapshot/{snapshot}?vstoreId=3", "[ERROR] Unable to find the snapshot LUN with ID [{snapshot}]")
        .emptyArgumentSays(1, "The entered snapshot ID is empty"),
    Change("createLUNSnapshot", calling(&Z::createLUNSnapshot, out, "7", "new", "3"), {"POST snapshot"},
           "[ERROR] Unable to create snapshot [new] for LUN with ID [7]")
        .emptyArgumentSays(2, "[ERROR] Invalid input parameters"),
    Change("activateLUNSnapshot", calling(&Z::activateLUNSnapshot, std::vector<std::string>{"{snapshot}"}, "3"),
           {"POST snapshot/activate"}, "[ERROR] {status}")
        .emptyArgumentSays(0, "[ERROR] Invalid input parameters"),
    Change("deActivateLUNSnapshot", calling(&Z::deActivateLUNSnapshot, "{snapshot}", out, "3"), {"PUT snapshot/stop"},
           "[ERROR] {status}")
        .emptyArgumentSays(0, "[ERROR] Invalid input parameters"),
    Change("deleteLUNSnapshot", calling(&Z::deleteLUNSnapshot, "{snapshot}", "3"),
           {"DELETE snapshot/{snapshot}?vstoreId=3"}, "[ERROR] {status}")
        .emptyArgumentSays(0, "[ERROR] The LUN snapshot ID is empty"),
    Change("revertLUNSnapshot", calling(&Z::revertLUNSnapshot, "{active}", "2", "3"), {"PUT snapshot/rollback"},
           "[ERROR] "),
    Lookup("getInitiatorInfoFromID", calling(&Z::getInitiatorInfoFromID, out, "iqn.1", true, "3"),
           "GET iscsi_initiator/iqn.1?vstoreId=3", "[ERROR] Unable to find [ISCSI] initiator information with ID [iqn.1]")
        .emptyArgumentSays(1, "The entered initiator ID is empty"),
    Lookup("getInitiatorInfo", calling(&Z::getInitiatorInfo, out, false, "-12345"), "GET fc_initiator",
           "[ERROR] Unable to find the ISCSI initiators")
        .guardNames("getISCSIInitiatorInfo"),
    ShapeRow("getHostIDFromInitiatorID", calling(&Z::getHostIDFromInitiatorID, "iqn.1", true, out, "3"),
             {"GET iscsi_initiator/iqn.1?vstoreId=3"}, "",
             "[ERROR] Unable to get the information for Initiator with ID [iqn.1].")
        .emptyResponseSays("[ERROR] Unable to get the information for Initiator with ID [iqn.1].")
        .closedSessionSays("[ERROR] Unable to get the information for Initiator with ID [iqn.1]."),
    Lookup("getHostIDFromHostName", calling(&Z::getHostIDFromHostName, "h1", out, "3"),
           "GET host?filter=NAME:h1&vstoreId=3", "[ERROR] Unable to find the information for the host with name [h1]")
        .emptyArgumentSays(0, "The entered host name is empty"),
    Change("createHost", calling(&Z::createHost, out, "h2", "3", true), {"POST host"},
           "[ERROR] Unable to create host with name [h2] operating system [7]")
        .guardNames("createLUNSnapshot")
        .emptyArgumentSays(1, "[ERROR] The hostname is empty"),
    Change("createInitiator", calling(&Z::createInitiator, out, "iqn.new", "{host}", true, out, "3"),
           {"POST iscsi_initiator"}, "[ERROR] {status}")
        .emptyArgumentSays(1, "[ERROR] Invalid input parameters"),
    Change("updateInitiatorWithHostID", calling(&Z::updateInitiatorWithHostID, "wwn1", "{host}", false, "3"),
           {"PUT fc_initiator/wwn1"}, "[ERROR] Failed to associate initiator ID[wwn1]  with Host ID[{host}]"),
    Change("createHostGroup", calling(&Z::createHostGroup, out, "g2", "3"), {"POST hostgroup"},
           "[ERROR] Unable to create hostgroup with name [g2]")
        .emptyArgumentSays(1, "[ERROR] The hostgroup name is empty"),
    Change("addHostToHostGroup", calling(&Z::addHostToHostGroup, "{group}", "{outsider}", "3"),
           {"POST hostgroup/associate"}, "[ERROR] Failed to associate Host [{outsider}] with Host Group [{group}]")
        .emptyArgumentSays(1, "[ERROR] Invalid input parameters"),
    Change("getHostAssociatedToHostGroup", calling(&Z::getHostAssociatedToHostGroup, "{group}", out, "3"),
           {"GET host/associate?ASSOCIATEOBJID={group}&ASSOCIATEOBJTYPE=14&vstoreId=3"},
           "[ERROR] Failed to get the hosts associated with the Host Group [{group}]"),
};

INSTANTIATE_TEST_SUITE_P(LunsAndHosts, OperationShape, testing::ValuesIn(kRows), RowName);

}  // namespace
}  // namespace zrtest
