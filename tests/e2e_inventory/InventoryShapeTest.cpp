// The shared shape of the inventory operations, one row each.
#include <list>

#include "OperationShape.h"

namespace zrtest {

ShapeScene ArrangeShapeScene(arraysim::ArraySimulator& sim, ZrManageHuawei&) {
  sim.system().addVStore({"3", "tenant", "1"});
  arraysim::FileSystemInfo tenant;
  tenant.vstoreId = "3";
  sim.fileSystems().create("fs-a");
  sim.fileSystems().create("fs-b", tenant);
  sim.fileSystems().create("fs-c", tenant);
  arraysim::LogicalInterface lif;
  lif.name = "lif-a";
  lif.ipv4Address = "192.168.100.10";
  sim.interfaces().add(lif);
  lif.name = "lif-b";
  sim.interfaces().add(lif);
  return {};
}

namespace {

const char kParseFailed[] = "Unable to parse the JSON Response";

// What the calls write, which no row reads.
_HuaweiSystemInformation systemInfo;
_HuaweiNDMPServiceSettings ndmp;
std::string vstoreName;
std::list<_HuaweiFileSystemsInfo> fileSystems;
std::list<_HuaweiArrayInterfaces> interfaces;

INSTANTIATE_TEST_SUITE_P(
    Inventory, OperationShape,
    testing::Values(
        ShapeRow("getSystemInformation", [](auto& a, auto&) { return FirstGeneration(a.getSystemInformation(systemInfo)); },
                 {"GET system/"}, "ZrManageHuawei::getSystemInformation", "Unable to get the system information."),
        ShapeRow("getNDMPServiceSettings",
                 [](auto& a, auto&) { return FirstGeneration(a.getNDMPServiceSettings(ndmp, "-12345")); },
                 {"GET ndmpservice"}, "getNDMPServiceSettings", "Unable to get the NDMP Service settings.")
            .emptyResponseSays(kParseFailed)
            .failsByError(),
        ShapeRow("getVStoreNameFromId", [](auto& a, auto&) { return FirstGeneration(a.getVStoreNameFromId("3", vstoreName)); },
                 {"GET vstore/3"}, "getVStoreNameFromId", "Unable to get the VStoreName from VStoreId [3]")
            .emptyResponseSays(kParseFailed)
            .emptyArgumentSays([](auto& a, auto&) { return FirstGeneration(a.getVStoreNameFromId("", vstoreName)); },
                               "The input parameter [VStoreID] is empty")
            .guardNames("getVStoreName")  // the guard names a shorter operation
            .failsByError(),
        ShapeRow("getFileSystemsList", [](auto& a, auto&) { return FirstGeneration(a.getFileSystemsList(fileSystems, "3")); },
                 {"GET filesystem?vstoreId=3"}, "ZrManageHuawei::getFileSystemsList",
                 "Unable to get the file systems list."),
        ShapeRow("getArrayInterfaces", [](auto& a, auto&) { return FirstGeneration(a.getArrayInterfaces(interfaces)); },
                 {"*GET lif", "GET ndmpservice"}, "ZrManageHuawei::getArrayInterfaces", "Unable to get the array interfaces list.")),
    RowName);

}  // namespace
}  // namespace zrtest
