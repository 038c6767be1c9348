// Hostile values in every place a request carries them, for every family of operations, as
// tenant A of a two-tenant array would pass them (TwoTenants.h). Each call must either fail
// before anything reaches the array or reach it with the value the simulator decodes equal to
// the caller's, under the caller's vStore, and leave tenant B exactly as it was.
#include <algorithm>
#include <functional>
#include <list>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "TwoTenants.h"

namespace zrtest {
namespace {

using Call = std::function<void(ZrManageHuawei&, const std::string&)>;

struct Operation {
  const char* name;
  Call call;
  const char* victim = "22";  // B's object of the family, as hostile values aim at it
  const char* vstore = kTenantA;  // the vStore the call sends, when it sends one
  bool sendsValue = true;  // false: the value is compared with what a list answers, never sent
};

struct Family {
  const char* name;
  std::vector<Operation> operations;
};
void PrintTo(const Family& family, std::ostream* out) { *out << family.name; }

// "{B}" stands for the family's victim. Values that break a path, a query or a body when
// concatenated, names that are ordinary to users but not to a URL, a second '?' in a target
// (which some HTTP parsers refuse) and names in UTF-8.
const char* const kHostileValues[] = {
    "{B}#",        "{B}/x",           "../lun/22#",  "..",  "{B}&vstoreId=2&ASSOCIATEOBJTYPE=11",
    "{B}%23",      "11\", \"ID\":\"{B}", "n\", \"vstoreId\":\"2", "n\", \"PARENTID\":\"{B}", "n\\\", \"FSID\":\"{B}",
    "R&D docs",    "shareB#",         "tab\there",   "50% off+", "{B}?vstoreId=2", "\xC3\xA9t\xC3\xA9", "\xE2\x82\xAC{B}"};

std::string Aimed(std::string value, const std::string& victim) {
  for (auto at = value.find("{B}"); at != std::string::npos; at = value.find("{B}")) value.replace(at, 3, victim);
  return value;
}

// Every text the simulator decoded from a request: path segments, query values (a filter's
// value also without its "KEY:" or "KEY::"), and string members of the body at any depth.
void Collect(const nlohmann::json& value, std::vector<std::string>& texts) {
  if (value.is_string()) texts.push_back(value.get<std::string>());
  if (value.is_structured()) {
    for (const auto& item : value) Collect(item, texts);
  }
}

std::vector<std::string> DecodedTexts(const arraysim::RecordedRequest& request) {
  std::vector<std::string> texts = request.segments;
  for (const auto& [key, value] : request.parameters) {
    texts.push_back(value);
    const auto colon = value.find(':');
    if (key == "filter" && colon != std::string::npos) {
      texts.push_back(value.substr(value.compare(colon, 2, "::") == 0 ? colon + 2 : colon + 1));
    }
  }
  Collect(request.members, texts);
  return texts;
}

class HostileValues : public ArrayClientTest, public ::testing::WithParamInterface<Family> {
 protected:
  void expectPlaced(const Operation& operation, const std::string& value) {
    SimulatorEnvironment::Current().reset();
    SeedTwoTenants(sim());
    const auto tenantB = TenantView(sim(), kTenantB);
    {
      auto array = loggedInFacade();
      LogCapture log;
      operation.call(*array, value);
      const auto sent = requests();
      // Nothing recorded is a refusal before sending only when the library says so; otherwise the
      // request went out and was lost on the way (a target the server could not even read).
      bool carried = sent.empty() && log.ContainsLineWith(-1, "cannot be placed in the request");
      for (const auto& request : sent) {
        SCOPED_TRACE(request.method + " " + request.resource + " " + request.body);
        EXPECT_EQ(request.refusal, "");
        const auto texts = DecodedTexts(request);
        carried = carried || std::find(texts.begin(), texts.end(), value) != texts.end();
        for (const auto& [key, decoded] : request.parameters) {
          if (key == "vstoreId") {
            EXPECT_EQ(decoded, operation.vstore);
          }
        }
        if (request.members.is_object() && request.members.contains("vstoreId")) {
          EXPECT_EQ(request.members["vstoreId"], operation.vstore);
        }
      }
      EXPECT_TRUE(carried || !operation.sendsValue)
          << "the value neither arrived as passed nor was refused with a logged reason";
    }
    EXPECT_EQ(TenantView(sim(), kTenantB), tenantB) << "tenant B changed";
  }
};

// An added query parameter or body member also leaves the value split, so `carried` fails.
TEST_P(HostileValues, FailBeforeSendingOrArriveAsTheCallerPassedThem) {
  for (const auto& operation : GetParam().operations) {
    for (const char* pattern : kHostileValues) {
      const auto value = Aimed(pattern, operation.victim);
      SCOPED_TRACE(std::string(operation.name) + " with [" + value + "]");
      expectPlaced(operation, value);
    }
  }
}

// Calls of tenant A: the hostile value `v` in one place, A's own objects ("11") in the others.
using A = ZrManageHuawei;
using V = const std::string&;
const std::string kA = kTenantA;
const std::string kNone = "-12345";

std::string Out() { return std::string(); }

const Family kFamilies[] = {
    {"Shares",
     {{"CIFS create name", [](A& a, V v) { auto id = Out(); a.createCIFSShare(id, v, "/fs11/", "11", kA); }},
      {"CIFS create file system", [](A& a, V v) { auto id = Out(); a.createCIFSShare(id, "s", "/fs11/", v, kA); }},
      {"CIFS lookup", [](A& a, V v) { _HuaweiShareInfo i; a.getShareInfoByName(i, "unc", v, kA); }},
      {"CIFS delete", [](A& a, V v) { a.deleteCIFSShare(v, kA); }},
      {"NFS create name", [](A& a, V v) { auto id = Out(); a.createNFSShare(id, "11", v, "/fs11/x", kA); }},
      {"NFS create file system", [](A& a, V v) { auto id = Out(); a.createNFSShare(id, v, "n", "/fs11/y", kA); }},
      {"NFS lookup by path", [](A& a, V v) { _HuaweiShareInfo i; a.getShareInfoByName(i, "nfs", v, kA); }, "22", kTenantA, false},
      {"NFS lookup by file system", [](A& a, V v) { _HuaweiShareInfo i; a.getShareInfoByFSID(i, "nfs", v, kA); }},
      {"NFS delete", [](A& a, V v) { a.deleteNFSShare(v, kA); }}}},
    {"Permissions",
     {{"CIFS grant name", [](A& a, V v) { auto id = Out(); a.addCIFSSharePermission(id, v, "11", "0", "1", kA); }},
      {"CIFS grant share", [](A& a, V v) { auto id = Out(); a.addCIFSSharePermission(id, "u", v, "0", "1", kA); }},
      {"CIFS list", [](A& a, V v) { std::list<_HuaweiCIFSSharePermissionInfo> l; a.getCIFSSharePermissionsFromParentId(l, v, kA); }, "22", kTenantA, false},
      {"NFS grant name", [](A& a, V v) { auto id = Out(); a.addNFSSharePermission(id, v, "11", "1", "0", "1", "1", kA); }},
      {"NFS grant share", [](A& a, V v) { auto id = Out(); a.addNFSSharePermission(id, "h", v, "1", "0", "1", "1", kA); }},
      {"NFS list", [](A& a, V v) { std::list<_HuaweiNFSSharePermissionInfo> l; a.getNFSSharePermissionsFromParentId(l, v, kA); }, "22", kTenantA, false},
      {"NFS revoke", [](A& a, V v) { a.deleteNFSSharePermission(v, kA); }}}},
    {"FileSystemSnapshots",
     {{"create name", [](A& a, V v) { auto name = v; a.createFileSystemSnapshot(11, name, false, kA); }, "22@1"},
      {"info", [](A& a, V v) { _HuaweiSnapshotInfo i; a.getFileSystemSnapshotInfo(v, i, kA); }, "22@1"},
      {"delete", [](A& a, V v) { a.deleteFileSystemSnapshot(v, kA); }, "22@1"}}},
    {"LunSnapshots",
     {{"info", [](A& a, V v) { _HuaweiLUNSnapshotInfo i; bool n = false; a.getLUNSnapshotInfo(i, v, n, kA); }},
      {"by name", [](A& a, V v) { _HuaweiLUNSnapshotInfo i; bool n = false; a.getLUNSnapshotInfoByName(i, v, n, kA); }},
      {"create LUN", [](A& a, V v) { _HuaweiLUNSnapshotInfo i; a.createLUNSnapshot(i, v, "s", kA); }},
      {"create name", [](A& a, V v) { _HuaweiLUNSnapshotInfo i; a.createLUNSnapshot(i, "11", v, kA); }},
      {"activate", [](A& a, V v) { a.activateLUNSnapshot({"11", v}, kA); }},
      {"stop", [](A& a, V v) { bool n = false; a.deActivateLUNSnapshot(v, n, kA); }},
      {"delete", [](A& a, V v) { a.deleteLUNSnapshot(v, kA); }},
      {"revert", [](A& a, V v) { a.revertLUNSnapshot(v, "2", kA); }},
      {"copy of", [](A& a, V v) { _HuaweiLUNSnapshotInfo i; a.createLUNSnapshotCopy(i, v, "c", kA); }},
      {"copy name", [](A& a, V v) { _HuaweiLUNSnapshotInfo i; a.createLUNSnapshotCopy(i, "11", v, kA); }}}},
    {"HostsAndInitiators",
     {{"host create", [](A& a, V v) { _HuaweiLUNHostInfo i; a.createHost(i, v, kA, false); }},
      {"host by name", [](A& a, V v) { auto id = Out(); a.getHostIDFromHostName(v, id, kA); }},
      {"initiator info", [](A& a, V v) { _HuaweiInitiator i; a.getInitiatorInfoFromID(i, v, true, kA); }},
      {"initiator host", [](A& a, V v) { auto id = Out(); a.getHostIDFromInitiatorID(v, true, id, kA); }},
      {"initiator create id", [](A& a, V v) { _HuaweiInitiator i; bool e = false; a.createInitiator(i, v, "11", true, e, kA); }},
      {"initiator create host", [](A& a, V v) { _HuaweiInitiator i; bool e = false; a.createInitiator(i, "iqn.x", v, true, e, kA); }},
      {"initiator rebind id", [](A& a, V v) { a.updateInitiatorWithHostID(v, "11", true, kA); }},
      {"initiator rebind host", [](A& a, V v) { a.updateInitiatorWithHostID("11", v, true, kA); }}}},
    {"HostGroups",
     {{"create", [](A& a, V v) { _HuaweiHostGroupInfo i; a.createHostGroup(i, v, kA); }},
      {"by name", [](A& a, V v) { auto id = Out(); a.getHostGroupIDFromName(v, id, kA); }},
      {"add host, group", [](A& a, V v) { a.addHostToHostGroup(v, "11", kA); }},
      {"add host, host", [](A& a, V v) { a.addHostToHostGroup("11", v, kA); }},
      {"add host without vStore", [](A& a, V v) { a.addHostToHostGroup("11", v, kNone); }, "22", ""},
      {"hosts of", [](A& a, V v) { std::vector<_HuaweiLUNHostInfo> h; a.getHostAssociatedToHostGroup(v, h, kA); }},
      {"has host", [](A& a, V v) { a.isHostAssociatedToHostGroup("11", v, kA); }, "22", kTenantA, false}}},
    {"LunGroups",
     {{"create", [](A& a, V v) { _HuaweiLunGroupInfo g; a.createLUNGroup(g, v, kA, "0"); }},
      {"by name", [](A& a, V v) { auto id = Out(); a.getLUNGroupIDFromName(v, id, kA); }},
      {"add snapshot, group", [](A& a, V v) { a.addSnapshotLuntoLunGroup(v, "11", kA); }},
      {"add snapshot, snapshot", [](A& a, V v) { a.addSnapshotLuntoLunGroup("11", v, kA); }},
      {"has snapshot", [](A& a, V v) { a.isSnapshotLunAssociatedToLunGroup("11", v, kA); }, "22", kTenantA, false},
      {"snapshots of", [](A& a, V v) { std::vector<_HuaweiLUNSnapshotInfo> s; a.getSnapshotLunAssociatedToLunGroup(v, s, kA); }},
      {"remove snapshot", [](A& a, V v) { a.removeSnapshotLunFromLunGroup("11", v, kA); }},
      {"delete", [](A& a, V v) { a.deleteLunGroup(v, kA); }},
      {"add LUN", [](A& a, V v) { a.addLuntoLunGroup("11", v, kA); }},
      {"remove LUN", [](A& a, V v) { a.removeLunFromLunGroup(v, "11", kA); }},
      {"views of", [](A& a, V v) { std::vector<_HuaweiLUNMappingView> m; a.getMappingViewAssociatedToLunGroup(v, m, kA); }}}},
    {"MappingViews",
     {{"by name", [](A& a, V v) { _HuaweiLUNMappingView m; a.getMappingViewInfoByName(m, v, kA); }},
      {"by id", [](A& a, V v) { _HuaweiLUNMappingView m; a.getMappingViewInfoByID(m, v, kA); }},
      {"create", [](A& a, V v) { _HuaweiLUNMappingView m; a.createMappingView(m, v, kA); }},
      {"add host group", [](A& a, V v) { a.addHostGroupToMappingView(v, "11", kA); }},
      {"add LUN group", [](A& a, V v) { a.addLunGroupToMappingView("11", v, kA); }},
      {"LUN groups of", [](A& a, V v) { std::vector<_HuaweiLunGroupInfo> g; a.getLunGroupAssociatedToMappingView(v, g, kA); }},
      {"remove LUN group", [](A& a, V v) { a.removeLunGroupAssociatedToMappingView(v, "11", kA); }},
      {"remove host group", [](A& a, V v) { a.removeHostGroupAssociatedToMappingView("11", v, kA); }},
      {"delete", [](A& a, V v) { a.deleteMappingView(v, kA); }}}},
    {"Luns",
     {{"info", [](A& a, V v) { _HuaweiLUNInfo l; a.getLUNInfo(l, v, kA); }},
      {"create name", [](A& a, V v) { auto id = Out(); a.createLUN(id, NewLun(v)); }, "22", ""},
      {"rename", [](A& a, V v) { _HuaweiLUNInfo l; l.id = v, l.name = "x"; a.modifyLun(l); }, "22", ""},
      {"delete", [](A& a, V v) { a.deleteLun(v, kA); }},
      {"groups of", [](A& a, V v) { std::vector<_HuaweiLunGroupInfo> g; a.getLunGroupsAssociatedToLun(g, v, kA); }},
      {"in group", [](A& a, V v) { a.isLunAssociatedToLunGroup("11", v); }, "22", "", false}}},
    {"Clones",
     {{"info", [](A& a, V v) { _HuaweiCloneInfo c; a.getCloneInfo(c, v); }, "22", ""},
      {"secondaries", [](A& a, V v) { std::list<_HuaweiCloneSecondaryLUN> l; a.getCloneSecondaryLuns(l, v); }, "22", ""},
      {"create", [](A& a, V v) { _HuaweiCloneInfo c; c.name = v, c.priLunId = "11"; auto id = Out(); a.createClone(id, c); }, "22", ""},
      {"create of", [](A& a, V v) { _HuaweiCloneInfo c; c.name = "c", c.priLunId = v; auto id = Out(); a.createClone(id, c); }, "22", ""},
      {"delete", [](A& a, V v) { a.deleteClone(v); }, "22", ""},
      {"add secondary", [](A& a, V v) {
         _HuaweiCloneSecondaryLUN s;
         s.id = v;
         s.parentId = "11";
         s.speed = HuaweiApiValue::COPY_SPEED_HIGH;
         s.resumePolicy = HuaweiApiValue::RESUME_POLICY_AUTOMATIC;
         a.addCloneSecondaryLun(s, HuaweiApiValue::FIRST_SYNC_YES);
       }, "22", ""},
      {"split", [](A& a, V v) { a.splitCloneSecondaryLun(v, "11"); }, "221", ""},
      {"sync", [](A& a, V v) { a.syncCloneSecondaryLun("111", v); }, "22", ""},
      {"remove", [](A& a, V v) { a.removeCloneSecondaryLun(v, "11"); }, "221", ""}}},
    {"ChangeLists",
     {{"open on", [](A& a, V v) { a.createSnapshotChangeListSession(v, "11@1", "11@2", 40); }, "22", ""},
      {"open from", [](A& a, V v) { a.createSnapshotChangeListSession("11", v, "11@2", 40); }, "22@1", ""},
      {"close", [](A& a, V v) { a.deleteSnapshotChangeListSession(v); }, "22", ""}}},
};

INSTANTIATE_TEST_SUITE_P(Families, HostileValues, ::testing::ValuesIn(kFamilies),
                         [](const ::testing::TestParamInfo<Family>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace zrtest
