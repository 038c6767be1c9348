// Answers that lack a key the inventory parsers require, or carry it with another type, end the
// process through the document model's assertion: the list parsers read "data" as an array
// without testing for it first, so the array's habit of answering an empty list without "data"
// and a list of one as the bare item is fatal to them.
#include <functional>
#include <list>
#include <string>

#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "ZRLibCurlOptions.h"

namespace zrtest {
namespace {

// The child of a death test must not write on connections that the parent keeps in its pool:
// for the life of the guard every client makes its own connection.
class UnsharedConnections {
 public:
  UnsharedConnections() : saved_(ZRLibCurlGetOptions()) {
    ZRLibCurlOptions unshared = saved_;
    unshared.shareConnections = false;
    ZRLibCurlSetOptions(unshared);
  }
  ~UnsharedConnections() { ZRLibCurlSetOptions(saved_); }

 private:
  ZRLibCurlOptions saved_;
};

struct FatalAnswer {
  const char* name;
  std::function<void(arraysim::ArraySimulator&)> arrange;
  std::function<void(ZrManageHuawei&)> call;
};

void PrintTo(const FatalAnswer& row, std::ostream* out) { *out << row.name; }

class RequiredKeys : public ArrayClientTest, public testing::WithParamInterface<FatalAnswer> {};

TEST_P(RequiredKeys, EndTheProcess) {
  // The default style re-runs the binary for each death test, which would start a second
  // simulator on this binary's address; "fast" forks from here instead.
  GTEST_FLAG_SET(death_test_style, "fast");
  UnsharedConnections unshared;
  GetParam().arrange(sim());
  auto array = loggedInFacade();
  EXPECT_DEATH(GetParam().call(*array), "JSONXX");
}

arraysim::FileSystemInfo Plain() { return arraysim::FileSystemInfo(); }

void ListFileSystems(ZrManageHuawei& array) {
  std::list<_HuaweiFileSystemsInfo> fileSystems;
  array.getFileSystemsList(fileSystems, "-12345");
}

void ListInterfaces(ZrManageHuawei& array) {
  std::list<_HuaweiArrayInterfaces> interfaces;
  array.getArrayInterfaces(interfaces);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, RequiredKeys,
    testing::Values(
        FatalAnswer{"NoFileSystemsAnsweredWithoutData", [](arraysim::ArraySimulator&) {}, ListFileSystems},
        FatalAnswer{"OneFileSystemAnsweredAsBareObject",
                    [](arraysim::ArraySimulator& sim) { sim.fileSystems().create("only", Plain()); },
                    ListFileSystems},
        FatalAnswer{"FileSystemIdOverOneFileSystem",
                    [](arraysim::ArraySimulator& sim) { sim.fileSystems().create("only", Plain()); },
                    [](ZrManageHuawei& array) {
                      std::string id;
                      array.getFileSystemId("only", id);
                    }},
        FatalAnswer{"OneInterfaceAnsweredAsBareObject",
                    [](arraysim::ArraySimulator& sim) {
                      arraysim::LogicalInterface lif;
                      lif.name = "only";
                      lif.ipv4Address = "10.0.0.1";
                      sim.interfaces().add(lif);
                    },
                    ListInterfaces},
        FatalAnswer{"FileSystemWithoutHealthStatus",
                    [](arraysim::ArraySimulator& sim) {
                      sim.faults().add(arraysim::FaultRule::On("GET", "filesystem").cannedBody(
                          R"({"data":[{"ID":"1","NAME":"a"},{"ID":"2","NAME":"b","HEALTHSTATUS":"1"}],)"
                          R"("error":{"code":0,"description":"0"}})"));
                    },
                    ListFileSystems},
        FatalAnswer{"NdmpSettingsWithoutPort",
                    [](arraysim::ArraySimulator& sim) {
                      sim.faults().add(arraysim::FaultRule::On("GET", "ndmpservice").cannedBody(
                          R"({"data":{"ip":"10.0.0.1","isEnabled":"true","isSupportSnapshot":"true",)"
                          R"("version":"4"},"error":{"code":0,"description":"0"}})"));
                    },
                    [](ZrManageHuawei& array) {
                      _HuaweiNDMPServiceSettings settings;
                      array.getNDMPServiceSettings(settings, "-12345");
                    }},
        FatalAnswer{"SystemInformationWithoutData",
                    [](arraysim::ArraySimulator& sim) {
                      arraysim::AnswerStyle style;
                      style.omitData = true;
                      sim.answerStyles().set("GET", "system/", style);
                    },
                    [](ZrManageHuawei& array) {
                      _HuaweiSystemInformation info;
                      array.getSystemInformation(info);
                    }}),
    [](const testing::TestParamInfo<FatalAnswer>& info) { return std::string(info.param.name); });

// The same shapes are harmless once the list is a real array.
class ListAnswers : public ArrayClientTest {};

TEST_F(ListAnswers, OfOneAndOfNoneReadWhenAnsweredAsArrays) {
  arraysim::AnswerStyle arrays;
  arrays.singleItemAsObject = false;
  arrays.emptyList = arraysim::EmptyListAnswer::EmptyArray;
  sim().answerStyles().set("GET", "filesystem", arrays);
  sim().answerStyles().set("GET", "lif", arrays);
  auto array = loggedInFacade();

  std::list<_HuaweiFileSystemsInfo> fileSystems(1);
  EXPECT_TRUE(array->getFileSystemsList(fileSystems, "-12345"));
  EXPECT_TRUE(fileSystems.empty());

  sim().fileSystems().create("only", Plain());
  std::string id;
  EXPECT_TRUE(array->getFileSystemId("only", id));
  EXPECT_EQ(id, "1");

  std::list<_HuaweiArrayInterfaces> interfaces;
  EXPECT_TRUE(array->getArrayInterfaces(interfaces));
  EXPECT_TRUE(interfaces.empty());
}

}  // namespace
}  // namespace zrtest
