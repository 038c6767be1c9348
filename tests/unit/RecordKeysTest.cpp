// The key tables: which key a reader names when the array leaves out what it requires, what an
// absent optional key leaves in the record, and the order the tool prints fields in.
#include <gtest/gtest.h>

#include <functional>
#include <list>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "RecordReading.h"

namespace {

using HuaweiKeys::KeyOrder;
using HuaweiKeys::Keys;
using HuaweiKeys::readKeys;

jsonxx::Object objectOf(const std::string& text) {
  jsonxx::Object object;
  EXPECT_TRUE(object.parse(text)) << text;
  return object;
}

// What the document model reports of the first required value the reading missed.
std::string missingValue(const std::function<void(const jsonxx::Object&)>& read, const std::string& text) {
  const jsonxx::Object object = objectOf(text);
  jsonxx::ContainedReads contained;
  try {
    read(object);
  } catch (const jsonxx::MissingRequiredValue& missing) {
    return missing.what();
  }
  return "nothing missing";
}

template <class Record>
std::function<void(const jsonxx::Object&)> reading(Keys keys = Keys::All, KeyOrder order = KeyOrder::Listed) {
  return [keys, order](const jsonxx::Object& object) {
    Record record;
    readKeys(object, record, keys, order);
  };
}

TEST(RecordKeys, AMissingRequiredKeyIsNamedInTheArraysOrder) {
  struct Row {
    const char* name;
    std::function<void(const jsonxx::Object&)> read;
    const char* answer;
    const char* what;
  };
  const std::vector<Row> rows = {
      {"file system, before its name", reading<_HuaweiFileSystemsInfo>(), R"({"ID":"1"})",
       R"(key "HEALTHSTATUS", expected a string)"},
      {"snapshot, parent first", reading<_HuaweiSnapshotInfo>(), R"({"PARENTID":"1"})",
       R"(key "PARENTNAME", expected a string)"},
      {"NDMP, alphabetical", reading<_HuaweiNDMPServiceSettings>(), R"({"ip":"1","isEnabled":"true"})",
       R"(key "isSupportSnapshot", expected a string)"},
      {"LUN snapshot lookup", reading<_HuaweiLUNSnapshotInfo>(), R"({"ID":"1","NAME":"s","PARENTID":"2"})",
       R"(key "RUNNINGSTATUS", expected a string)"},
      {"LUN snapshot in a LUN group", reading<_HuaweiLUNSnapshotInfo>(Keys::All, KeyOrder::Declared),
       R"({"ID":"1","NAME":"s","PARENTID":"2"})", R"(key "PARENTNAME", expected a string)"},
      {"clone secondary LUN", reading<_HuaweiCloneSecondaryLUN>(), R"({"NAME":"t","ID":"5","PARENTID":"1"})",
       R"(key "SPEED", expected a string)"},
      {"mistyped required key", reading<_HuaweiLUNInfo>(), R"({"ID":"1","NAME":"l","PARENTID":"0","RUNNINGSTATUS":27})",
       R"(key "RUNNINGSTATUS", expected a string)"},
      {"number of a change", reading<_HuaweiSnapshotChangeList>(), R"({"inode":"1"})",
       R"(key "inode", expected a number)"},
      {"identity only", reading<_HuaweiHostGroupInfo>(Keys::RequiredOnly), R"({"ID":"1"})",
       R"(key "NAME", expected a string)"},
      {"nothing asserts", reading<_HuaweiInitiator>(Keys::AllOptional), R"({"PARENTID":"1"})", "nothing missing"},
  };
  for (const Row& row : rows) EXPECT_EQ(missingValue(row.read, row.answer), row.what) << row.name;
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
  lun.clear();
  EXPECT_EQ(lun.capacity, "1024");
  ASSERT_TRUE(lun.parseFromJson(objectOf(R"({"ID":"1","NAME":"l","PARENTID":"0","RUNNINGSTATUS":"27"})")));
  EXPECT_EQ(lun.capacity, "") << "the one field clear() keeps is still read";

  _HuaweiHostGroupInfo group;
  group.vstoreId = "4";
  readKeys(objectOf(R"({"ID":"1","NAME":"g","vstoreId":"9"})"), group, Keys::RequiredOnly);
  EXPECT_EQ(group.vstoreId, "4") << "an identity reading leaves the optional keys alone";
}

TEST(RecordKeys, TextsBecomeTheFieldsTypes) {
  _HuaweiNDMPServiceSettings ndmp;
  readKeys(objectOf(R"({"ip":"1","isEnabled":"no","isSupportSnapshot":"false","port":"1","version":"4"})"), ndmp);
  EXPECT_TRUE(ndmp.isEnabled) << "anything but \"false\" is true";
  EXPECT_FALSE(ndmp.isSupportSnapshot);

  _HuaweiCloneSecondaryLUN secondary;
  readKeys(objectOf(R"({"NAME":"t","ID":"5","PARENTID":"1","SPEED":"9","RESUMEPOLICY":"1","RUNNINGSTATUS":"23",
                       "PROCESS":"42%"})"),
           secondary);
  EXPECT_EQ(secondary.process, 42);
  EXPECT_EQ(secondary.speed.getSpeed(), 0) << "only the four speeds are kept";
  EXPECT_EQ(secondary.runningStatus.getValue(), "23");

  const char* const lunKeys = R"("ID":"1","NAME":"l","PARENTID":"0","RUNNINGSTATUS":"27")";
  const std::vector<std::pair<std::string, std::list<std::string>>> splitMirrors = {
      {R"("SPLITMIRRORIDS":"[\"4\",\"5\"]")", {"4", "5"}},
      {R"("SPLITMIRRORIDS":["4"])", {}},
      {R"("SPLITMIRRORIDS":"4")", {}},
  };
  for (const auto& [member, ids] : splitMirrors) {
    _HuaweiLUNInfo lun;
    ASSERT_TRUE(lun.parseFromJson(objectOf("{" + std::string(lunKeys) + "," + member + "}")));
    EXPECT_EQ(lun.splitMirrorIds, ids) << member;
  }

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
  EXPECT_EQ(declaredFields<_HuaweiFileSystemsInfo>(), (std::vector<std::string>{"id", "name", "healthStatus"}));
  for (const auto& names : {declaredFields<_HuaweiLUNInfo>(), declaredFields<_HuaweiArrayInterfaces>(),
                            declaredFields<_HuaweiCloneSecondaryLUN>(), declaredFields<_HuaweiSnapshotChangeList>()}) {
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
  }
}

}  // namespace
