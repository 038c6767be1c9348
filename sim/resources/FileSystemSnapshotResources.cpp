#include "resources/FileSystemSnapshotResources.h"

#include <stdexcept>

#include "ArrayCodes.h"

namespace arraysim {
namespace {

nlohmann::json FileSystemSnapshotRecord(const FileSystemSnapshotInfo& info) {
  nlohmann::json record = {{"ID", info.id},
                           {"NAME", info.name},
                           {"PARENTID", info.parentId},
                           {"PARENTNAME", info.parentName},
                           {"PARENTTYPE", kFileSystemType},
                           {"SNAPTYPE", info.snapType},
                           {"TYPE", "48"},
                           {"HEALTHSTATUS", "1"},
                           {"ENABLESNAPDIFF", info.snapDiffEnabled ? "true" : "false"}};
  if (!info.vstoreId.empty()) record["vstoreId"] = info.vstoreId;
  return record;
}

// Spends one use of a refusal switch; kAlways never runs out.
bool SpendRefusal(int& refusals) {
  if (refusals == 0) return false;
  if (refusals > 0) --refusals;
  return true;
}

}  // namespace

FileSystemSnapshotResources::FileSystemSnapshotResources(std::recursive_mutex& mutex, FileSystemResources& fileSystems)
    : mutex_(mutex), fileSystems_(fileSystems) {}

std::string FileSystemSnapshotResources::take(const std::string& fileSystemId, const std::string& name,
                                              bool enableSnapDiff) {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  auto* fs = fileSystems_.find(fileSystemId);
  if (fs == nullptr) throw std::invalid_argument("no file system \"" + fileSystemId + "\"");
  if (nameTaken(fileSystemId, name)) throw std::invalid_argument("snapshot name taken: \"" + name + "\"");
  return takeLocked(*fs, name, enableSnapDiff);
}

std::string FileSystemSnapshotResources::takeLocked(FileSystem& fs, const std::string& name, bool enableSnapDiff) {
  FileSystemSnapshot snapshot;
  snapshot.info.id = fs.info.id + "@" + std::to_string(++fs.snapshotsTaken);
  snapshot.info.name = name;
  snapshot.info.parentId = fs.info.id;
  snapshot.info.parentName = fs.info.name;
  snapshot.info.vstoreId = fs.info.vstoreId;
  snapshot.info.snapDiffEnabled = enableSnapDiff;
  snapshot.image = fs.tree.freeze();
  const auto id = snapshot.info.id;
  snapshots_[id] = std::move(snapshot);
  return id;
}

bool FileSystemSnapshotResources::nameTaken(const std::string& fileSystemId, const std::string& name) const {
  for (const auto& entry : snapshots_) {
    if (entry.second.info.parentId == fileSystemId && entry.second.info.name == name) return true;
  }
  return false;
}

void FileSystemSnapshotResources::setType(const std::string& id, const std::string& snapType) {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  const auto it = snapshots_.find(id);
  if (it == snapshots_.end()) throw std::invalid_argument("no snapshot \"" + id + "\"");
  it->second.info.snapType = snapType;
}

void FileSystemSnapshotResources::remove(const std::string& id) {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  snapshots_.erase(id);
}

const FileSystemSnapshot* FileSystemSnapshotResources::find(const std::string& id) const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  const auto it = snapshots_.find(id);
  return it == snapshots_.end() ? nullptr : &it->second;
}

bool FileSystemSnapshotResources::exists(const std::string& id) const { return find(id) != nullptr; }

std::optional<FileSystemSnapshotInfo> FileSystemSnapshotResources::info(const std::string& id) const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  const auto* snapshot = find(id);
  if (snapshot == nullptr) return std::nullopt;
  return snapshot->info;
}

std::vector<FileSystemSnapshotInfo> FileSystemSnapshotResources::list() const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  std::vector<FileSystemSnapshotInfo> infos;
  for (const auto& entry : snapshots_) infos.push_back(entry.second.info);
  return infos;
}

TreeImage FileSystemSnapshotResources::image(const std::string& id) const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  const auto* snapshot = find(id);
  if (snapshot == nullptr) throw std::invalid_argument("no snapshot \"" + id + "\"");
  return snapshot->image;
}

void FileSystemSnapshotResources::clear() {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  snapshots_.clear();
}

void FileSystemSnapshotResources::registerRoutes(Router& router) {
  router.add("POST", "fssnapshot", [this](const ArrayRequest& r) { return create(r); });
  router.add("GET", "fssnapshot/{}", [this](const ArrayRequest& r) { return get(r); });
  router.add("DELETE", "fssnapshot/{}", [this](const ArrayRequest& r) { return erase(r); });
}

Reply FileSystemSnapshotResources::create(const ArrayRequest& request) {
  const auto body = request.jsonBody();
  if (!body) return Reply::Error(codes::kParameterIncorrect, "The request body is not a JSON object.");
  const auto name = StringMember(*body, "NAME");
  const auto parentId = StringMember(*body, "PARENTID");
  const auto parentType = StringMember(*body, "PARENTTYPE");
  const auto vstoreId = StringMember(*body, "vstoreId");
  const auto snapDiff = StringMember(*body, "ENABLESNAPDIFF").value_or("false");
  if (!name || name->empty() || !parentId || parentType != std::optional<std::string>(kFileSystemType) ||
      (snapDiff != "true" && snapDiff != "false")) {
    return Reply::Error(codes::kParameterIncorrect, "The entered parameter is incorrect.");
  }
  auto* fs = fileSystems_.find(*parentId);
  if (fs == nullptr || (vstoreId && *vstoreId != fs->info.vstoreId)) {
    return Reply::Error(codes::kObjectNotFound, "The file system does not exist.");
  }
  if (SpendRefusal(fs->snapshotRefusals) || (snapDiff == "true" && SpendRefusal(fs->snapDiffRefusals))) {
    return Reply::Error(codes::kSnapDiffUnsupported, "The file system does not support the SnapDiff function.");
  }
  if (nameTaken(fs->info.id, *name)) return Reply::Error(codes::kNameExists, "The name already exists.");
  const auto id = takeLocked(*fs, *name, snapDiff == "true");
  return Reply::Object(FileSystemSnapshotRecord(snapshots_.at(id).info));
}

const FileSystemSnapshot* FileSystemSnapshotResources::visible(const ArrayRequest& request) const {
  const auto* snapshot = find(request.parameters[0]);
  const auto vstoreId = request.queryValue("vstoreId");
  if (snapshot == nullptr || (vstoreId && *vstoreId != snapshot->info.vstoreId)) return nullptr;
  return snapshot;
}

Reply FileSystemSnapshotResources::get(const ArrayRequest& request) const {
  const auto* snapshot = visible(request);
  if (snapshot == nullptr) return Reply::Error(codes::kSnapshotNotFound, "The snapshot does not exist.");
  return Reply::Object(FileSystemSnapshotRecord(snapshot->info));
}

Reply FileSystemSnapshotResources::erase(const ArrayRequest& request) {
  const auto* snapshot = visible(request);
  if (snapshot == nullptr) return Reply::Error(codes::kSnapshotNotFound, "The snapshot does not exist.");
  // The array protects snapshots made for incremental backup from a plain delete.
  if (snapshot->info.snapType == "8" && request.queryValue("DELINCREMENTALBACKUPSNAP") != std::optional<std::string>("true")) {
    return Reply::Error(codes::kParameterIncorrect,
                        "An incremental backup snapshot is deleted only with DELINCREMENTALBACKUPSNAP=true.");
  }
  const std::string id = snapshot->info.id;
  snapshots_.erase(id);
  return Reply::Object(nlohmann::json::object());
}

}  // namespace arraysim
