// The private directory of one run of zrarray: the session's cookie file and, with --simulator, the
// simulator's key material live there, so that the tool works for any user (the library's own
// place for cookie files is the root directory) and nothing of a run outlives it.
//
// It is made fresh (mode 0700, mkdtemp) under $XDG_RUNTIME_DIR when that is set and usable (an
// absolute path to a directory of this user that no one else may enter), else under $TMPDIR,
// else under /tmp; it is removed with everything in it when the run ends.
#pragma once

#include <string>

namespace zrarray {

class RunDirectory {
 public:
  // Throws std::runtime_error, with the place and the reason, when it cannot be made.
  RunDirectory();
  ~RunDirectory();
  RunDirectory(const RunDirectory&) = delete;
  RunDirectory& operator=(const RunDirectory&) = delete;

  const std::string& path() const { return path_; }
  // Removes the directory and everything in it; safe to call from another thread than the
  // one using it, when the process ends right after.
  void remove() const;

  // Where the directory would be made: the first usable of $XDG_RUNTIME_DIR, $TMPDIR, /tmp.
  static std::string ParentDirectory();

 private:
  std::string path_;
};

}  // namespace zrarray
