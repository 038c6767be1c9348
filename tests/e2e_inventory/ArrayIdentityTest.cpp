// The array's identity over HTTPS: NDMP settings and vStore names. (The system record as read
// is pinned by the inventory recording.)
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"

namespace zrtest {
namespace {

class ArrayIdentity : public ArrayClientTest {};

// The vStore goes into the path; optional keys that the answer lacks come back empty.
TEST_F(ArrayIdentity, NdmpSettingsOfTheArrayAndOfAVStore) {
  arraysim::NdmpSettings settings;
  settings.ip = "10.0.0.7";
  settings.port = "10001";
  settings.version = "3";
  sim().system().setNdmp(settings);
  settings.ip = "10.3.0.1";
  settings.vstoreId = "3";
  settings.vstoreName = "tenant";
  sim().system().setNdmp(settings);
  auto array = loggedInFacade();
  LogCapture log;

  _HuaweiNDMPServiceSettings read;
  read.vstoreId = read.vstoreName = "stale";
  ASSERT_TRUE(array->getNDMPServiceSettings(read, "-12345"));
  EXPECT_EQ(read.ip + "|" + read.port + "|" + read.version + "|" + read.vstoreId + "|" + read.vstoreName,
            "10.0.0.7|10001|3||");
  EXPECT_TRUE(log.HasLine(0, "getNDMPServiceSettings", "Successfully got the NDMP Settings information."));

  ASSERT_TRUE(array->getNDMPServiceSettings(read, "3"));
  EXPECT_EQ(read.ip + "|" + read.vstoreId + "|" + read.vstoreName, "10.3.0.1|3|tenant");

  EXPECT_FALSE(array->getNDMPServiceSettings(read, "9"));  // no such vStore: the record stays
  EXPECT_EQ(read.ip, "10.3.0.1");
  EXPECT_EQ(requestLines(), (std::vector<std::string>{"GET ndmpservice", "GET ndmpservice/3", "GET ndmpservice/9"}));

  // Both flags arrive as text; only the exact word "false" reads as false.
  for (const auto& [text, expected] : {std::pair{"false", false}, {"true", true}, {"", true}, {"FALSE", true}, {"0", true}}) {
    settings.isEnabled = text;
    settings.isSupportSnapshot = text;
    sim().system().setNdmp(settings);
    read.isEnabled = read.isSupportSnapshot = !expected;
    ASSERT_TRUE(array->getNDMPServiceSettings(read, "3"));
    EXPECT_EQ(read.isEnabled, expected) << text;
    EXPECT_EQ(read.isSupportSnapshot, expected) << text;
  }
}

TEST_F(ArrayIdentity, VStoreNameIsCopiedOutAndKeptOnFailure) {
  sim().system().addVStore({"3", "tenant one", "1"});
  auto array = loggedInFacade();
  LogCapture log;
  std::string name;
  ASSERT_TRUE(array->getVStoreNameFromId("3", name));
  EXPECT_EQ(name, "tenant one");
  EXPECT_TRUE(log.HasLine(0, "getVStoreNameFromId", "Successfully got the VStoreName [tenant one] from VStoreId [3]"))
      << log.Dump();
  EXPECT_FALSE(array->getVStoreNameFromId("9", name));
  EXPECT_EQ(name, "tenant one");
}

}  // namespace
}  // namespace zrtest
