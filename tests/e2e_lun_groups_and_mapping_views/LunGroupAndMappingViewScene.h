// Objects of the SAN side seeded straight into the simulator's store.
#pragma once

#include <string>

#include "ArraySimulator.h"

namespace zrtest {

inline std::string SeedSnapshotLun(arraysim::ArraySimulator& sim, const std::string& name, const std::string& vstoreId = "") {
  arraysim::Record record{{"NAME", name}, {"PARENTID", "9"}, {"PARENTNAME", "lun9"}, {"RUNNINGSTATUS", "43"}};
  if (!vstoreId.empty()) record["vstoreId"] = vstoreId;
  return sim.store().insert("snapshot", record);
}

inline std::string SeedNamed(arraysim::ArraySimulator& sim, const char* type, const std::string& name,
                             const std::string& vstoreId = "") {
  arraysim::Record record{{"NAME", name}};
  if (!vstoreId.empty()) record["vstoreId"] = vstoreId;
  return sim.store().insert(type, record);
}

}  // namespace zrtest
