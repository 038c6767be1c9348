#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ArraySimulator.h"
#include "SimClient.h"
#include "store/Query.h"

namespace {

using arraysim::Action;
using arraysim::ResourceRoute;
using nlohmann::json;
using simtest::SimClient;

// The identifiers of a list answer, whichever shape it came in.
std::vector<std::string> Ids(const json& data) {
  std::vector<std::string> ids;
  if (data.is_object() && data.contains("ID")) ids.push_back(data["ID"]);
  if (data.is_array()) {
    for (const auto& item : data) ids.push_back(item["ID"]);
  }
  return ids;
}

TEST(StoreQueryTest, FiltersRangesAndMalformedQueries) {
  const std::vector<json> records = {{{"ID", "1"}, {"NAME", "pool1"}, {"FSID", "12"}},
                                     {{"ID", "2"}, {"NAME", "pool10"}, {"FSID", "1"}},
                                     {{"ID", "15"}, {"NAME", "other"}}};
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"", {"1", "2", "15"}},           {"filter=NAME:pool1", {"1", "2"}},
      {"&filter=NAME::pool1", {"1"}},   {"filter=ID:1", {"1"}},
      {"filter=FSID:1", {"2"}},         {"filter=NAME:pool&filter=FSID::1", {"2"}},
      {"filter=NAME:o and ID::15", {"15"}}, {"range=[1-3]", {"2", "15"}},
      {"filter=NAME:pool&range=[0-1]&7", {"1"}}, {"filter=OWNER::x", {}}};
  for (const auto& [text, expected] : rows) {
    const auto query = arraysim::Query::Parse(text);
    ASSERT_TRUE(query) << text;
    EXPECT_EQ(Ids(json(query->select(records))), expected) << text;
  }
  for (const char* malformed : {"filter=NAME", "filter=:x", "range=[3-1]", "range=1-2", "range=[a-2]"}) {
    EXPECT_FALSE(arraysim::Query::Parse(malformed)) << malformed;
  }
}

// Invented resources, so that the rows of the real ones may change without touching this.
class StoreRoutesTest : public ::testing::Test {
 protected:
  StoreRoutesTest() {
    admin.login();
    tenant.login("tenant", "Tenant@1");
  }
  // Rows first, then clients of the listening simulator.
  arraysim::ArraySimulator& started() {
    auto& table = sim.resources();
    table.objectType(9001, "shelf");
    table.objectType(9002, "book");
    table.add(ResourceRoute("POST", "shelf", "shelf", Action::Create).requiring({"NAME"}).existsAs(7, "taken"));
    table.add(ResourceRoute("GET", "shelf", "shelf", Action::List));
    table.add(ResourceRoute("GET", "shelf/{}", "shelf", Action::Get).absentAs(8, "absent"));
    table.add(ResourceRoute("PUT", "shelf/{}", "shelf", Action::Modify));
    table.add(ResourceRoute("DELETE", "shelf/{}", "shelf", Action::Delete).absentAs(8, "absent"));
    table.add(ResourceRoute("POST", "shelf/associate", "shelf", Action::Associate).associating({9002}).existsAs(9, "again"));
    table.add(ResourceRoute("DELETE", "shelf/associate", "shelf", Action::Dissociate).notAssociatedAs(10, "not"));
    table.add(ResourceRoute("GET", "book/associate", "book", Action::ListAssociated)
                  .shaped({false, false, arraysim::EmptyListAnswer::EmptyArray}));
    sim.start();
    return sim;
  }
  static arraysim::SimulatorOptions Options() {
    auto options = simtest::FreePortOptions();
    options.accounts = {{"admin", "Admin@storage1", ""}, {"tenant", "Tenant@1", "3"}};
    return options;
  }
  static json Data(const httplib::Result& result) { return SimClient::Envelope(result).value("data", json()); }
  arraysim::ArraySimulator sim{Options()};
  SimClient admin{started()}, tenant{sim};
};

TEST_F(StoreRoutesTest, GenericActionsAnswerTheirRowsCodesAndLeaveNoTrace) {
  const auto start = sim.store().dump();
  const auto invalid = SimClient::Envelope(admin.send("POST", "shelf", R"({"NAME":"a"b"})"));
  EXPECT_EQ(invalid["data"], json::object());
  EXPECT_EQ(invalid["error"]["code"], 50331651);
  EXPECT_EQ(invalid["error"]["errorParam"], "");
  EXPECT_EQ(SimClient::Code(admin.send("POST", "shelf", R"({"ID":"5"})")), 50331651) << "NAME is required";

  EXPECT_EQ(Data(admin.send("POST", "shelf", R"({"NAME":"s", "CAPACITY":10})")),
            (json{{"ID", "1"}, {"NAME", "s"}, {"CAPACITY", "10"}}));
  EXPECT_EQ(SimClient::Code(admin.send("POST", "shelf", R"({"NAME":"s"})")), 7);
  EXPECT_EQ(SimClient::Code(admin.send("PUT", "shelf/1", R"({"NAME":"t"})")), 0);
  EXPECT_EQ(Data(admin.send("GET", "shelf/1?"))["NAME"], "t");
  EXPECT_EQ(SimClient::Code(admin.send("GET", "shelf/2")), 8);
  EXPECT_EQ(SimClient::Code(admin.send("DELETE", "shelf/1")), 0);
  EXPECT_EQ(SimClient::Code(admin.send("DELETE", "shelf/1")), 8);
  EXPECT_FALSE(SimClient::Envelope(admin.send("GET", "shelf")).contains("data")) << "an empty list, as the array";
  EXPECT_EQ(sim.store().dump(), start);
}

TEST_F(StoreRoutesTest, VStoreScopeComesFromQueryBodyAndAccount) {
  sim.store().insert("shelf", {{"NAME", "a"}});
  sim.store().insert("shelf", {{"NAME", "b"}, {"vstoreId", "3"}});
  sim.store().insert("shelf", {{"NAME", "c"}, {"vstoreId", "4"}});
  const std::tuple<SimClient*, const char*, std::vector<std::string>> rows[] = {
      {&admin, "shelf", {"1", "2", "3"}}, {&admin, "shelf?&vstoreId=3", {"2"}},
      {&admin, "shelf?filter=NAME::c&4", {"3"}}, {&tenant, "shelf", {"2"}},
      {&tenant, "shelf?vstoreId=4", {}},  {&tenant, "shelf/3", {}}};
  for (const auto& [client, target, expected] : rows) EXPECT_EQ(Ids(Data(client->send("GET", target))), expected) << target;

  EXPECT_EQ(Data(tenant.send("POST", "shelf", R"({"NAME":"a"})"))["vstoreId"], "3") << "a name is unique per vStore";
  EXPECT_EQ(SimClient::Code(admin.send("POST", "shelf", R"({"NAME":"c", "vstoreId":"4"})")), 7);
  EXPECT_EQ(SimClient::Code(admin.send("POST", "shelf", R"({"NAME":"b", "vstoreId":"4"})")), 0);
}

TEST_F(StoreRoutesTest, AssociationsTakeNumbersOrTextsAndFollowTheirObjects) {
  sim.store().insert("shelf", {{"NAME", "s"}});
  sim.store().insert("book", {{"NAME", "b"}});
  const auto tie = [&](const std::string& type, const std::string& book) {
    return SimClient::Code(admin.send("POST", "shelf/associate", R"({"ID":"1", "ASSOCIATEOBJID":")" + book +
                                                                      R"(", "ASSOCIATEOBJTYPE":)" + type + "}"));
  };
  EXPECT_EQ(tie("9002", "1"), 0);
  EXPECT_EQ(tie("\"9002\"", "1"), 9);
  EXPECT_EQ(tie("9001", "1"), 50331651) << "a type the row does not allow";
  EXPECT_EQ(tie("9002", "7"), arraysim::codes::kObjectNotFound);
  EXPECT_EQ(Ids(Data(admin.send("GET", "book/associate?ASSOCIATEOBJTYPE=9001&ASSOCIATEOBJID=1"))), std::vector<std::string>{"1"});

  const std::string untie = "shelf/associate?ID=1&ASSOCIATEOBJID=1&ASSOCIATEOBJTYPE=9002";
  EXPECT_EQ(SimClient::Code(admin.send("DELETE", untie)), 0);
  EXPECT_EQ(SimClient::Code(admin.send("DELETE", untie)), 10);
  EXPECT_EQ(Data(admin.send("GET", "book/associate?ASSOCIATEOBJTYPE=9001&ASSOCIATEOBJID=1")), json::array());

  EXPECT_EQ(tie("9002", "1"), 0);  // and gone with its object
  sim.store().erase("book", "1");
  EXPECT_EQ(sim.store().dump()["associations"], json::array());
}

}  // namespace
