// The rules of the lists of LUN groups, host groups and mapping views.
#pragma once

#include <string>
#include <vector>

#include "HuaweiIncludes.h"
#include "RecordRequests.h"

// The lists of LUN groups and mapping views: an answer without "data" is read by its status.
inline HuaweiResponse::ReadingRules groupListRules(const char* logName, HuaweiResponse::StatusReport status,
                                                   HuaweiKeys::KeyOrder order = HuaweiKeys::KeyOrder::Listed) {
  HuaweiResponse::ReadingRules rules = HuaweiResponse::sanRules(logName, HuaweiResponse::WithoutData::Status, status);
  rules.order = order;
  return rules;
}
