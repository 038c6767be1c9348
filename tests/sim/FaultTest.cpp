#include <chrono>
#include <functional>
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

TEST_F(FaultTest, EachKindSpoilsTheAnswerAsDescribed) {
  using Check = std::function<void(const httplib::Result&)>;
  const auto envelope = [](const httplib::Result& r) { return nlohmann::json::parse(r->body, nullptr, false); };
  struct Row {
    const char* name;
    FaultRule rule;
    Check check;
  };
  const Row rows[] = {
      {"array error", FaultRule::On("GET", "system/").arrayError(1073754130, "no"),
       [&](const httplib::Result& r) {
         EXPECT_EQ(r->status, 200);
         EXPECT_EQ(envelope(r), (nlohmann::json{{"data", nlohmann::json::object()},
                                                {"error", {{"code", 1073754130}, {"description", "no"}}}}));
       }},
      {"array error under 500", FaultRule::On("GET", "system/").arrayError(7, "x", 500),
       [&](const httplib::Result& r) {
         EXPECT_EQ(r->status, 500);
         EXPECT_EQ(envelope(r)["error"]["code"], 7);
       }},
      {"http status with good envelope", FaultRule::On("GET", "system/").httpStatus(500),
       [&](const httplib::Result& r) {
         EXPECT_EQ(r->status, 500);
         EXPECT_EQ(envelope(r)["error"]["code"], 0);
         EXPECT_EQ(envelope(r)["data"]["ID"], sim.deviceId());
       }},
      {"empty body", FaultRule::On("GET", "system/").emptyBody(),
       [](const httplib::Result& r) { EXPECT_EQ(r->body, ""); }},
      {"empty object", FaultRule::On("GET", "system/").emptyObject(),
       [](const httplib::Result& r) { EXPECT_EQ(r->body, "{}"); }},
      {"html page", FaultRule::On("GET", "system/").htmlPage(502),
       [](const httplib::Result& r) {
         EXPECT_EQ(r->status, 502);
         EXPECT_EQ(r->body.rfind("<!DOCTYPE html>", 0), 0u);
       }},
      {"truncated json", FaultRule::On("GET", "system/").truncatedJson(),
       [&](const httplib::Result& r) {
         EXPECT_TRUE(envelope(r).is_discarded());
         EXPECT_EQ(r->body.rfind("{\"data\":{", 0), 0u) << r->body;
       }},
      {"without error object", FaultRule::On("GET", "system/").withoutErrorObject(),
       [&](const httplib::Result& r) {
         EXPECT_FALSE(envelope(r).contains("error"));
         EXPECT_EQ(envelope(r)["data"]["ID"], sim.deviceId());
       }},
      {"canned body", FaultRule::On("GET", "system/").cannedBody("{\"data\":[1]}", 404),
       [](const httplib::Result& r) {
         EXPECT_EQ(r->status, 404);
         EXPECT_EQ(r->body, "{\"data\":[1]}");
       }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    sim.faults().add(row.rule);
    auto client = loggedIn();
    const auto result = client->send("GET", "system/");
    ASSERT_TRUE(result) << httplib::to_string(result.error());
    row.check(result);
    EXPECT_EQ(SimClient::Code(client->send("GET", "system/")), 0) << "one use only";
  }
}

TEST_F(FaultTest, BrokenConnectionsReachTheClientAsFailedExchanges) {
  for (auto rule : {FaultRule::On("GET", "system/").dropConnection(), FaultRule::On("GET", "system/").abortAnswer()}) {
    sim.faults().add(rule);
    auto client = loggedIn();
    const auto result = client->send("GET", "system/");
    EXPECT_FALSE(result);
    auto fresh = loggedIn();
    EXPECT_EQ(SimClient::Code(fresh->send("GET", "system/")), 0) << "the simulator serves on";
  }
}

TEST_F(FaultTest, DelayAnswersGenuinelyButLate) {
  sim.faults().add(FaultRule::On("GET", "system/").delayed(std::chrono::milliseconds(150)));
  auto client = loggedIn();
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(SimClient::Code(client->send("GET", "system/")), 0);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(150));
}

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

TEST_F(FaultTest, CountsAreSpentInOrderAndAlwaysNeverRunsOut) {
  sim.faults().add(FaultRule::On("GET", "system/").arrayError(1, "first").times(2));
  sim.faults().add(FaultRule::On("GET", "system/").arrayError(2, "second").always());
  auto client = loggedIn();
  EXPECT_EQ(SimClient::Code(client->send("GET", "system/")), 1);
  EXPECT_EQ(SimClient::Code(client->send("GET", "system/")), 1);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(SimClient::Code(client->send("GET", "system/")), 2);
  EXPECT_EQ(sim.faults().pending(), 1u);
  sim.faults().clear();
  EXPECT_EQ(SimClient::Code(client->send("GET", "system/")), 0);
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

TEST_F(FaultTest, LoginCanBeSpoiledToo) {
  sim.faults().add(FaultRule::On("POST", "sessions").htmlPage());
  SimClient client(sim);
  EXPECT_EQ(client.login()->body.rfind("<!DOCTYPE html>", 0), 0u);
  EXPECT_EQ(SimClient::Code(client.login()), 0);
}

}  // namespace
