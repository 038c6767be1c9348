// Process-wide choices of the embedder where the library's long-standing behaviour can cost a
// backup agent more than it should. The defaults are that behaviour; an embedder that wants the
// other makes its choice once, at start-up, before the first session.
#pragma once

#include <string>

struct ZrLibrarySettings {
  // An answer that lacks a value the library requires (or holds it as another kind).
  enum class MissingValue {
    EndProcess,     // the reason is logged at level -1, session cookies are removed, the process ends
    // The reason is logged at level -1 and only the operation fails: it answers its kind of
    // failure with the reason as text, leaves the caller's outputs as they were and sends no
    // further request. The session stays open.
    FailOperation,
  };
  MissingValue missingRequiredValue = MissingValue::EndProcess;

  // File names of change-list entries.
  enum class ChangeListNames {
    Repaired,  // the page is repaired as it always was (backslashes removed) before it is read
    Exact,     // the list is decoded as the JSON text it is: every name as the array holds it
  };
  ChangeListNames changeListNames = ChangeListNames::Repaired;

  // Directory where session cookie files are written. Empty: the long-standing place, the root
  // directory ("/tmpHUAWEI-..."), which needs write access to "/". Set: the file is
  // "<directory>/HUAWEI-<job>_<time>_<host>_<address>" (no second '/' when the directory ends
  // with one). The library does not create the directory; a login that cannot write there fails
  // and says why. Give an absolute path: a relative one follows the working directory.
  std::string cookieDirectory;

  // File into which every exchange of the process with an array is recorded, one JSON line each.
  // Empty: nothing is recorded. It is created with mode 0600 at the first login and must not exist
  // yet: a login fails, and says why, when the file cannot be made. The password, the tokens and
  // the cookies never reach it.
  std::string recordingFile;
  // Also replace, consistently through the file, what identifies the array and its site: serial
  // numbers, WWNs, IP addresses, IQNs, host and user names.
  bool recordingAnonymised = false;
};

// Makes the choices of this process. The first call wins; a later one changes nothing and answers
// false, so that sessions of one process never run under two sets of choices.
bool ZrLibrarySetSettings(const ZrLibrarySettings& settings);
// The choices in force: the defaults until ZrLibrarySetSettings() was called.
const ZrLibrarySettings& ZrLibraryGetSettings();
