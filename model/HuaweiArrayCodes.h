// The array's error codes that carry a meaning for the library, as read from `error.code`, and the
// few fixed numbers of the wire. One place, so that an operation names the meaning it tolerates,
// adopts or remaps instead of repeating a number.
#pragma once

namespace HuaweiArrayCode {

// File systems and their snapshots.
constexpr unsigned long long FS_SNAPSHOT_DOES_NOT_EXIST = 1073754118ULL;  // 0x40003006
constexpr unsigned long long SNAPDIFF_NOT_SUPPORTED = 1073754130ULL;      // 0x40003012

// NAS shares and their permissions.
constexpr unsigned long long CIFS_SHARE_ALREADY_EXISTS = 1077939715ULL;       // 0x40400E03
constexpr unsigned long long CIFS_PERMISSION_ALREADY_EXISTS = 1077939718ULL;  // 0x40400E06
constexpr unsigned long long NFS_PERMISSION_ALREADY_EXISTS = 1077939727ULL;   // 0x40400E0F
constexpr unsigned long long NFS_PERMISSION_DOES_NOT_EXIST = 1077939728ULL;   // 0x40400E10

// LUNs and LUN snapshots.
constexpr unsigned long long LUN_DOES_NOT_EXIST = 1077936859ULL;           // 0x404002DB
constexpr unsigned long long SNAPSHOT_LUN_DOES_NOT_EXIST = 1077937880ULL;  // 0x404006D8
constexpr unsigned long long SNAPSHOT_NOT_INACTIVE = 1077937889ULL;        // 0x404006E1

// Hosts, initiators and groups.
constexpr unsigned long long NAME_ALREADY_EXISTS = 1077948993ULL;         // 0x40403241, hosts and all groups
constexpr unsigned long long ALREADY_EXISTS_OR_ASSOCIATED = 1077948997ULL;  // 0x40403245, initiator; LUN in group
constexpr unsigned long long HOST_DOES_NOT_EXIST = 1077950337ULL;         // 0x40403781
constexpr unsigned long long INITIATOR_DOES_NOT_EXIST = 1077951220ULL;    // 0x40403AF4
constexpr unsigned long long HOST_GROUP_DOES_NOT_EXIST = 1077937500ULL;   // 0x4040055C
constexpr unsigned long long HOST_ALREADY_IN_HOST_GROUP = 1077937501ULL;  // 0x4040055D
constexpr unsigned long long LUN_GROUP_DOES_NOT_EXIST = 1077948996ULL;    // 0x40403244

// Mapping views.
constexpr unsigned long long HOST_GROUP_ALREADY_IN_MAPPING_VIEW = 1073804556ULL;  // 0x4000F50C
constexpr unsigned long long LUN_GROUP_ALREADY_IN_MAPPING_VIEW = 1073804560ULL;   // 0x4000F510
constexpr unsigned long long MAPPING_VIEW_DOES_NOT_EXIST = 1077951819ULL;         // 0x40403D4B

}  // namespace HuaweiArrayCode

namespace HuaweiParentType {
// The parent type of a change-list session and its pages: the file system.
constexpr int FILE_SYSTEM = 40;
}  // namespace HuaweiParentType
