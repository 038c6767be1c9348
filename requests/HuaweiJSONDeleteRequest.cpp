#include "HuaweiJSONDeleteRequest.h"

#include "AnswerParsing.h"
#include "ArrayNumbers.h"
#include "TkDebug.h"
#include "jsonxx.h"

bool HuaweiJSONDeleteRequest::parseResponse(std::string& response) {
  TkDebug debug(nullptr);
  debug.DebugLvl("parseResponse", 3, m_jobId, "Parsing the JSON response...");
  jsonxx::Object answer;
  HuaweiTransport::parseAnswer("parseResponse", m_jobId, response, answer);
  if (answer.empty()) {
    debug.DebugLvl("parseResponse", 3, m_jobId, "Error when parsing the JSON response.");
    return false;
  }
  if (!answer.has<jsonxx::Object>("error")) return false;
  jsonxx::Object& error = answer.get<jsonxx::Object>("error");
  (void)error.get<std::string>("description");
  return HuaweiNumbers::toUnsigned64(error.get<long double>("code")) == 0;
}
