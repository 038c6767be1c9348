// Array state described in JSON, for seed files and for the administration API.
//
// {
//   "system": {"NAME": "lab-array", ...},              strings merged into GET system/
//   "ndmp": [{"vstoreId": "", "isEnabled": "true", "ip": "...", "port": "10000",
//             "version": "4", "isSupportSnapshot": "true", "vstoreName": ""}],
//   "vstores": [{"ID": "3", "NAME": "tenant", "RUNNINGSTATUS": "1"}],
//   "lifs": [{"NAME": "lif1", "IPV4ADDR": "...", "IPV6ADDR": "", "SUPPORTPROTOCOL": "3",
//             "ROLE": "2", "MANAGEMENTACCESS": "1", "vstoreId": "3", "vstoreName": "tenant"}],
//   "filesystems": [{"ID": "7", "NAME": "fs1", "HEALTHSTATUS": "1", "RUNNINGSTATUS": "27",
//                    "vstoreId": "3", "vstoreName": "tenant",
//                    "refuseSnapDiff": 1, "refuseSnapshots": 0,       (-1: always)
//                    "generate": {"files": 1000, "filesPerDirectory": 100, "fileSize": 4096},
//                    "steps": [ ...file steps, see ApplyFileSteps... ]}],
//   "changeListPageSize": 1000,
//   "objects": {"lungroup": [{"ID": "1", "NAME": "lg1", "vstoreId": "3"}], ...},   store records
//   "associations": [["lungroup", "1", "lun", "12"]]
// }
// Every key is optional; unknown keys are refused, so that a typo does not go unnoticed.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "ArrayModel.h"

namespace arraysim {

// Throws std::invalid_argument when the description does not fit the format above.
void ApplySeed(ArrayModel& model, const nlohmann::json& seed);
nlohmann::json LoadSeedFile(const std::string& path);

// Changes a file system's tree step by step and answers the identifiers of the snapshots
// taken on the way. Steps:
//   {"mkdir": "/a/b"}                    {"write": "/a/f", "size": 10}
//   {"touch": "/a/f"}                    {"remove": "/a"}
//   {"rename": "/a/f", "to": "/b/g"}
//   {"create": "/a/f", "inode": 18446744073709551615, "size": 1, "crTime": 1, "cTime": 1,
//    "mTime": 1, "aTime": 1, "owner": 0, "group": 0, "links": 1, "dosAttr": 32}
//   {"hostile": "/a", "size": 1}        files of every path of HostilePaths() below /a
//   {"snapshot": "name", "snapDiff": true, "type": "8"}
std::vector<std::string> ApplyFileSteps(ArrayModel& model, const std::string& fileSystemId, const nlohmann::json& steps);

}  // namespace arraysim
