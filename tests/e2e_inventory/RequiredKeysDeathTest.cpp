// Answers that lack a key the inventory parsers require, or carry it with another type, end the
// process through the document model's assertion: the list parsers read "data" as an array
// without testing for it first, so the array's habit of answering an empty list without "data"
// and a list of one as the bare item is fatal to them.
#include <list>
#include <string>

#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "ZRLibCurlOptions.h"

namespace zrtest {
namespace {

void ListFileSystems(ZrManageHuawei& array) {
  std::list<_HuaweiFileSystemsInfo> fileSystems;
  array.getFileSystemsList(fileSystems, "-12345");
}

void ListInterfaces(ZrManageHuawei& array) {
  std::list<_HuaweiArrayInterfaces> interfaces;
  array.getArrayInterfaces(interfaces);
}

const char kOk[] = R"("error":{"code":0,"description":"0"}})";

class RequiredKeys : public ArrayClientTest {
 protected:
  void expectDeath(void (*call)(ZrManageHuawei&)) {
    // The default style re-runs the binary, which would start a second simulator on this
    // binary's address; "fast" forks from here. The child makes its own connections, so that it
    // does not write on those the parent keeps in its pool.
    GTEST_FLAG_SET(death_test_style, "fast");
    const ZRLibCurlOptions saved = ZRLibCurlGetOptions();
    ZRLibCurlOptions unshared = saved;
    unshared.shareConnections = false;
    ZRLibCurlSetOptions(unshared);
    auto array = loggedInFacade();
    EXPECT_DEATH(call(*array), "JSONXX");
    ZRLibCurlSetOptions(saved);
    sim().reset();
  }
};

TEST_F(RequiredKeys, MissingOrBareListsAndMissingFieldsEndTheProcess) {
  expectDeath(ListFileSystems);  // no file systems: no "data"
  sim().fileSystems().create("only");
  expectDeath(ListFileSystems);  // one, answered as a bare object
  sim().fileSystems().create("only");
  expectDeath([](ZrManageHuawei& array) {
    std::string id;
    array.getFileSystemId("only", id);
  });
  arraysim::LogicalInterface lif;
  lif.ipv4Address = "10.0.0.1";
  sim().interfaces().add(lif);
  expectDeath(ListInterfaces);
  sim().faults().add(arraysim::FaultRule::On("GET", "filesystem").cannedBody(
      std::string(R"({"data":[{"ID":"1","NAME":"a"},{"ID":"2","NAME":"b","HEALTHSTATUS":"1"}],)") + kOk));
  expectDeath(ListFileSystems);
  sim().faults().add(arraysim::FaultRule::On("GET", "ndmpservice").cannedBody(
      std::string(R"({"data":{"ip":"10.0.0.1","isEnabled":"true","isSupportSnapshot":"true","version":"4"},)") + kOk));
  expectDeath([](ZrManageHuawei& array) {
    _HuaweiNDMPServiceSettings settings;
    array.getNDMPServiceSettings(settings, "-12345");
  });
  arraysim::AnswerStyle withoutData;
  withoutData.omitData = true;
  sim().answerStyles().set("GET", "system/", withoutData);
  expectDeath([](ZrManageHuawei& array) {
    _HuaweiSystemInformation info;
    array.getSystemInformation(info);
  });
}

// The same shapes are harmless once the list is a real array.
TEST_F(RequiredKeys, ListsOfOneAndOfNoneReadWhenAnsweredAsArrays) {
  arraysim::AnswerStyle arrays;
  arrays.singleItemAsObject = false;
  arrays.emptyList = arraysim::EmptyListAnswer::EmptyArray;
  sim().answerStyles().set("GET", "filesystem", arrays);
  sim().answerStyles().set("GET", "lif", arrays);
  auto array = loggedInFacade();
  std::list<_HuaweiFileSystemsInfo> fileSystems(1);
  EXPECT_TRUE(array->getFileSystemsList(fileSystems, "-12345"));
  EXPECT_TRUE(fileSystems.empty());
  sim().fileSystems().create("only");
  std::string id;
  EXPECT_TRUE(array->getFileSystemId("only", id));
  EXPECT_EQ(id, "1");
  std::list<_HuaweiArrayInterfaces> interfaces;
  EXPECT_TRUE(array->getArrayInterfaces(interfaces));
  EXPECT_TRUE(interfaces.empty());
}

}  // namespace
}  // namespace zrtest
