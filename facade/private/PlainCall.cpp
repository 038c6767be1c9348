#include "PlainCall.h"

#include <cstring>

#include "HuaweiJSONBase.h"
#include "HuaweiRestAPI.h"
#include "OperationLog.h"
#include "YbString.h"

const char kBuildFailedText[] = "Unable to build the request body";
const char kEmptyResponseText[] = "Empty response from the array";
const char kParseFailedText[] = "Unable to parse the JSON Response";
const char kErrorParseFailedText[] = "[ERROR] Unable to parse the JSON Response";

std::string guardText(const char* operationName) {
  return YbString::Format("Before calling %s(), please initialize Huawei params using ZrManageHuawei::init().",
                          operationName);
}

const char* operationName(const char* logName) {
  static const char kFacade[] = "ZrManageHuawei::";
  return std::strncmp(logName, kFacade, sizeof kFacade - 1) == 0 ? logName + sizeof kFacade - 1 : logName;
}

FrameStep PlainCallFrame::exchange(HuaweiJSONBase& request, const PlainCall& call) {
  m_sent = false;
  if (RequiredValueContainment::failed()) return FrameStep::MissingValue;
  if (call.resource.refusal().refused()) return FrameStep::BuildFailed;
  const std::string& resource = call.resource.str();
  std::string body;
  if (call.method == HUAWEI_REQ_POST || call.method == HUAWEI_REQ_PUT) {
    if (!request.buildRequest(body) || body.empty()) return FrameStep::BuildFailed;
  }
  switch (call.method) {
    case HUAWEI_REQ_GET: m_status = m_transport.get(resource, m_response, call.opType); break;
    case HUAWEI_REQ_POST: m_status = m_transport.post(resource, body, m_response, call.opType); break;
    case HUAWEI_REQ_PUT: m_status = m_transport.put(resource, body, m_response, call.opType); break;
    default: m_status = m_transport.del(resource, body, m_response, call.opType); break;
  }
  m_sent = true;
  if (!m_status) return FrameStep::SendFailed;
  return readAnswer(request);
}

FrameStep PlainCallBase::exchangeLogged(HuaweiJSONBase& request, const PlainCall& call) {
  const PlacementRefusal& refusal = call.resource.refusal();
  if (refusal.refused()) m_log.line(kFailureLevel, "%s", refusal.text().c_str());
  return m_frame.exchange(request, call);
}

FrameStep PlainCallFrame::readAnswer(HuaweiJSONBase& request) {
  if (m_response.empty()) return FrameStep::EmptyResponse;
  if (!RequiredValueContainment::read([&] { return request.parseResponse(m_response); })) {
    return RequiredValueContainment::failed() ? FrameStep::MissingValue : FrameStep::ParseFailed;
  }
  return FrameStep::Completed;
}

void PlainCallFrame::errorInfo(unsigned long long& code, std::string& message) const {
  m_transport.getErrorInfo(code, message);
}

std::string PlainCallFrame::arrayDescription() const {
  unsigned long long code = 0;
  std::string text;
  m_transport.getErrorInfo(code, text);
  return text;
}

void PlainCallBase::reportMissingValue() {
  // An exchange refused after the failure sent nothing and has nothing new to say.
  if (m_frame.sent()) m_log.line(kFailureLevel, "%s", RequiredValueContainment::failureText().c_str());
}

const CodeReaction* PlainCallBase::reactToRefusal(const CodeReactions& reactions) {
  unsigned long long code = 0;
  std::string words;
  m_frame.errorInfo(code, words);
  if (reactions.onlyThisAnswer()) code = status().GetErrorCode();
  const CodeReaction* row = reactions.rowFor(code);
  if (row == nullptr) return nullptr;
  for (const std::vector<ReactionLine>* lines : {&reactions.lines(), &row->lines()}) {
    for (const ReactionLine& line : *lines) {
      std::string text = line.text;
      if (line.withArrayDetail) {
        text += YbString::Format("%s[ERRORCODE: [%llu]] [MESSAGE: [%s]]", text.empty() ? "" : " ", code, words.c_str());
      }
      if (line.level == kFailureLevel) {
        m_log.failure("%s", text.c_str());
      } else {
        m_log.line(line.level, "%s", text.c_str());
      }
    }
  }
  if (row->flag() != nullptr) *row->flag() = true;
  return row;
}
