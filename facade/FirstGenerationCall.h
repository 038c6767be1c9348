// The frame of first-generation operations: they answer bool and tell the reason only in the log.
// An operation is a description, FirstGenerationOperation, that FirstGenerationCall::perform runs:
// the guard, the checks of the arguments, the request, the line of the step that failed, and the
// reader of the answer.
#pragma once

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "FailureTexts.h"
#include "PlainRequestFrame.h"

class OperationLog;

// What a first-generation operation is besides its request object and its reader. The texts are
// set by name; a refused send is told in the operation's own words, an empty answer and a parse
// failure in the frame's unless the operation says otherwise.
class FirstGenerationOperation : public FailureTexts<FirstGenerationOperation> {
 public:
  // guardName: the name the guard's text gives, which is not always the operation's own; nullptr
  // for an operation that leaves the session to the operations it calls.
  FirstGenerationOperation(const char* guardName, PlainCall call, std::string requestFailed = std::string())
      : FailureTexts(std::move(requestFailed), kBuildFailedText, kEmptyResponseText, kParseFailedText),
        m_guardName(guardName),
        m_call(std::move(call)) {}

  // The guard's line begins with `prefix`.
  FirstGenerationOperation& guardPrefixed(const char* prefix) { return m_guardPrefix = prefix, *this; }
  // Fails with "The input parameter [<label>] is empty" when `value` is empty.
  FirstGenerationOperation& requiring(const std::string& value, const char* label);
  // Fails with `text` when `refused` holds. Checks are made in the order given, after the guard.
  FirstGenerationOperation& refusing(bool refused, std::string text);
  // A refused send is told at this level instead of as a failure line.
  FirstGenerationOperation& refusalLoggedAt(int level) { return m_refusalLevel = level, *this; }

  const char* guardName() const { return m_guardName; }
  const char* guardPrefix() const { return m_guardPrefix; }
  const PlainCall& call() const { return m_call; }
  int refusalLevel() const { return m_refusalLevel; }
  // The text of the first check that refuses, or nullptr.
  const std::string* refusal() const;

 private:
  struct Check {
    bool refused;
    std::string text;
  };

  const char* m_guardName;
  const char* m_guardPrefix = "";
  PlainCall m_call;
  std::vector<Check> m_checks;
  int m_refusalLevel = kFailureLevel;
};

class FirstGenerationCall : public PlainFrameCall {
 public:
  using PlainFrameCall::PlainFrameCall;

  // Runs the operation; on a complete answer, `read` reads it (and logs the success line) and
  // answers the operation's result when it returns bool.
  template <typename Read>
  bool perform(HuaweiJSONBase& request, const FirstGenerationOperation& operation, Read&& read) {
    if (!completed(request, operation)) return false;
    if constexpr (std::is_void<decltype(read())>::value) {
      read();
      return true;
    } else {
      return read();
    }
  }

  static FirstGenerationOperation textsOnly(std::string requestFailed = std::string()) {
    return FirstGenerationOperation(nullptr, PlainCall{HUAWEI_REQ_GET, "", 0}, std::move(requestFailed));
  }
  // Being replaced by reactions: the operations that read the array's codes themselves.
  bool guard(const char* operationName, const char* prefix = "");
  bool argument(const std::string& value, const char* label);
  bool exchange(HuaweiJSONBase& request, const PlainCall& call, const FirstGenerationOperation& texts);
  bool refusalLeftToOperation() const { return m_leftToOperation; }

 private:
  bool m_leftToOperation = false;
  // Guard, checks, build, send, check and parse; logs the text of the failing step.
  bool completed(HuaweiJSONBase& request, const FirstGenerationOperation& operation);
  bool opened(const FirstGenerationOperation& operation);
  void report(int level, const std::string& text);
};
