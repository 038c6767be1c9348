// The frame of second-generation operations: each failure becomes a CXoError made by
// YbErrorUtil::ErrorErrNo with error number -1, located at the operation's signature.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "CXoError.h"
#include "FailureTexts.h"
#include "PlainRequestFrame.h"
#include "YbString.h"

class OperationLog;

// What an operation answers when the array refused its request: given the code and the message
// that the transport classified last, the operation's own error (or success, for codes that mean
// the work is already done).
using SecondGenerationRefusal = std::function<CXoError(unsigned long long code, const std::string& message)>;

// A second-generation operation's texts; unnamed ones are the frame's "[ERROR] " texts.
class SecondGenerationTexts : public FailureTexts<SecondGenerationTexts> {
 public:
  explicit SecondGenerationTexts(std::string requestFailed)
      : FailureTexts(std::move(requestFailed), std::string("[ERROR] ") + kBuildFailedText,
                     std::string("[ERROR] ") + kEmptyResponseText, std::string("[ERROR] ") + kParseFailedText) {}
  // Lookups speak of the empty answer and the parse failure with the "[ERROR] " prefix; changes
  // without it, and with other words for the empty answer. Neither prefixes the build failure.
  static SecondGenerationTexts lookup(std::string requestFailed);
  static SecondGenerationTexts change(std::string requestFailed);

  // A refused send that the operation does not handle is also logged at level 3, in the
  // failure's own words or in `text`.
  SecondGenerationTexts& alsoLogged(std::string text = std::string()) {
    m_refusalLine = text.empty() ? requestFailed() : std::move(text);
    return *this;
  }
  // The operation answers every refusal itself.
  SecondGenerationTexts& refusedBy(SecondGenerationRefusal handler) { return m_refusal = std::move(handler), *this; }

  const std::string& refusalLine() const { return m_refusalLine; }
  // Unset: a refusal is requestFailed like any other failed send.
  const SecondGenerationRefusal& refusal() const { return m_refusal; }

 private:
  std::string m_refusalLine;
  SecondGenerationRefusal m_refusal;
};

// Most guards carry the "[ERROR] " prefix; a few lookups give the bare text.
enum class GuardStyle { ErrorPrefix, Bare };

// An argument that must not be empty, with the operation's text for when it is.
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
  // An error whose format is another result's text: "%%" in it gives "%", any other directive
  // stands as written (YbString::Format(std::string)).
  CXoError errorFormattedBy(const CXoError& inner) const;
  // An error whose format is the array's last description, rendered in the same way; the
  // transport has rendered it once already, so "%%%%" comes back as "%".
  CXoError errorInArrayWords() const;

 private:
  CXoError errorWithFormat(const std::string& format) const;

  const char* m_signature;
};
