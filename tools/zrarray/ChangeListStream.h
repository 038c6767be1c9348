// Walks the change list between two file-system snapshots to its end through the library's
// getSnapshotChangeList, handing each page on as it arrives.
#pragma once

#include <string>

#include "Command.h"
#include "EntryWriter.h"
#include "WalkProgress.h"

namespace zrarray {

class ChangeListStream {
 public:
  ChangeListStream(ZrManageHuawei& array, std::string fileSystemId, std::string baseSnapshotId,
                   std::string incrementalSnapshotId);
  // The library closes the array's session at the end of a walk and when a page fails; a walk
  // that stops otherwise (a closed pipe, Ctrl-C) would leave it open, so it is deleted here.
  ~ChangeListStream();
  ChangeListStream(const ChangeListStream&) = delete;
  ChangeListStream& operator=(const ChangeListStream&) = delete;

  // Until the last page, a failed page, a refused write, or a stop signal (SIGINT, SIGTERM, SIGHUP) between two pages.
  Outcome run(EntryWriter& writer, WalkProgress& progress);

  unsigned long long pages() const { return pages_; }
  unsigned long long entries() const { return entries_; }

 private:
  Outcome step(EntryWriter& writer, WalkProgress& progress, bool& done);

  ZrManageHuawei& array_;
  std::string fileSystemId_;
  std::string baseSnapshotId_;
  std::string incrementalSnapshotId_;
  _HuaweiSnapshotChangeListInfo page_;  // a fresh record is the cursor of the first page
  bool sessionClosed_ = false;
  unsigned long long pages_ = 0;
  unsigned long long entries_ = 0;
};

}  // namespace zrarray
