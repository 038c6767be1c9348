#include "RequestUrl.h"

#include "ConvertToString.h"
#include "HuaweiOpTypes.h"

namespace HuaweiTransport {

std::string formRequestUrl(const std::string& controlHost, const std::string& deviceId, const std::string& resource,
                           int opType) {
  const std::string origin = "https://" + controlHost + ":" + ConvertToString::to_string<int>(kManagementPort);
  if (opType == HuaweiOpType::SET_TOKEN_INFO) return origin + "/deviceManager/rest/xxxxx/sessions";
  return origin + "/deviceManager/rest/" + deviceId + "/" + resource;
}

}  // namespace HuaweiTransport
