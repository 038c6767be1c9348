#include "AnswerParsing.h"

#include "TkDebug.h"

namespace HuaweiTransport {

bool parseAnswer(const char* logName, unsigned long long jobId, const std::string& response, jsonxx::Object& answer) {
  const bool parsed = answer.parse(response);
  if (jsonxx::parse_stopped_at_memory_bound()) {
    TkDebug(nullptr).DebugLvl(logName, -1, jobId,
                              "The JSON response of %zu bytes needs more memory than the %zu bytes allowed for its "
                              "reading.",
                              response.size(), jsonxx::memory_bound(response.size()));
  }
  return parsed;
}

}  // namespace HuaweiTransport
