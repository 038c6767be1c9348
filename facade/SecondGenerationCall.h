// The frame of second-generation operations: each failure becomes a CXoError made by
// YbErrorUtil::ErrorErrNo with error number -1, located at the operation's signature.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "CXoError.h"
#include "PlainRequestFrame.h"

class OperationLog;

struct SecondGenerationTexts {
  SecondGenerationTexts(std::string requestFailedText) : requestFailed(std::move(requestFailedText)) {}
  // The build, empty-answer and parse texts that many operations give without the prefix.
  static SecondGenerationTexts unprefixed(std::string requestFailedText);

  SecondGenerationTexts& emptyResponseSays(std::string text) { return emptyResponse = std::move(text), *this; }
  SecondGenerationTexts& parseFailureSays(std::string text) { return parseFailed = std::move(text), *this; }
  // A refused send is also logged at level 3, in the failure's own words or in `text`.
  SecondGenerationTexts& alsoLogged(std::string text = std::string()) {
    requestFailedLog = text.empty() ? requestFailed : std::move(text);
    return *this;
  }
  // Array codes that the operation answers itself: the frame leaves such a refusal unlogged.
  SecondGenerationTexts& handling(std::initializer_list<unsigned long long> codes) {
    return handledCodes.assign(codes), *this;
  }

  std::string requestFailed;
  std::string buildFailed = std::string("[ERROR] ") + kBuildFailedText;
  std::string emptyResponse = std::string("[ERROR] ") + kEmptyResponseText;
  std::string parseFailed = std::string("[ERROR] ") + kParseFailedText;
  std::string requestFailedLog;
  std::vector<unsigned long long> handledCodes;
};

// Most guards carry the "[ERROR] " prefix; a few lookups give the bare text.
enum class GuardStyle { ErrorPrefix, Bare };

class SecondGenerationCall : public PlainFrameCall {
 public:
  // signature: the operation's signature as text, e.g.
  // "CXoError ZrManageHuawei::deleteLunGroup(const string&, std::string)".
  SecondGenerationCall(HuaweiRestAPI& transport, bool sessionOpen, OperationLog& log, const char* signature)
      : PlainFrameCall(transport, sessionOpen, log), m_signature(signature) {}

  CXoError guard(const char* operationName, GuardStyle style = GuardStyle::ErrorPrefix);
  // "[ERROR] Invalid input parameters" when any of the values is empty.
  CXoError arguments(std::initializer_list<const std::string*> values);
  // Build, send, check and parse. After a failed send the operation may read arrayCode() to give
  // a code of its own meaning its own words.
  CXoError exchange(HuaweiJSONBase& request, const PlainCall& call, const SecondGenerationTexts& texts);
  // Whether this call's send was refused with the array's `code`.
  bool failedWith(unsigned long long code) const { return status().IsError() && arrayCode() == code; }
  // An error of this operation with the given text.
  CXoError error(const std::string& text) const;
  // An error whose text is the array's last description, handed to the error factory as its
  // format, unescaped: that is how the array's words reach the caller here.
  CXoError errorInArrayWords() const;

 private:
  const char* m_signature;
};
