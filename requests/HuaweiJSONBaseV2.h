// Base of the self-describing requests: besides body and answer, the object knows its resource,
// method, vStore and the array codes that do not count as failure, so that one driver
// (ZrManageHuawei::ProcessWithServer) sends every such request the same way.
#pragma once

#include <string>
#include <vector>

#include "HuaweiJSONBase.h"
#include "HuaweiRequestTypes.h"
#include "RequestPlacement.h"
#include "jsonxx.h"

class HuaweiJSONBaseV2 : public HuaweiJSONBase {
 public:
  HuaweiJSONBaseV2(unsigned long long const& jobId, std::string const& resource, REQ_TYPE_HUAWEI const& type,
                   std::string const& vstoreId, std::string const& objectId);

  // Renders the object of buildRequest(jsonxx::Object&) for POST and PUT, with the vStore as a key
  // (sorted keys, ": " and ", " between members); other methods have no body.
  bool buildRequest(std::string& body) override;
  // Parses and delegates to parseResponse(jsonxx::Object const&), whatever the parse gave.
  bool parseResponse(std::string& response) override;

  virtual void buildRequest(jsonxx::Object& body);
  virtual bool parseResponse(jsonxx::Object const& response) = 0;
  virtual std::string getResourceUrl();

  int getHttpReqType() const { return static_cast<int>(m_requestType); }
  int getOpType() const;
  // resource[/object]?[&filter][&vstoreId=<id> for GET and DELETE]; the question mark always stands.
  // The filter comes placed (QueryPieces). An object identifier that is no single path segment
  // gives the empty text and a placementRefusal().
  std::string getResourceUrl(std::string filter);
  // Why the last resource could not be formed; such a request is not sent.
  const PlacementRefusal& placementRefusal() const { return m_placementRefusal; }
  // Points data at the value under "data" of the answer (no copy). False, logged, when it is absent.
  bool parseResponseForData(jsonxx::Value*& data, jsonxx::Object const& response);
  // The value under "data" as a list: a bare object, as the array sends a list of one, becomes a
  // list of one. A value that is neither ends the process through the model's assertion.
  bool parseResponseForDataAsArray(jsonxx::Array& data, jsonxx::Object const& response);
  bool isIgnorableErrorCode(unsigned long long code) const;

 protected:
  ~HuaweiJSONBaseV2() = default;
  HuaweiJSONBaseV2(const HuaweiJSONBaseV2&) = default;
  HuaweiJSONBaseV2& operator=(const HuaweiJSONBaseV2&) = default;

  bool hasVstore() const;

  REQ_TYPE_HUAWEI m_requestType;
  std::string m_resource;
  std::string m_vstoreId;
  std::string m_objectId;
  std::vector<unsigned long long> m_ignorableErrorCodes;
  PlacementRefusal m_placementRefusal;
};
