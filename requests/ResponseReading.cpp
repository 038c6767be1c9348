#include "ResponseReading.h"

#include "AnswerParsing.h"
#include "TkDebug.h"

namespace HuaweiResponse {

bool parseObject(const char* logName, unsigned long long jobId, const std::string& response, jsonxx::Object& answer) {
  return parseObject(ParserLog{logName}, jobId, response, answer);
}

bool parseObject(const ParserLog& log, unsigned long long jobId, const std::string& response, jsonxx::Object& answer) {
  TkDebug debug(nullptr);
  debug.DebugLvl(log.name, log.progress, jobId, "Parsing the JSON response...");
  HuaweiTransport::parseAnswer(log.name, jobId, response, answer);
  if (answer.empty()) {
    debug.DebugLvl(log.name, log.failure, jobId, "Error when parsing the JSON response.");
    return false;
  }
  return true;
}

void readRequiredStrings(const jsonxx::Object& object,
                         std::initializer_list<std::pair<const char*, std::string*>> fields) {
  for (const auto& field : fields) *field.second = object.get<std::string>(field.first);
}

void readOptionalString(const jsonxx::Object& object, const char* key, std::string& field) {
  if (object.has<std::string>(key)) field = object.get<std::string>(key);
}

bool textIsTrue(const std::string& text) { return text != "false"; }

}  // namespace HuaweiResponse
