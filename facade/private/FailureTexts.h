// The words an operation gives each failing step of its request. Every text is set by name; an
// operation states only those that differ from its generation's defaults. `Texts` is the generation's own set, which adds what only it has.
#pragma once

#include <string>
#include <utility>

// One step's words: a fixed text (a literal or a constant of the program, kept as its pointer,
// since every call names its texts and few ever say them) or a text of the call's own.
class StepText {
 public:
  StepText(const char* fixed) : m_fixed(fixed) {}
  StepText(std::string own) : m_own(std::move(own)) {}

  std::string str() const { return m_fixed != nullptr ? std::string(m_fixed) : m_own; }

 private:
  const char* m_fixed = nullptr;
  std::string m_own;
};

template <typename Texts>
class FailureTexts {
 public:
  Texts& buildFailureSays(StepText text) { return m_buildFailed = std::move(text), self(); }
  Texts& emptyResponseSays(StepText text) { return m_emptyResponse = std::move(text), self(); }
  Texts& parseFailureSays(StepText text) { return m_parseFailed = std::move(text), self(); }

  std::string requestFailed() const { return m_requestFailed.str(); }
  std::string buildFailed() const { return m_buildFailed.str(); }
  std::string emptyResponse() const { return m_emptyResponse.str(); }
  std::string parseFailed() const { return m_parseFailed.str(); }

 protected:
  FailureTexts(StepText requestFailed, StepText buildFailed, StepText emptyResponse, StepText parseFailed)
      : m_requestFailed(std::move(requestFailed)),
        m_buildFailed(std::move(buildFailed)),
        m_emptyResponse(std::move(emptyResponse)),
        m_parseFailed(std::move(parseFailed)) {}

 private:
  Texts& self() { return static_cast<Texts&>(*this); }

  StepText m_requestFailed;
  StepText m_buildFailed;
  StepText m_emptyResponse;
  StepText m_parseFailed;
};
