// snapshot and changelist: file-system snapshots and the files changed between two of them.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "ChangeListStream.h"
#include "Calls.h"
#include "GlobalOptions.h"

namespace zrarray {

namespace {

// The parent type of a file system; the library names one whatever it is given.
const int kFileSystemParentType = 40;

// Streams the entries to standard output, or to --output with a summary on standard output.
Result WalkChangeList(Call& call) {
  const bool toFile = call.args.given("output");
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(nullptr, &std::fclose);
  if (toFile) {
    file.reset(std::fopen(call["output"].c_str(), "w"));
    if (!file) return {Outcome::failure("cannot write " + call["output"] + ": " + std::strerror(errno)), {}};
  }
  EntryWriter writer(toFile ? file.get() : stdout, call.options.format);
  WalkProgress progress(WalkProgress::StandardErrorIsTerminal());
  ChangeListStream stream(call.array, call["file-system-id"], call["base"], call["incremental"]);
  Outcome outcome = stream.run(writer, progress);
  if (toFile && std::fclose(file.release()) != 0 && outcome.ok) {
    outcome = Outcome::failure("writing " + call["output"] + " failed: " + std::strerror(errno));
  }
  if (!outcome.ok || !toFile) return {outcome, {}};
  return {outcome, Json{{"pages", stream.pages()}, {"entries", stream.entries()}, {"output", call["output"]}}};
}

}  // namespace

std::vector<Command> FileSystemSnapshotAndChangeListCommands() {
  const Argument snapshotId = text("id", "Snapshot identifier");
  return {
      {"snapshot", "create", "Take a snapshot of a file system; prints its identifier",
       {number("file-system-id", "File system to snapshot"), text("name", "Name of the snapshot"),
        flag("no-snapdiff", "Without change tracking (no change list against it)")},
       value("id",
             [](Call& c, auto& out) {
               out = c["name"];  // the name goes in, the array's identifier comes out
               return c.array.createFileSystemSnapshot(c.args.number("file-system-id"), out,
                                                       !c.args.flag("no-snapdiff"), c.vstore);
             })},
      {"snapshot", "delete", "Delete a snapshot (one already gone counts as deleted)",
       calls(&Array::deleteFileSystemSnapshot, snapshotId, vstore)},
      {"snapshot", "info", "One snapshot", calls(&Array::getFileSystemSnapshotInfo, snapshotId, printed, vstore)},
      {"snapshot", "exists", "Whether a snapshot is there (any failure reads as absent)",
       {snapshotId},
       answer("present", [](Call& c) { return c.array.isSnapshotPresent(c["id"], c.vstore); })},

      {"changelist", "walk", "Every file changed between two snapshots, one JSON object per line",
       {text("file-system-id", "File system of the snapshots"), text("base", "Older snapshot"),
        text("incremental", "Newer snapshot"), optionalText("output", "Write the entries to this file")},
       WalkChangeList},
      {"changelist", "open", "Open a change-list session; prints its identifier",
       {text("file-system-id", "File system of the snapshots"), text("base", "Older snapshot"),
        text("incremental", "Newer snapshot")},
       value("sessionId",
             [](Call& c, auto& out) {
               out = c.array.createSnapshotChangeListSession(c["file-system-id"], c["base"], c["incremental"],
                                                          kFileSystemParentType);
               return !out.empty();
             })},
      {"changelist", "close", "Delete a change-list session",
       calls(&Array::deleteSnapshotChangeListSession, text("session-id", "Session identifier"))},
  };
}

}  // namespace zrarray
