#include "CreatedIdentifier.h"

namespace HuaweiKeys {

HUAWEI_RECORD_KEYS(CreatedObjectId) {
  static const KeyTable<CreatedObjectId> keys{{"id", "ID", Presence::Required, Kind::String, &CreatedObjectId::id}};
  return keys;
}

HUAWEI_RECORD_KEYS(CreatedSessionId) {
  static const KeyTable<CreatedSessionId> keys{{"id", "id", Presence::Required, Kind::String, &CreatedSessionId::id}};
  return keys;
}

}  // namespace HuaweiKeys
