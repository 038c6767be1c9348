#include "FirstGenerationCall.h"

#include "OperationLog.h"

bool FirstGenerationCall::guard(const char* operationName) {
  if (m_sessionOpen) return true;
  m_log.failure("%s", guardText(operationName).c_str());
  return false;
}

bool FirstGenerationCall::argument(const std::string& value, const char* label) {
  if (!value.empty()) return true;
  m_log.failure("The input parameter [%s] is empty", label);
  return false;
}

bool FirstGenerationCall::exchange(HuaweiJSONBase& request, const PlainCall& call, const FirstGenerationTexts& texts,
                                   const OwnArrayCodes& ownCodes) {
  switch (m_frame.exchange(request, call)) {
    case FrameStep::Completed:
      return true;
    case FrameStep::Build:
      m_log.failure("%s", kBuildFailedText);
      return false;
    case FrameStep::Send:
      if (!ownCodes || !ownCodes(m_frame.status())) m_log.failure("%s", texts.requestFailed.c_str());
      return false;
    case FrameStep::EmptyResponse:
      m_log.failure("%s", texts.emptyResponse.c_str());
      return false;
    case FrameStep::Parse:
      m_log.failure("%s", texts.parseFailed.c_str());
      return false;
  }
  return false;
}

bool FirstGenerationCall::run(const char* operationName, HuaweiJSONBase& request, const PlainCall& call,
                              const FirstGenerationTexts& texts) {
  return guard(operationName) && exchange(request, call, texts);
}
