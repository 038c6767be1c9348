#include "EntryWriter.h"

#include <string>

namespace zrarray {

namespace {
// The table shows what a person scans for; the JSON lines carry every field.
const char kRowFormat[] = "%-10s %-5s %14s %12s  %s\n";
}  // namespace

EntryWriter::EntryWriter(std::FILE* stream, Format format) : stream_(stream), format_(format) {}

bool EntryWriter::write(const std::list<_HuaweiSnapshotChangeList>& changes) {
  if (format_ == Format::Table && !headerWritten_) {
    std::fprintf(stream_, kRowFormat, "changeType", "fType", "size", "mTime", "filePath");
    headerWritten_ = true;
  }
  std::string text;
  for (const _HuaweiSnapshotChangeList& change : changes) {
    if (format_ == Format::Json) {
      text += JsonText(Json(change));
      text += '\n';
    } else {
      std::fprintf(stream_, kRowFormat, std::to_string(change.changeType).c_str(), std::to_string(change.fType).c_str(),
                   std::to_string(change.size).c_str(), std::to_string(change.mTime).c_str(), change.filePath.c_str());
    }
  }
  if (!text.empty() && std::fwrite(text.data(), 1, text.size(), stream_) != text.size()) return false;
  // Flushed per page, so a reader at the other end of a pipe sees entries as they come.
  return std::fflush(stream_) == 0 && !std::ferror(stream_);
}

}  // namespace zrarray
