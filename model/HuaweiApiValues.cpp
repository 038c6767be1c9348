#include "HuaweiApiValues.h"

#include <cstdlib>

#include "ConvertToString.h"

namespace HuaweiApi {

CopySpeedValue::CopySpeedValue(int speed) : Values(ConvertToString::to_string<int>(speed)), speed(speed) {
  if (speed < 1 || speed > 4) clear();
}

CopySpeedValue::CopySpeedValue(std::string const& text) : CopySpeedValue(std::atoi(text.c_str())) {}

void CopySpeedValue::clear() {
  value.clear();
  speed = 0;
}

}  // namespace HuaweiApi

// Defined in one translation unit in table order: the copies below read constants defined above.
namespace HuaweiApiValue {

using namespace HuaweiApi;

const AllocType ALLOC_TYPE_THIN("1");
const AllocType ALLOC_TYPE_THICK("0");
const AllocType ALLOC_TYPE_DEFAULT(ALLOC_TYPE_THICK);

const RunningStatus RUNNING_STATUS_UNKNOWN("0");
const RunningStatus RUNNING_STATUS_NORM("1");
const RunningStatus RUNNING_STATUS_SYNC("23");
const RunningStatus RUNNING_STATUS_SPLIT("26");
const RunningStatus RUNNING_STATUS_ONLINE("27");
const RunningStatus RUNNING_STATUS_TO_BE_RECOVERED("33");
const RunningStatus RUNNING_STATUS_INTERRUPTED("34");
const RunningStatus RUNNING_STATUS_QUEUING("37");
const RunningStatus RUNNING_STATUS_REVERSE_SYNC("42");

const CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_UNKNOWN(RUNNING_STATUS_UNKNOWN);
const CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_NORM(RUNNING_STATUS_NORM);
const CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_SYNC(RUNNING_STATUS_SYNC);
const CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_SPLIT(RUNNING_STATUS_SPLIT);
const CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_TO_BE_RECOVERED(RUNNING_STATUS_TO_BE_RECOVERED);
const CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_INTERRUPTED(RUNNING_STATUS_INTERRUPTED);
const CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_QUEUING(RUNNING_STATUS_QUEUING);
const CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_REVERSE_SYNC(RUNNING_STATUS_REVERSE_SYNC);

const FirstSyncValue FIRST_SYNC_YES("1");
const FirstSyncValue FIRST_SYNC_NO("0");

const ResumePolicyValue RESUME_POLICY_AUTOMATIC("1");
const ResumePolicyValue RESUME_POLICY_MANUAL("2");

const CopySpeedValue COPY_SPEED_LOW(1);
const CopySpeedValue COPY_SPEED_MEDIUM(2);
const CopySpeedValue COPY_SPEED_HIGH(3);
const CopySpeedValue COPY_SPEED_HIGHEST(4);

const ObjectTypeValue OBJECT_TYPE_HOST("21");
const ObjectTypeValue OBJECT_TYPE_HOSTGROUP("14");
const ObjectTypeValue OBJECT_TYPE_LUN("11");
const ObjectTypeValue OBJECT_TYPE_SNAPSHOT_LUN("27");
const ObjectTypeValue OBJECT_TYPE_LUN_GROUP("256");
const ObjectTypeValue OBJECT_TYPE_MAPPINGVIEW("245");

}  // namespace HuaweiApiValue
