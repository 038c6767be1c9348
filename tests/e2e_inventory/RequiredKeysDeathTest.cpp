// Answers that lack a value a reader requires, or carry it as another kind, end the process
// through the document model's assertion by default: one death test per reader family (the rows
// are shared with the suite that runs them with the failures contained to the operation).
#include <filesystem>
#include <list>
#include <string>

#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "MissingValueRows.h"
#include "ZRLibCurlOptions.h"

namespace zrtest {
namespace {

class RequiredKeys : public ArrayClientTest, public testing::WithParamInterface<MissingValueRow> {};

TEST_P(RequiredKeys, EndTheProcessByDefault) {
  const MissingValueRow& row = GetParam();
  // The default style re-runs the binary, which would start a second simulator on this binary's
  // address; "fast" forks from here. The child makes its own connections, so that it does not
  // write on those the parent keeps in its pool.
  GTEST_FLAG_SET(death_test_style, "fast");
  const ZRLibCurlOptions saved = ZRLibCurlGetOptions();
  ZRLibCurlOptions unshared = saved;
  unshared.shareConnections = false;
  ZRLibCurlSetOptions(unshared);
  auto array = row.isLogin ? facade() : loggedInFacade();
  row.arrange(sim());
  EXPECT_DEATH(row.act(*array), "\\[JSONXX\\] expression.*\\[-1\\] jsonxx::assertion.*" + row.what);
  ZRLibCurlSetOptions(saved);
  // The end takes the process's cookie files along, that of the session held here among them.
  for (const auto& entry : std::filesystem::directory_iterator("/")) {
    const std::string name = entry.path().filename().string();
    EXPECT_FALSE(name.rfind("tmpHUAWEI-" + std::to_string(kJobId) + "_", 0) == 0 &&
                 name.find("_" + host() + "_0x") != std::string::npos)
        << name;
  }
}

INSTANTIATE_TEST_SUITE_P(EveryReaderFamily, RequiredKeys, testing::ValuesIn(MissingValueRows()),
                         [](const testing::TestParamInfo<MissingValueRow>& info) { return std::string(info.param.name); });

// The same shapes are harmless once the list is a real array.
class ArrayAnswers : public ArrayClientTest {};

TEST_F(ArrayAnswers, ListsOfOneAndOfNoneReadWhenAnsweredAsArrays) {
  arraysim::AnswerStyle arrays;
  arrays.emptyList = arraysim::EmptyListAnswer::EmptyArray;
  sim().answerStyles().set("GET", "filesystem", arrays);
  sim().answerStyles().set("GET", "lif", arrays);
  auto array = loggedInFacade();
  std::list<_HuaweiFileSystemsInfo> fileSystems(1);
  EXPECT_TRUE(array->getFileSystemsList(fileSystems, "-12345"));
  EXPECT_TRUE(fileSystems.empty());
  std::list<_HuaweiArrayInterfaces> interfaces;
  EXPECT_TRUE(array->getArrayInterfaces(interfaces));
  EXPECT_TRUE(interfaces.empty());
}

}  // namespace
}  // namespace zrtest
