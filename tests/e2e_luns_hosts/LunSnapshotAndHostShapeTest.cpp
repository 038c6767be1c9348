// The shared shape of the LUN snapshot, initiator, host and host-group operations, one row each.
#include "LunSnapshotAndHostScene.h"
#include "OperationShape.h"

namespace zrtest {

ShapeScene ArrangeShapeScene(arraysim::ArraySimulator& sim, ZrManageHuawei&) {
  return ArrangeLunSnapshotAndHostScene(sim);
}

namespace {

const char kLookupEmpty[] = "[ERROR] Empty response is returned from the array";
const char kChangeEmpty[] = "Empty response returned from the array";

template <typename Call>
Invocation second(Call call) {
  return [call](ZrManageHuawei& a, const ShapeScene& s) { return SecondGeneration(call(a, s)); };
}

ShapeRow Lookup(std::string name, Invocation call, std::string sends, std::string failed) {
  return ShapeRow(std::move(name), std::move(call), {std::move(sends)}, "", std::move(failed))
      .emptyResponseSays(kLookupEmpty)
      .guardsBare();
}

ShapeRow Change(std::string name, Invocation call, std::vector<std::string> sends, std::string failed) {
  return ShapeRow(std::move(name), std::move(call), std::move(sends), "", std::move(failed)).emptyResponseSays(kChangeEmpty);
}

const ShapeRow kRows[] = {
    Lookup("getLUNInfo", second([](ZrManageHuawei& a, const ShapeScene&) {
             _HuaweiLUNInfo lun;
             return a.getLUNInfo(lun, "7", "3");
           }),
           "GET lun/7?vstoreId=3", "[ERROR] Unable to find the LUN with ID [7]")
        .guardNames("getLUNINfo")
        .emptyArgumentSays(second([](ZrManageHuawei& a, const ShapeScene&) {
                             _HuaweiLUNInfo lun;
                             return a.getLUNInfo(lun, "", "3");
                           }),
                           "The entered LUN ID is empty"),
    Lookup("getLUNSnapshotInfo", second([](ZrManageHuawei& a, const ShapeScene& s) {
             _HuaweiLUNSnapshotInfo info;
             bool notExist = false;
             return a.getLUNSnapshotInfo(info, s.at("snapshot"), notExist, "3");
           }),
           "GET snapshot/{snapshot}?vstoreId=3", "[ERROR] Unable to find the snapshot LUN with ID [{snapshot}]")
        .emptyArgumentSays(second([](ZrManageHuawei& a, const ShapeScene&) {
                             _HuaweiLUNSnapshotInfo info;
                             bool notExist = false;
                             return a.getLUNSnapshotInfo(info, "", notExist, "3");
                           }),
                           "The entered snapshot ID is empty"),
    Change("createLUNSnapshot", second([](ZrManageHuawei& a, const ShapeScene&) {
             _HuaweiLUNSnapshotInfo info;
             return a.createLUNSnapshot(info, "7", "new", "3");
           }),
           {"POST snapshot"}, "[ERROR] Unable to create snapshot [new] for LUN with ID [7]")
        .emptyArgumentSays(second([](ZrManageHuawei& a, const ShapeScene&) {
                             _HuaweiLUNSnapshotInfo info;
                             return a.createLUNSnapshot(info, "7", "", "3");
                           }),
                           "[ERROR] Invalid input parameters"),
    Change("activateLUNSnapshot", second([](ZrManageHuawei& a, const ShapeScene& s) {
             return a.activateLUNSnapshot({s.at("snapshot")}, "3");
           }),
           {"POST snapshot/activate"}, "[ERROR] {status}")
        .emptyArgumentSays(second([](ZrManageHuawei& a, const ShapeScene&) { return a.activateLUNSnapshot({}, "3"); }),
                           "[ERROR] Invalid input parameters"),
    Change("deleteLUNSnapshot", second([](ZrManageHuawei& a, const ShapeScene& s) {
             return a.deleteLUNSnapshot(s.at("snapshot"), "3");
           }),
           {"DELETE snapshot/{snapshot}?vstoreId=3"}, "[ERROR] {status}")
        .emptyArgumentSays(second([](ZrManageHuawei& a, const ShapeScene&) { return a.deleteLUNSnapshot("", "3"); }),
                           "[ERROR] The LUN snapshot ID is empty"),
    Change("revertLUNSnapshot", second([](ZrManageHuawei& a, const ShapeScene& s) {
             return a.revertLUNSnapshot(s.at("active"), "2", "3");
           }),
           {"PUT snapshot/rollback"}, "[ERROR] "),
    Lookup("getInitiatorInfoFromID", second([](ZrManageHuawei& a, const ShapeScene&) {
             _HuaweiInitiator initiator;
             return a.getInitiatorInfoFromID(initiator, "iqn.1", true, "3");
           }),
           "GET iscsi_initiator/iqn.1?vstoreId=3", "[ERROR] Unable to find [ISCSI] initiator information with ID [iqn.1]")
        .emptyArgumentSays(second([](ZrManageHuawei& a, const ShapeScene&) {
                             _HuaweiInitiator initiator;
                             return a.getInitiatorInfoFromID(initiator, "", true, "3");
                           }),
                           "The entered initiator ID is empty"),
    Lookup("getInitiatorInfo", second([](ZrManageHuawei& a, const ShapeScene&) {
             std::vector<_HuaweiInitiator> initiators;
             return a.getInitiatorInfo(initiators, false, "-12345");
           }),
           "GET fc_initiator", "[ERROR] Unable to find the ISCSI initiators")
        .guardNames("getISCSIInitiatorInfo"),
    ShapeRow("getHostIDFromInitiatorID", second([](ZrManageHuawei& a, const ShapeScene&) {
               std::string host;
               return a.getHostIDFromInitiatorID("iqn.1", true, host, "3");
             }),
             {"GET iscsi_initiator/iqn.1?vstoreId=3"}, "",
             "[ERROR] Unable to get the information for Initiator with ID [iqn.1].")
        .emptyResponseSays("[ERROR] Unable to get the information for Initiator with ID [iqn.1].")
        .closedSessionSays("[ERROR] Unable to get the information for Initiator with ID [iqn.1]."),
    Lookup("getHostIDFromHostName", second([](ZrManageHuawei& a, const ShapeScene&) {
             std::string host;
             return a.getHostIDFromHostName("h1", host, "3");
           }),
           "GET host?filter=NAME:h1&vstoreId=3", "[ERROR] Unable to find the information for the host with name [h1]")
        .emptyArgumentSays(second([](ZrManageHuawei& a, const ShapeScene&) {
                             std::string host;
                             return a.getHostIDFromHostName("", host, "3");
                           }),
                           "The entered host name is empty"),
    Change("createHost", second([](ZrManageHuawei& a, const ShapeScene&) {
             _HuaweiLUNHostInfo host;
             return a.createHost(host, "h2", "3", true);
           }),
           {"POST host"}, "[ERROR] Unable to create host with name [h2] operating system [7]")
        .guardNames("createLUNSnapshot")
        .emptyArgumentSays(second([](ZrManageHuawei& a, const ShapeScene&) {
                             _HuaweiLUNHostInfo host;
                             return a.createHost(host, "", "3", true);
                           }),
                           "[ERROR] The hostname is empty"),
    Change("createInitiator", second([](ZrManageHuawei& a, const ShapeScene& s) {
             _HuaweiInitiator initiator;
             bool exists = false;
             return a.createInitiator(initiator, "iqn.new", s.at("host"), true, exists, "3");
           }),
           {"POST iscsi_initiator"}, "[ERROR] {status}")
        .emptyArgumentSays(second([](ZrManageHuawei& a, const ShapeScene&) {
                             _HuaweiInitiator initiator;
                             bool exists = false;
                             return a.createInitiator(initiator, "", "", true, exists, "3");
                           }),
                           "[ERROR] Invalid input parameters"),
    Change("updateInitiatorWithHostID", second([](ZrManageHuawei& a, const ShapeScene& s) {
             return a.updateInitiatorWithHostID("wwn1", s.at("host"), false, "3");
           }),
           {"PUT fc_initiator/wwn1"}, "[ERROR] Failed to associate initiator ID[wwn1]  with Host ID[{host}]"),
    Change("createHostGroup", second([](ZrManageHuawei& a, const ShapeScene&) {
             _HuaweiHostGroupInfo group;
             return a.createHostGroup(group, "g2", "3");
           }),
           {"POST hostgroup"}, "[ERROR] Unable to create hostgroup with name [g2]")
        .emptyArgumentSays(second([](ZrManageHuawei& a, const ShapeScene&) {
                             _HuaweiHostGroupInfo group;
                             return a.createHostGroup(group, "", "3");
                           }),
                           "[ERROR] The hostgroup name is empty"),
    Change("addHostToHostGroup", second([](ZrManageHuawei& a, const ShapeScene& s) {
             return a.addHostToHostGroup(s.at("group"), s.at("outsider"), "3");
           }),
           {"POST hostgroup/associate"}, "[ERROR] Failed to associate Host [{outsider}] with Host Group [{group}]")
        .emptyArgumentSays(second([](ZrManageHuawei& a, const ShapeScene& s) {
                             return a.addHostToHostGroup(s.at("group"), "", "3");
                           }),
                           "[ERROR] Invalid input parameters"),
    Change("getHostAssociatedToHostGroup", second([](ZrManageHuawei& a, const ShapeScene& s) {
             std::vector<_HuaweiLUNHostInfo> hosts;
             return a.getHostAssociatedToHostGroup(s.at("group"), hosts, "3");
           }),
           {"GET host/associate?ASSOCIATEOBJID={group}&ASSOCIATEOBJTYPE=14&vstoreId=3"},
           "[ERROR] Failed to get the hosts associated with the Host Group [{group}]"),
};

INSTANTIATE_TEST_SUITE_P(LunsAndHosts, OperationShape, testing::ValuesIn(kRows), RowName);

}  // namespace
}  // namespace zrtest
