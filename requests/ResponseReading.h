// Steps shared by the parsers of plain requests.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "jsonxx.h"

namespace HuaweiResponse {

// Where a parser writes its lines: its log name, the level of its progress lines and of its
// failures.
struct ParserLog {
  const char* name;
  int progress = 5;
  int failure = -1;
};

// Logs "Parsing the JSON response..." at level 5 under logName, parses, and rejects an answer that
// gives an empty object with "Error when parsing the JSON response." at level -1.
bool parseObject(const char* logName, unsigned long long jobId, const std::string& response, jsonxx::Object& answer);
// The same, with the parser's own log name and levels.
bool parseObject(const ParserLog& log, unsigned long long jobId, const std::string& response, jsonxx::Object& answer);

// Reads string keys in the given order. Each key is required: an absent or mistyped key ends the
// process through the document model's assertion.
void readRequiredStrings(const jsonxx::Object& object, std::initializer_list<std::pair<const char*, std::string*>> fields);

// Reads the key only where it holds a string; otherwise the field keeps its value.
void readOptionalString(const jsonxx::Object& object, const char* key, std::string& field);

// The array sends booleans as text: anything but "false" is true.
bool textIsTrue(const std::string& text);

}  // namespace HuaweiResponse
