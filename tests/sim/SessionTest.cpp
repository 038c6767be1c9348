#include <gtest/gtest.h>

#include "ArraySimulator.h"
#include "SimClient.h"

namespace {

using arraysim::ArraySimulator;
using simtest::SimClient;

class SessionTest : public ::testing::Test {
 protected:
  SessionTest() : sim(Options()) { sim.start(); }

  static arraysim::SimulatorOptions Options() {
    auto options = simtest::FreePortOptions();
    options.accounts = {{"admin", "secret", ""}, {"tenant", "pw", "3"}};
    return options;
  }

  ArraySimulator sim;
};

TEST_F(SessionTest, LoginAnswersTokenDeviceAndSecureSessionCookie) {
  SimClient client(sim);
  const auto result = client.login("admin", "secret");
  ASSERT_TRUE(result);
  const auto body = SimClient::Envelope(result);
  EXPECT_EQ(body["error"], (nlohmann::json{{"code", 0}, {"description", "0"}}));
  EXPECT_EQ(body["data"]["deviceid"], sim.deviceId());
  EXPECT_FALSE(body["data"]["iBaseToken"].get<std::string>().empty());
  EXPECT_FALSE(body["data"].contains("vstoreId"));
  const auto cookie = result->get_header_value("Set-Cookie");
  EXPECT_EQ(cookie.rfind("session=", 0), 0u) << cookie;
  EXPECT_NE(cookie.find("; Path=/; Secure; HttpOnly"), std::string::npos) << cookie;
}

TEST_F(SessionTest, VStoreAccountLoginAnswersItsVStore) {
  SimClient client(sim);
  EXPECT_EQ(SimClient::Envelope(client.login("tenant", "pw"))["data"]["vstoreId"], "3");
}

TEST_F(SessionTest, WrongPasswordIsRefusedWithEmptyData) {
  SimClient client(sim);
  const auto body = SimClient::Envelope(client.login("admin", "wrong"));
  EXPECT_EQ(body["error"]["code"], 1077949061);
  EXPECT_EQ(body["error"]["description"], "The user name or password is incorrect.");
  EXPECT_EQ(body["data"], nlohmann::json::object());
  EXPECT_TRUE(sim.sessions().open().empty());
}

TEST_F(SessionTest, EveryLaterRequestNeedsTokenCookieAndDeviceOfOneSession) {
  SimClient client(sim);
  client.login("admin", "secret");
  SimClient other(sim);
  other.login("admin", "secret");

  struct Case {
    const char* name;
    std::string token;
    std::string cookie;
    std::string device;
    long long code;
  };
  const Case cases[] = {
      {"all good", client.token, client.cookie, sim.deviceId(), 0},
      {"no token", "", client.cookie, sim.deviceId(), -401},
      {"wrong token", client.token + "0", client.cookie, sim.deviceId(), -401},
      {"no cookie", client.token, "", sim.deviceId(), -401},
      {"cookie of another session", client.token, other.cookie, sim.deviceId(), -401},
      {"wrong device", client.token, client.cookie, "xxxxx", -401},
  };
  for (const auto& c : cases) {
    SimClient probe(sim);
    probe.token = c.token;
    probe.cookie = c.cookie;
    const auto result = probe.sendTo("GET", "/deviceManager/rest/" + c.device + "/system/");
    const auto body = SimClient::Envelope(result);
    EXPECT_EQ(body["error"]["code"], c.code) << c.name;
    if (c.code != 0) {
      EXPECT_EQ(body["data"], nlohmann::json::object()) << c.name;
    }
  }
}

TEST_F(SessionTest, LogoutEndsOnlyThatSession) {
  SimClient client(sim);
  client.login("admin", "secret");
  SimClient other(sim);
  other.login("admin", "secret");

  EXPECT_EQ(SimClient::Code(client.send("DELETE", "sessions")), 0);
  EXPECT_EQ(SimClient::Code(client.send("GET", "system/")), -401);
  EXPECT_EQ(SimClient::Code(other.send("GET", "system/")), 0);
}

TEST_F(SessionTest, ResetEndsSessionsAndRestoresConfiguredAccounts) {
  sim.sessions().addAccount({"extra", "x", ""});
  SimClient client(sim);
  client.login("admin", "secret");
  sim.reset();
  EXPECT_EQ(SimClient::Code(client.send("GET", "system/")), -401);
  EXPECT_EQ(SimClient::Code(client.login("extra", "x")), 1077949061);
}

}  // namespace
