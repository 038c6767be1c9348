#include "ChangeListStream.h"

#include <signal.h>

#include <cerrno>
#include <csignal>
#include <cstring>

namespace zrarray {

namespace {

const char kWalkComplete[] = "100";

volatile std::sig_atomic_t g_stopRequested = 0;

extern "C" void RequestStop(int) { g_stopRequested = 1; }

// For the duration of a walk, SIGINT and SIGTERM end it after the page in flight, so that the
// session on the array is deleted instead of left behind.
class StopOnSignal {
 public:
  StopOnSignal() {
    g_stopRequested = 0;
    struct sigaction action {};
    action.sa_handler = RequestStop;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, &savedInterrupt_);
    sigaction(SIGTERM, &action, &savedTerminate_);
  }
  ~StopOnSignal() {
    sigaction(SIGINT, &savedInterrupt_, nullptr);
    sigaction(SIGTERM, &savedTerminate_, nullptr);
  }
  StopOnSignal(const StopOnSignal&) = delete;
  StopOnSignal& operator=(const StopOnSignal&) = delete;

  bool requested() const { return g_stopRequested != 0; }

 private:
  struct sigaction savedInterrupt_ {};
  struct sigaction savedTerminate_ {};
};

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
  const StopOnSignal stop;
  Outcome outcome;
  for (bool done = false; outcome.ok && !done;) {
    if (stop.requested()) {
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
