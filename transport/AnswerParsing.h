// An answer parsed into the document model within the memory bound of its size (see
// jsonxx::memory_bound): an answer whose tree would take more is left empty, as an unreadable one
// is, and the reason goes into a level -1 line of its own.
#pragma once

#include <string>

#include "jsonxx.h"

namespace HuaweiTransport {

/// Parses @p response into @p answer; the parser's result, as Object::parse gives it.
bool parseAnswer(const char* logName, unsigned long long jobId, const std::string& response, jsonxx::Object& answer);

}  // namespace HuaweiTransport
