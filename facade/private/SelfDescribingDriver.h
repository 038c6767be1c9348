// Sends a self-describing request through a facade's session. The request classes are not
// installed, so this way in stays inside the library (the third generation's frame) and its tests.
#pragma once

#include <string>

#include "HuaweiApiResultStatus.h"
#include "ZrManageHuawei.h"

class HuaweiJSONBaseV2;

struct SelfDescribingDriver {
  static HuaweiApi::ResultStatus process(ZrManageHuawei& facade, std::string const& operationName,
                                         HuaweiJSONBaseV2* const& request) {
    return facade.ProcessWithServer(operationName, request);
  }
};
