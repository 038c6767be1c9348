#include "Scenario.h"

#include <stdexcept>

#include "ArraySimulator.h"

namespace conformance {

Journal::Entry Journal::note(const char* operation, bool ok) { return add(operation, ok, ok ? 0 : -1, ""); }

Journal::Entry Journal::note(const char* operation, const CXoError& result) {
  return add(operation, !result.IsError(), result.GetCode(), result.AsString());
}

Journal::Entry Journal::note(const char* operation, const HuaweiApi::ResultStatus& result) {
  return add(operation, !result.IsError(), static_cast<long long>(result.GetErrorCode()), result.GetErrorString());
}

Journal::Entry Journal::add(const char* operation, bool ok, long long code, const std::string& text) {
  entries_.push_back({{"operation", operation}, {"ok", ok}, {"code", code}, {"text", text}, {"out", Json::object()}});
  return Entry(entries_.back());
}

const std::vector<Scenario>& AllScenarios() {
  static const std::vector<Scenario> all = {Inventory(), Shares(), LunPresentation(), Provisioning()};
  return all;
}

const Scenario& FindScenario(const std::string& family) {
  for (const auto& scenario : AllScenarios()) {
    if (scenario.family == family) return scenario;
  }
  throw std::out_of_range("no scenario for the family " + family);
}

Json RunScenario(const Scenario& scenario, const std::string& host, const std::string& deviceId) {
  Journal journal;
  ZrManageHuawei array(23);
  const bool open =
      array.createSession(arraysim::SimulatorOptions::kDefaultUser, arraysim::SimulatorOptions::kDefaultPassword, host);
  journal.note("createSession", open);
  if (open) {
    scenario.run(array, journal);
    journal.note("closeSession", array.closeSession());
  }
  std::string text = journal.entries().dump();
  for (auto at = text.find(deviceId); !deviceId.empty() && at != std::string::npos; at = text.find(deviceId, at)) {
    text.replace(at, deviceId.size(), "{deviceid}");
  }
  return Json::parse(text);
}

}  // namespace conformance
