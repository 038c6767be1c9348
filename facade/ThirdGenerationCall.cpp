#include "ThirdGenerationCall.h"

#include "HuaweiJSONBaseV2.h"
#include "ZrManageHuawei.h"

HuaweiApi::ResultStatus ThirdGenerationCall::argument(const std::string& value, const char* label) {
  if (!value.empty()) return HuaweiApi::ResultStatus();
  return HuaweiApi::ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE,
                                 YbString::Format("The input parameter [%s] is empty", label));
}

HuaweiApi::ResultStatus ThirdGenerationCall::process(HuaweiJSONBaseV2& request) {
  HuaweiJSONBaseV2* const requestPointer = &request;
  return m_facade.ProcessWithServer(m_operationName, requestPointer);
}
