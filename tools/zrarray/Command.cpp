#include "Command.h"

#include <stdexcept>

namespace zrarray {

namespace {
// Codes below this one are set by the client side, not by the array.
const unsigned long long kFirstArrayCode = HuaweiApi::RESULT_CLIENT_FAILURE + 1;
}  // namespace

std::map<std::string, std::string> SpeedWords() {
  return {{"low", HuaweiApiValue::COPY_SPEED_LOW.getValue()},
          {"medium", HuaweiApiValue::COPY_SPEED_MEDIUM.getValue()},
          {"high", HuaweiApiValue::COPY_SPEED_HIGH.getValue()},
          {"highest", HuaweiApiValue::COPY_SPEED_HIGHEST.getValue()}};
}

std::map<std::string, std::string> CifsPermissionWords() {
  return {{"read-only", "0"}, {"full-control", "1"}, {"forbidden", "2"}, {"read-write", "5"}};
}

std::map<std::string, std::string> NfsAccessWords() { return {{"read-only", "0"}, {"read-write", "1"}}; }

std::map<std::string, std::string> NfsSyncWords() { return {{"sync", "0"}, {"async", "1"}}; }

std::map<std::string, std::string> SquashWords(const std::string& squash) {
  return {{squash, "0"}, {"no-" + squash, "1"}};
}

const std::string& Arguments::operator[](const std::string& name) const {
  const auto found = texts_.find(name);
  if (found == texts_.end()) throw std::logic_error("zrarray: no argument --" + name);
  return found->second;
}

unsigned long long Arguments::number(const std::string& name) const { return std::stoull((*this)[name]); }

bool Arguments::flag(const std::string& name) const {
  const auto found = flags_.find(name);
  if (found == flags_.end()) throw std::logic_error("zrarray: no flag --" + name);
  return found->second;
}

bool Arguments::given(const std::string& name) const {
  const auto found = texts_.find(name);
  return found != texts_.end() && !found->second.empty();
}

const std::vector<std::string>& Arguments::list(const std::string& name) const {
  const auto found = lists_.find(name);
  if (found == lists_.end()) throw std::logic_error("zrarray: no list --" + name);
  return found->second;
}

Outcome Outcome::of(bool ok) {
  Outcome outcome;
  outcome.ok = ok;
  return outcome;
}

Outcome Outcome::of(const CXoError& error) {
  Outcome outcome;
  outcome.ok = !error.IsError();
  if (!outcome.ok) outcome.reason = error.AsString();
  return outcome;
}

Outcome Outcome::of(const HuaweiApi::ResultStatus& status) {
  Outcome outcome;
  outcome.ok = !status.IsError();
  if (outcome.ok) return outcome;
  if (status.GetErrorCode() >= kFirstArrayCode) {
    outcome.arrayCode = status.GetErrorCode();
    outcome.arrayDescription = status.GetErrorString();
  } else {
    outcome.reason = status.GetErrorString();
  }
  return outcome;
}

Outcome Outcome::failure(std::string reason) {
  Outcome outcome;
  outcome.ok = false;
  outcome.reason = std::move(reason);
  return outcome;
}

void ReadAbsence(Result& result) {
  const Outcome& outcome = result.outcome;
  // A refusal of the array or a broken exchange is a failure, whatever the row.
  if (outcome.ok || outcome.arrayCode != 0 || !outcome.cause.empty()) return;
  if (result.list && outcome.answeredNothing) {
    result.outcome = Outcome{};
    result.value = Json::array();
  } else if (!result.lookedFor.empty() && (outcome.answeredNothing || outcome.reason.empty())) {
    result.outcome = Outcome::failure("not found: " + result.lookedFor);
  }
}

}  // namespace zrarray
