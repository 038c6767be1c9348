#include "HuaweiJSONHostRequests.h"

namespace {

// The lookup gives the host's name where the initiator's would stand; a single object may lack
// its identifier.
_HuaweiInitiator lookedUp(const jsonxx::Object& data, HuaweiKeys::Keys keys) {
  _HuaweiInitiator initiator;
  HuaweiKeys::readKeys(data, initiator, keys);
  initiator.name = initiator.parentName;
  initiator.parentName.clear();
  return initiator;
}

}  // namespace

bool HuaweiJSONGetInitiatorInfo::parseResponse(std::string& response) {
  std::vector<_HuaweiInitiator> initiators;
  if (!readAnswer(response, initiators)) return false;
  *m_destination = std::move(initiators);
  return true;
}

// Reads a list and a single object alike.
bool HuaweiJSONGetInitiatorInfo::readAnswer(std::string& response, std::vector<_HuaweiInitiator>& initiators) const {
  const char* logName = "HuaweiJSONGetInitiatorInfo::parseResponse";
  jsonxx::Object answer;
  if (!HuaweiResponse::parseObject(HuaweiResponse::sanLog(logName), m_jobId, response, answer)) return false;
  if (answer.has<jsonxx::Object>("data")) {
    initiators.push_back(lookedUp(answer.get<jsonxx::Object>("data"), HuaweiKeys::Keys::AllOptional));
    return true;
  }
  const auto readOne = [](const jsonxx::Object& element, _HuaweiInitiator& initiator) {
    initiator = lookedUp(element, HuaweiKeys::Keys::All);
    return true;
  };
  const auto readAll = [&](const jsonxx::Array& list) {
    return HuaweiResponse::appendRecords(list, initiators, readOne);
  };
  return HuaweiResponse::readDataList(m_jobId, answer, HuaweiResponse::sanRules(logName), readAll);
}
