// zrarray's whole run: the command line, the password, the connection, the login, the one
// operation and its output.
#pragma once

namespace zrarray {

// Exit status: 0 success, 1 the operation (or the login) failed, 2 a usage error.
int RunTool(int argc, char** argv);

}  // namespace zrarray
