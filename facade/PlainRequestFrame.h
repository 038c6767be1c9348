// The request-and-answer steps shared by the first two generations of operation: build the body
// where the method has one, send through the transport, reject an empty answer, parse. It reports
// where it stopped; each generation turns that into its own kind of failure.
#pragma once

#include <functional>
#include <string>

#include "HuaweiApiResultStatus.h"
#include "HuaweiRequestTypes.h"

class HuaweiJSONBase;
class HuaweiRestAPI;

// What an operation sends: method, resource with its query, and operation type.
struct PlainCall {
  REQ_TYPE_HUAWEI method;
  std::string resource;
  int opType;
};

enum class FrameStep { Completed, Build, Send, EmptyResponse, Parse };

class PlainRequestFrame {
 public:
  explicit PlainRequestFrame(HuaweiRestAPI& transport) : m_transport(transport) {}

  FrameStep exchange(HuaweiJSONBase& request, const PlainCall& call);

  const HuaweiApi::ResultStatus& status() const { return m_status; }
  // The array's code of the last classified answer, as the transport keeps it.
  unsigned long long arrayCode() const;

 private:
  HuaweiRestAPI& m_transport;
  HuaweiApi::ResultStatus m_status;
};

// Failures that an operation handles itself: given the status of the failed send, true keeps the
// frame silent about it.
using OwnArrayCodes = std::function<bool(const HuaweiApi::ResultStatus& status)>;

// Guard texts name the operation; ZrManageHuawei::init() does not exist, the text stands as it is.
std::string guardText(const char* operationName);
extern const char kBuildFailedText[];
extern const char kEmptyResponseText[];
extern const char kParseFailedText[];
