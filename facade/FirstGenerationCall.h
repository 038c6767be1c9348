// The frame of first-generation operations: they answer bool and tell the reason only in the log.
// An operation states its own texts; the frame logs the one of the step that failed.
#pragma once

#include <string>

#include "PlainRequestFrame.h"

class OperationLog;

struct FirstGenerationTexts {
  std::string requestFailed;
  std::string emptyResponse = kEmptyResponseText;
  std::string parseFailed = kParseFailedText;
  // A refused send is a failure line unless the operation logs it at a level of its own.
  int requestFailedLevel = kFailureLevel;
};

class FirstGenerationCall : public PlainFrameCall {
 public:
  using PlainFrameCall::PlainFrameCall;

  // False, logged with the operation's name behind the prefix, when no session is open.
  bool guard(const char* operationName, const char* prefix = "");
  // False, logged as "The input parameter [<label>] is empty", when value is empty.
  bool argument(const std::string& value, const char* label);
  // Build, send, check and parse; logs the text of the failing step. A failed send that `ownCodes`
  // accepts is left to the operation, unlogged; any other goes on to the parser where the call
  // reads refusals as answers.
  bool exchange(HuaweiJSONBase& request, const PlainCall& call, const FirstGenerationTexts& texts,
                const OwnArrayCodes& ownCodes = OwnArrayCodes());
  // guard() then exchange().
  bool run(const char* operationName, HuaweiJSONBase& request, const PlainCall& call,
           const FirstGenerationTexts& texts);

 private:
  void report(int level, const std::string& text);
};
