// Codes of the array's error object that operations give a meaning of their own.
#pragma once

namespace HuaweiArrayCode {

// The object is already a member of the LUN group (0x40403245).
const unsigned long long ALREADY_IN_LUN_GROUP = 1077948997ULL;

}  // namespace HuaweiArrayCode
