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

INSTANTIATE_TEST_SUITE_P(
    Inventory, OperationShape,
    testing::Values(
        ShapeRow("getSystemInformation",
                 [](ZrManageHuawei& a, const ShapeScene&) {
                   _HuaweiSystemInformation info;
                   return FirstGeneration(a.getSystemInformation(info));
                 },
                 {"GET system/"}, "ZrManageHuawei::getSystemInformation", "Unable to get the system information."),
        ShapeRow("getNDMPServiceSettings",
                 [](ZrManageHuawei& a, const ShapeScene&) {
                   _HuaweiNDMPServiceSettings settings;
                   return FirstGeneration(a.getNDMPServiceSettings(settings, "-12345"));
                 },
                 {"GET ndmpservice"}, "getNDMPServiceSettings", "Unable to get the NDMP Service settings.")
            .emptyResponseSays(kParseFailed)
            .failsByError(),
        ShapeRow("getVStoreNameFromId",
                 [](ZrManageHuawei& a, const ShapeScene&) {
                   std::string name;
                   return FirstGeneration(a.getVStoreNameFromId("3", name));
                 },
                 {"GET vstore/3"}, "getVStoreNameFromId", "Unable to get the VStoreName from VStoreId [3]")
            .emptyResponseSays(kParseFailed)
            .emptyArgumentSays(
                [](ZrManageHuawei& a, const ShapeScene&) {
                  std::string name;
                  return FirstGeneration(a.getVStoreNameFromId("", name));
                },
                "The input parameter [VStoreID] is empty")
            .guardNames("getVStoreName")  // the guard names a shorter operation
            .failsByError(),
        ShapeRow("getFileSystemsList",
                 [](ZrManageHuawei& a, const ShapeScene&) {
                   std::list<_HuaweiFileSystemsInfo> fileSystems;
                   return FirstGeneration(a.getFileSystemsList(fileSystems, "3"));
                 },
                 {"GET filesystem?vstoreId=3"}, "ZrManageHuawei::getFileSystemsList",
                 "Unable to get the file systems list."),
        ShapeRow("getArrayInterfaces",
                 [](ZrManageHuawei& a, const ShapeScene&) {
                   std::list<_HuaweiArrayInterfaces> interfaces;
                   return FirstGeneration(a.getArrayInterfaces(interfaces));
                 },
                 {"*GET lif", "GET ndmpservice"}, "ZrManageHuawei::getArrayInterfaces", "Unable to get the array interfaces list.")),
    RowName);

}  // namespace
}  // namespace zrtest
