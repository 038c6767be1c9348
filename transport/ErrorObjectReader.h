// The "error" object of an answer, read without building the answer's tree: every answer is
// classified by it, and most of an answer's text is the "data" beside it.
#pragma once

#include <string>

namespace HuaweiTransport {

// Code and description of the answer's "error" object when the answer is plain JSON (see
// jsonxx::PlainReader) holding one "error" object with an integer "code" and a "description"
// without escapes, and the code one that can be trusted (see ErrorCode.h). False for any other
// answer, which the document model then reads.
bool readPlainErrorObject(const std::string& answer, unsigned long long& code, std::string& description);

}  // namespace HuaweiTransport
