#include "MissingValueRows.h"

#include <list>

namespace zrtest {
namespace {

using arraysim::ArraySimulator;
using arraysim::FaultRule;

const char kOk[] = R"("error":{"code":0,"description":"0"}})";
const char kNone[] = "-12345";

std::string answer(const std::string& data) { return "{" + (data.empty() ? "" : "\"data\":" + data + ",") + kOk; }

void cannedAnswer(ArraySimulator& sim, const char* method, const char* resource, const std::string& data) {
  sim.faults().add(FaultRule::On(method, resource).cannedBody(answer(data)));
}

void refused(ArraySimulator& sim, const char* method, const char* resource, long long code) {
  sim.faults().add(FaultRule::On(method, resource).arrayError(code, "refused"));
}

MissingValueOutcome boolOutcome(bool answered, bool kept) { return {!answered, false, std::string(), kept}; }
MissingValueOutcome errorOutcome(const CXoError& error, bool kept) {
  return {error.IsError(), true, error.AsString(), kept};
}
MissingValueOutcome statusOutcome(const HuaweiApi::ResultStatus& status, bool kept) {
  return {status.IsError() && status.GetErrorCode() != 0, true, status.GetErrorString(), kept};
}

// A one-record list whose record says it was there before the call.
template <typename Record>
std::list<Record> before() {
  Record record;
  record.name = "before";
  return {record};
}
template <typename List>
bool untouched(const List& list) {
  return list.size() == 1 && list.front().name == "before";
}

MissingValueOutcome listFileSystems(ZrManageHuawei& array) {
  auto fileSystems = before<_HuaweiFileSystemsInfo>();
  return boolOutcome(array.getFileSystemsList(fileSystems, kNone), untouched(fileSystems));
}

// A page of the walk, from a caller whose last page held one change.
MissingValueOutcome fetchPage(ZrManageHuawei& array, const std::string& sessionId) {
  _HuaweiSnapshotChangeListInfo page;
  page.sessionId = sessionId;
  page.changes.resize(1);
  page.changes.front().filePath = "/before";
  const bool fetched = array.getSnapshotChangeList("1", "2", "3", page);
  return boolOutcome(fetched, page.sessionId == sessionId && page.changes.size() == 1 &&
                                  page.changes.front().filePath == "/before");
}

const std::string kDataArray = R"(key "data", expected an array)";

std::vector<MissingValueRow> makeRows() {
  std::vector<MissingValueRow> rows;
  rows.push_back({"FileSystemsWithoutData", [](ArraySimulator&) {}, listFileSystems, kDataArray, {"GET filesystem"}});
  rows.push_back({"FileSystemOfOneAsBareObject",
                  [](ArraySimulator& sim) {
                    sim.fileSystems().create("only");
                    arraysim::AnswerStyle bare;
                    bare.singleItemAsObject = true;
                    sim.answerStyles().set("GET", "filesystem", bare);
                  },
                  listFileSystems, kDataArray, {"GET filesystem"}});
  rows.push_back({"InterfacesWithNdmpLackingAField",
                  [](ArraySimulator& sim) {
                    arraysim::LogicalInterface lif;
                    lif.ipv4Address = "10.0.0.1";
                    sim.interfaces().add(lif);
                    cannedAnswer(sim, "GET", "ndmpservice", R"({"ip":"10.0.0.1","isEnabled":"true"})");
                  },
                  [](ZrManageHuawei& array) {
                    std::list<_HuaweiArrayInterfaces> interfaces(1);
                    interfaces.front().ipv4Address = "before";
                    const bool listed = array.getArrayInterfaces(interfaces);
                    return boolOutcome(listed, interfaces.size() == 1 && interfaces.front().ipv4Address == "before");
                  },
                  R"(key "isSupportSnapshot", expected a string)", {"GET lif", "GET ndmpservice"}});
  rows.push_back({"SystemWithoutData",
                  [](ArraySimulator& sim) {
                    arraysim::AnswerStyle withoutData;
                    withoutData.omitData = true;
                    sim.answerStyles().set("GET", "system/", withoutData);
                  },
                  [](ZrManageHuawei& array) {
                    _HuaweiSystemInformation info;
                    info.name = "before";
                    return boolOutcome(array.getSystemInformation(info), info.name == "before");
                  },
                  R"(key "data", expected an object)", {"GET system/"}});
  rows.push_back({"CifsPermissionsOfNone", [](ArraySimulator&) {},
                  [](ZrManageHuawei& array) {
                    auto permissions = before<_HuaweiCIFSSharePermissionInfo>();
                    return boolOutcome(array.getCIFSSharePermissions(permissions, kNone), untouched(permissions));
                  },
                  kDataArray, {"GET CIFS_SHARE_AUTH_CLIENT"}});
  rows.push_back({"NfsPermissionsOfNone", [](ArraySimulator&) {},
                  [](ZrManageHuawei& array) {
                    auto permissions = before<_HuaweiNFSSharePermissionInfo>();
                    return boolOutcome(array.getNFSSharePermissions(permissions, kNone), untouched(permissions));
                  },
                  kDataArray, {"GET NFS_SHARE_AUTH_CLIENT"}});
  rows.push_back({"CifsShareAdoptedThroughALookupLackingAPath",
                  [](ArraySimulator& sim) {
                    refused(sim, "POST", "CIFSHARE", 1077939715);
                    cannedAnswer(sim, "GET", "cifshare", R"([{"ID":"9","FSID":"1","NAME":"s"}])");
                  },
                  [](ZrManageHuawei& array) {
                    std::string shareId = "before";
                    const bool created = array.createCIFSShare(shareId, "s", "/fs/s", "1", kNone);
                    return boolOutcome(created, shareId == "before");
                  },
                  R"(key "SHAREPATH", expected a string)", {"POST CIFSHARE", "GET cifshare"}});
  rows.push_back({"ChangeListSessionWithoutItsId",
                  [](ArraySimulator& sim) { cannedAnswer(sim, "POST", "fs_snapchangelist_session", "{}"); },
                  [](ZrManageHuawei& array) { return fetchPage(array, ""); }, R"(key "id", expected a string)",
                  {"POST fs_snapchangelist_session"}});
  rows.push_back({"ChangeListPageWithoutItsList",
                  [](ArraySimulator& sim) { cannedAnswer(sim, "GET", "fs_snapchangelist_result", R"({"progress":"50"})"); },
                  [](ZrManageHuawei& array) { return fetchPage(array, "7"); }, R"(key "changeList", expected an array)",
                  {"GET fs_snapchangelist_result"}});
  rows.push_back({"LunWithoutIdentifier",
                  [](ArraySimulator& sim) { cannedAnswer(sim, "GET", "lun", R"({"NAME":"x","PARENTID":"0"})"); },
                  [](ZrManageHuawei& array) {
                    _HuaweiLUNInfo lun;
                    lun.name = "before";
                    return errorOutcome(array.getLUNInfo(lun, "7", kNone), lun.name == "before");
                  },
                  R"(key "ID", expected a string)", {"GET lun/7"}});
  rows.push_back({"HostAdoptedThroughALookupLackingANAME",
                  [](ArraySimulator& sim) {
                    refused(sim, "POST", "host", 1077948993);
                    cannedAnswer(sim, "GET", "host", R"([{"ID":"3"}])");
                  },
                  [](ZrManageHuawei& array) {
                    _HuaweiLUNHostInfo host;
                    host.name = "before";
                    return errorOutcome(array.createHost(host, "h", kNone, false), host.name == "before");
                  },
                  R"(key "NAME", expected a string)", {"POST host", "GET host"}});
  rows.push_back({"StoragePoolLackingItsIdentifier",
                  [](ArraySimulator& sim) { cannedAnswer(sim, "GET", "storagepool", R"([{"NAME":"p"}])"); },
                  [](ZrManageHuawei& array) {
                    _HuaweiStoragePoolInfo pool;
                    pool.name = "before";
                    return statusOutcome(array.getStoragePoolInfoForName(pool, "p"), pool.name == "before");
                  },
                  R"(key "ID", expected a string)", {"GET storagepool"}});
  rows.push_back({"CloneSecondaryLunsLackingTheirSpeed",
                  [](ArraySimulator& sim) {
                    cannedAnswer(sim, "GET", "SPLITMIRRORTARGETLUN",
                                 R"([{"NAME":"t","ID":"5","PARENTID":"1","RESUMEPOLICY":"1"}])");
                  },
                  [](ZrManageHuawei& array) {
                    auto luns = before<_HuaweiCloneSecondaryLUN>();
                    return statusOutcome(array.getCloneSecondaryLuns(luns, "1"), untouched(luns));
                  },
                  R"(key "SPEED", expected a string)", {"GET SPLITMIRRORTARGETLUN/targetLUN"}});
  MissingValueRow login{"LoginWithoutToken",
                        [](ArraySimulator& sim) {
                          sim.faults().add(FaultRule::On("POST", "sessions").cannedBody(answer(R"({"deviceid":"x"})")));
                        },
                        [](ZrManageHuawei& array) { return boolOutcome(array.createSession(), true); },
                        R"(key "iBaseToken", expected a string)",
                        {"POST sessions"}};
  login.isLogin = true;
  rows.push_back(login);
  return rows;
}

}  // namespace

const std::vector<MissingValueRow>& MissingValueRows() {
  static const std::vector<MissingValueRow> rows = makeRows();
  return rows;
}

}  // namespace zrtest
