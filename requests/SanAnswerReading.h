// Steps shared by the parsers of the LUN, LUN snapshot and host-mapping requests: they open the
// answer at level 3, and read either "data" or the status in "error".
#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "jsonxx.h"

namespace HuaweiSanAnswer {

// Logs "Parsing the JSON response..." at level 3, parses, and rejects an answer that gives an
// empty object with "[ERROR] JSON response is empty".
bool open(const char* logName, unsigned long long jobId, const std::string& response, jsonxx::Object& answer);

// How a reader takes error.code: narrowed to 32 bits and widened with its sign, or whole.
enum class CodeWidth { Signed32, Unsigned64 };

// The status of an answer: true unless "error" holds a non-zero code, which is logged as
// "Error:[%s], Error Code[%llu]" at `level`.
bool statusIsZero(const char* logName, unsigned long long jobId, const jsonxx::Object& answer, CodeWidth width,
                  int level = 3);

// error.code, in the given width, of an answer that has an error object; 0 otherwise. Lists that
// find nothing answer code 0 and no "data".
bool errorCode(const jsonxx::Object& answer, CodeWidth width, unsigned long long& code, std::string& description);

// Level 3 line of an answer without the "data" a reader needs; always false.
bool unusable(const char* logName, unsigned long long jobId, const char* text);
extern const char kNoDataObject[];  // "[ERROR] Unable to parse the JSON response"
extern const char kNoDataList[];    // "[ERROR] Unable to parse JSON response"

// The member as text when the object has it as a string; the empty text otherwise.
std::string textOrEmpty(const jsonxx::Object& object, const char* key);

}  // namespace HuaweiSanAnswer
