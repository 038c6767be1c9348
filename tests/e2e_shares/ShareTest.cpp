// Shares and permissions over HTTPS: what each protocol tolerates, the bodies as they reach the
// array, and the lists as the readers deliver them.
#include <list>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "resources/StoreFamilies.h"

namespace zrtest {
namespace {

namespace storetype = arraysim::storetype;

class Shares : public ArrayClientTest {
 protected:
  void SetUp() override {
    ArrayClientTest::SetUp();
    sim().fileSystems().create("fs1", FileSystemOf("7"));
    array_ = loggedInFacade();
  }
  std::string cifsShare(const std::string& name, const std::string& vstore = "-12345") {
    std::string id;
    EXPECT_TRUE(array_->createCIFSShare(id, name, "/fs1/" + name, "7", vstore));
    return id;
  }
  std::string nfsShare(const std::string& name, const std::string& path) {
    std::string id;
    EXPECT_TRUE(array_->createNFSShare(id, "7", name, path, "-12345"));
    return id;
  }
  std::unique_ptr<ZrManageHuawei> array_;
};

TEST_F(Shares, CIFSCreateAnswersAnExistingShareAndDeleteTakesItsName) {
  cifsShare("docs", "3");
  sim().requests().clear();
  LogCapture log;
  std::string again = "caller's";
  EXPECT_TRUE(array_->createCIFSShare(again, "docs", "/fs1/docs", "", "3"));
  EXPECT_EQ(requests().front().body, R"({"NAME":"docs", "SHAREPATH":"/fs1/docs", "FSID":"" ,"vstoreId":"3" })");
  EXPECT_TRUE(log.HasLine(0, "createCIFSShare", "The CIFS share with Name [docs] already exists.Get the share details"));
  // A share that cannot be looked up is not adopted, and the identifier stays the caller's.
  sim().faults().add(arraysim::FaultRule::On("GET", "cifshare").arrayError(1077949002, "Busy."));
  again = "caller's";
  EXPECT_FALSE(array_->createCIFSShare(again, "docs", "/fs1/docs", "7", "3"));
  EXPECT_EQ(again, "caller's");
  EXPECT_TRUE(log.HasLine(-1, "createCIFSShare", "Unable to get the CIFS share with Name [docs]")) << log.Dump();

  // A name the array does not know is deleted already: only the lookup goes out.
  sim().requests().clear();
  EXPECT_TRUE(array_->deleteCIFSShare("nothing", "3"));
  EXPECT_EQ(requests().size(), 1u);
  EXPECT_TRUE(log.HasLine(-1, "getShareInfoByName", "[ERROR] Unable to find the share details for the [unc] share [nothing]"));
}

TEST_F(Shares, NFSLookupTriesThePathThenTheNameWithoutItsTrailingSeparator) {
  nfsShare("/fs1", "/fs1");
  const std::string exportId = nfsShare("/fs1/export", "/fs1/a/b");
  LogCapture log;
  _HuaweiShareInfo info;
  EXPECT_TRUE(array_->getShareInfoByName(info, "nfs", "/fs1/", "-12345"));
  EXPECT_EQ(info.sharePath + "|" + info.quotaName + "|" + info.fileSystemId, "/fs1||7");
  EXPECT_TRUE(log.HasLine(-1, "getShareInfoByName",
                          "[ERROR] Unable to find the NFS share with share path as [/fs1/]. Retry with the share name [/fs1]"));

  EXPECT_TRUE(array_->getShareInfoByName(info, "nfs", "/fs1/a/b", "-12345"));
  EXPECT_EQ(info.id + "|" + info.quotaName, exportId + "|a/b");
  EXPECT_EQ(lastRequest().resource, "nfshare");

  // Not found is a success that leaves the record alone; an unknown protocol sends nothing.
  sim().requests().clear();
  EXPECT_TRUE(array_->getShareInfoByName(info, "nfs", "/none", "-12345"));
  EXPECT_EQ(info.id, exportId);
  EXPECT_FALSE(array_->getShareInfoByName(info, "smb", "docs", "-12345"));
  EXPECT_TRUE(log.HasLine(-1, "getShareInfoByName", "[ERROR] Unable to get the resource details."));
  EXPECT_EQ(requests().size(), 1u);
}

TEST_F(Shares, LookupByFileSystemWantsExactlyOneShare) {
  const std::string id = nfsShare("/fs1/export", "/fs1/export");
  LogCapture log;
  _HuaweiShareInfo info;
  EXPECT_TRUE(array_->getShareInfoByFSID(info, "nfs", "7", "5"));
  EXPECT_EQ(info.id, id);
  EXPECT_FALSE(array_->getShareInfoByFSID(info, "unc", "7", "5"));
  EXPECT_TRUE(log.HasLine(-1, "getShareInfoByFSID", "[ERROR] API is supported only for NFS shares"));

  // Two shares in the answer count as none, even when the first matches.
  const std::string share = R"({"ID":"1","NAME":"x","SHAREPATH":"/fs1/x","FSID":"7"})";
  sim().faults().add(arraysim::FaultRule::On("GET", "nfshare")
                         .cannedBody(R"({"data":[)" + share + "," + share + R"(],"error":{"code":0,"description":"0"}})"));
  info.clear();
  EXPECT_FALSE(array_->getShareInfoByFSID(info, "nfs", "7", "-12345"));
  EXPECT_TRUE(info.id.empty());
  EXPECT_TRUE(log.HasLine(0, "getShareInfoByFSID",
                          "Unable to fetch the share details for the NFS share with File System ID [7]"));
}

TEST_F(Shares, GrantsDifferByProtocol) {
  const std::string cifs = cifsShare("docs", "3");
  const std::string nfs = nfsShare("/fs1/export", "/fs1/export");
  LogCapture log;
  std::string permissionId;
  // Every backslash is escaped: the array reads the name as it was given.
  EXPECT_TRUE(array_->addCIFSSharePermission(permissionId, "DOMAIN\\ann", cifs, "", "1", "3"));
  EXPECT_EQ(lastRequest().body,
            R"({"NAME":"DOMAIN\\ann", "PARENTID":")" + cifs + R"(", "PERMISSION":"1", "DOMAINTYPE":"" ,"vstoreId":"3" })");
  // An existing CIFS grant is a success that keeps the caller's identifier.
  permissionId = "kept";
  EXPECT_TRUE(array_->addCIFSSharePermission(permissionId, "DOMAIN\\ann", cifs, "", "1", "3"));
  EXPECT_EQ(permissionId, "kept");
  EXPECT_TRUE(log.HasLine(0, "addCIFSSharePermission",
                          "The permission with Name [DOMAIN\\ann] Permission [1] already exists for the CIFS Share "
                          "with ID [" + cifs + "]"));

  // NFS: no vStore in the body, no identifier back, an existing grant a failure at level 0.
  EXPECT_TRUE(array_->addNFSSharePermission(permissionId, "10.0.0.1", nfs, "1", "0", "1", "1", "3"));
  EXPECT_EQ(lastRequest().body,
            R"({"NAME":"10.0.0.1", "PARENTID":")" + nfs + R"(", "ACCESSVAL":"1", "SYNC":"0", "ALLSQUASH":"1", "ROOTSQUASH":"1" })");
  EXPECT_FALSE(array_->addNFSSharePermission(permissionId, "10.0.0.1", nfs, "1", "0", "1", "1", "3"));
  EXPECT_EQ(permissionId, "kept");
}

TEST_F(Shares, PermissionListsCarryTheVStoreOnlyForCIFS) {
  const auto grant = [&](const char* type, const char* name, const char* vstore) {
    arraysim::Record record = {{"NAME", name}, {"PARENTID", "1"}, {"PERMISSION", "1"}, {"DOMAINTYPE", "2"},
                               {"ACCESSVAL", "1"}, {"SYNC", "0"}, {"ALLSQUASH", "1"}, {"ROOTSQUASH", "1"}};
    if (*vstore) record["vstoreId"] = vstore;
    if (*vstore) record["vstoreName"] = std::string("vs") + vstore;
    sim().store().insert(type, record);
  };
  for (const char* type : {storetype::kCIFSPermission, storetype::kNFSPermission}) {
    grant(type, "a", "");
    grant(type, "b", "7");
    grant(type, "c", "");
    grant(type, "d", "8");
  }
  std::list<_HuaweiCIFSSharePermissionInfo> cifs(1);  // the list by parent appends
  ASSERT_TRUE(array_->getCIFSSharePermissionsFromParentId(cifs, "1", "-12345"));
  std::vector<std::string> seen;
  for (const auto& p : cifs) seen.push_back(p.name + ":" + p.vstoreId + ":" + p.vstoreName);
  EXPECT_EQ(seen, (std::vector<std::string>{"::", "a::", "b:7:vs7", "c:7:vs7", "d:7:vs7"}));

  std::list<_HuaweiNFSSharePermissionInfo> nfs;
  LogCapture log;
  ASSERT_TRUE(array_->getNFSSharePermissionsFromParentId(nfs, "1", "-12345"));
  seen.clear();
  for (const auto& p : nfs) seen.push_back(p.name + ":" + p.vstoreId);
  EXPECT_EQ(seen, (std::vector<std::string>{"a:", "b:7", "c:", "d:8"}));
  EXPECT_TRUE(log.HasLine(0, "getNFSSharePermissionsFromParentId",
                          "Successfully got the permissions associated with the share with parentID [1]. Count [4]"));
  // A share without permissions reads as a failure, and says nothing.
  log.Clear();
  EXPECT_FALSE(array_->getNFSSharePermissionsFromParentId(nfs, "2", "-12345"));
  EXPECT_FALSE(log.ContainsText("parentID"));
  EXPECT_FALSE(array_->getCIFSSharePermissionsFromParentId(cifs, "", "-12345"));
  EXPECT_TRUE(log.HasLine(-1, "getCIFSSharePermissionsFromParentId", "[ERROR] The shareID is empty"));
}

TEST_F(Shares, NFSDeletionsToleratesOnlyAnAbsentPermission) {
  const std::string share = nfsShare("/fs1/export", "/fs1/export");
  std::string unused;
  ASSERT_TRUE(array_->addNFSSharePermission(unused, "10.0.0.1", share, "1", "0", "1", "1", "-12345"));
  std::list<_HuaweiNFSSharePermissionInfo> permissions;
  ASSERT_TRUE(array_->getNFSSharePermissions(permissions, "-12345"));
  const std::string permission = permissions.front().id;
  LogCapture log;
  EXPECT_TRUE(array_->deleteNFSSharePermission(permission, "-12345"));
  EXPECT_TRUE(array_->deleteNFSSharePermission(permission, "-12345"));
  EXPECT_TRUE(log.HasLine(3, "deleteNFSSharePermission",
                          "[ERROR] Unable to delete the NFS share permission with ID [" + permission +
                              "] as the permission does not exist"));
  EXPECT_TRUE(array_->deleteNFSShare(share, "-12345"));
  EXPECT_FALSE(array_->deleteNFSShare(share, "-12345"));
  // A refusal of another kind is a failure with the array's code at level 3.
  sim().faults().add(arraysim::FaultRule::On("DELETE", "NFS_SHARE_AUTH_CLIENT").arrayError(1077949002, "Busy."));
  log.Clear();
  EXPECT_FALSE(array_->deleteNFSSharePermission("9", "-12345"));
  // The failure line, then the array's code beneath it.
  std::vector<std::string> told;
  for (const tklog::LogLine& line : log.Lines()) {
    if (line.name == "deleteNFSSharePermission") told.push_back(std::to_string(line.level) + " " + line.text);
  }
  EXPECT_EQ(told, (std::vector<std::string>{"-1 [ERROR] Unable to delete the NFS share permission with ID [9]",
                                            "3 [ERRORCODE: [1077949002]] [MESSAGE: [Busy.]]"}));
}

}  // namespace
}  // namespace zrtest
