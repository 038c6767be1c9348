// The frame of second-generation operations: each failure becomes a CXoError made by
// YbErrorUtil::ErrorErrNo with error number -1, located at the operation's signature.
#pragma once

#include <string>

#include "CXoError.h"
#include "PlainRequestFrame.h"

class OperationLog;

struct SecondGenerationTexts {
  std::string requestFailed;
  std::string buildFailed = std::string("[ERROR] ") + kBuildFailedText;
  std::string emptyResponse = std::string("[ERROR] ") + kEmptyResponseText;
  std::string parseFailed = std::string("[ERROR] ") + kParseFailedText;
};

class SecondGenerationCall : public PlainFrameCall {
 public:
  // signature: the operation's signature as text, e.g.
  // "CXoError ZrManageHuawei::deleteLunGroup(const string&, std::string)".
  SecondGenerationCall(HuaweiRestAPI& transport, bool sessionOpen, OperationLog& log, const char* signature)
      : PlainFrameCall(transport, sessionOpen, log), m_signature(signature) {}

  CXoError guard(const char* operationName);
  // "[ERROR] Invalid input parameters" when any of the values is empty.
  CXoError arguments(std::initializer_list<const std::string*> values);
  // Build, send, check and parse. After a failed send the operation may read arrayCode() to give
  // a code of its own meaning its own words.
  CXoError exchange(HuaweiJSONBase& request, const PlainCall& call, const SecondGenerationTexts& texts);
  // An error of this operation with the given text.
  CXoError error(const std::string& text) const;

 private:
  const char* m_signature;
};
