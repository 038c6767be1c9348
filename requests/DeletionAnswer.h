#pragma once

#include <string>

#include "ResponseReading.h"

namespace HuaweiResponse {

// Reads the error object of a deletion's answer and logs a non-zero code; only an answer that
// gives an empty object is false. The code is taken as a signed 32-bit number.
bool readDeletionAnswer(const char* logName, unsigned long long jobId, const std::string& response);
bool readDeletionAnswer(const ParserLog& log, unsigned long long jobId, const std::string& response);

}  // namespace HuaweiResponse
