#include "PlainRequestFrame.h"

#include "HuaweiJSONBase.h"
#include "HuaweiRestAPI.h"
#include "OperationLog.h"
#include "YbString.h"

const char kBuildFailedText[] = "Unable to build the request body";
const char kEmptyResponseText[] = "Empty response from the array";
const char kParseFailedText[] = "Unable to parse the JSON Response";

std::string guardText(const char* operationName) {
  return YbString::Format("Before calling %s(), please initialize Huawei params using ZrManageHuawei::init().",
                          operationName);
}

FrameStep PlainRequestFrame::exchange(HuaweiJSONBase& request, const PlainCall& call) {
  m_sent = false;
  if (call.resource.refusal().refused()) return FrameStep::Build;
  const std::string& resource = call.resource.str();
  std::string body;
  if (call.method == HUAWEI_REQ_POST || call.method == HUAWEI_REQ_PUT) {
    if (!request.buildRequest(body) || body.empty()) return FrameStep::Build;
  }
  switch (call.method) {
    case HUAWEI_REQ_GET: m_status = m_transport.get(resource, m_response, call.opType); break;
    case HUAWEI_REQ_POST: m_status = m_transport.post(resource, body, m_response, call.opType); break;
    case HUAWEI_REQ_PUT: m_status = m_transport.put(resource, body, m_response, call.opType); break;
    default: m_status = m_transport.del(resource, body, m_response, call.opType); break;
  }
  m_sent = true;
  if (!m_status) return FrameStep::Send;
  return readAnswer(request);
}

FrameStep PlainFrameCall::exchangeLogged(HuaweiJSONBase& request, const PlainCall& call) {
  const PlacementRefusal& refusal = call.resource.refusal();
  if (refusal.refused()) m_log.line(kFailureLevel, "%s", refusal.text().c_str());
  return m_frame.exchange(request, call);
}

FrameStep PlainRequestFrame::readAnswer(HuaweiJSONBase& request) {
  if (m_response.empty()) return FrameStep::EmptyResponse;
  if (!request.parseResponse(m_response)) return FrameStep::Parse;
  return FrameStep::Completed;
}

unsigned long long PlainRequestFrame::arrayCode() const {
  unsigned long long code = 0;
  std::string text;
  errorInfo(code, text);
  return code;
}

void PlainRequestFrame::errorInfo(unsigned long long& code, std::string& message) const {
  m_transport.getErrorInfo(code, message);
}

std::string PlainRequestFrame::arrayDescription() const {
  unsigned long long code = 0;
  std::string text;
  m_transport.getErrorInfo(code, text);
  return text;
}
