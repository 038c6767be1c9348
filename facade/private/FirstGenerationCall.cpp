#include "FirstGenerationCall.h"

#include "OperationLog.h"
#include "YbString.h"

FirstGenerationCall::FirstGenerationCall(HuaweiRestAPI& transport, bool sessionOpen, LogKind kind, TkDebug& debug,
                                         const char* logName, unsigned long long jobId)
    : FirstGenerationLog(kind, debug, logName, jobId),
      PlainCallBase(transport, sessionOpen, m_ownLog),
      m_guardName(operationName(logName)) {}

FirstGenerationCall& FirstGenerationCall::required(const std::string& value, const char* label) {
  return refusing(value.empty(), YbString::Format("The input parameter [%s] is empty", label));
}

FirstGenerationCall& FirstGenerationCall::refusing(bool refused, std::string text) {
  m_checks.push_back({refused, std::move(text)});
  return *this;
}

FirstGenerationCall& FirstGenerationCall::sends(HuaweiJSONBase& request, PlainCall call, FirstGenerationTexts texts) {
  m_request = &request;
  m_call = std::move(call);
  m_texts = std::move(texts);
  return *this;
}

bool FirstGenerationCall::checked() {
  if (m_guardName != nullptr && !m_sessionOpen) {
    m_log.failure("%s%s", m_guardPrefix, guardText(m_guardName).c_str());
    return false;
  }
  for (const Check& check : m_checks) {
    if (!check.refused) continue;
    m_log.failure("%s", check.text.c_str());
    return false;
  }
  return true;
}

FirstGenerationCall::Outcome FirstGenerationCall::exchange() {
  if (!checked()) return Outcome::Failed;
  const FrameStep step = exchangeLogged(*m_request, m_call);
  if (step == FrameStep::Completed) return Outcome::Answered;
  return step == FrameStep::SendFailed ? refused() : failedAt(step);
}

FirstGenerationCall::Outcome FirstGenerationCall::refused() {
  const CodeReaction* row = reactToRefusal(m_reactions);
  switch (row == nullptr ? Reaction::Usual : row->reaction()) {
    case Reaction::Done:
      return Outcome::Succeeded;
    case Reaction::OwnWords:
      tell(row->level(), row->words());
      return Outcome::Failed;
    case Reaction::ArrayWords:
      m_log.failure("%s%s", row->words().c_str(), arrayDescription().c_str());
      return Outcome::Failed;
    case Reaction::Adopt:
      return m_adoption != nullptr && m_adoption->adopt(*this) ? Outcome::Succeeded : Outcome::Failed;
    case Reaction::Usual:
      break;
  }
  if (!m_readingRefusals) return failedAt(FrameStep::SendFailed);
  const FrameStep step = m_frame.readAnswer(*m_request);
  return step == FrameStep::Completed ? Outcome::Answered : failedAt(step);
}

FirstGenerationCall::Outcome FirstGenerationCall::failedAt(FrameStep step) {
  switch (step) {
    case FrameStep::BuildFailed:
      tell(kFailureLevel, m_texts.buildFailed());
      break;
    case FrameStep::SendFailed:
      tell(kFailureLevel, m_texts.requestFailed());
      break;
    case FrameStep::EmptyResponse:
      tell(kFailureLevel, m_texts.emptyResponse());
      break;
    case FrameStep::ParseFailed:
      tell(kFailureLevel, m_texts.parseFailed());
      break;
    case FrameStep::MissingValue:
      reportMissingValue();
      break;
    case FrameStep::Completed:
      return Outcome::Answered;
  }
  return Outcome::Failed;
}

// An operation without words for a step says nothing of it.
void FirstGenerationCall::tell(int level, const std::string& text) {
  if (text.empty()) return;
  if (level == kFailureLevel) {
    m_log.failure("%s", text.c_str());
  } else {
    m_log.line(level, "%s", text.c_str());
  }
}
