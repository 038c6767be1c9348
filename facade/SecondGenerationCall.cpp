#include "SecondGenerationCall.h"

#include <algorithm>

#include "OperationLog.h"
#include "YbErrorUtil.h"

namespace {
const char kSourceFile[] = "ZrManageHuawei.cpp";
}

CXoError SecondGenerationCall::error(const std::string& text) const {
  return YbErrorUtil::ErrorErrNo(YbCodeLocation(kSourceFile, m_signature, __LINE__), -1, "%s", text.c_str());
}

SecondGenerationTexts SecondGenerationTexts::unprefixed(std::string requestFailedText) {
  SecondGenerationTexts texts(std::move(requestFailedText));
  texts.buildFailed = kBuildFailedText;
  texts.emptyResponse = "Empty response returned from the array";
  texts.parseFailed = kParseFailedText;
  return texts;
}

CXoError SecondGenerationCall::errorInArrayWords() const {
  const std::string description = arrayDescription();
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  return YbErrorUtil::ErrorErrNo(YbCodeLocation(kSourceFile, m_signature, __LINE__), -1, description.c_str());
#pragma GCC diagnostic pop
}

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

CXoError SecondGenerationCall::exchange(HuaweiJSONBase& request, const PlainCall& call,
                                        const SecondGenerationTexts& texts) {
  switch (m_frame.exchange(request, call)) {
    case FrameStep::Completed:
      return CXoError::Success();
    case FrameStep::Build:
      return error(texts.buildFailed);
    case FrameStep::Send: {
      const auto& handled = texts.handledCodes;
      const bool ownCode = status().IsError() && std::find(handled.begin(), handled.end(), arrayCode()) != handled.end();
      if (!ownCode && !texts.requestFailedLog.empty()) m_log.line(3, "%s", texts.requestFailedLog.c_str());
      return error(texts.requestFailed);
    }
    case FrameStep::EmptyResponse:
      return error(texts.emptyResponse);
    case FrameStep::Parse:
      return error(texts.parseFailed);
  }
  return error(texts.requestFailed);
}
