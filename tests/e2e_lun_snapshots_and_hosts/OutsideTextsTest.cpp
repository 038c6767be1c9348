// Texts from outside that reach an error's format or a log line: the caller's names and
// identifiers come back as written ("%%" as "%"), and no value makes a second log line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "LogLineText.h"
#include "LunSnapshotAndHostScene.h"

namespace zrtest {
namespace {

using arraysim::FaultRule;

class OutsideTexts : public LunSnapshotAndHostTest {};

// Names in the paths where an inner result's text is the error's format: a host created again
// whose lookup fails, and the membership test whose listing fails.
TEST_F(OutsideTexts, NamesInAnInnerErrorComeBackAsWritten) {
  const struct {
    const char* name;
    const char* rendered;  // "%%" gives "%", every other directive stands
  } names[] = {
      {"h%s%s%s%s%s%s%s%s", "h%s%s%s%s%s%s%s%s"},
      {"100%% %%s %%%", "100% %s %%"},
      {"trailing %", "trailing %"},
  };
  for (const auto& row : names) {
    SCOPED_TRACE(row.name);
    LogCapture log;
    // Created once; a second creation is refused as a name in use, and the lookup of it fails.
    _HuaweiLUNHostInfo host;
    ASSERT_FALSE(array_->createHost(host, row.name, "3", false).IsError());
    sim().faults().add(FaultRule::On("GET", "host").exactly().arrayError(1077948996, "lookup refused"));
    const CXoError again = array_->createHost(host, row.name, "3", false);
    EXPECT_TRUE(again.IsError());
    EXPECT_EQ(again.AsString(), std::string("[ERROR] Unable to find the information for the host with name [") +
                                    row.rendered + "]");
    EXPECT_TRUE(log.HasLine(3, "ZrManageHuawei::createHost", std::string("The host [") + row.name + "] already exists"))
        << log.Dump();

    const std::string groupId = std::string("1 ") + row.name;
    sim().faults().add(FaultRule::On("GET", "host/associate").arrayError(1077948996, "listing refused"));
    EXPECT_EQ(array_->isHostAssociatedToHostGroup(groupId, scene_["host"], "3").AsString(),
              std::string("[ERROR] Failed to get the hosts associated with the Host Group [1 ") + row.rendered + "]");
    EXPECT_TRUE(log.HasLine(3, "ZrManageHuawei::getHostAssociatedToHostGroup",
                            "[ERROR] Failed to get the hosts associated with the Host Group [" + groupId + "]"))
        << log.Dump();
  }
}

// A line break in a host name is escaped in every line that carries the name.
TEST_F(OutsideTexts, ALineBreakInANameCannotForgeALogLine) {
  LogCapture log;
  const std::string name = "a\nb\r\n2026-11-25 00:00:00.000 [-1] Forged: line\x1b[0m";
  const std::string logged = "a\\nb\\r\\n2026-11-25 00:00:00.000 [-1] Forged: line\\x1b[0m";
  sim().faults().add(FaultRule::On("POST", "host").exactly().arrayError(1077948993, "The name already exists."));
  sim().faults().add(FaultRule::On("GET", "host").exactly().arrayError(1077948996, "lookup refused"));
  _HuaweiLUNHostInfo host;
  const CXoError created = array_->createHost(host, name, "3", false);
  EXPECT_EQ(created.AsString(), "[ERROR] Unable to find the information for the host with name [" + name + "]");
  EXPECT_TRUE(log.HasLine(3, "ZrManageHuawei::createHost", "The host [" + logged + "] already exists")) << log.Dump();
  for (const tklog::LogLine& line : log.Lines()) EXPECT_TRUE(tklog::IsOneLine(line.text)) << line.text;
}

}  // namespace
}  // namespace zrtest
