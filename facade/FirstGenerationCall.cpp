#include "FirstGenerationCall.h"

#include "OperationLog.h"
#include "YbString.h"

FirstGenerationOperation& FirstGenerationOperation::requiring(const std::string& value, const char* label) {
  return refusing(value.empty(), YbString::Format("The input parameter [%s] is empty", label));
}

FirstGenerationOperation& FirstGenerationOperation::refusing(bool refused, std::string text) {
  m_checks.push_back({refused, std::move(text)});
  return *this;
}

const std::string* FirstGenerationOperation::refusal() const {
  for (const Check& check : m_checks) {
    if (check.refused) return &check.text;
  }
  return nullptr;
}

bool FirstGenerationCall::opened(const FirstGenerationOperation& operation) {
  if (operation.guardName() != nullptr && !m_sessionOpen) {
    m_log.failure("%s%s", operation.guardPrefix(), guardText(operation.guardName()).c_str());
    return false;
  }
  const std::string* refusal = operation.refusal();
  if (refusal != nullptr) m_log.failure("%s", refusal->c_str());
  return refusal == nullptr;
}

bool FirstGenerationCall::completed(HuaweiJSONBase& request, const FirstGenerationOperation& operation) {
  return opened(operation) && exchange(request, operation.call(), operation);
}

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

bool FirstGenerationCall::exchange(HuaweiJSONBase& request, const PlainCall& call,
                                   const FirstGenerationOperation& texts) {
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
    case FrameStep::MissingValue:
      reportMissingValue();
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
