// A plain HTTPS client for the simulator's own tests: it trusts the simulator's CA, logs in
// and sends what the array expects, with no library code in between.
#pragma once

#include <signal.h>

#include <string>

#include <gtest/gtest.h>
#include <httplib.h>
#include <nlohmann/json.hpp>

#include "ArraySimulator.h"

namespace simtest {

class SimClient {
 public:
  explicit SimClient(arraysim::ArraySimulator& sim)
      : sim_(sim), http_(sim.address(), sim.port()) {
    signal(SIGPIPE, SIG_IGN);  // the faults close connections under the client's feet
    http_.set_ca_cert_path(sim.caCertPath());
    http_.enable_server_certificate_verification(true);
    http_.set_keep_alive(true);
    http_.set_tcp_nodelay(true);  // a request body must not wait for the ACK of its headers
    http_.set_url_encode(false);  // targets go out exactly as the tests write them
  }

  httplib::Result login(const std::string& user = arraysim::SimulatorOptions::kDefaultUser,
                        const std::string& password = arraysim::SimulatorOptions::kDefaultPassword) {
    const auto body = "{\"username\":\"" + user + "\", \"password\":\"" + password + "\", \"scope\":\"0\" }";
    auto result = http_.Post("/deviceManager/rest/xxxxx/sessions", body, "application/json");
    if (result && result->status == 200) {
      const auto body = nlohmann::json::parse(result->body, nullptr, false);
      if (body.is_object() && body["data"].contains("iBaseToken")) {
        token = body["data"]["iBaseToken"];
        const auto cookieHeader = result->get_header_value("Set-Cookie");
        cookie = cookieHeader.substr(0, cookieHeader.find(';'));
      }
    }
    return result;
  }

  httplib::Result send(const std::string& method, const std::string& resource, const std::string& body = "") {
    const auto target = "/deviceManager/rest/" + sim_.deviceId() + "/" + resource;
    httplib::Headers headers;
    if (!token.empty()) headers.emplace("iBaseToken", token);
    if (!cookie.empty()) headers.emplace("Cookie", cookie);
    if (method == "GET") return http_.Get(target, headers);
    if (method == "DELETE") return http_.Delete(target, headers);
    if (method == "PUT") return http_.Put(target, headers, body, "application/json");
    return http_.Post(target, headers, body, "application/json");
  }

  // The answer's envelope; fails the test when there is no answer or it is no JSON.
  static nlohmann::json Envelope(const httplib::Result& result) {
    EXPECT_TRUE(result) << "no answer: " << httplib::to_string(result.error());
    if (!result) return nlohmann::json::object();
    auto body = nlohmann::json::parse(result->body, nullptr, false);
    EXPECT_FALSE(body.is_discarded()) << result->body;
    return body;
  }

  static long long Code(const httplib::Result& result) { return Envelope(result)["error"]["code"].get<long long>(); }

  std::string token;
  std::string cookie;

 private:
  arraysim::ArraySimulator& sim_;
  httplib::SSLClient http_;
};

// A simulator on any free port, so that test binaries never contend for an address.
inline arraysim::SimulatorOptions FreePortOptions() {
  arraysim::SimulatorOptions options;
  options.address = "127.0.0.1";
  options.port = 0;
  return options;
}

}  // namespace simtest
