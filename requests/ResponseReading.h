// Steps shared by the parsers of the plain requests: opening an answer, reading its status, and
// the lines of an answer without what the parser needs.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "jsonxx.h"

namespace HuaweiResponse {

// Where a parser writes its lines: its log name, the level of "Parsing the JSON response...", and
// the line and level of an answer that gives an empty object.
struct ParserLog {
  const char* name;
  int progress = 5;
  int failure = -1;
  const char* emptyText = "Error when parsing the JSON response.";
};

// The opening of the LUN and host-mapping parsers: every line at level 3.
inline ParserLog sanLog(const char* name) { return ParserLog{name, 3, 3, "[ERROR] JSON response is empty"}; }

// Logs the progress line, parses, and rejects an answer that gives an empty object.
bool parseObject(const char* logName, unsigned long long jobId, const std::string& response, jsonxx::Object& answer);
bool parseObject(const ParserLog& log, unsigned long long jobId, const std::string& response, jsonxx::Object& answer);
// The progress line alone, and the rest of parseObject after it.
void logProgress(const ParserLog& log, unsigned long long jobId);
bool parseLoggedObject(const ParserLog& log, unsigned long long jobId, const std::string& response,
                       jsonxx::Object& answer);

// How a parser takes error.code: narrowed to 32 bits and widened with its sign, or whole.
enum class CodeWidth { Signed32, Unsigned64 };

// How a parser reports a non-zero code: "Error:[%s], Error Code[%llu]" at `level`.
struct StatusReport {
  CodeWidth width = CodeWidth::Signed32;
  int level = 3;
};

// error.code, in the given width, of an answer that has an error object; 0 otherwise. Lists that
// find nothing answer code 0 and no "data".
bool errorCode(const jsonxx::Object& answer, CodeWidth width, unsigned long long& code, std::string& description);

// True unless "error" holds a non-zero code, which is logged as the report says.
bool statusIsZero(const char* logName, unsigned long long jobId, const jsonxx::Object& answer,
                  StatusReport report = StatusReport());

// Level 3 line of an answer without the "data" a parser needs; always false.
bool unusable(const char* logName, unsigned long long jobId, const char* text);
extern const char kNoDataObject[];  // "[ERROR] Unable to parse the JSON response"
extern const char kNoDataList[];    // "[ERROR] Unable to parse JSON response"

// Reads string keys in the given order. Each key is required: an absent or mistyped key ends the
// process through the document model's assertion.
void readRequiredStrings(const jsonxx::Object& object, std::initializer_list<std::pair<const char*, std::string*>> fields);

// Reads the key only where it holds a string; otherwise the field keeps its value.
void readOptionalString(const jsonxx::Object& object, const char* key, std::string& field);

}  // namespace HuaweiResponse
