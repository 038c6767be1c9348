// The shared shape of the inventory operations, one row each.
#include <list>

#include "FirstGenerationShape.h"

namespace zrtest {

ShapeScene ArrangeShapeScene(arraysim::ArraySimulator& sim, ZrManageHuawei&) {
  sim.system().addVStore({"3", "tenant", "1"});
  arraysim::FileSystemInfo tenant;
  tenant.vstoreId = "3";
  tenant.vstoreName = "tenant";
  sim.fileSystems().create("fs-a");
  sim.fileSystems().create("fs-b", tenant);
  sim.fileSystems().create("fs-c", tenant);
  arraysim::LogicalInterface lif;
  lif.name = "lif-a";
  lif.ipv4Address = "192.168.100.10";
  sim.interfaces().add(lif);
  lif.name = "lif-b";
  lif.ipv4Address = "192.168.100.11";
  sim.interfaces().add(lif);
  return ShapeScene();
}

namespace {

std::function<std::vector<std::string>(const ShapeScene&)> Sends(std::vector<std::string> lines) {
  return [lines](const ShapeScene&) { return lines; };
}

std::function<std::string(const ShapeScene&)> Spoiled(std::string line) {
  return [line](const ShapeScene&) { return line; };
}

std::string Guard(const char* operation) {
  return std::string("Before calling ") + operation + "(), please initialize Huawei params using ZrManageHuawei::init().";
}

const char kParseFailed[] = "Unable to parse the JSON Response";

std::vector<ShapeRow> InventoryRows() {
  std::vector<ShapeRow> rows;
  {
    ShapeRow row;
    row.name = "getSystemInformation";
    row.call = [](ZrManageHuawei& array, const ShapeScene&) {
      _HuaweiSystemInformation info;
      return array.getSystemInformation(info);
    };
    row.sends = Sends({"GET system/"});
    row.spoiled = Spoiled("GET system/");
    row.logName = "ZrManageHuawei::getSystemInformation";
    row.guardText = Guard("getSystemInformation");
    row.requestFailedText = "Unable to get the system information.";
    rows.push_back(row);
  }
  {
    ShapeRow row;
    row.name = "getNDMPServiceSettings";
    row.call = [](ZrManageHuawei& array, const ShapeScene&) {
      _HuaweiNDMPServiceSettings settings;
      return array.getNDMPServiceSettings(settings, "-12345");
    };
    row.sends = Sends({"GET ndmpservice"});
    row.spoiled = Spoiled("GET ndmpservice");
    row.logName = "getNDMPServiceSettings";
    row.failuresByError = true;
    row.guardText = Guard("getNDMPServiceSettings");
    row.requestFailedText = "Unable to get the NDMP Service settings.";
    row.emptyResponseText = kParseFailed;
    rows.push_back(row);
  }
  {
    ShapeRow row;
    row.name = "getVStoreNameFromId";
    row.call = [](ZrManageHuawei& array, const ShapeScene&) {
      std::string name;
      return array.getVStoreNameFromId("3", name);
    };
    row.sends = Sends({"GET vstore/3"});
    row.spoiled = Spoiled("GET vstore/3");
    row.logName = "getVStoreNameFromId";
    row.failuresByError = true;
    row.guardText = Guard("getVStoreName");  // the guard names a shorter operation
    row.requestFailedText = "Unable to get the VStoreName from VStoreId [3]";
    row.emptyResponseText = kParseFailed;
    rows.push_back(row);
  }
  {
    ShapeRow row;
    row.name = "getFileSystemsList";
    row.call = [](ZrManageHuawei& array, const ShapeScene&) {
      std::list<_HuaweiFileSystemsInfo> fileSystems;
      return array.getFileSystemsList(fileSystems, "3");
    };
    row.sends = Sends({"GET filesystem?vstoreId=3"});
    row.spoiled = Spoiled("GET filesystem?vstoreId=3");
    row.logName = "ZrManageHuawei::getFileSystemsList";
    row.guardText = Guard("getFileSystemsList");
    row.requestFailedText = "Unable to get the file systems list.";
    rows.push_back(row);
  }
  {
    ShapeRow row;
    row.name = "getArrayInterfaces";
    row.call = [](ZrManageHuawei& array, const ShapeScene&) {
      std::list<_HuaweiArrayInterfaces> interfaces;
      return array.getArrayInterfaces(interfaces);
    };
    row.sends = Sends({"GET lif", "GET ndmpservice"});
    row.spoiled = Spoiled("GET lif");
    row.logName = "ZrManageHuawei::getArrayInterfaces";
    row.guardText = Guard("getArrayInterfaces");
    row.requestFailedText = "Unable to get the array interfaces list.";
    rows.push_back(row);
  }
  return rows;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Inventory, FirstGenerationShape, testing::ValuesIn(InventoryRows()),
                         [](const testing::TestParamInfo<ShapeRow>& info) { return info.param.name; });

}  // namespace zrtest
