// The frame of second-generation operations: each failure becomes a CXoError made by
// YbErrorUtil::ErrorErrNo with error number -1, located at the operation's signature.
#pragma once

#include <string>
#include <utility>

#include "CXoError.h"
#include "FailureTexts.h"
#include "PlainRequestFrame.h"
#include "YbString.h"

class OperationLog;

// Most second-generation guards carry the "[ERROR] " prefix; some operations' do not.
enum class GuardStyle { ErrorPrefix, Bare };

// An argument that must not be empty, with the operation's text for when it is.
struct RequiredArgument {
  const std::string& value;
  const char* failureText;
};

extern const char kInvalidInputParametersText[];

class SecondGenerationCall : public PlainFrameCall {
 public:
  // signature: the operation's signature as text, e.g.
  // "CXoError ZrManageHuawei::deleteLunGroup(const string&, std::string)".
  SecondGenerationCall(HuaweiRestAPI& transport, bool sessionOpen, OperationLog& log, const char* signature)
      : PlainFrameCall(transport, sessionOpen, log), m_signature(signature) {}

  // The guard's text names `operationName`, which is not always the operation's own name.
  CXoError guard(const char* operationName, GuardStyle style = GuardStyle::ErrorPrefix);
  // The text of the first empty argument, in the given order.
  CXoError required(std::initializer_list<RequiredArgument> arguments);
  // "[ERROR] Invalid input parameters" when any of the values is empty.
  CXoError arguments(std::initializer_list<const std::string*> values);
  // Build, send, check and parse. Unnamed texts are the "[ERROR] "-prefixed texts of the frame.
  // After a failed send the operation may read failedWith() or arrayCode() to tell its own words.
  CXoError exchange(HuaweiJSONBase& request, const PlainCall& call, const FailureTexts& texts);
  // An error of this operation with the given text.
  CXoError error(const std::string& text) const;
  template <typename... Arguments>
  CXoError error(const char* format, Arguments... arguments) const {
    return error(YbString::Format(format, arguments...));
  }

 private:
  const char* m_signature;
};
