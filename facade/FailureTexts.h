// The words an operation gives each failing step of its request, and the refusals it answers
// itself. Every text is set by name; an operation states only those that differ from its
// generation's defaults. `Texts` is the generation's own set, which adds what only it has.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "HuaweiApiResultStatus.h"

template <typename Texts>
class FailureTexts {
 public:
  Texts& buildFailureSays(std::string text) { return m_buildFailed = std::move(text), self(); }
  Texts& emptyResponseSays(std::string text) { return m_emptyResponse = std::move(text), self(); }
  Texts& parseFailureSays(std::string text) { return m_parseFailed = std::move(text), self(); }

  // Refusals with these array codes are the operation's to answer: the frame says nothing about
  // them. The code is the one the transport classified last, as operations read it.
  Texts& handling(std::initializer_list<unsigned long long> codes) { return m_handledCodes.assign(codes), self(); }
  // Every failed send is the operation's to answer, a lost connection too.
  Texts& handlingEveryFailedSend() { return m_everyFailedSend = true, self(); }
  // The handled codes count only in this send's own answer, never in one classified before it:
  // for an operation that sends again on such a code, which a stale code must not repeat.
  Texts& handlingOnlyThisAnswer() { return m_onlyThisAnswer = true, self(); }

  // Whether a failed send whose own status is `own`, with `lastClassified` the transport's last
  // code, is the operation's to answer.
  bool handles(const HuaweiApi::ResultStatus& own, unsigned long long lastClassified) const {
    if (m_everyFailedSend) return true;
    if (!own.IsError()) return false;
    const unsigned long long code = m_onlyThisAnswer ? own.GetErrorCode() : lastClassified;
    return std::find(m_handledCodes.begin(), m_handledCodes.end(), code) != m_handledCodes.end();
  }

  const std::string& requestFailed() const { return m_requestFailed; }
  const std::string& buildFailed() const { return m_buildFailed; }
  const std::string& emptyResponse() const { return m_emptyResponse; }
  const std::string& parseFailed() const { return m_parseFailed; }

 protected:
  FailureTexts(std::string requestFailed, std::string buildFailed, std::string emptyResponse, std::string parseFailed)
      : m_requestFailed(std::move(requestFailed)),
        m_buildFailed(std::move(buildFailed)),
        m_emptyResponse(std::move(emptyResponse)),
        m_parseFailed(std::move(parseFailed)) {}

 private:
  Texts& self() { return static_cast<Texts&>(*this); }

  std::string m_requestFailed;
  std::string m_buildFailed;
  std::string m_emptyResponse;
  std::string m_parseFailed;
  std::vector<unsigned long long> m_handledCodes;
  bool m_everyFailedSend = false;
  bool m_onlyThisAnswer = false;
};
