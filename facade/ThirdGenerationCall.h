// The frame of third-generation operations: they answer HuaweiApi::ResultStatus and go through
// ZrManageHuawei::ProcessWithServer, which opens the session by itself.
#pragma once

#include <string>

#include "HuaweiApiResultStatus.h"
#include "YbString.h"

class HuaweiJSONBaseV2;
class ZrManageHuawei;

class ThirdGenerationCall {
 public:
  ThirdGenerationCall(ZrManageHuawei& facade, const char* operationName)
      : m_facade(facade), m_operationName(operationName) {}

  // Code 2, "The input parameter [<label>] is empty", when value is empty; success otherwise.
  static HuaweiApi::ResultStatus argument(const std::string& value, const char* label);

  HuaweiApi::ResultStatus process(HuaweiJSONBaseV2& request);

  // The failure as the operation tells it: same code, text from `format` with the status text
  // first and the operation's own arguments behind it.
  template <typename... Arguments>
  static HuaweiApi::ResultStatus failed(const HuaweiApi::ResultStatus& status, const char* format,
                                        Arguments... arguments) {
    return HuaweiApi::ResultStatus(status.GetErrorCode(),
                                   YbString::Format(format, status.GetErrorString().c_str(), arguments...));
  }

 private:
  ZrManageHuawei& m_facade;
  const char* m_operationName;
};
