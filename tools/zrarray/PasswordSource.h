// Where the password comes from: a file only its owner can read, standard input, or an environment
// variable the user names. Never argv.
#pragma once

#include <stdexcept>
#include <string>

namespace zrarray {

// A mistake in how the tool was called: exit status 2.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The password file must be a regular file with no permission for group or others: a password
// that others can read is no longer secret, so it is refused rather than used.
std::string PasswordFromFile(const std::string& path);
// The first line; on a terminal it is not echoed.
std::string PasswordFromStandardInput();
std::string PasswordFromEnvironment(const std::string& variable);

}  // namespace zrarray
