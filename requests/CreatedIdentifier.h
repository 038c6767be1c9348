// The identifier that a creation's answer gives under "data", as a record of one key, so that the
// generic requests read it through a key table like any other record.
#pragma once

#include <string>

#include "RecordKeys.h"

// Most objects answer "ID".
struct CreatedObjectId {
  std::string id;
};

// A change-list session answers "id".
struct CreatedSessionId {
  std::string id;
};

namespace HuaweiKeys {
HUAWEI_RECORD_KEYS(CreatedObjectId);
HUAWEI_RECORD_KEYS(CreatedSessionId);
}  // namespace HuaweiKeys
