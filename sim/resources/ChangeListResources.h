// Change lists between two snapshots of a file system:
//   POST   fs_snapchangelist_session        opens a session, answers {"id": ...}
//   GET    fs_snapchangelist_result?...     one page, and the cursor of the next
//   DELETE fs_snapchangelist_session/<id>   closes the session
// The difference is computed once, when the session opens, so pages cost only their writing.
//
// Each page answers {"changeList": "<text of a JSON array>", "numChanges", "progress",
// "posType", "posObj", "posOffset", "linkPosType", "linkPos"}, all strings. "progress" is the
// share of entries handed out so far, "100" on the last page with entries; the request after
// that answers an empty page at "100", which closes the walk. Codes: changeType 0 created,
// 1 modified, 2 deleted; fType 1 file, 2 directory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <vector>

#include "changelist/ChangeListCursor.h"
#include "filetree/TreeDifference.h"
#include "http/Router.h"
#include "resources/FileSystemSnapshotResources.h"

namespace arraysim {

struct ChangeListSession {
  std::string id;
  std::string parentId;
  std::string baseSnapshotId;
  std::string incrementalSnapshotId;
  std::shared_ptr<const TreeDifference> changes;
  ChangeListCursorCodec cursors;
  std::size_t pagesServed = 0;
};

class ChangeListResources {
 public:
  ChangeListResources(std::recursive_mutex& mutex, FileSystemSnapshotResources& snapshots);

  // The true difference between two snapshots, as the sessions hand it out.
  // Throws std::invalid_argument for an unknown snapshot.
  std::vector<Change> difference(const std::string& baseSnapshotId, const std::string& incrementalSnapshotId) const;

  void setPageSize(std::size_t entries);  // default 1000
  std::size_t pageSize() const;
  std::vector<std::string> openSessions() const;
  bool sessionExists(const std::string& id) const;
  // Pages answered for a session so far, the closing empty page included.
  std::size_t pagesServed(const std::string& id) const;

  void clear();  // ends every session; the page size stays
  void registerRoutes(Router& router);

 private:
  Reply open(const ArrayRequest& request);
  Reply page(const ArrayRequest& request);
  Reply close(const ArrayRequest& request);

  std::recursive_mutex& mutex_;
  FileSystemSnapshotResources& snapshots_;
  std::map<std::string, ChangeListSession> sessions_;
  std::size_t pageSize_ = 1000;
  std::uint64_t nextSession_ = 1;
  std::mt19937_64 random_;
};

}  // namespace arraysim
