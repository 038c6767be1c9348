#include "ExampleJob.h"

#include <cstdio>
#include <iostream>

#include "TkLogSink.h"

void require(bool ok, const std::string& what) {
  if (!ok) throw JobFailure(what + " failed (the array log above tells why)");
}

void require(const CXoError& result, const std::string& what) {
  if (result.IsError()) throw JobFailure(what + ": " + result.AsString());
}

void require(const HuaweiApi::ResultStatus& status, const std::string& what) {
  if (status.IsError()) {
    throw JobFailure(what + " failed: [" + std::to_string(status.GetErrorCode()) + "] " + status.GetErrorString());
  }
}

void installLogSink(bool httpsDetails) {
  tklog::SetMaxLevel(httpsDetails ? 3 : 0);
  tklog::SetSink([](const tklog::LogLine& line) {
    if (line.level > 0 && line.name != "ZRLibCurl") return;
    const char* tag = line.level < 0 ? "[error]" : line.level > 0 ? "[https]" : "[array]";
    std::cout.flush();  // keeps the job's own lines and the library's in order
    std::fprintf(stderr, "  %s %s: %s\n", tag, line.name.c_str(), line.text.c_str());
  });
}
