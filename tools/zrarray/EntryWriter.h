// Writes change-list entries as they arrive, so a walk of millions of files needs no memory for
// them: one JSON object per line (the record's own fields), or aligned rows for people.
#pragma once

#include <cstdio>
#include <list>

#include "Output.h"

namespace zrarray {

class EntryWriter {
 public:
  EntryWriter(std::FILE* stream, Format format);

  // False when the stream refused the text (a closed pipe, a full disk).
  bool write(const std::list<_HuaweiSnapshotChangeList>& changes);

 private:
  std::FILE* stream_;
  Format format_;
  bool headerWritten_ = false;
};

}  // namespace zrarray
