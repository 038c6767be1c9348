// The frame of first-generation operations: they answer bool and tell the reason only in the log.
// An operation states its own texts; the frame logs the one of the step that failed.
#pragma once

#include <string>

#include "FailureTexts.h"
#include "PlainRequestFrame.h"

class OperationLog;

// A first-generation operation's texts. The one for a refused send is the operation's own; an
// operation that answers its refusals itself gives none and says which it handles.
class FirstGenerationTexts : public FailureTexts<FirstGenerationTexts> {
 public:
  explicit FirstGenerationTexts(std::string requestFailed = std::string())
      : FailureTexts(std::move(requestFailed), kBuildFailedText, kEmptyResponseText, kParseFailedText) {}

  // A refused send is told at this level instead of as a failure line.
  FirstGenerationTexts& refusalLoggedAt(int level) { return m_refusalLevel = level, *this; }
  int refusalLevel() const { return m_refusalLevel; }

 private:
  int m_refusalLevel = kFailureLevel;
};

class FirstGenerationCall : public PlainFrameCall {
 public:
  using PlainFrameCall::PlainFrameCall;

  // False, logged with the operation's name behind the prefix, when no session is open.
  bool guard(const char* operationName, const char* prefix = "");
  // False, logged as "The input parameter [<label>] is empty", when value is empty.
  bool argument(const std::string& value, const char* label);
  // Build, send, check and parse; logs the text of the failing step. A failed send that the texts
  // handle is left to the operation, unlogged; any other goes on to the parser where the call
  // reads refusals as answers.
  bool exchange(HuaweiJSONBase& request, const PlainCall& call, const FirstGenerationTexts& texts);
  // guard() then exchange().
  bool run(const char* operationName, HuaweiJSONBase& request, const PlainCall& call,
           const FirstGenerationTexts& texts);

 // Whether the last exchange ended on a failed send that its texts left to the operation.
  bool refusalLeftToOperation() const { return m_leftToOperation; }

 private:
  void report(int level, const std::string& text);

  bool m_leftToOperation = false;
};
