// The words an operation gives each failing step of its request. Every text is set by name; an
// operation states only those that differ from its generation's defaults. `Texts` is the generation's own set, which adds what only it has.
#pragma once

#include <string>
#include <utility>

template <typename Texts>
class FailureTexts {
 public:
  Texts& buildFailureSays(std::string text) { return m_buildFailed = std::move(text), self(); }
  Texts& emptyResponseSays(std::string text) { return m_emptyResponse = std::move(text), self(); }
  Texts& parseFailureSays(std::string text) { return m_parseFailed = std::move(text), self(); }

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
};
