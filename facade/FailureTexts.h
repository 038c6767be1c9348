// What an operation says when a step of its request fails, named step by step, and the array codes
// whose failures it tells itself. A step left unnamed says what the operation's generation says.
#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>

class FailureTexts {
 public:
  // The text of a failed send: the one text every operation has of its own.
  explicit FailureTexts(std::string requestFailed) : m_requestFailed(std::move(requestFailed)) {}

  FailureTexts& buildFailed(std::string text) {
    m_buildFailed = std::move(text);
    return *this;
  }
  FailureTexts& emptyResponse(std::string text) {
    m_emptyResponse = std::move(text);
    return *this;
  }
  FailureTexts& parseFailed(std::string text) {
    m_parseFailed = std::move(text);
    return *this;
  }
  // A failed send with one of these codes is the operation's to tell or to turn into success: the
  // frame says nothing of it, and the operation asks failedWith() afterwards.
  FailureTexts& handling(std::initializer_list<unsigned long long> codes) {
    for (unsigned long long code : codes) {
      if (m_handledCount < m_handledCodes.size()) m_handledCodes[m_handledCount++] = code;
    }
    return *this;
  }

  const std::string& requestFailed() const { return m_requestFailed; }
  std::string buildFailed(const std::string& fallback) const { return m_buildFailed.value_or(fallback); }
  std::string emptyResponse(const std::string& fallback) const { return m_emptyResponse.value_or(fallback); }
  std::string parseFailed(const std::string& fallback) const { return m_parseFailed.value_or(fallback); }
  bool handles(unsigned long long code) const {
    for (size_t index = 0; index < m_handledCount; ++index) {
      if (m_handledCodes[index] == code) return true;
    }
    return false;
  }

 private:
  std::string m_requestFailed;
  std::optional<std::string> m_buildFailed;
  std::optional<std::string> m_emptyResponse;
  std::optional<std::string> m_parseFailed;
  // No operation tells more than a few codes itself.
  std::array<unsigned long long, 4> m_handledCodes{};
  size_t m_handledCount = 0;
};
