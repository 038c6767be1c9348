// Answers requests under /deviceManager/rest/ as the array does: records them, applies the
// fault rules, logs clients in and out, checks the session of every other request, and hands
// it to the resource that serves its path.
#pragma once

#include <mutex>
#include <string>

#include "AnswerStyles.h"
#include "Faults.h"
#include "RequestLog.h"
#include "Sessions.h"
#include "http/HttpExchange.h"
#include "http/Router.h"

namespace arraysim {

class ArrayEndpoint {
 public:
  struct Parts {
    std::string deviceId;
    RequestLog& log;
    FaultInjector& faults;
    AnswerStyles& styles;
    SessionRegistry& sessions;
    const Router& router;
    std::recursive_mutex& stateMutex;
  };

  explicit ArrayEndpoint(Parts parts) : parts_(std::move(parts)) {}

  HttpAnswer handle(const IncomingRequest& request);

  static constexpr const char* kRoot = "/deviceManager/rest/";
  // The device segment of the login path, where no device identifier is known yet.
  static constexpr const char* kLoginDevice = "xxxxx";

 private:
  struct Target;
  struct Outcome;

  Outcome process(const IncomingRequest& request, const Target& target);
  Outcome login(const IncomingRequest& request, const Target& target);
  Outcome logout(const IncomingRequest& request);
  Outcome serve(const IncomingRequest& request, const Target& target, const std::string& vstoreId);
  HttpAnswer spoil(const FaultRule& fault, const Outcome* genuine) const;

  Parts parts_;
};

}  // namespace arraysim
