// The frame of third-generation operations: they answer HuaweiApi::ResultStatus and go through
// ZrManageHuawei::ProcessWithServer, which opens the session by itself. An operation logs its
// request line, checks its arguments, sends its request and words a failure in its own text.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "HuaweiApiResultStatus.h"
#include "OperationLog.h"
#include "RequiredValueContainment.h"
#include "YbString.h"

class HuaweiJSONBaseV2;
class ZrManageHuawei;

class ThirdGenerationCall {
 public:
  // logName tags the lines; operationName is the name that ProcessWithServer logs under.
  ThirdGenerationCall(ZrManageHuawei& facade, TkDebug& debug, const char* logName, const char* operationName,
                      unsigned long long jobId)
      : m_facade(facade), m_log(OperationLog::facade(debug, logName, jobId)), m_operationName(operationName) {}

  // A level 0 line in the form without job identifier: the request and success lines.
  template <typename... Arguments>
  void line(const char* format, Arguments... arguments) {
    m_log.lineWithoutJob(0, format, arguments...);
  }
  OperationLog& log() { return m_log; }

  // An argument refused when `refused` holds, with the text the caller gets.
  struct Refusal {
    bool refused;
    const char* text;
  };
  // Code 2 with the text of the first refusal that holds; success when none does.
  static HuaweiApi::ResultStatus check(std::initializer_list<Refusal> refusals);

  // Sends through ProcessWithServer. A failure keeps its code, and its text becomes `format` with
  // the status text first and the operation's own arguments behind it.
  template <typename... Arguments>
  HuaweiApi::ResultStatus process(HuaweiJSONBaseV2& request, const char* format, Arguments... arguments) {
    const HuaweiApi::ResultStatus status = send(request);
    if (!status.IsError()) return status;
    return HuaweiApi::ResultStatus(status.GetErrorCode(),
                                   YbString::Format(format, status.GetErrorString().c_str(), arguments...));
  }

  // The checks, then the request: what most operations do between their two lines.
  template <typename... Arguments>
  HuaweiApi::ResultStatus checkAndProcess(std::initializer_list<Refusal> refusals, HuaweiJSONBaseV2& request,
                                          const char* format, Arguments... arguments) {
    const HuaweiApi::ResultStatus refused = check(refusals);
    if (refused.IsError()) return refused;
    return process(request, format, arguments...);
  }

 private:
  HuaweiApi::ResultStatus send(HuaweiJSONBaseV2& request);

  RequiredValueContainment::OperationScope m_operation;
  ZrManageHuawei& m_facade;
  OperationLog m_log;
  const char* m_operationName;
};
