#include "HuaweiJSONBaseV2.h"

#include <algorithm>
#include <sstream>

#include "AnswerParsing.h"
#include "HuaweiOpTypes.h"
#include "HuaweiVstore.h"
#include "ResourcePath.h"
#include "TkDebug.h"

HuaweiJSONBaseV2::HuaweiJSONBaseV2(unsigned long long const& jobId, std::string const& resource,
                                   REQ_TYPE_HUAWEI const& type, std::string const& vstoreId,
                                   std::string const& objectId)
    : HuaweiJSONBase(jobId), m_requestType(type), m_resource(resource), m_vstoreId(vstoreId), m_objectId(objectId) {}

bool HuaweiJSONBaseV2::hasVstore() const { return !HuaweiVstore::isNoneOrEmpty(m_vstoreId); }

int HuaweiJSONBaseV2::getOpType() const { return HuaweiOpType::SELF_DESCRIBING_REQUEST; }

std::string HuaweiJSONBaseV2::getResourceUrl() { return getResourceUrl(std::string()); }

std::string HuaweiJSONBaseV2::getResourceUrl(std::string filter) {
  ResourcePath url = ResourcePath(m_resource).id(m_objectId, m_resource + " identifier").openQuery();
  if (!filter.empty()) url.raw(filter);
  if ((m_requestType == HUAWEI_REQ_GET || m_requestType == HUAWEI_REQ_DELETE) && hasVstore()) {
    url.add("vstoreId", m_vstoreId);
  }
  m_placementRefusal = url.refusal();
  return m_placementRefusal.refused() ? std::string() : url.str();
}

void HuaweiJSONBaseV2::buildRequest(jsonxx::Object& body) { (void)body; }

bool HuaweiJSONBaseV2::buildRequest(std::string& body) {
  body.clear();
  if (m_requestType != HUAWEI_REQ_POST && m_requestType != HUAWEI_REQ_PUT) return true;
  jsonxx::Object object;
  buildRequest(object);
  if (hasVstore()) object.import("vstoreId", jsonxx::Value(m_vstoreId));
  // Names in UTF-8 reach the array as the caller wrote them.
  std::ostringstream rendered;
  rendered << jsonxx::bytes_outside_ascii_as_written << object;
  body = rendered.str();
  return true;
}

bool HuaweiJSONBaseV2::parseResponse(std::string& response) {
  jsonxx::Object answer;
  HuaweiTransport::parseAnswer("parseResponse", m_jobId, response, answer);
  TkDebug(nullptr).DebugLvl("parseResponse", 5, m_jobId, "Delegating parse json response...");
  return parseResponse(static_cast<jsonxx::Object const&>(answer));
}

bool HuaweiJSONBaseV2::parseResponseForData(jsonxx::Value*& data, jsonxx::Object const& response) {
  if (response.empty() || !response.has<jsonxx::Value>("data")) {
    TkDebug(nullptr).DebugLvl("parseResponseForData", -1, m_jobId,
                              "Error when parsing the JSON response. [data] field not present ");
    return false;
  }
  data = const_cast<jsonxx::Value*>(&response.get<jsonxx::Value>("data"));
  return true;
}

bool HuaweiJSONBaseV2::parseResponseForDataAsArray(jsonxx::Array& data, jsonxx::Object const& response) {
  jsonxx::Value* value = nullptr;
  if (!parseResponseForData(value, response)) return false;
  if (value->is<jsonxx::Array>()) {
    data = value->get<jsonxx::Array>();
  } else {
    data = jsonxx::Value(value->get<jsonxx::Object>());
  }
  return true;
}

bool HuaweiJSONBaseV2::isIgnorableErrorCode(unsigned long long code) const {
  return std::find(m_ignorableErrorCodes.begin(), m_ignorableErrorCodes.end(), code) != m_ignorableErrorCodes.end();
}
