// The frame of third-generation operations: they answer HuaweiApi::ResultStatus and go through
// ZrManageHuawei::ProcessWithServer, which opens the session by itself. An operation states its
// entry line, its argument checks in order, its failure format and its success line.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>

#include "HuaweiApiResultStatus.h"
#include "OperationLog.h"
#include "YbString.h"

class HuaweiJSONBaseV2;

// An argument check: when `missing` holds, the operation fails with code 2 and `failureText`.
struct ArgumentCheck {
  bool missing;
  const char* failureText;
};

class ThirdGenerationCall {
 public:
  // What drives a self-describing request: ZrManageHuawei::ProcessWithServer.
  using Processor = std::function<HuaweiApi::ResultStatus(std::string const&, HuaweiJSONBaseV2* const&)>;

  // logName tags every line (the operation's own name); operationName goes to the processor.
  ThirdGenerationCall(TkDebug& debug, const char* logName, unsigned long long jobId, const char* operationName,
                      Processor processor)
      : m_log(OperationLog::facade(debug, logName, jobId)),
        m_operationName(operationName),
        m_processor(std::move(processor)) {}

  // A level 0 line in the form without job identifier: the entry and success lines.
  template <typename... Arguments>
  void line(const char* format, Arguments... arguments) {
    m_log.lineWithoutJob(0, "%s", YbString::Format(format, arguments...).c_str());
  }
  OperationLog& log() { return m_log; }

  // Code 2 with the text of the first failed check, in the given order; success otherwise.
  static HuaweiApi::ResultStatus check(std::initializer_list<ArgumentCheck> checks);

  // Sends the request. A failure keeps its code and takes the text made from `failureFormat`, with
  // the status text first and the operation's own arguments behind it.
  template <typename... Arguments>
  HuaweiApi::ResultStatus process(HuaweiJSONBaseV2& request, const char* failureFormat, Arguments... arguments) {
    HuaweiApi::ResultStatus status = m_processor(m_operationName, &request);
    if (!status) return failed(status, failureFormat, arguments...);
    return status;
  }

  template <typename... Arguments>
  static HuaweiApi::ResultStatus failed(const HuaweiApi::ResultStatus& status, const char* format,
                                        Arguments... arguments) {
    return HuaweiApi::ResultStatus(status.GetErrorCode(),
                                   YbString::Format(format, status.GetErrorString().c_str(), arguments...));
  }

 private:
  OperationLog m_log;
  std::string m_operationName;
  Processor m_processor;
};
