// File-system and interface lists over HTTPS, the lookups built on them, and the marking of the
// interface that carries the NDMP service.
#include <list>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"

namespace zrtest {
namespace {

using testing::Contains;
using testing::Not;

arraysim::FileSystemInfo InVStore(const std::string& id, const std::string& vstoreId, const std::string& health = "1") {
  arraysim::FileSystemInfo info;
  info.id = id;
  info.vstoreId = vstoreId;
  info.healthStatus = health;
  return info;
}

class FileSystems : public ArrayClientTest {
 protected:
  // Three file systems, two of them in vStore 3.
  void arrange() {
    sim().fileSystems().create("home", InVStore("2", ""));
    sim().fileSystems().create("projects", InVStore("5", "3", "2"));
    sim().fileSystems().create("scratch", InVStore("11", "3"));
  }
};

std::vector<std::string> Describe(const std::list<_HuaweiFileSystemsInfo>& fileSystems) {
  std::vector<std::string> lines;
  for (const auto& fs : fileSystems) lines.push_back(fs.id + "|" + fs.name + "|" + fs.healthStatus);
  return lines;
}

TEST_F(FileSystems, ListCopiesEveryRecordInTheArraysOrder) {
  arrange();
  auto array = loggedInFacade();
  LogCapture log;

  std::list<_HuaweiFileSystemsInfo> fileSystems(1);  // replaced, not appended to
  ASSERT_TRUE(array->getFileSystemsList(fileSystems, "-12345"));
  EXPECT_EQ(Describe(fileSystems), (std::vector<std::string>{"2|home|1", "5|projects|2", "11|scratch|1"}));
  EXPECT_EQ(lastRequest().target, devicePath() + "filesystem");
  EXPECT_TRUE(log.HasLine(0, "ZrManageHuawei::getFileSystemsList", "Successfully got the File Systems. Count[3]."))
      << log.Dump();
}

TEST_F(FileSystems, ListOfAVStoreAsksWithTheQuery) {
  arrange();
  auto array = loggedInFacade();
  std::list<_HuaweiFileSystemsInfo> fileSystems;
  ASSERT_TRUE(array->getFileSystemsList(fileSystems, "3"));
  EXPECT_EQ(lastRequest().target, devicePath() + "filesystem?vstoreId=3");
  EXPECT_EQ(Describe(fileSystems), (std::vector<std::string>{"5|projects|2", "11|scratch|1"}));
}

TEST_F(FileSystems, ListIsEmptiedByAnyFailure) {
  arrange();
  std::list<_HuaweiFileSystemsInfo> fileSystems(2);

  auto closed = facade();
  EXPECT_FALSE(closed->getFileSystemsList(fileSystems, "-12345"));
  EXPECT_TRUE(fileSystems.empty());

  auto array = loggedInFacade();
  fileSystems.resize(2);
  sim().faults().add(arraysim::FaultRule::On("GET", "filesystem").arrayError(1077949002, "Busy."));
  EXPECT_FALSE(array->getFileSystemsList(fileSystems, "-12345"));
  EXPECT_TRUE(fileSystems.empty());
}

TEST_F(FileSystems, IdOfADuplicatedNameIsTheLastOne) {
  sim().fileSystems().create("dup", InVStore("2", ""));
  sim().fileSystems().create("other", InVStore("4", ""));
  sim().fileSystems().create("dup", InVStore("9", ""));
  auto array = loggedInFacade();
  LogCapture log;

  std::string id;
  ASSERT_TRUE(array->getFileSystemId("dup", id));
  EXPECT_EQ(id, "9");
  EXPECT_EQ(requestLines(), std::vector<std::string>{"GET filesystem"});
  EXPECT_TRUE(log.HasLine(3, "ZrManageHuawei::getFileSystemId", "File System [dup] found. FS Id [9]")) << log.Dump();
}

TEST_F(FileSystems, IdOfAnUnknownNameIsFalseWithoutALine) {
  arrange();
  auto array = loggedInFacade();
  LogCapture log;
  std::string id = "unchanged";
  EXPECT_FALSE(array->getFileSystemId("nowhere", id));
  EXPECT_EQ(id, "unchanged");
  EXPECT_THAT(log.Lines(), Not(Contains(LogLineIs(testing::_, "ZrManageHuawei::getFileSystemId", testing::_))));

  sim().faults().add(arraysim::FaultRule::On("GET", "filesystem").htmlPage());
  EXPECT_FALSE(array->getFileSystemId("home", id));
  EXPECT_EQ(id, "unchanged");
}

// Identifiers are unique on a real array; an answer that repeats one shows that the search stops
// at the first match.
TEST_F(FileSystems, InfoByIdTakesTheFirstMatch) {
  sim().faults().add(arraysim::FaultRule::On("GET", "filesystem").cannedBody(
      R"({"data":[{"ID":"4","NAME":"four","HEALTHSTATUS":"1"},{"ID":"5","NAME":"first","HEALTHSTATUS":"2"},)"
      R"({"ID":"5","NAME":"second","HEALTHSTATUS":"3"}],"error":{"code":0,"description":"0"}})"));
  auto array = loggedInFacade();
  LogCapture log;

  _HuaweiFileSystemsInfo info;
  ASSERT_TRUE(array->getFileSystemInfoById("5", info, "3"));
  EXPECT_EQ(info.id, "5");
  EXPECT_EQ(info.name, "first");
  EXPECT_EQ(info.healthStatus, "2");
  EXPECT_EQ(requestLines(), std::vector<std::string>{"GET filesystem?vstoreId=3"});
  EXPECT_TRUE(log.HasLine(0, "getFileSystemInfoById", "Found file system [first] with Id [5].")) << log.Dump();
}

TEST_F(FileSystems, InfoByIdMissingOrUnreadableLeavesTheRecord) {
  arrange();
  auto array = loggedInFacade();
  LogCapture log;
  _HuaweiFileSystemsInfo info;
  info.name = "kept";

  EXPECT_FALSE(array->getFileSystemInfoById("77", info, "-12345"));
  EXPECT_EQ(info.name, "kept");

  sim().faults().add(arraysim::FaultRule::On("GET", "filesystem").arrayError(1077949002, "Busy."));
  EXPECT_FALSE(array->getFileSystemInfoById("2", info, "-12345"));
  EXPECT_EQ(info.name, "kept");
  EXPECT_TRUE(log.HasLine(3, "getFileSystemInfoById", "Unable to get the file systems list.")) << log.Dump();
}

// ---- Interfaces ----

arraysim::LogicalInterface Lif(const std::string& name, const std::string& ipv4, const std::string& ipv6 = "") {
  arraysim::LogicalInterface lif;
  lif.name = name;
  lif.ipv4Address = ipv4;
  lif.ipv6Address = ipv6;
  return lif;
}

class Interfaces : public ArrayClientTest {};

TEST_F(Interfaces, RecordsAreCopiedFieldByField) {
  auto tenant = Lif("lif-t", "10.3.0.2", "fd00::3:2");
  tenant.vstoreId = "3";
  tenant.vstoreName = "tenant";
  tenant.supportProtocol = "1";
  tenant.role = "4";
  tenant.managementAccess = "2";
  sim().interfaces().add(tenant);
  sim().interfaces().add(Lif("lif-a", "10.0.0.2"));
  auto array = loggedInFacade();
  LogCapture log;

  std::list<_HuaweiArrayInterfaces> interfaces(3);
  ASSERT_TRUE(array->getArrayInterfaces(interfaces));
  ASSERT_EQ(interfaces.size(), 2u);
  const auto& first = interfaces.front();
  EXPECT_EQ(first.name, "lif-t");
  EXPECT_EQ(first.ipv4Address, "10.3.0.2");
  EXPECT_EQ(first.ipv6Address, "fd00::3:2");
  EXPECT_EQ(first.vstoreId, "3");
  EXPECT_EQ(first.vstoreName, "tenant");
  EXPECT_EQ(first.supportProtocol, "1");
  EXPECT_EQ(first.role, "4");
  EXPECT_EQ(first.managementAccess, "2");
  const auto& second = interfaces.back();
  EXPECT_EQ(second.name, "lif-a");
  EXPECT_EQ(second.vstoreId, "-12345");  // no vStore in the answer
  EXPECT_EQ(second.vstoreName, "");
  EXPECT_EQ(requestLines(), (std::vector<std::string>{"GET lif", "GET ndmpservice"}));
  EXPECT_TRUE(log.HasLine(0, "ZrManageHuawei::getArrayInterfaces", "Successfully got the Array Interfaces. Count[2]."))
      << log.Dump();
}

// Which interface is marked as the NDMP one, and what is said about it.
struct NdmpMarking {
  const char* name;
  std::vector<arraysim::LogicalInterface> interfaces;
  const char* ndmpIp;     // nullptr: no NDMP service on the array
  const char* isEnabled;
  std::vector<bool> marked;
  int lineLevel;          // 0: the "set" line, -1: the "not configured" line, 1: neither
};

void PrintTo(const NdmpMarking& row, std::ostream* out) { *out << row.name; }

class NdmpMarkingTable : public ArrayClientTest, public testing::WithParamInterface<NdmpMarking> {};

TEST_P(NdmpMarkingTable, MarksTheFirstMatchOnly) {
  const NdmpMarking& row = GetParam();
  for (const auto& lif : row.interfaces) sim().interfaces().add(lif);
  sim().system().removeNdmp("");
  if (row.ndmpIp != nullptr) {
    arraysim::NdmpSettings settings;
    settings.ip = row.ndmpIp;
    settings.isEnabled = row.isEnabled;
    sim().system().setNdmp(settings);
  }
  auto array = loggedInFacade();
  LogCapture log;

  std::list<_HuaweiArrayInterfaces> interfaces;
  EXPECT_TRUE(array->getArrayInterfaces(interfaces));  // the NDMP service never fails the list
  std::vector<bool> marked;
  for (const auto& lif : interfaces) marked.push_back(lif.ndmpMonitoringIp);
  EXPECT_EQ(marked, row.marked);

  const std::string name = "ZrManageHuawei::getArrayInterfaces";
  const bool setLine = log.HasLine(0, name, std::string("NDMP Monitoring IP is set [") + (row.ndmpIp ? row.ndmpIp : "") + "].");
  const bool missingLine = log.HasLine(-1, name,
                                       "Unable to get the NDMP Service settings either because NDMP is not configured "
                                       "or configured but disabled.");
  EXPECT_EQ(setLine, row.lineLevel == 0) << log.Dump();
  EXPECT_EQ(missingLine, row.lineLevel == -1) << log.Dump();
}

INSTANTIATE_TEST_SUITE_P(
    Cases, NdmpMarkingTable,
    testing::Values(
        NdmpMarking{"FirstOfTwoWithTheSameIp",
                    {Lif("a", "10.0.0.1"), Lif("b", "10.0.0.9"), Lif("c", "10.0.0.9")}, "10.0.0.9", "true",
                    {false, true, false}, 0},
        NdmpMarking{"Ipv6Address", {Lif("a", "10.0.0.1", "fd00::1"), Lif("b", "10.0.0.2", "fd00::9")}, "fd00::9",
                    "true", {false, true}, 0},
        NdmpMarking{"NoInterfaceBearsTheIp", {Lif("a", "10.0.0.1"), Lif("b", "10.0.0.2")}, "10.0.0.99", "true",
                    {false, false}, 1},
        NdmpMarking{"ServiceDisabled", {Lif("a", "10.0.0.1"), Lif("b", "10.0.0.2")}, "10.0.0.1", "false",
                    {false, false}, -1},
        NdmpMarking{"ServiceWithoutIp", {Lif("a", ""), Lif("b", "10.0.0.2")}, "", "true", {false, false}, -1},
        NdmpMarking{"NoServiceOnTheArray", {Lif("a", "10.0.0.1"), Lif("b", "10.0.0.2")}, nullptr, "true",
                    {false, false}, -1}),
    [](const testing::TestParamInfo<NdmpMarking>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace zrtest
