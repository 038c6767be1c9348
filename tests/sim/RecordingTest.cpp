#include <gtest/gtest.h>

#include "ArraySimulator.h"
#include "SimClient.h"

namespace {

using simtest::SimClient;

TEST(RecordingTest, KeepsRequestsExactlyAsTheyCame) {
  arraysim::ArraySimulator sim(simtest::FreePortOptions());
  sim.start();
  SimClient client(sim);
  client.login();
  const std::string body = "{\"NAME\":\"a&b\", \"x\":\"%41\" }";
  client.send("POST", "fssnapshot?vstoreId=3&a=%2F(1)", body);

  const auto all = sim.requests().all();
  ASSERT_EQ(all.size(), 2u);
  const auto& login = all[0];
  EXPECT_EQ(login.sequence, 1u);
  EXPECT_EQ(login.method, "POST");
  EXPECT_EQ(login.target, "/deviceManager/rest/xxxxx/sessions");
  EXPECT_EQ(login.device, "xxxxx");
  EXPECT_EQ(login.resource, "sessions");
  EXPECT_EQ(login.body, SimClient::LoginBody(arraysim::SimulatorOptions::kDefaultUser,
                                             arraysim::SimulatorOptions::kDefaultPassword));

  const auto& post = all[1];
  EXPECT_EQ(post.sequence, 2u);
  EXPECT_EQ(post.target, "/deviceManager/rest/" + sim.deviceId() + "/fssnapshot?vstoreId=3&a=%2F(1)");
  EXPECT_EQ(post.path, "/deviceManager/rest/" + sim.deviceId() + "/fssnapshot");
  EXPECT_EQ(post.query, "vstoreId=3&a=%2F(1)");
  EXPECT_EQ(post.resource, "fssnapshot?vstoreId=3&a=%2F(1)");
  EXPECT_EQ(post.body, body);
  EXPECT_EQ(post.header("ibasetoken"), client.token);
  EXPECT_EQ(post.header("Cookie"), client.cookie);
  EXPECT_FALSE(post.hasHeader("X-Absent"));

  EXPECT_EQ(sim.requests().matching("POST", "fssnapshot").size(), 1u);
  EXPECT_EQ(sim.requests().matching("", "").size(), 2u);
  sim.requests().clear();
  EXPECT_EQ(sim.requests().size(), 0u);
  client.send("GET", "system/");
  EXPECT_EQ(sim.requests().last()->sequence, 1u);
}

}  // namespace
