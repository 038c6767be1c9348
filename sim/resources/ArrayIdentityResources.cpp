#include "resources/ArrayIdentityResources.h"

#include "ArrayCodes.h"

namespace arraysim {

ArrayIdentityResources::ArrayIdentityResources(std::recursive_mutex& mutex, ObjectStore& store, std::string deviceId)
    : mutex_(mutex), store_(store), deviceId_(std::move(deviceId)) {
  clear();
}

void ArrayIdentityResources::clear() {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  system_ = {{"ID", deviceId_},
             {"NAME", "Huawei.Storage"},
             {"HEALTHSTATUS", "1"},
             {"RUNNINGSTATUS", "1"},
             {"PRODUCTVERSION", "V600R005C20"},
             {"PRODUCTMODE", "811"},
             {"TYPE", "201"},
             {"LOCATION", ""},
             {"DESCRIPTION", ""}};
  ndmp_.clear();
  ndmp_[""] = NdmpSettings{};
}

nlohmann::json ArrayIdentityResources::systemRecord() const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  return system_;
}

void ArrayIdentityResources::setSystemField(const std::string& key, const std::string& value) {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  system_[key] = value;
}

void ArrayIdentityResources::eraseSystemField(const std::string& key) {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  system_.erase(key);
}

void ArrayIdentityResources::setNdmp(const NdmpSettings& settings) {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  ndmp_[settings.vstoreId] = settings;
}

void ArrayIdentityResources::removeNdmp(const std::string& vstoreId) {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  ndmp_.erase(vstoreId);
}

std::optional<NdmpSettings> ArrayIdentityResources::ndmp(const std::string& vstoreId) const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  const auto it = ndmp_.find(vstoreId);
  if (it == ndmp_.end()) return std::nullopt;
  return it->second;
}

void ArrayIdentityResources::addVStore(const VStore& vstore) {
  store_.erase(kVStoreType, vstore.id);
  store_.insert(kVStoreType, {{"ID", vstore.id}, {"NAME", vstore.name}, {"RUNNINGSTATUS", vstore.runningStatus}});
}

void ArrayIdentityResources::removeVStore(const std::string& id) { store_.erase(kVStoreType, id); }

std::optional<VStore> ArrayIdentityResources::vstore(const std::string& id) const {
  const auto record = store_.get(kVStoreType, id);
  if (!record) return std::nullopt;
  return VStore{id, record->value("NAME", ""), record->value("RUNNINGSTATUS", "")};
}

void ArrayIdentityResources::registerRoutes(Router& router) {
  router.add("GET", "system/", [this](const ArrayRequest&) { return getSystem(); });
  router.add("GET", "ndmpservice", [this](const ArrayRequest&) { return getNdmp(""); });
  router.add("GET", "ndmpservice/{}", [this](const ArrayRequest& r) { return getNdmp(r.parameters[0]); });
}

void ArrayIdentityResources::Declare(ResourceTable& table) {
  // A vStore belongs to none, so every login sees them all.
  table.add(ResourceRoute("GET", "vstore/{}", kVStoreType, Action::Get)
                .absentAs(codes::kObjectNotFound, "The vStore does not exist.")
                .unscoped());
}

Reply ArrayIdentityResources::getSystem() const { return Reply::Object(system_); }

Reply ArrayIdentityResources::getNdmp(const std::string& vstoreId) const {
  const auto it = ndmp_.find(vstoreId);
  if (it == ndmp_.end()) return Reply::Error(codes::kObjectNotFound, "The NDMP service is not configured.");
  const auto& s = it->second;
  nlohmann::json data = {{"isEnabled", s.isEnabled}, {"ip", s.ip},   {"port", s.port},
                         {"version", s.version},     {"isSupportSnapshot", s.isSupportSnapshot}};
  if (!s.vstoreId.empty()) data["vstoreId"] = s.vstoreId;
  if (!s.vstoreName.empty()) data["vstoreName"] = s.vstoreName;
  return Reply::Object(std::move(data));
}

}  // namespace arraysim
