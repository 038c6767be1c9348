// The array's identity over HTTPS: system record, NDMP settings, vStore names.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"

namespace zrtest {
namespace {

using testing::Contains;

class ArrayIdentity : public ArrayClientTest {};

TEST_F(ArrayIdentity, SystemInformationCopiesTheRecordAndNamesTheArray) {
  sim().system().setSystemField("NAME", "lab array 2");
  sim().system().setSystemField("HEALTHSTATUS", "2");
  sim().system().setSystemField("RUNNINGSTATUS", "28");
  sim().system().setSystemField("PRODUCTVERSION", "V700R001C00");
  auto array = loggedInFacade();
  LogCapture log;

  _HuaweiSystemInformation info;
  ASSERT_TRUE(array->getSystemInformation(info));
  EXPECT_EQ(info.id, sim().deviceId());
  EXPECT_EQ(info.name, "lab array 2");
  EXPECT_EQ(info.healthStatus, "2");
  EXPECT_EQ(info.runningStatus, "28");
  EXPECT_EQ(info.productVersion, "V700R001C00");
  EXPECT_EQ(lastRequest().target, devicePath() + "system/");
  EXPECT_TRUE(log.HasLine(0, "ZrManageHuawei::getSystemInformation",
                          "Successfully got the system information for [lab array 2]."))
      << log.Dump();
}

// Both flags arrive as text; only the exact word "false" reads as false.
struct FlagText {
  const char* name;
  const char* text;
  bool expected;
};

void PrintTo(const FlagText& row, std::ostream* out) { *out << row.name; }

class NdmpFlagText : public ArrayClientTest, public testing::WithParamInterface<FlagText> {};

TEST_P(NdmpFlagText, ReadsAsFalseOnlyForTheWordFalse) {
  arraysim::NdmpSettings settings;
  settings.isEnabled = GetParam().text;
  settings.isSupportSnapshot = GetParam().text;
  sim().system().setNdmp(settings);
  auto array = loggedInFacade();

  _HuaweiNDMPServiceSettings read;
  read.isEnabled = !GetParam().expected;
  read.isSupportSnapshot = !GetParam().expected;
  ASSERT_TRUE(array->getNDMPServiceSettings(read, "-12345"));
  EXPECT_EQ(read.isEnabled, GetParam().expected);
  EXPECT_EQ(read.isSupportSnapshot, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Texts, NdmpFlagText,
                         testing::Values(FlagText{"False", "false", false}, FlagText{"True", "true", true},
                                         FlagText{"Empty", "", true}, FlagText{"UpperCase", "FALSE", true},
                                         FlagText{"Zero", "0", true}, FlagText{"No", "no", true}),
                         [](const testing::TestParamInfo<FlagText>& info) { return std::string(info.param.name); });

TEST_F(ArrayIdentity, NdmpSettingsOfTheArrayComeFromTheBareResource) {
  arraysim::NdmpSettings settings;
  settings.ip = "10.0.0.7";
  settings.port = "10001";
  settings.version = "3";
  sim().system().setNdmp(settings);
  auto array = loggedInFacade();
  LogCapture log;

  // The whole record is replaced: optional keys that the answer lacks come back empty.
  _HuaweiNDMPServiceSettings read;
  read.vstoreId = "stale";
  read.vstoreName = "stale";
  ASSERT_TRUE(array->getNDMPServiceSettings(read, "-12345"));
  EXPECT_EQ(requestLines(), std::vector<std::string>{"GET ndmpservice"});
  EXPECT_EQ(read.ip, "10.0.0.7");
  EXPECT_EQ(read.port, "10001");
  EXPECT_EQ(read.version, "3");
  EXPECT_TRUE(read.isEnabled);
  EXPECT_TRUE(read.isSupportSnapshot);
  EXPECT_EQ(read.vstoreId, "");
  EXPECT_EQ(read.vstoreName, "");
  EXPECT_TRUE(log.HasLine(0, "getNDMPServiceSettings", "Successfully got the NDMP Settings information."))
      << log.Dump();
}

TEST_F(ArrayIdentity, NdmpSettingsOfAVStoreNameItInThePath) {
  arraysim::NdmpSettings settings;
  settings.ip = "10.3.0.1";
  settings.vstoreId = "3";
  settings.vstoreName = "tenant";
  settings.isEnabled = "false";
  sim().system().setNdmp(settings);
  auto array = loggedInFacade();

  _HuaweiNDMPServiceSettings read;
  ASSERT_TRUE(array->getNDMPServiceSettings(read, "3"));
  EXPECT_EQ(lastRequest().target, devicePath() + "ndmpservice/3");
  EXPECT_EQ(read.ip, "10.3.0.1");
  EXPECT_EQ(read.vstoreId, "3");
  EXPECT_EQ(read.vstoreName, "tenant");
  EXPECT_FALSE(read.isEnabled);
}

TEST_F(ArrayIdentity, NdmpSettingsOfAnUnknownVStoreFailAndLeaveTheRecord) {
  auto array = loggedInFacade();
  LogCapture log;
  _HuaweiNDMPServiceSettings read;
  read.ip = "kept";
  EXPECT_FALSE(array->getNDMPServiceSettings(read, "9"));
  EXPECT_EQ(requestLines(), std::vector<std::string>{"GET ndmpservice/9"});
  EXPECT_EQ(read.ip, "kept");
  EXPECT_TRUE(log.HasLine(-1, "getNDMPServiceSettings", "Unable to get the NDMP Service settings.")) << log.Dump();
}

TEST_F(ArrayIdentity, VStoreNameIsCopiedOut) {
  sim().system().addVStore({"3", "tenant one", "1"});
  auto array = loggedInFacade();
  LogCapture log;

  std::string name = "before";
  ASSERT_TRUE(array->getVStoreNameFromId("3", name));
  EXPECT_EQ(name, "tenant one");
  EXPECT_EQ(lastRequest().target, devicePath() + "vstore/3");
  EXPECT_TRUE(log.HasLine(0, "getVStoreNameFromId", "Successfully got the VStoreName [tenant one] from VStoreId [3]"))
      << log.Dump();
}

TEST_F(ArrayIdentity, VStoreNameFailuresLeaveTheNameAlone) {
  auto array = loggedInFacade();
  LogCapture log;
  std::string name = "before";

  EXPECT_FALSE(array->getVStoreNameFromId("", name));
  EXPECT_TRUE(requests().empty());
  EXPECT_THAT(log.Lines(), Contains(testing::AllOf(
                               LogLineIs(-1, "getVStoreNameFromId", "The input parameter [VStoreID] is empty"),
                               testing::Field("hasJobId", &tklog::LogLine::hasJobId, false))));

  EXPECT_FALSE(array->getVStoreNameFromId("9", name));  // the array knows no such vStore
  EXPECT_EQ(requestLines(), std::vector<std::string>{"GET vstore/9"});
  EXPECT_TRUE(log.HasLine(-1, "getVStoreNameFromId", "Unable to get the VStoreName from VStoreId [9]")) << log.Dump();
  EXPECT_EQ(name, "before");
}

}  // namespace
}  // namespace zrtest
