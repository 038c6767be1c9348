#include "ChangeListStream.h"

#include <cerrno>
#include <cstring>

#include "StopSignals.h"

namespace zrarray {

namespace {

const char kWalkComplete[] = "100";

}  // namespace

ChangeListStream::ChangeListStream(ZrManageHuawei& array, std::string fileSystemId, std::string baseSnapshotId,
                                   std::string incrementalSnapshotId)
    : array_(array),
      fileSystemId_(std::move(fileSystemId)),
      baseSnapshotId_(std::move(baseSnapshotId)),
      incrementalSnapshotId_(std::move(incrementalSnapshotId)) {}

ChangeListStream::~ChangeListStream() {
  if (!sessionClosed_ && !page_.sessionId.empty()) array_.deleteSnapshotChangeListSession(page_.sessionId);
}

Outcome ChangeListStream::run(EntryWriter& writer, WalkProgress& progress) {
  Outcome outcome;
  for (bool done = false; outcome.ok && !done;) {
    if (StopSignals::Requested()) {
      outcome = Outcome::failure("interrupted after " + std::to_string(pages_) + " pages");
    } else {
      outcome = step(writer, progress, done);
    }
  }
  progress.finish();
  return outcome;
}

Outcome ChangeListStream::step(EntryWriter& writer, WalkProgress& progress, bool& done) {
  if (!array_.getSnapshotChangeList(fileSystemId_, baseSnapshotId_, incrementalSnapshotId_, page_)) {
    // sessionFailed: the library has deleted the session; otherwise none was opened.
    sessionClosed_ = page_.sessionFailed == 1 || page_.sessionId.empty();
    return Outcome::failure("the change list walk broke after " + std::to_string(pages_) + " pages");
  }
  if (page_.changes.empty() && page_.progress == kWalkComplete) {
    sessionClosed_ = true;  // the library deleted the session with the last page
    done = true;
    return Outcome{};
  }
  ++pages_;
  entries_ += page_.changes.size();
  if (!writer.write(page_.changes)) {
    return Outcome::failure(std::string("writing the entries failed: ") + std::strerror(errno));
  }
  progress.page(pages_, entries_, page_.progress);
  return Outcome{};
}

}  // namespace zrarray
