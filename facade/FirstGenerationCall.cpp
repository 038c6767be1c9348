#include "FirstGenerationCall.h"

#include "OperationLog.h"

bool FirstGenerationCall::guard(const char* operationName, const char* prefix) {
  if (m_sessionOpen) return true;
  m_log.failure("%s%s", prefix, guardText(operationName).c_str());
  return false;
}

bool FirstGenerationCall::argument(const std::string& value, const char* label) {
  if (!value.empty()) return true;
  m_log.failure("The input parameter [%s] is empty", label);
  return false;
}

bool FirstGenerationCall::exchange(HuaweiJSONBase& request, const PlainCall& call, const FirstGenerationTexts& texts) {
  m_leftToOperation = false;
  FrameStep step = exchangeLogged(request, call);
  if (step == FrameStep::Send) {
    m_leftToOperation = texts.handles(m_frame.status(), m_frame.arrayCode());
    if (m_leftToOperation) return false;
    if (call.refusalIsAnswer) step = m_frame.readAnswer(request);
  }
  switch (step) {
    case FrameStep::Completed:
      return true;
    case FrameStep::Build:
      m_log.failure("%s", texts.buildFailed().c_str());
      return false;
    case FrameStep::Send:
      report(texts.refusalLevel(), texts.requestFailed());
      return false;
    case FrameStep::EmptyResponse:
      m_log.failure("%s", texts.emptyResponse().c_str());
      return false;
    case FrameStep::Parse:
      m_log.failure("%s", texts.parseFailed().c_str());
      return false;
  }
  return false;
}

void FirstGenerationCall::report(int level, const std::string& text) {
  if (level == kFailureLevel) {
    m_log.failure("%s", text.c_str());
  } else {
    m_log.line(level, "%s", text.c_str());
  }
}

bool FirstGenerationCall::run(const char* operationName, HuaweiJSONBase& request, const PlainCall& call,
                              const FirstGenerationTexts& texts) {
  return guard(operationName) && exchange(request, call, texts);
}
