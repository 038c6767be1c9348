// Shapes shared by the self-describing requests: an answer with nothing to read, a creation that
// answers the new object's ID, and the records associated with one object.
#pragma once

#include <string>
#include <vector>

#include "HuaweiApiValues.h"
#include "HuaweiJSONBaseV2.h"
#include "HuaweiVstore.h"
#include "RecordRequests.h"
#include "ResourcePath.h"
#include "TkDebug.h"

namespace HuaweiSelfDescribing {

inline void logParsing(unsigned long long jobId) {
  TkDebug(nullptr).DebugLvl("parseResponse", 5, static_cast<long long>(jobId), "Parsing the JSON response...");
}

}  // namespace HuaweiSelfDescribing

// The array's answer says only whether it worked, which the transport has already judged.
class HuaweiJSONUnreadAnswerV2 : public HuaweiJSONBaseV2 {
 public:
  using HuaweiJSONBaseV2::HuaweiJSONBaseV2;
  using HuaweiJSONBaseV2::parseResponse;
  bool parseResponse(jsonxx::Object const& response) override {
    (void)response;
    return true;
  }

 protected:
  ~HuaweiJSONUnreadAnswerV2() = default;
};

// A POST that creates an object; the answer's data object carries its ID.
class HuaweiJSONCreationV2 : public HuaweiJSONBaseV2 {
 public:
  HuaweiJSONCreationV2(unsigned long long const& jobId, std::string const& resource)
      : HuaweiJSONBaseV2(jobId, resource, HUAWEI_REQ_POST, HuaweiVstore::kNone, std::string()) {}
  using HuaweiJSONBaseV2::parseResponse;
  bool parseResponse(jsonxx::Object const& response) override {
    HuaweiSelfDescribing::logParsing(m_jobId);
    jsonxx::Value* data = nullptr;
    if (!parseResponseForData(data, response)) return false;
    m_newId = data->get<jsonxx::Object>().get<std::string>("ID");
    return true;
  }

 protected:
  ~HuaweiJSONCreationV2() = default;

  std::string m_newId;
};

// The records associated with one object, asked by its type and id; each element goes through
// the record's own reader, whose refusal ends the scan.
template <typename Record>
class HuaweiJSONAssociatedRecords : public HuaweiJSONBaseV2 {
 public:
  HuaweiJSONAssociatedRecords(unsigned long long const& jobId, std::string const& resource,
                              HuaweiApi::ObjectTypeValue const& objectType, std::string const& objectId,
                              std::string const& vstoreId)
      : HuaweiJSONBaseV2(jobId, resource, HUAWEI_REQ_GET, vstoreId, std::string()),
        m_objectType(objectType),
        m_associatedId(objectId) {}

  using HuaweiJSONBaseV2::getResourceUrl;
  std::string getResourceUrl() override {
    return getResourceUrl(
        QueryPieces().add("ASSOCIATEOBJID", m_associatedId).add("ASSOCIATEOBJTYPE", m_objectType.getValue()).str());
  }
  using HuaweiJSONBaseV2::parseResponse;
  bool parseResponse(jsonxx::Object const& response) override {
    jsonxx::Array data;
    return parseResponseForDataAsArray(data, response) &&
           HuaweiResponse::appendRecords(data, m_records, [](jsonxx::Object const& element, Record& record) {
             return record.parseFromJson(element);
           });
  }

 protected:
  ~HuaweiJSONAssociatedRecords() = default;

  HuaweiApi::ObjectTypeValue m_objectType;
  std::string m_associatedId;
  std::vector<Record> m_records;
};
