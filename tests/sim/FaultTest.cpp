#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "ArraySimulator.h"
#include "SimClient.h"

namespace {

using arraysim::ArraySimulator;
using arraysim::FaultRule;
using simtest::SimClient;

class FaultTest : public ::testing::Test {
 protected:
  FaultTest() : sim(simtest::FreePortOptions()) {
    sim.start();
    fs = sim.fileSystems().create("fs1");
  }

  std::unique_ptr<SimClient> loggedIn() {
    auto client = std::make_unique<SimClient>(sim);
    client->login();
    return client;
  }

  ArraySimulator sim;
  std::string fs;
};

TEST_F(FaultTest, RulesMatchMethodAndResourceAtSegmentBoundaries) {
  struct Case {
    FaultRule rule;
    const char* method;
    const char* resource;
    bool matches;
  };
  const Case cases[] = {
      {FaultRule::On("GET", "fssnapshot"), "GET", "fssnapshot/1@2", true},
      {FaultRule::On("GET", "fssnapshot"), "GET", "fssnapshot", true},
      {FaultRule::On("GET", "fssnapshot"), "GET", "fssnapshots", false},
      {FaultRule::On("GET", "fssnapshot"), "DELETE", "fssnapshot/1@2", false},
      {FaultRule::On("", "fssnapshot"), "DELETE", "fssnapshot/1@2", true},
      {FaultRule::On("GET", "fssnapshot").exactly(), "GET", "fssnapshot/1@2", false},
      {FaultRule::On("GET", "system/"), "GET", "system/", true},
      {FaultRule::On("GET", ""), "GET", "lif", true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.rule.matches(c.method, c.resource), c.matches) << c.rule.resource << " vs " << c.method << " "
                                                                << c.resource;
  }
}

TEST_F(FaultTest, ReplacingFaultsSkipTheWorkUnlessAskedToProcessFirst) {
  const std::string body = "{\"NAME\":\"s1\", \"PARENTID\":\"" + fs + "\", \"PARENTTYPE\":\"40\", \"ENABLESNAPDIFF\":\"true\" }";
  auto client = loggedIn();

  sim.faults().add(FaultRule::On("POST", "fssnapshot").emptyBody());
  client->send("POST", "fssnapshot", body);
  EXPECT_TRUE(sim.snapshots().list().empty());

  sim.faults().add(FaultRule::On("POST", "fssnapshot").dropConnection().afterProcessing());
  client->send("POST", "fssnapshot", body);
  EXPECT_EQ(sim.snapshots().list().size(), 1u);
}

}  // namespace
