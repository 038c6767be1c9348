// The shared shape of the inventory operations, one row each.
#include "OperationShape.h"
#include "ShapeCall.h"

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

using Z = ZrManageHuawei;

INSTANTIATE_TEST_SUITE_P(
    Inventory, OperationShape,
    testing::Values(
        ShapeRow("getSystemInformation", calling(&Z::getSystemInformation, out),
                 {"GET system/"}, "ZrManageHuawei::getSystemInformation", "Unable to get the system information."),
        ShapeRow("getNDMPServiceSettings", calling(&Z::getNDMPServiceSettings, out, "-12345"),
                 {"GET ndmpservice"}, "getNDMPServiceSettings", "Unable to get the NDMP Service settings.")
            .emptyResponseSays(kParseFailed)
            .failsByError(),
        ShapeRow("getVStoreNameFromId", calling(&Z::getVStoreNameFromId, "3", out),
                 {"GET vstore/3"}, "getVStoreNameFromId", "Unable to get the VStoreName from VStoreId [3]")
            .emptyResponseSays(kParseFailed)
            .emptyArgumentSays(0, "The input parameter [VStoreID] is empty")
            .guardNames("getVStoreName")  // the guard names a shorter operation
            .failsByError(),
        ShapeRow("getFileSystemsList", calling(&Z::getFileSystemsList, out, "3"),
                 {"GET filesystem?vstoreId=3"}, "ZrManageHuawei::getFileSystemsList",
                 "Unable to get the file systems list."),
        ShapeRow("getArrayInterfaces", calling(&Z::getArrayInterfaces, out),
                 {"*GET lif", "GET ndmpservice"}, "ZrManageHuawei::getArrayInterfaces", "Unable to get the array interfaces list.")),
    RowName);

}  // namespace
}  // namespace zrtest
