// The identifier that a creation's answer gives under "data", as a record of one key, so that the
// generic requests read it through a key table like any other record.
#pragma once

#include <cstddef>
#include <string>

#include "RecordKeys.h"

// Each is as wide as the widest field type that a key table may name, which keeps GCC's bounds
// check quiet about the key reader's branches for the types these records do not have.
constexpr std::size_t kIdentifierRecordWidth = 64;

// Most objects answer "ID".
struct alignas(kIdentifierRecordWidth) CreatedObjectId {
  std::string id;
};

// A change-list session answers "id".
struct alignas(kIdentifierRecordWidth) CreatedSessionId {
  std::string id;
};

namespace HuaweiKeys {
HUAWEI_RECORD_KEYS(CreatedObjectId);
HUAWEI_RECORD_KEYS(CreatedSessionId);
}  // namespace HuaweiKeys
