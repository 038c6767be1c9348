// The frame of second-generation operations: each failure becomes a CXoError made by
// YbErrorUtil::ErrorErrNo with error number -1, located at the operation's signature.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>

#include "CXoError.h"
#include "PlainRequestFrame.h"
#include "YbString.h"

class OperationLog;

// What an operation answers when the array refused its request: given the code and the message
// that the transport classified last, the operation's own error (or success, for codes that mean
// the work is already done).
using SecondGenerationRefusal = std::function<CXoError(unsigned long long code, const std::string& message)>;

struct SecondGenerationTexts {
  // Lookups speak of the empty answer and the parse failure with the "[ERROR] " prefix; changes
  // without it, and with other words for the empty answer.
  static SecondGenerationTexts lookup(std::string requestFailed) {
    return {std::move(requestFailed), "[ERROR] Empty response is returned from the array",
            "[ERROR] Unable to parse the JSON Response",
            kBuildFailedText, {}};
  }
  static SecondGenerationTexts change(std::string requestFailed) {
    return {std::move(requestFailed), "Empty response returned from the array", kParseFailedText, kBuildFailedText, {}};
  }
  SecondGenerationTexts& refusedBy(SecondGenerationRefusal handler) {
    refusal = std::move(handler);
    return *this;
  }

  std::string requestFailed;
  std::string emptyResponse;
  std::string parseFailed;
  std::string buildFailed = kBuildFailedText;
  // Unset: a refusal is requestFailed like any other failed send.
  SecondGenerationRefusal refusal;
};

enum class GuardStyle { ErrorPrefix, Bare };

struct RequiredText {
  const std::string* value;
  const char* text;
};

class SecondGenerationCall : public PlainFrameCall {
 public:
  // signature: the operation's signature as text, e.g.
  // "CXoError ZrManageHuawei::deleteLunGroup(const string&, std::string)".
  SecondGenerationCall(HuaweiRestAPI& transport, bool sessionOpen, OperationLog& log, const char* signature)
      : PlainFrameCall(transport, sessionOpen, log), m_signature(signature) {}

  // The guard names operationName, which is not always the operation's own.
  CXoError guard(const char* operationName, GuardStyle style = GuardStyle::ErrorPrefix);
  // guard(), then required().
  CXoError open(const char* operationName, GuardStyle style, std::initializer_list<RequiredText> values);
  // "[ERROR] Invalid input parameters" when any of the values is empty.
  CXoError arguments(std::initializer_list<const std::string*> values);
  // The text of the first empty value.
  CXoError required(std::initializer_list<RequiredText> values);
  // Build, send, check and parse.
  CXoError exchange(HuaweiJSONBase& request, const PlainCall& call, const SecondGenerationTexts& texts);

  // An error of this operation with the given text.
  CXoError error(const std::string& text) const;
  template <typename First, typename... Rest>
  CXoError error(const char* format, First first, Rest... rest) const {
    return error(YbString::Format(format, first, rest...));
  }
  // An error whose format is another result's text: a percent sign in it is read as a directive.
  CXoError errorFormattedBy(const CXoError& inner) const;

 private:
  const char* m_signature;
};
