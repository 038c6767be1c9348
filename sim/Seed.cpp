#include "Seed.h"

#include <algorithm>
#include <fstream>
#include <initializer_list>
#include <stdexcept>

#include "filetree/HostileNames.h"
#include "filetree/TreeGenerator.h"

namespace arraysim {
namespace {

using nlohmann::json;

void RequireKnownKeys(const json& object, std::initializer_list<const char*> known, const std::string& where) {
  if (!object.is_object()) throw std::invalid_argument(where + " must be a JSON object");
  for (const auto& item : object.items()) {
    if (std::none_of(known.begin(), known.end(), [&](const char* key) { return item.key() == key; })) {
      throw std::invalid_argument("unknown key \"" + item.key() + "\" in " + where);
    }
  }
}

std::string Text(const json& object, const char* key, const std::string& fallback = "") {
  const auto it = object.find(key);
  if (it == object.end()) return fallback;
  if (!it->is_string()) throw std::invalid_argument(std::string("\"") + key + "\" must be a string");
  return it->get<std::string>();
}

std::uint64_t Number(const json& object, const char* key, std::uint64_t fallback) {
  const auto it = object.find(key);
  if (it == object.end()) return fallback;
  if (!it->is_number_unsigned()) throw std::invalid_argument(std::string("\"") + key + "\" must be a number >= 0");
  return it->get<std::uint64_t>();
}

int Count(const json& object, const char* key) {
  const auto it = object.find(key);
  if (it == object.end()) return 0;
  if (!it->is_number_integer()) throw std::invalid_argument(std::string("\"") + key + "\" must be an integer");
  return it->get<int>();
}

const json& List(const json& seed, const char* key) {
  static const json kNone = json::array();
  const auto it = seed.find(key);
  if (it == seed.end()) return kNone;
  if (!it->is_array()) throw std::invalid_argument(std::string("\"") + key + "\" must be a list");
  return *it;
}

FileAttributes Attributes(const json& step) {
  FileAttributes a;
  a.inode = Number(step, "inode", 0);
  a.size = Number(step, "size", 0);
  a.crTime = Number(step, "crTime", 0);
  a.cTime = Number(step, "cTime", 0);
  a.mTime = Number(step, "mTime", 0);
  a.aTime = Number(step, "aTime", 0);
  a.owner = Number(step, "owner", 0);
  a.group = Number(step, "group", 0);
  a.links = static_cast<std::uint32_t>(Number(step, "links", 1));
  a.dosAttr = static_cast<std::uint32_t>(Number(step, "dosAttr", 0x20));
  return a;
}

void SeedFileSystem(ArrayModel& model, const json& entry) {
  RequireKnownKeys(entry,
                   {"ID", "NAME", "HEALTHSTATUS", "RUNNINGSTATUS", "vstoreId", "vstoreName", "refuseSnapDiff",
                    "refuseSnapshots", "generate", "steps"},
                   "a file system");
  FileSystemInfo info;
  info.id = Text(entry, "ID");
  info.healthStatus = Text(entry, "HEALTHSTATUS", info.healthStatus);
  info.runningStatus = Text(entry, "RUNNINGSTATUS", info.runningStatus);
  info.vstoreId = Text(entry, "vstoreId");
  info.vstoreName = Text(entry, "vstoreName");
  auto& fileSystems = model.fileSystems();
  const auto id = fileSystems.create(Text(entry, "NAME"), info);
  fileSystems.refuseSnapDiff(id, Count(entry, "refuseSnapDiff"));
  fileSystems.refuseSnapshots(id, Count(entry, "refuseSnapshots"));
  if (const auto generate = entry.find("generate"); generate != entry.end()) {
    RequireKnownKeys(*generate, {"files", "filesPerDirectory", "fileSize"}, "\"generate\"");
    TreeShape shape;
    shape.files = Number(*generate, "files", 0);
    shape.filesPerDirectory = Number(*generate, "filesPerDirectory", shape.filesPerDirectory);
    shape.fileSize = Number(*generate, "fileSize", shape.fileSize);
    fileSystems.with(id, [&](FileSystem& fs) { TreeGenerator(shape).populate(fs.tree); });
  }
  ApplyFileSteps(model, id, List(entry, "steps"));
}

}  // namespace

std::vector<std::string> ApplyFileSteps(ArrayModel& model, const std::string& fileSystemId, const json& steps) {
  std::lock_guard<std::recursive_mutex> lock(model.mutex());
  if (!steps.is_array()) throw std::invalid_argument("file steps must be a list");
  std::vector<std::string> snapshots;
  auto files = model.fileSystems().files(fileSystemId);
  for (const auto& step : steps) {
    if (!step.is_object()) throw std::invalid_argument("a file step must be a JSON object");
    if (step.contains("mkdir")) {
      files.makeDirectory(Text(step, "mkdir"));
    } else if (step.contains("write")) {
      files.writeFile(Text(step, "write"), Number(step, "size", 0));
    } else if (step.contains("create")) {
      files.createFile(Text(step, "create"), Attributes(step));
    } else if (step.contains("touch")) {
      files.touch(Text(step, "touch"));
    } else if (step.contains("remove")) {
      files.remove(Text(step, "remove"));
    } else if (step.contains("rename")) {
      files.rename(Text(step, "rename"), Text(step, "to"));
    } else if (step.contains("hostile")) {
      const std::string under = Text(step, "hostile");
      for (const auto& path : HostilePaths()) files.writeFile(under + "/" + path, Number(step, "size", 0));
    } else if (step.contains("snapshot")) {
      const bool snapDiff = step.value("snapDiff", true);
      const auto id = model.fileSystemSnapshots().take(fileSystemId, Text(step, "snapshot"), snapDiff);
      if (step.contains("type")) model.fileSystemSnapshots().setType(id, Text(step, "type"));
      snapshots.push_back(id);
    } else {
      throw std::invalid_argument("unknown file step " + step.dump());
    }
  }
  return snapshots;
}

void ApplySeed(ArrayModel& model, const json& seed) {
  std::lock_guard<std::recursive_mutex> lock(model.mutex());
  RequireKnownKeys(seed, {"system", "ndmp", "vstores", "lifs", "filesystems", "changeListPageSize", "objects", "associations"},
                   "the seed");
  if (const auto system = seed.find("system"); system != seed.end()) {
    if (!system->is_object()) throw std::invalid_argument("\"system\" must be a JSON object");
    for (const auto& item : system->items()) model.system().setSystemField(item.key(), Text(*system, item.key().c_str()));
  }
  for (const auto& entry : List(seed, "ndmp")) {
    RequireKnownKeys(entry, {"vstoreId", "vstoreName", "isEnabled", "ip", "port", "version", "isSupportSnapshot"},
                     "NDMP settings");
    NdmpSettings settings;
    settings.vstoreId = Text(entry, "vstoreId");
    settings.vstoreName = Text(entry, "vstoreName");
    settings.isEnabled = Text(entry, "isEnabled", settings.isEnabled);
    settings.ip = Text(entry, "ip", settings.ip);
    settings.port = Text(entry, "port", settings.port);
    settings.version = Text(entry, "version", settings.version);
    settings.isSupportSnapshot = Text(entry, "isSupportSnapshot", settings.isSupportSnapshot);
    model.system().setNdmp(settings);
  }
  for (const auto& entry : List(seed, "vstores")) {
    RequireKnownKeys(entry, {"ID", "NAME", "RUNNINGSTATUS"}, "a vStore");
    model.system().addVStore(VStore{Text(entry, "ID"), Text(entry, "NAME"), Text(entry, "RUNNINGSTATUS", "1")});
  }
  for (const auto& entry : List(seed, "lifs")) {
    RequireKnownKeys(entry,
                     {"ID", "NAME", "IPV4ADDR", "IPV6ADDR", "SUPPORTPROTOCOL", "ROLE", "MANAGEMENTACCESS", "vstoreId",
                      "vstoreName"},
                     "a logical interface");
    LogicalInterface lif;
    lif.id = Text(entry, "ID");
    lif.name = Text(entry, "NAME");
    lif.ipv4Address = Text(entry, "IPV4ADDR");
    lif.ipv6Address = Text(entry, "IPV6ADDR");
    lif.supportProtocol = Text(entry, "SUPPORTPROTOCOL", lif.supportProtocol);
    lif.role = Text(entry, "ROLE", lif.role);
    lif.managementAccess = Text(entry, "MANAGEMENTACCESS", lif.managementAccess);
    lif.vstoreId = Text(entry, "vstoreId");
    lif.vstoreName = Text(entry, "vstoreName");
    model.interfaces().add(lif);
  }
  for (const auto& entry : List(seed, "filesystems")) SeedFileSystem(model, entry);
  if (const auto objects = seed.find("objects"); objects != seed.end()) {
    if (!objects->is_object()) throw std::invalid_argument("\"objects\" must map types to lists of records");
    for (const auto& type : objects->items()) {
      for (const auto& record : List(*objects, type.key().c_str())) model.store().insert(type.key(), record);
    }
  }
  for (const auto& pair : List(seed, "associations")) {
    if (!pair.is_array() || pair.size() != 4) throw std::invalid_argument("an association is [typeA, idA, typeB, idB]");
    model.store().associate({pair[0], pair[1]}, {pair[2], pair[3]});
  }
  if (seed.contains("changeListPageSize")) {
    model.changeLists().setPageSize(Number(seed, "changeListPageSize", model.changeLists().pageSize()));
  }
}

json LoadSeedFile(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::invalid_argument("cannot read the seed file " + path);
  auto seed = json::parse(file, nullptr, false);
  if (seed.is_discarded()) throw std::invalid_argument("the seed file " + path + " is not valid JSON");
  return seed;
}

}  // namespace arraysim
