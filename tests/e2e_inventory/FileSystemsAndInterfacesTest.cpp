// File-system and interface lists over HTTPS, the lookups built on them, and the marking of the
// interface that carries the NDMP service.
#include <algorithm>
#include <list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"

namespace zrtest {
namespace {

std::vector<std::string> Describe(const std::list<_HuaweiFileSystemsInfo>& fileSystems) {
  std::vector<std::string> lines;
  for (const auto& fs : fileSystems) lines.push_back(fs.id + "|" + fs.name + "|" + fs.healthStatus);
  return lines;
}

class FileSystems : public ArrayClientTest {};

TEST_F(FileSystems, ListReplacesTheCallersAndIsEmptiedByAnyFailure) {
  sim().fileSystems().create("home", FileSystemOf("2"));
  sim().fileSystems().create("projects", FileSystemOf("5", "3", "2"));
  sim().fileSystems().create("scratch", FileSystemOf("11", "3"));
  auto array = loggedInFacade();
  LogCapture log;
  std::list<_HuaweiFileSystemsInfo> fileSystems(1);
  ASSERT_TRUE(array->getFileSystemsList(fileSystems, "-12345"));
  EXPECT_EQ(Describe(fileSystems), (std::vector<std::string>{"2|home|1", "5|projects|2", "11|scratch|1"}));
  EXPECT_TRUE(log.HasLine(0, "ZrManageHuawei::getFileSystemsList", "Successfully got the File Systems. Count[3]."));
  ASSERT_TRUE(array->getFileSystemsList(fileSystems, "3"));
  EXPECT_EQ(Describe(fileSystems), (std::vector<std::string>{"5|projects|2", "11|scratch|1"}));

  EXPECT_FALSE(facade()->getFileSystemsList(fileSystems, "-12345"));  // closed: emptied before the guard
  EXPECT_TRUE(fileSystems.empty());
  fileSystems.resize(2);
  sim().faults().add(arraysim::FaultRule::On("GET", "filesystem").arrayError(1077949002, "Busy."));
  EXPECT_FALSE(array->getFileSystemsList(fileSystems, "-12345"));
  EXPECT_TRUE(fileSystems.empty());
}

// Identifiers are unique on a real array; an answer that repeats one shows where each search stops.
TEST_F(FileSystems, IdByNameTakesTheLastMatchInfoByIdTheFirst) {
  sim().faults().add(arraysim::FaultRule::On("GET", "filesystem").cannedBody(
      R"({"data":[{"ID":"2","NAME":"dup","HEALTHSTATUS":"1"},{"ID":"5","NAME":"first","HEALTHSTATUS":"2"},)"
      R"({"ID":"5","NAME":"second","HEALTHSTATUS":"3"},{"ID":"9","NAME":"dup","HEALTHSTATUS":"1"}],)"
      R"("error":{"code":0,"description":"0"}})").times(4));
  auto array = loggedInFacade();
  LogCapture log;
  std::string id;
  ASSERT_TRUE(array->getFileSystemId("dup", id));
  EXPECT_EQ(id, "9");
  EXPECT_TRUE(log.HasLine(3, "ZrManageHuawei::getFileSystemId", "File System [dup] found. FS Id [9]"));
  _HuaweiFileSystemsInfo info;
  ASSERT_TRUE(array->getFileSystemInfoById("5", info, "3"));
  EXPECT_EQ(info.name + "|" + info.healthStatus, "first|2");
  EXPECT_TRUE(log.HasLine(0, "getFileSystemInfoById", "Found file system [first] with Id [5]."));
  EXPECT_EQ(requestLines(), (std::vector<std::string>{"GET filesystem", "GET filesystem?vstoreId=3"}));

  // Not found: false, outputs as they were, and no line of the lookup's own.
  log.Clear();
  EXPECT_FALSE(array->getFileSystemId("nowhere", id));
  EXPECT_FALSE(array->getFileSystemInfoById("77", info, "-12345"));
  EXPECT_EQ(id + "|" + info.name, "9|first");
  EXPECT_FALSE(log.ContainsText("found")) << log.Dump();
  sim().faults().add(arraysim::FaultRule::On("GET", "filesystem").arrayError(1077949002, "Busy."));
  EXPECT_FALSE(array->getFileSystemInfoById("5", info, "-12345"));
  EXPECT_TRUE(log.HasLine(3, "getFileSystemInfoById", "Unable to get the file systems list."));
}

arraysim::LogicalInterface Lif(const std::string& name, const std::string& ipv4, const std::string& ipv6 = "") {
  arraysim::LogicalInterface lif;
  lif.name = name;
  lif.ipv4Address = ipv4;
  lif.ipv6Address = ipv6;
  return lif;
}

class Interfaces : public ArrayClientTest {};

std::string Fields(const _HuaweiArrayInterfaces& i) {
  return i.name + "|" + i.ipv4Address + "|" + i.ipv6Address + "|" + i.vstoreId + "|" + i.vstoreName + "|" +
         i.supportProtocol + "|" + i.role + "|" + i.managementAccess;
}

// Records are copied field by field (those the inventory recording leaves at their defaults
// here); which interface is marked as the NDMP one, and what is said about it; the service never
// fails the list.
TEST_F(Interfaces, RecordsAreCopiedAndTheFirstBearingTheNdmpIpIsMarked) {
  const std::string name = "ZrManageHuawei::getArrayInterfaces";
  const std::string missing =
      "Unable to get the NDMP Service settings either because NDMP is not configured or configured but disabled.";
  const struct {
    const char* ip;  // nullptr: no NDMP service
    const char* isEnabled;
    std::vector<bool> marked;
    bool missingLine;
  } cases[] = {
      {"10.0.0.9", "true", {false, true, false}, false}, {"fd00::9", "true", {true, false, false}, false},
      {"10.0.0.99", "true", {false, false, false}, false}, {"10.0.0.1", "false", {false, false, false}, true},
      {"", "true", {false, false, false}, true}, {nullptr, "true", {false, false, false}, true},
  };
  auto tenant = Lif("a", "10.0.0.1", "fd00::9");
  tenant.vstoreId = "3";
  tenant.vstoreName = "tenant";
  for (const auto& lif : {tenant, Lif("b", "10.0.0.9"), Lif("c", "10.0.0.9")}) sim().interfaces().add(lif);
  auto array = loggedInFacade();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.ip ? c.ip : "no service");
    sim().system().removeNdmp("");
    if (c.ip != nullptr) {
      arraysim::NdmpSettings settings;
      settings.ip = c.ip;
      settings.isEnabled = c.isEnabled;
      sim().system().setNdmp(settings);
    }
    LogCapture log;
    std::list<_HuaweiArrayInterfaces> interfaces(1);
    ASSERT_TRUE(array->getArrayInterfaces(interfaces));
    EXPECT_EQ(Fields(interfaces.front()) + " " + Fields(interfaces.back()),
              "a|10.0.0.1|fd00::9|3|tenant|3|2|1 c|10.0.0.9||-12345||3|2|1");
    EXPECT_TRUE(log.HasLine(0, name, "Successfully got the Array Interfaces. Count[3]."));
    std::vector<bool> marked;
    for (const auto& lif : interfaces) marked.push_back(lif.ndmpMonitoringIp);
    EXPECT_EQ(marked, c.marked);
    EXPECT_EQ(log.HasLine(-1, name, missing), c.missingLine) << log.Dump();
    const bool anyMarked = std::find(marked.begin(), marked.end(), true) != marked.end();
    EXPECT_EQ(log.HasLine(0, name, std::string("NDMP Monitoring IP is set [") + (c.ip ? c.ip : "") + "]."), anyMarked);
  }
}

}  // namespace
}  // namespace zrtest
