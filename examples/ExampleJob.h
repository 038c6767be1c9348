// What the example jobs share around the library's calls: one failure type that main prints as a
// line, the checks that turn each kind of result the library answers into it, and the library's
// log shown to the operator.
#pragma once

#include <stdexcept>
#include <string>

#include "ZrManageHuawei.h"

// Any failure of a job: main prints it as one line and exits with 1.
struct JobFailure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A bool tells no reason: the library has logged it.
void require(bool ok, const std::string& what);
void require(const CXoError& result, const std::string& what);
void require(const HuaweiApi::ResultStatus& status, const std::string& what);

// The library tells its reasons in the log: errors and operator progress go to standard error,
// and with `httpsDetails` also the HTTPS client's failure details (refused connection, untrusted
// certificate), which it logs at level 3.
void installLogSink(bool httpsDetails = false);
