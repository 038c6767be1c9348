// The key tables: what an absent optional key leaves in the record, how numbers of a change fit
// their fields, and the order the tool prints fields in. (A missing required key, per reader
// family: MissingValueRows and the contained suite.)
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "RecordReading.h"

namespace {

using HuaweiKeys::Keys;
using HuaweiKeys::readKeys;

jsonxx::Object objectOf(const std::string& text) {
  jsonxx::Object object;
  EXPECT_TRUE(object.parse(text)) << text;
  return object;
}

TEST(RecordKeys, AnAbsentOptionalKeyLeavesWhatAFreshRecordHolds) {
  _HuaweiArrayInterfaces lif;
  readKeys(objectOf(R"({"IPV4ADDR":"a","IPV6ADDR":"b","NAME":"n","MANAGEMENTACCESS":"m","ROLE":"r",
                       "SUPPORTPROTOCOL":"p","vstoreId":7,"vstoreName":"v"})"),
           lif);
  EXPECT_EQ(lif.vstoreId, "-12345") << "a vstoreId that is no string counts as absent";
  EXPECT_EQ(lif.vstoreName, "v");

  _HuaweiLUNHostInfo host;  // as sent to the array, then read from its echo
  host.vstoreId = "3";
  readKeys(objectOf(R"({"ID":"1","NAME":"h","OPERATIONSYSTEM":"0"})"), host);
  EXPECT_EQ(host.vstoreId, "");

  _HuaweiLUNInfo lun;
  lun.capacity = "1024";
  lun.splitMirrorIds = {"1"};
  lun.clear();
  EXPECT_EQ(lun.capacity + "|" + std::to_string(lun.splitMirrorIds.size()), "1024|0");
  // Split mirrors as a true JSON array, as no JSON or not at all are none; a number for
  // ALLOCTYPE counts as absent.
  for (const char* tail : {R"(,"SPLITMIRRORIDS":["4"],"ALLOCTYPE":1})", R"(,"SPLITMIRRORIDS":"--"})", "}"}) {
    lun.capacity = "1024";
    const std::string text = R"({"ID":"1","NAME":"l","PARENTID":"0","RUNNINGSTATUS":"27")";
    ASSERT_TRUE(lun.parseFromJson(objectOf(text + tail))) << tail;
    EXPECT_TRUE(lun.splitMirrorIds.empty() && lun.allocType.isEmpty()) << tail;
    EXPECT_EQ(lun.capacity, "") << "the one field clear() keeps is still read";
  }

  _HuaweiHostGroupInfo group;
  group.vstoreId = "4";
  readKeys(objectOf(R"({"ID":"1","NAME":"g","vstoreId":"9"})"), group, Keys::RequiredOnly);
  EXPECT_EQ(group.vstoreId, "4") << "an identity reading leaves the optional keys alone";
}

TEST(RecordKeys, ChangeNumbersBecomeTheFieldsTypes) {
  _HuaweiSnapshotChangeList change;
  readKeys(objectOf(R"({"inode":18446744073709551615,"changeType":-1,"fType":4294967297,"filePath":"/a",
                       "crTime":1.9,"cTime":0,"mTime":0,"aTime":0,"owner":0,"group":0,"size":0,"links":2,
                       "dosAttr":-1})"),
           change);
  EXPECT_EQ(change.inode, 18446744073709551615ULL);
  EXPECT_EQ(change.changeType, -1);
  EXPECT_EQ(change.fType, 1) << "wrapped to 32 bits";
  EXPECT_EQ(change.crTime, 1U) << "truncated towards zero";
  EXPECT_EQ(change.dosAttr, 4294967295U);
}

template <class Record>
std::vector<std::string> declaredFields() {
  std::vector<std::string> names;
  for (const auto* row : HuaweiKeys::inDeclaredOrder<Record>()) names.push_back(row->field);
  return names;
}

TEST(RecordKeys, FieldsListOnceInTheRecordsOrder) {
  EXPECT_EQ(declaredFields<_HuaweiSnapshotInfo>(),
            (std::vector<std::string>{"parentId", "id", "name", "parentName", "snapType", "notExist"}));
  for (const auto& names : {declaredFields<_HuaweiLUNInfo>(), declaredFields<_HuaweiArrayInterfaces>(),
                            declaredFields<_HuaweiCloneSecondaryLUN>(), declaredFields<_HuaweiSnapshotChangeList>()}) {
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
  }
}

}  // namespace
