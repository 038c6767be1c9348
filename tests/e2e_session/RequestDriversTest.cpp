#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "HuaweiJSONBaseV2.h"
#include "LogCapture.h"
#include "SessionHelpers.h"

namespace {

using arraysim::FaultRule;
using testing::ElementsAre;

// A self-describing request that reads the "ID" of the answer's data, or of its first item.
class ProbeRequest : public HuaweiJSONBaseV2 {
 public:
  ProbeRequest(const std::string& resource, REQ_TYPE_HUAWEI type, const std::string& vstore,
               const std::string& objectId = "")
      : HuaweiJSONBaseV2(5, resource, type, vstore, objectId) {}
  void ignore(unsigned long long code) { m_ignorableErrorCodes.push_back(code); }
  void setBody(const jsonxx::Object& body) { body_ = body; }

  void buildRequest(jsonxx::Object& body) override { body.import(body_); }
  bool parseResponse(jsonxx::Object const& response) override {
    jsonxx::Array items;
    if (!parseResponseForDataAsArray(items, response)) return false;
    ids.clear();
    for (unsigned int i = 0; i < items.size(); ++i) {
      if (items.get<jsonxx::Object>(i).has<std::string>("ID")) ids.push_back(items.get<jsonxx::Object>(i).get<std::string>("ID"));
    }
    return true;
  }
  std::vector<std::string> ids;

 private:
  jsonxx::Object body_;
};

class RequestDrivers : public zrtest::ArrayClientTest {
 protected:
  HuaweiApi::ResultStatus process(ZrManageHuawei& array, ProbeRequest& request) {
    HuaweiJSONBaseV2* const pointer = &request;
    return array.ProcessWithServer("ProbeOperation", pointer);
  }
};

TEST_F(RequestDrivers, ProcessWithServerLogsInOnDemandAndPutsTheVstoreInTheQuery) {
  const std::string fs = sim().fileSystems().create("fs-a");
  zrtest::LogCapture log;
  auto array = facade();
  ProbeRequest request("filesystem", HUAWEI_REQ_GET, "-12345");
  const auto status = process(*array, request);
  EXPECT_EQ(status.GetErrorCode(), 0ULL) << status.GetErrorString();
  EXPECT_THAT(request.ids, ElementsAre(fs));
  EXPECT_THAT(requestLines(), ElementsAre("POST sessions", "GET filesystem?"));
  EXPECT_TRUE(log.HasLine(3, "ProcessWithServer::ProbeOperation", "Sending request... []. URL [filesystem?]"));
  EXPECT_TRUE(log.HasLine(5, "ProcessWithServer", "Parsing the JSON response..."));
  EXPECT_TRUE(log.HasLine(3, "ProcessWithServer::ProbeOperation", "Successfully completed the operation"));

  sim().requests().clear();
  ProbeRequest scoped("fssnapshot", HUAWEI_REQ_DELETE, "3", "11");
  process(*array, scoped);
  EXPECT_EQ(lastRequest().resource, "fssnapshot/11?&vstoreId=3");
}

TEST_F(RequestDrivers, PostCarriesTheVstoreInASortedBody) {
  arraysim::FileSystemInfo inVstore;
  inVstore.vstoreId = "3";
  const std::string fs = sim().fileSystems().create("fs-b", inVstore);
  auto array = loggedInFacade();
  ProbeRequest create("fssnapshot", HUAWEI_REQ_POST, "3");
  jsonxx::Object body;
  body.import("PARENTTYPE", jsonxx::Value(std::string("40")));
  body.import("NAME", jsonxx::Value(std::string("v2")));
  body.import("PARENTID", jsonxx::Value(fs));
  create.setBody(body);
  const auto status = process(*array, create);
  EXPECT_EQ(status.GetErrorCode(), 0ULL) << status.GetErrorString();
  const auto post = lastRequest();
  EXPECT_EQ(post.resource, "fssnapshot?");
  EXPECT_EQ(post.body, "{\"NAME\": \"v2\", \"PARENTID\": \"" + fs + "\", \"PARENTTYPE\": \"40\", \"vstoreId\": \"3\"}");
  ASSERT_EQ(create.ids.size(), 1u);
  EXPECT_TRUE(sim().snapshots().exists(create.ids.front()));
}

TEST_F(RequestDrivers, IgnorableCodeIsSuccessWhenTheErrorBodyParses) {
  zrtest::LogCapture log;
  auto array = loggedInFacade();
  sim().faults().add(FaultRule::On("GET", "filesystem").arrayError(1077948997, "already there").times(2));
  ProbeRequest tolerant("filesystem", HUAWEI_REQ_GET, "-12345");
  tolerant.ignore(1077948997);
  EXPECT_EQ(process(*array, tolerant).GetErrorCode(), 0ULL);
  EXPECT_TRUE(log.HasLine(0, "ProcessWithServer::ProbeOperation",
                          "Ignore flag set for error [1077948997] [already there]! Treating this as success."));

  ProbeRequest strict("filesystem", HUAWEI_REQ_GET, "-12345");
  const auto status = process(*array, strict);
  EXPECT_EQ(status.GetErrorCode(), 1077948997ULL);
  EXPECT_EQ(status.GetErrorString(), "already there");
  EXPECT_TRUE(log.HasLine(-1, "ProcessWithServer::ProbeOperation", "Unable to process the req for operation [ProbeOperation]"));
}

TEST_F(RequestDrivers, FailedLoginSendsNothingElseAndIsCodeOne) {
  zrtest::LogCapture log;
  ZrManageHuawei array(kJobId);
  array.setCredentials("admin", "not-the-password", host());
  ProbeRequest request("filesystem", HUAWEI_REQ_GET, "-12345");
  const auto status = process(array, request);
  EXPECT_EQ(status.GetErrorCode(), 1ULL);
  EXPECT_EQ(status.GetErrorString(), "Failed to create session.");
  EXPECT_THAT(requestLines(), ElementsAre("POST sessions"));
  EXPECT_TRUE(log.HasLine(-1, "ProcessWithServer::ProbeOperation", "Failed to create session."));
}

}  // namespace
