#include "resources/FileSystemResources.h"

#include <stdexcept>
#include <utility>

#include "ArrayCodes.h"

namespace arraysim {
namespace {

std::optional<std::uint64_t> NumericId(const std::string& id) {
  if (id.empty() || id.size() > 19 || id.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
  return std::stoull(id);
}

}  // namespace

nlohmann::json FileSystemRecord(const FileSystemInfo& info) {
  nlohmann::json record = {{"ID", info.id},
                           {"NAME", info.name},
                           {"HEALTHSTATUS", info.healthStatus},
                           {"RUNNINGSTATUS", info.runningStatus},
                           {"TYPE", kFileSystemType}};
  if (!info.vstoreId.empty()) record["vstoreId"] = info.vstoreId;
  if (!info.vstoreName.empty()) record["vstoreName"] = info.vstoreName;
  return record;
}

LiveFiles::LiveFiles(FileSystemResources& owner, std::string fileSystemId)
    : owner_(owner), id_(std::move(fileSystemId)) {}

void LiveFiles::edit(const std::function<void(FileTree&)>& change) {
  owner_.with(id_, [&](FileSystem& fs) { change(fs.tree); });
}

LiveFiles& LiveFiles::makeDirectory(const std::string& path) {
  edit([&](FileTree& tree) { tree.makeDirectory(path); });
  return *this;
}

LiveFiles& LiveFiles::writeFile(const std::string& path, std::uint64_t size) {
  edit([&](FileTree& tree) { tree.writeFile(path, size); });
  return *this;
}

LiveFiles& LiveFiles::createFile(const std::string& path, const FileAttributes& attributes) {
  edit([&](FileTree& tree) { tree.createFile(path, attributes); });
  return *this;
}

LiveFiles& LiveFiles::touch(const std::string& path) {
  edit([&](FileTree& tree) { tree.touch(path); });
  return *this;
}

LiveFiles& LiveFiles::setAttributes(const std::string& path, const FileAttributes& attributes) {
  edit([&](FileTree& tree) { tree.setAttributes(path, attributes); });
  return *this;
}

LiveFiles& LiveFiles::remove(const std::string& path) {
  edit([&](FileTree& tree) { tree.remove(path); });
  return *this;
}

LiveFiles& LiveFiles::rename(const std::string& from, const std::string& to) {
  edit([&](FileTree& tree) { tree.rename(from, to); });
  return *this;
}

bool LiveFiles::exists(const std::string& path) const {
  return owner_.with(id_, [&](FileSystem& fs) { return fs.tree.exists(path); });
}

std::optional<FileAttributes> LiveFiles::attributes(const std::string& path) const {
  return owner_.with(id_, [&](FileSystem& fs) { return fs.tree.attributes(path); });
}

std::size_t LiveFiles::objectCount() const {
  return owner_.with(id_, [&](FileSystem& fs) { return fs.tree.objectCount(); });
}

FileSystemResources::FileSystemResources(std::recursive_mutex& mutex) : mutex_(mutex) {}

std::string FileSystemResources::create(const std::string& name, FileSystemInfo info) {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  std::uint64_t number = fileSystems_.empty() ? 1 : fileSystems_.rbegin()->first + 1;
  if (!info.id.empty()) {
    const auto given = NumericId(info.id);
    if (!given) throw std::invalid_argument("a file system identifier is a decimal number: \"" + info.id + "\"");
    number = *given;
  }
  if (fileSystems_.count(number) != 0) throw std::invalid_argument("file system " + std::to_string(number) + " exists");
  info.id = std::to_string(number);
  info.name = name;
  auto& fs = fileSystems_[number];
  fs.info = std::move(info);
  return fs.info.id;
}

void FileSystemResources::remove(const std::string& id) {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  if (const auto number = NumericId(id)) fileSystems_.erase(*number);
}

const FileSystem* FileSystemResources::find(const std::string& id) const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  const auto number = NumericId(id);
  if (!number) return nullptr;
  const auto it = fileSystems_.find(*number);
  return it == fileSystems_.end() ? nullptr : &it->second;
}

FileSystem* FileSystemResources::find(const std::string& id) {
  return const_cast<FileSystem*>(std::as_const(*this).find(id));
}

FileSystem& FileSystemResources::existing(const std::string& id) {
  auto* fs = find(id);
  if (fs == nullptr) throw std::invalid_argument("no file system \"" + id + "\"");
  return *fs;
}

bool FileSystemResources::exists(const std::string& id) const {
  return find(id) != nullptr;
}

std::optional<FileSystemInfo> FileSystemResources::info(const std::string& id) const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  const auto* fs = find(id);
  if (fs == nullptr) return std::nullopt;
  return fs->info;
}

std::vector<FileSystemInfo> FileSystemResources::list() const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  std::vector<FileSystemInfo> infos;
  for (const auto& entry : fileSystems_) infos.push_back(entry.second.info);
  return infos;
}

std::optional<std::string> FileSystemResources::idOf(const std::string& name) const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  for (const auto& entry : fileSystems_) {
    if (entry.second.info.name == name) return entry.second.info.id;
  }
  return std::nullopt;
}

void FileSystemResources::setHealthStatus(const std::string& id, const std::string& healthStatus) {
  with(id, [&](FileSystem& fs) { fs.info.healthStatus = healthStatus; });
}

LiveFiles FileSystemResources::files(const std::string& id) {
  with(id, [](FileSystem&) {});  // refuse an unknown file system now, not at first use
  return LiveFiles(*this, id);
}

void FileSystemResources::refuseSnapDiff(const std::string& id, int count) {
  with(id, [&](FileSystem& fs) { fs.snapDiffRefusals = count; });
}

void FileSystemResources::refuseSnapshots(const std::string& id, int count) {
  with(id, [&](FileSystem& fs) { fs.snapshotRefusals = count; });
}

void FileSystemResources::clear() {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  fileSystems_.clear();
}

void FileSystemResources::registerRoutes(Router& router) {
  router.add("GET", "filesystem", [this](const ArrayRequest& r) { return list(r); });
  router.add("GET", "filesystem/{}", [this](const ArrayRequest& r) { return getOne(r); });
}

Reply FileSystemResources::list(const ArrayRequest& request) const {
  const auto vstoreId = request.queryValue("vstoreId");
  auto items = nlohmann::json::array();
  for (const auto& entry : fileSystems_) {
    if (vstoreId && entry.second.info.vstoreId != *vstoreId) continue;
    items.push_back(FileSystemRecord(entry.second.info));
  }
  return Reply::List(std::move(items));
}

Reply FileSystemResources::getOne(const ArrayRequest& request) const {
  const auto number = NumericId(request.parameters[0]);
  const auto it = number ? fileSystems_.find(*number) : fileSystems_.end();
  const auto vstoreId = request.queryValue("vstoreId");
  if (it == fileSystems_.end() || (vstoreId && it->second.info.vstoreId != *vstoreId)) {
    return Reply::Error(codes::kObjectNotFound, "The file system does not exist.");
  }
  return Reply::Object(FileSystemRecord(it->second.info));
}

}  // namespace arraysim
