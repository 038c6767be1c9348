#include "SecondGenerationCall.h"

#include "OperationLog.h"
#include "YbErrorUtil.h"

const char kInvalidInputParametersText[] = "[ERROR] Invalid input parameters";

namespace {
const char kSourceFile[] = "ZrManageHuawei.cpp";
const std::string kErrorPrefix = "[ERROR] ";
}  // namespace

CXoError SecondGenerationCall::error(const std::string& text) const {
  return YbErrorUtil::ErrorErrNo(YbCodeLocation(kSourceFile, m_signature, __LINE__), -1, "%s", text.c_str());
}

CXoError SecondGenerationCall::guard(const char* operationName, GuardStyle style) {
  if (m_sessionOpen) return CXoError::Success();
  return error((style == GuardStyle::ErrorPrefix ? kErrorPrefix : std::string()) + guardText(operationName));
}

CXoError SecondGenerationCall::required(std::initializer_list<RequiredArgument> arguments) {
  for (const RequiredArgument& argument : arguments) {
    if (argument.value.empty()) return error(std::string(argument.failureText));
  }
  return CXoError::Success();
}

CXoError SecondGenerationCall::arguments(std::initializer_list<const std::string*> values) {
  for (const std::string* value : values) {
    if (value->empty()) return error(std::string(kInvalidInputParametersText));
  }
  return CXoError::Success();
}

CXoError SecondGenerationCall::exchange(HuaweiJSONBase& request, const PlainCall& call, const FailureTexts& texts) {
  switch (m_frame.exchange(request, call)) {
    case FrameStep::Completed:
      return CXoError::Success();
    case FrameStep::Build:
      return error(texts.buildFailed(kErrorPrefix + kBuildFailedText));
    case FrameStep::Send:
      return error(texts.requestFailed());
    case FrameStep::EmptyResponse:
      return error(texts.emptyResponse(kErrorPrefix + kEmptyResponseText));
    case FrameStep::Parse:
      return error(texts.parseFailed(kErrorPrefix + kParseFailedText));
  }
  return error(texts.requestFailed());
}
