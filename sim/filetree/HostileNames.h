// Paths that file systems hold and that a client's decoding of change lists must keep byte for
// byte: double quotes, backslashes, tabs and every other control character, "\." segments, the
// characters that the array writes as entities and text that looks like an entity or an escape,
// the brackets of the list's own string, non-ASCII (UTF-8 of one to four bytes, and a byte that
// is no UTF-8), and a path of 4 KB. No name is empty, "." or "..", or holds '/'.
#pragma once

#include <string>
#include <vector>

namespace arraysim {

// The paths, relative, in a fixed order (e.g. "tenantA/.\\./tenantB/payroll.xlsx"); several
// share directories.
std::vector<std::string> HostilePaths();

}  // namespace arraysim
