#include <string>

#include <gtest/gtest.h>

#include "ArraySimulator.h"
#include "SimClient.h"

namespace {

using arraysim::ArraySimulator;
using nlohmann::json;
using simtest::SimClient;

class ResourcesTest : public ::testing::Test {
 protected:
  ResourcesTest() : sim(simtest::FreePortOptions()), client(Started(sim)) { client.login(); }

  static ArraySimulator& Started(ArraySimulator& sim) {
    sim.start();
    return sim;
  }

  json get(const std::string& resource) { return SimClient::Envelope(client.send("GET", resource)); }

  static std::string SnapshotBody(const std::string& fs, const std::string& name, const char* snapDiff,
                                  const std::string& vstore = "") {
    return "{\"NAME\":\"" + name + "\", \"PARENTID\":\"" + fs + "\", \"PARENTTYPE\":\"40\", " +
           (vstore.empty() ? "" : "\"vstoreId\":\"" + vstore + "\", ") + "\"ENABLESNAPDIFF\":\"" + snapDiff + "\" }";
  }

  ArraySimulator sim;
  SimClient client;
};

TEST_F(ResourcesTest, IdentityRecordsAreStringsAndUnknownVStoreIsAnError) {
  sim.system().setNdmp({"false", "10.0.0.9", "10000", "4", "true", "3", "tenant"});
  sim.system().addVStore({"3", "tenant", "1"});

  const auto system = get("system/")["data"];
  EXPECT_EQ(system["ID"], sim.deviceId());
  for (const auto& item : system.items()) EXPECT_TRUE(item.value().is_string()) << item.key();

  const auto wide = get("ndmpservice")["data"];
  EXPECT_EQ(wide["isEnabled"], "true");
  EXPECT_FALSE(wide.contains("vstoreId"));
  EXPECT_EQ(get("ndmpservice/3")["data"],
            (json{{"isEnabled", "false"}, {"ip", "10.0.0.9"}, {"port", "10000"}, {"version", "4"},
                  {"isSupportSnapshot", "true"}, {"vstoreId", "3"}, {"vstoreName", "tenant"}}));

  EXPECT_EQ(get("vstore/3")["data"], (json{{"ID", "3"}, {"NAME", "tenant"}, {"RUNNINGSTATUS", "1"}}));
  const auto unknown = get("vstore/4");
  EXPECT_NE(unknown["error"]["code"], 0);
  EXPECT_EQ(unknown["data"], json::object());
  EXPECT_NE(get("system")["error"]["code"], 0) << "the trailing slash belongs to the resource";
}

TEST_F(ResourcesTest, ListsFollowTheirRouteStyle) {
  EXPECT_FALSE(get("filesystem").contains("data")) << "an empty list comes without data, as the array sends it";
  sim.answerStyles().set("GET", "filesystem", {false, true, arraysim::EmptyListAnswer::EmptyArray});
  EXPECT_EQ(get("filesystem")["data"], json::array());

  const auto fs1 = sim.fileSystems().create("fs1");
  EXPECT_TRUE(get("filesystem")["data"].is_object()) << "a list of one item comes as the bare item";
  sim.answerStyles().set("GET", "filesystem", {false, false, arraysim::EmptyListAnswer::EmptyArray});
  EXPECT_EQ(get("filesystem")["data"].size(), 1u);
  EXPECT_TRUE(get("filesystem")["data"].is_array());

  arraysim::FileSystemInfo inVStore;
  inVStore.vstoreId = "3";
  const auto fs2 = sim.fileSystems().create("fs2", inVStore);
  EXPECT_EQ(get("filesystem")["data"].size(), 2u);
  EXPECT_EQ(get("filesystem?vstoreId=3")["data"][0]["ID"], fs2);
  EXPECT_EQ(get("filesystem/" + fs1)["data"]["NAME"], "fs1");

  sim.answerStyles().set("GET", "filesystem/{}", {true, true, arraysim::EmptyListAnswer::WithoutData});
  EXPECT_EQ(get("filesystem/" + fs1), (json{{"error", {{"code", 0}, {"description", "0"}}}}));

  sim.interfaces().add({"", "lif1", "10.0.0.9", "", "3", "2", "1", "", ""});
  const auto lif = get("lif")["data"];
  EXPECT_EQ(lif["IPV4ADDR"], "10.0.0.9");
  EXPECT_FALSE(lif.contains("vstoreId"));
}

TEST_F(ResourcesTest, SnapshotLifecycle) {
  const auto fs = sim.fileSystems().create("fs1");
  const auto created = SimClient::Envelope(client.send("POST", "fssnapshot", SnapshotBody(fs, "s1", "true")));
  ASSERT_EQ(created["error"]["code"], 0);
  const std::string id = created["data"]["ID"];
  EXPECT_EQ(created["data"]["PARENTID"], fs);
  EXPECT_TRUE(sim.snapshots().info(id)->snapDiffEnabled);

  const auto read = get("fssnapshot/" + id)["data"];
  EXPECT_EQ(read["NAME"], "s1");
  EXPECT_EQ(read["PARENTNAME"], "fs1");
  EXPECT_EQ(read["SNAPTYPE"], "8");
  sim.snapshots().setType(id, "2");
  EXPECT_EQ(get("fssnapshot/" + id)["data"]["SNAPTYPE"], "2");

  EXPECT_EQ(SimClient::Code(client.send("POST", "fssnapshot", SnapshotBody(fs, "s1", "true"))), 1077948993);
  EXPECT_EQ(SimClient::Code(client.send("DELETE", "fssnapshot/" + id)), 0);
  EXPECT_EQ(get("fssnapshot/" + id)["error"]["code"], 1073754118);
  EXPECT_EQ(SimClient::Code(client.send("DELETE", "fssnapshot/" + id)), 1073754118);
}

TEST_F(ResourcesTest, IncrementalBackupSnapshotsNeedTheirDeleteFlag) {
  const auto fs = sim.fileSystems().create("fs1");
  const auto id = sim.snapshots().take(fs, "s1");
  EXPECT_NE(SimClient::Code(client.send("DELETE", "fssnapshot/" + id)), 0);
  EXPECT_EQ(SimClient::Code(client.send("DELETE", "fssnapshot/" + id + "?DELINCREMENTALBACKUPSNAP=true")), 0);
}

TEST_F(ResourcesTest, SnapshotsStayInTheVStoreOfTheirFileSystem) {
  arraysim::FileSystemInfo info;
  info.vstoreId = "3";
  const auto fs = sim.fileSystems().create("fs1", info);
  EXPECT_NE(SimClient::Code(client.send("POST", "fssnapshot", SnapshotBody(fs, "s1", "false", "4"))), 0);
  const auto created = SimClient::Envelope(client.send("POST", "fssnapshot", SnapshotBody(fs, "s1", "false", "3")));
  const std::string id = created["data"]["ID"];
  EXPECT_EQ(get("fssnapshot/" + id + "?vstoreId=3")["error"]["code"], 0);
  EXPECT_EQ(get("fssnapshot/" + id + "?vstoreId=4")["error"]["code"], 1073754118);
  EXPECT_EQ(SimClient::Code(client.send("DELETE", "fssnapshot/" + id + "?DELINCREMENTALBACKUPSNAP=true&vstoreId=3")), 0);
}

TEST_F(ResourcesTest, SnapDiffRefusalsAreCountedSeparatelyFromPlainRefusals) {
  const auto fs = sim.fileSystems().create("fs1");
  sim.fileSystems().refuseSnapDiff(fs, 2);
  EXPECT_EQ(SimClient::Code(client.send("POST", "fssnapshot", SnapshotBody(fs, "a", "true"))), 1073754130);
  EXPECT_EQ(SimClient::Code(client.send("POST", "fssnapshot", SnapshotBody(fs, "a", "false"))), 0);
  EXPECT_EQ(SimClient::Code(client.send("POST", "fssnapshot", SnapshotBody(fs, "b", "true"))), 1073754130);
  EXPECT_EQ(SimClient::Code(client.send("POST", "fssnapshot", SnapshotBody(fs, "c", "true"))), 0);

  sim.fileSystems().refuseSnapshots(fs, 1);
  EXPECT_EQ(SimClient::Code(client.send("POST", "fssnapshot", SnapshotBody(fs, "d", "false"))), 1073754130);
  EXPECT_EQ(SimClient::Code(client.send("POST", "fssnapshot", SnapshotBody(fs, "d", "false"))), 0);
}

TEST_F(ResourcesTest, MalformedSnapshotRequestsAreArrayErrors) {
  const auto fs = sim.fileSystems().create("fs1");
  const std::string bodies[] = {
      "{\"NAME\":\"s1\", \"PARENTID\":\"" + fs,                      // not JSON
      "{\"PARENTID\":\"" + fs + "\", \"PARENTTYPE\":\"40\" }",        // no name
      "{\"NAME\":\"s1\", \"PARENTID\":\"" + fs + "\", \"PARENTTYPE\":\"41\" }",
      "{\"NAME\":\"s1\", \"PARENTID\":\"999\", \"PARENTTYPE\":\"40\" }",
  };
  for (const auto& body : bodies) {
    const auto answer = SimClient::Envelope(client.send("POST", "fssnapshot", body));
    EXPECT_NE(answer["error"]["code"], 0) << body;
    EXPECT_EQ(answer["data"], json::object()) << body;
  }
  EXPECT_TRUE(sim.snapshots().list().empty());
}

}  // namespace
