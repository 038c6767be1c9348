#include "ThirdGenerationCall.h"

#include "HuaweiJSONBaseV2.h"
#include "SelfDescribingDriver.h"

HuaweiApi::ResultStatus ThirdGenerationCall::check(std::initializer_list<Refusal> refusals) {
  for (const Refusal& refusal : refusals) {
    if (refusal.refused) return HuaweiApi::ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, refusal.text);
  }
  return HuaweiApi::ResultStatus();
}

HuaweiApi::ResultStatus ThirdGenerationCall::send(HuaweiJSONBaseV2& request) {
  HuaweiJSONBaseV2* const requestPointer = &request;
  return SelfDescribingDriver::process(m_facade, m_operationName, requestPointer);
}
