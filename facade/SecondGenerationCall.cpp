#include "SecondGenerationCall.h"

#include "OperationLog.h"
#include "YbErrorUtil.h"

namespace {
const char kSourceFile[] = "ZrManageHuawei.cpp";
}

CXoError SecondGenerationCall::error(const std::string& text) const {
  return YbErrorUtil::ErrorErrNo(YbCodeLocation(kSourceFile, m_signature, __LINE__), -1, "%s", text.c_str());
}

CXoError SecondGenerationCall::guard(const char* operationName) {
  if (m_sessionOpen) return CXoError::Success();
  return error("[ERROR] " + guardText(operationName));
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
    case FrameStep::Send:
      return error(texts.requestFailed);
    case FrameStep::EmptyResponse:
      return error(texts.emptyResponse);
    case FrameStep::Parse:
      return error(texts.parseFailed);
  }
  return error(texts.requestFailed);
}
