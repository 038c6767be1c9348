// The array's error codes that the simulator answers with.
#pragma once

namespace arraysim::codes {

constexpr long long kSuccess = 0;
// The session is missing, has ended, or the token, the cookie or the device in the path is wrong.
constexpr long long kUnauthorized = -401;
constexpr long long kBadCredentials = 1077949061;
// A body that is no JSON object, a missing or malformed key, an unknown change-list cursor.
constexpr long long kParameterIncorrect = 50331651;
// An object named in the path or the body does not exist: vStore, file system, change-list
// session.
constexpr long long kObjectNotFound = 1077948996;
// A resource path the simulator does not serve. A code of its own, which no operation reads as
// "already done" (an absent object is, to several deletions).
constexpr long long kResourceNotServed = 1077949001;
// A snapshot of that name exists on the file system already.
constexpr long long kNameExists = 1077948993;
constexpr long long kSnapshotNotFound = 1073754118;
// The file system refuses a snapshot with SnapDiff (also used by the refuse-any switch).
constexpr long long kSnapDiffUnsupported = 1073754130;
// SAN mapping: an object already in the LUN group; a view's host group or LUN group attached
// already; a host group or mapping view that does not exist.
constexpr long long kAlreadyInLunGroup = 1077948997;
constexpr long long kHostGroupInView = 1073804556;
constexpr long long kLunGroupInView = 1073804560;
constexpr long long kHostGroupNotFound = 1077937500;
constexpr long long kMappingViewNotFound = 1077951819;

// Shares and their permissions.
constexpr long long kCIFSShareExists = 1077939715;
constexpr long long kCIFSSharePermissionExists = 1077939718;
constexpr long long kNFSSharePermissionExists = 1077939727;
constexpr long long kNFSSharePermissionNotFound = 1077939728;

// The object is already associated with the LUN group, or already a secondary LUN of a clone.
constexpr long long kAlreadyAssociated = 1077948997;
// A clone that still has secondary LUNs, or a LUN that is part of a clone, cannot be deleted.
constexpr long long kObjectInUse = 1077948998;
// The pair is not in a state that allows the action (a split while it synchronises, a sync of a
// pair that is not split).
constexpr long long kPairStateWrong = 1077951831;

// LUNs and their snapshots.
constexpr long long kLunNotFound = 1077936859;
constexpr long long kSnapshotLunNotFound = 1077937880;
constexpr long long kSnapshotNotInactive = 1077937889;

// Hosts and initiators.
constexpr long long kHostInGroup = 1077937501;
constexpr long long kInitiatorExists = 1077948997;
constexpr long long kHostNotFound = 1077950337;
constexpr long long kInitiatorNotFound = 1077951220;

}  // namespace arraysim::codes
