// The request-and-answer steps shared by the first two generations of operation: build the body
// where the method has one, send through the transport, reject an empty answer, parse. It reports
// where it stopped; each generation turns that into its own kind of failure.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "CodeReactions.h"
#include "HuaweiApiResultStatus.h"
#include "HuaweiRequestTypes.h"
#include "RequiredValueContainment.h"
#include "ResourcePath.h"

class HuaweiJSONBase;
class HuaweiRestAPI;

// What an operation sends: method, resource with its query, and operation type.
struct PlainCall {
  REQ_TYPE_HUAWEI method;
  ResourcePath resource;
  int opType;
};

// An operation's call by its method, named as the transport names it.
namespace PlainCalls {
inline PlainCall get(ResourcePath resource, int opType) { return {HUAWEI_REQ_GET, std::move(resource), opType}; }
inline PlainCall post(ResourcePath resource, int opType) { return {HUAWEI_REQ_POST, std::move(resource), opType}; }
inline PlainCall put(ResourcePath resource, int opType) { return {HUAWEI_REQ_PUT, std::move(resource), opType}; }
inline PlainCall del(ResourcePath resource, int opType) { return {HUAWEI_REQ_DELETE, std::move(resource), opType}; }
}  // namespace PlainCalls

// MissingValue: the answer lacked a required value and the embedder contains such failures to the
// operation; also the step of every later exchange of that operation, which sends nothing.
enum class FrameStep { Completed, BuildFailed, SendFailed, EmptyResponse, ParseFailed, MissingValue };

class PlainCallFrame {
 public:
  explicit PlainCallFrame(HuaweiRestAPI& transport) : m_transport(transport) {}

  // A resource that refused a value stops at FrameStep::BuildFailed, before anything is sent.
  FrameStep exchange(HuaweiJSONBase& request, const PlainCall& call);
  // The steps behind the send, on the answer of the last exchange, whatever its status.
  FrameStep readAnswer(HuaweiJSONBase& request);

  const HuaweiApi::ResultStatus& status() const { return m_status; }
  bool sent() const { return m_sent; }
  // Code and message of the last classified answer, as the transport keeps them.
  void errorInfo(unsigned long long& code, std::string& message) const;
  // The array's description of that answer.
  std::string arrayDescription() const;

 private:
  HuaweiRestAPI& m_transport;
  HuaweiApi::ResultStatus m_status;
  bool m_sent = false;
  std::string m_response;
};

class OperationLog;

// What the first- and second-generation adapters share: the frame of one call, whether the
// session was open when the call began, and the operation's log.
class PlainCallBase {
 public:
  PlainCallBase(HuaweiRestAPI& transport, bool sessionOpen, OperationLog& log)
      : m_frame(transport), m_sessionOpen(sessionOpen), m_log(log) {}

  std::string arrayDescription() const { return m_frame.arrayDescription(); }
  // The status of this call's last send.
  const HuaweiApi::ResultStatus& status() const { return m_frame.status(); }
  // Whether the last exchange reached the send, so that its status tells the array's answer.
  bool sent() const { return m_frame.sent(); }
  OperationLog& log() { return m_log; }

  // A generic request (requests/RecordRequests.h) handed over by value: the call keeps it for
  // its life and gives it the operation's job identifier.
  template <class Request>
  using Generic = std::enable_if_t<!std::is_lvalue_reference<Request>::value, int>;

 protected:
  template <class Request>
  HuaweiJSONBase& keep(Request&& request, unsigned long long jobId) {
    auto kept = std::make_shared<Request>(std::move(request));
    kept->forJob(jobId);
    m_keptRequest = kept;
    return *kept;
  }

  // The row of `reactions` that answers the refused send of the last exchange, with the table's
  // and the row's lines told and the row's flag set; none when no row answers it.
  const CodeReaction* reactToRefusal(const CodeReactions& reactions);

  // The frame's exchange; a value refused by its place is told here, once for every operation.
  FrameStep exchangeLogged(HuaweiJSONBase& request, const PlainCall& call);

  // Logs the contained failure of the last exchange at level -1, once: where it was read.
  void reportMissingValue();

  RequiredValueContainment::OperationScope m_operation;
  PlainCallFrame m_frame;
  bool m_sessionOpen;
  OperationLog& m_log;
  std::shared_ptr<HuaweiJSONBase> m_keptRequest;
};

// Guard texts name the operation; ZrManageHuawei::init() does not exist, the text stands as it is.
std::string guardText(const char* operationName);
// The operation's name in a log name: what follows "ZrManageHuawei::", or all of it.
const char* operationName(const char* logName);
extern const char kBuildFailedText[];
// The level of failure lines.
const int kFailureLevel = -1;
extern const char kEmptyResponseText[];
extern const char kParseFailedText[];
// The same, as the operations that prefix their failures tell it.
extern const char kErrorParseFailedText[];
