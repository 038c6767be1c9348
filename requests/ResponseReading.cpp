#include "ResponseReading.h"

#include "AnswerParsing.h"
#include "ArrayNumbers.h"
#include "TkDebug.h"

namespace HuaweiResponse {

const char kNoDataObject[] = "[ERROR] Unable to parse the JSON response";
const char kNoDataList[] = "[ERROR] Unable to parse JSON response";

bool parseObject(const char* logName, unsigned long long jobId, const std::string& response, jsonxx::Object& answer) {
  return parseObject(ParserLog{logName}, jobId, response, answer);
}

bool parseObject(const ParserLog& log, unsigned long long jobId, const std::string& response, jsonxx::Object& answer) {
  logProgress(log, jobId);
  return parseLoggedObject(log, jobId, response, answer);
}

void logProgress(const ParserLog& log, unsigned long long jobId) {
  TkDebug(nullptr).DebugLvl(log.name, log.progress, jobId, "Parsing the JSON response...");
}

bool parseLoggedObject(const ParserLog& log, unsigned long long jobId, const std::string& response,
                       jsonxx::Object& answer) {
  HuaweiTransport::parseAnswer(log.name, jobId, response, answer);
  if (answer.empty()) {
    TkDebug(nullptr).DebugLvl(log.name, log.failure, jobId, "%s", log.emptyText);
    return false;
  }
  return true;
}

bool errorCode(const jsonxx::Object& answer, CodeWidth width, unsigned long long& code, std::string& description) {
  code = 0;
  if (!answer.has<jsonxx::Object>("error")) return false;
  const jsonxx::Object& error = answer.get<jsonxx::Object>("error");
  description = error.get<std::string>("description");
  const jsonxx::Number number = error.get<jsonxx::Number>("code");
  code = width == CodeWidth::Unsigned64
             ? HuaweiNumbers::toUnsigned64(number)
             : static_cast<unsigned long long>(static_cast<long long>(HuaweiNumbers::toSigned32(number)));
  return true;
}

bool statusIsZero(const char* logName, unsigned long long jobId, const jsonxx::Object& answer, StatusReport report) {
  unsigned long long code = 0;
  std::string description;
  if (!errorCode(answer, report.width, code, description) || code == 0) return true;
  TkDebug(nullptr).DebugLvl(logName, report.level, jobId, "Error:[%s], Error Code[%llu]", description.c_str(), code);
  return false;
}

bool unusable(const char* logName, unsigned long long jobId, const char* text) {
  TkDebug(nullptr).DebugLvl(logName, 3, jobId, "%s", text);
  return false;
}

void readRequiredStrings(const jsonxx::Object& object,
                         std::initializer_list<std::pair<const char*, std::string*>> fields) {
  for (const auto& field : fields) *field.second = object.get<std::string>(field.first);
}

void readOptionalString(const jsonxx::Object& object, const char* key, std::string& field) {
  if (object.has<std::string>(key)) field = object.get<std::string>(key);
}

}  // namespace HuaweiResponse
