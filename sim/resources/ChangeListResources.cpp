#include "resources/ChangeListResources.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include "ArrayCodes.h"
#include "changelist/ChangeListPage.h"

namespace arraysim {
namespace {

void AppendMember(std::string& out, const char* key, const std::string& value) {
  out.append(",\"").append(key).append("\":");
  AppendJsonString(out, value);
}

std::string PageText(const TreeDifference& changes, std::size_t begin, std::size_t end, const std::string& progress,
                     const ChangeListCursor& next) {
  std::string text = "{\"changeList\":";
  AppendChangeListString(text, changes, begin, end);
  AppendMember(text, "linkPos", next.linkPos);
  AppendMember(text, "linkPosType", next.linkPosType);
  AppendMember(text, "numChanges", std::to_string(end - begin));
  AppendMember(text, "posObj", next.posObj);
  AppendMember(text, "posOffset", next.posOffset);
  AppendMember(text, "posType", next.posType);
  AppendMember(text, "progress", progress);
  text.push_back('}');
  return text;
}

}  // namespace

ChangeListResources::ChangeListResources(std::recursive_mutex& mutex, FileSystemSnapshotResources& snapshots)
    : mutex_(mutex), snapshots_(snapshots), random_(std::random_device{}()) {}

std::vector<Change> ChangeListResources::difference(const std::string& baseSnapshotId,
                                                    const std::string& incrementalSnapshotId) const {
  return DifferenceBetween(snapshots_.image(baseSnapshotId), snapshots_.image(incrementalSnapshotId));
}

void ChangeListResources::setPageSize(std::size_t entries) {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  pageSize_ = std::max<std::size_t>(1, entries);
}

std::size_t ChangeListResources::pageSize() const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  return pageSize_;
}

std::vector<std::string> ChangeListResources::openSessions() const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  std::vector<std::string> ids;
  for (const auto& entry : sessions_) ids.push_back(entry.first);
  return ids;
}

bool ChangeListResources::sessionExists(const std::string& id) const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  return sessions_.count(id) != 0;
}

std::size_t ChangeListResources::pagesServed(const std::string& id) const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  const auto it = sessions_.find(id);
  return it == sessions_.end() ? 0 : it->second.pagesServed;
}

void ChangeListResources::clear() {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  sessions_.clear();
}

void ChangeListResources::registerRoutes(Router& router) {
  router.add("POST", "fs_snapchangelist_session", [this](const ArrayRequest& r) { return open(r); });
  router.add("DELETE", "fs_snapchangelist_session/{}", [this](const ArrayRequest& r) { return close(r); });
  router.add("GET", "fs_snapchangelist_result", [this](const ArrayRequest& r) { return page(r); });
}

Reply ChangeListResources::open(const ArrayRequest& request) {
  const auto body = request.jsonBody();
  if (!body) return Reply::Error(codes::kParameterIncorrect, "The request body is not a JSON object.");
  const auto parentId = StringMember(*body, "parentID");
  const auto baseId = StringMember(*body, "baseSnapshotId");
  const auto incrementalId = StringMember(*body, "incrementalSnapshotId");
  if (!parentId || !baseId || !incrementalId ||
      StringMember(*body, "parentType") != std::optional<std::string>(kFileSystemType)) {
    return Reply::Error(codes::kParameterIncorrect, "The entered parameter is incorrect.");
  }
  const auto* base = snapshots_.find(*baseId);
  const auto* incremental = snapshots_.find(*incrementalId);
  if (base == nullptr || incremental == nullptr) {
    return Reply::Error(codes::kSnapshotNotFound, "The snapshot does not exist.");
  }
  if (base->info.parentId != *parentId || incremental->info.parentId != *parentId) {
    return Reply::Error(codes::kParameterIncorrect, "The snapshots do not belong to the file system.");
  }

  const auto salt = random_();
  char prefix[16];
  std::snprintf(prefix, sizeof prefix, "%08x", static_cast<unsigned>(salt >> 32));
  const std::string id = prefix + std::to_string(nextSession_++);
  sessions_.emplace(id, ChangeListSession{id, *parentId, *baseId, *incrementalId,
                                          std::make_shared<const TreeDifference>(base->image, incremental->image),
                                          ChangeListCursorCodec(salt), 0});
  return Reply::Object({{"id", id}});
}

Reply ChangeListResources::page(const ArrayRequest& request) {
  const auto sessionId = request.queryValue("sessionID");
  const auto it = sessionId ? sessions_.find(*sessionId) : sessions_.end();
  if (it == sessions_.end()) {
    return Reply::Error(codes::kObjectNotFound, "The change list session does not exist.");
  }
  const auto field = [&](const char* key) { return request.queryValue(key).value_or(""); };
  const ChangeListCursor cursor{field("posType"), field("posObj"), field("posOffset"), field("linkPosType"),
                                field("linkPos")};
  auto& session = it->second;
  const auto& changes = *session.changes;
  const auto start = session.cursors.decode(cursor);
  if (field("parentType") != kFileSystemType || !start || *start > changes.size()) {
    return Reply::Error(codes::kParameterIncorrect, "The position in the change list is not valid.");
  }
  const std::size_t end = std::min(changes.size(), *start + pageSize_);
  const std::size_t progress = changes.empty() ? 100 : end * 100 / changes.size();
  ++session.pagesServed;
  return Reply::Text(PageText(changes, *start, end, std::to_string(progress), session.cursors.encode(end)));
}

Reply ChangeListResources::close(const ArrayRequest& request) {
  if (sessions_.erase(request.parameters[0]) == 0) {
    return Reply::Error(codes::kObjectNotFound, "The change list session does not exist.");
  }
  return Reply::Object(nlohmann::json::object());
}

}  // namespace arraysim
