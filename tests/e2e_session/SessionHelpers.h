// Helpers of the session suite: the cookie files of a job, and a transport logged in by hand.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "HuaweiJSONGetTokenInfo.h"
#include "HuaweiOpTypes.h"
#include "HuaweiRestAPI.h"
#include "ZrManageHuawei.h"

namespace sessiontest {

// Cookie files of this job and host: "/tmpHUAWEI-<job>_<time>_<host>_<address>".
inline std::vector<std::string> cookieFiles(unsigned long long jobId, const std::string& host) {
  std::vector<std::string> found;
  const std::string prefix = "tmpHUAWEI-" + std::to_string(jobId) + "_";
  for (const auto& entry : std::filesystem::directory_iterator("/")) {
    const std::string name = entry.path().filename().string();
    if (name.rfind(prefix, 0) == 0 && name.find("_" + host + "_0x") != std::string::npos) {
      found.push_back(entry.path().string());
    }
  }
  return found;
}

inline unsigned modeOf(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

// A transport that logged in the way the facade does, for tests of single sends.
inline void logIn(HuaweiRestAPI& transport, const std::string& host, const std::string& user,
                  const std::string& password, const std::string& cookieFile) {
  transport.setUserName(user);
  transport.setPassword(password);
  transport.setControlHost(host);
  transport.setCookieFile(cookieFile);
  HuaweiJSONGetTokenInfo login(1, user, password);
  std::string body;
  std::string response;
  login.buildRequest(body);
  const HuaweiApi::ResultStatus status = transport.post("", body, response, HuaweiOpType::SET_TOKEN_INFO);
  if (!status.IsError() && login.parseResponse(response)) {
    std::string token, device, vstore;
    login.getTokenInformation(token, device, vstore);
    transport.setBaseToken(token);
    transport.setDeviceId(device);
  }
}

}  // namespace sessiontest
