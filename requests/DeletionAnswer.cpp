#include "DeletionAnswer.h"

#include "ArrayNumbers.h"
#include "ResponseReading.h"
#include "TkDebug.h"

namespace HuaweiResponse {

bool readDeletionAnswer(const char* logName, unsigned long long jobId, const std::string& response) {
  return readDeletionAnswer(ParserLog{logName}, jobId, response);
}

bool readDeletionAnswer(const ParserLog& log, unsigned long long jobId, const std::string& response) {
  jsonxx::Object answer;
  if (!parseObject(log, jobId, response, answer)) return false;
  jsonxx::Object& error = answer.get<jsonxx::Object>("error");
  const std::string& description = error.get<std::string>("description");
  const int code = HuaweiNumbers::toSigned32(error.get<long double>("code"));
  if (code != 0) {
    TkDebug(nullptr).DebugLvl(log.name, log.failure, static_cast<long long>(jobId), "Error:[%s], Error Code[%llu]",
                              description.c_str(), static_cast<unsigned long long>(static_cast<long long>(code)));
  }
  return true;
}

}  // namespace HuaweiResponse
