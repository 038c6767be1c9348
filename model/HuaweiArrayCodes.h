// Codes of the array's error.code that operations give a meaning of their own.
#pragma once

namespace HuaweiArrayCode {

const unsigned long long LUN_DOES_NOT_EXIST = 1077936859ULL;            // 0x404002DB
const unsigned long long SNAPSHOT_LUN_DOES_NOT_EXIST = 1077937880ULL;   // 0x404006D8
const unsigned long long SNAPSHOT_NOT_INACTIVE = 1077937889ULL;         // 0x404006E1
// Hosts and host groups alike.
const unsigned long long NAME_ALREADY_IN_USE = 1077948993ULL;           // 0x40403241
const unsigned long long INITIATOR_ALREADY_EXISTS = 1077948997ULL;      // 0x40403245
const unsigned long long HOST_DOES_NOT_EXIST = 1077950337ULL;           // 0x40403781
const unsigned long long INITIATOR_DOES_NOT_EXIST = 1077951220ULL;      // 0x40403AF4
const unsigned long long HOST_ALREADY_IN_GROUP = 1077937501ULL;         // 0x4040055D

}  // namespace HuaweiArrayCode
