#include "SanAnswerReading.h"

#include "AnswerParsing.h"
#include "ArrayNumbers.h"
#include "TkDebug.h"

namespace HuaweiSanAnswer {

const char kNoDataObject[] = "[ERROR] Unable to parse the JSON response";
const char kNoDataList[] = "[ERROR] Unable to parse JSON response";

bool open(const char* logName, unsigned long long jobId, const std::string& response, jsonxx::Object& answer) {
  TkDebug debug(nullptr);
  debug.DebugLvl(logName, 3, jobId, "Parsing the JSON response...");
  HuaweiTransport::parseAnswer(logName, jobId, response, answer);
  if (!answer.empty()) return true;
  debug.DebugLvl(logName, 3, jobId, "[ERROR] JSON response is empty");
  return false;
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

bool statusIsZero(const char* logName, unsigned long long jobId, const jsonxx::Object& answer, CodeWidth width,
                  int level) {
  unsigned long long code = 0;
  std::string description;
  if (!errorCode(answer, width, code, description) || code == 0) return true;
  TkDebug(nullptr).DebugLvl(logName, level, jobId, "Error:[%s], Error Code[%llu]", description.c_str(), code);
  return false;
}

bool unusable(const char* logName, unsigned long long jobId, const char* text) {
  TkDebug(nullptr).DebugLvl(logName, 3, jobId, "%s", text);
  return false;
}

std::string textOrEmpty(const jsonxx::Object& object, const char* key) {
  return object.has<std::string>(key) ? object.get<std::string>(key) : std::string();
}

}  // namespace HuaweiSanAnswer
