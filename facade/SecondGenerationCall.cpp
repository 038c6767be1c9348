#include "SecondGenerationCall.h"

#include "OperationLog.h"
#include "YbErrorUtil.h"

namespace {
const char kSourceFile[] = "ZrManageHuawei.cpp";
}

SecondGenerationTexts SecondGenerationTexts::lookup(std::string requestFailed) {
  SecondGenerationTexts texts(std::move(requestFailed));
  texts.buildFailureSays(kBuildFailedText)
      .emptyResponseSays("[ERROR] Empty response is returned from the array")
      .parseFailureSays("[ERROR] Unable to parse the JSON Response");
  return texts;
}

SecondGenerationTexts SecondGenerationTexts::change(std::string requestFailed) {
  SecondGenerationTexts texts(std::move(requestFailed));
  texts.buildFailureSays(kBuildFailedText).emptyResponseSays("Empty response returned from the array");
  texts.parseFailureSays(kParseFailedText);
  return texts;
}

CXoError SecondGenerationCall::error(const std::string& text) const {
  return YbErrorUtil::ErrorErrNo(YbCodeLocation(kSourceFile, m_signature, __LINE__), -1, "%s", text.c_str());
}

CXoError SecondGenerationCall::errorWithFormat(const std::string& format) const {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  return YbErrorUtil::ErrorErrNo(YbCodeLocation(kSourceFile, m_signature, __LINE__), -1, format.c_str());
#pragma GCC diagnostic pop
}

CXoError SecondGenerationCall::errorFormattedBy(const CXoError& inner) const { return errorWithFormat(inner.AsString()); }

CXoError SecondGenerationCall::errorInArrayWords() const { return errorWithFormat(arrayDescription()); }

CXoError SecondGenerationCall::guard(const char* operationName, GuardStyle style) {
  if (m_sessionOpen) return CXoError::Success();
  return error((style == GuardStyle::ErrorPrefix ? "[ERROR] " : "") + guardText(operationName));
}

CXoError SecondGenerationCall::arguments(std::initializer_list<const std::string*> values) {
  for (const std::string* value : values) {
    if (value->empty()) return error("[ERROR] Invalid input parameters");
  }
  return CXoError::Success();
}

CXoError SecondGenerationCall::required(std::initializer_list<RequiredText> values) {
  for (const RequiredText& value : values) {
    if (value.value->empty()) return error(std::string(value.text));
  }
  return CXoError::Success();
}

CXoError SecondGenerationCall::open(const char* operationName, GuardStyle style,
                                    std::initializer_list<RequiredText> values) {
  const CXoError closed = guard(operationName, style);
  return closed.IsError() ? closed : required(values);
}

CXoError SecondGenerationCall::exchange(HuaweiJSONBase& request, const PlainCall& call,
                                        const SecondGenerationTexts& texts) {
  switch (exchangeLogged(request, call)) {
    case FrameStep::Completed:
      return CXoError::Success();
    case FrameStep::Build:
      return error(texts.buildFailed());
    case FrameStep::Send: {
      if (texts.refusal()) {
        unsigned long long code = 0;
        std::string message;
        m_frame.errorInfo(code, message);
        return texts.refusal()(code, message);
      }
      const bool handled = texts.handles(status(), arrayCode());
      if (!handled && !texts.refusalLine().empty()) m_log.line(3, "%s", texts.refusalLine().c_str());
      return error(texts.requestFailed());
    }
    case FrameStep::EmptyResponse:
      return error(texts.emptyResponse());
    case FrameStep::Parse:
      return error(texts.parseFailed());
  }
  return error(texts.requestFailed());
}
