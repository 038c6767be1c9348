// The operations of one family run through the library, with what each answered written down:
// success, code and text, and the records and values it gave back. Recorded once against the
// simulator, the results are what every replay of the recording must give again.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "RecordJson.h"
#include "ZrManageHuawei.h"

namespace conformance {

using Json = nlohmann::ordered_json;

// One entry per operation, in the order they ran. The outputs are added by with(), which runs
// after the operation has filled them:
//   journal.note("getLUNInfo", array.getLUNInfo(lun, id, vstore)).with("lun", lun);
class Journal {
 public:
  class Entry {
   public:
    explicit Entry(Json& entry) : entry_(entry) {}
    template <class Value>
    Entry& with(const char* key, const Value& value) {
      entry_["out"][key] = value;
      return *this;
    }

   private:
    Json& entry_;
  };

  // The first generation tells its reason in the log only.
  Entry note(const char* operation, bool ok);
  Entry note(const char* operation, const CXoError& result);
  Entry note(const char* operation, const HuaweiApi::ResultStatus& result);

  const Json& entries() const { return entries_; }

 private:
  Entry add(const char* operation, bool ok, long long code, const std::string& text);

  Json entries_ = Json::array();
};

struct Scenario {
  std::string family;
  // The simulator's state the family is recorded from.
  nlohmann::json seed;
  void (*run)(ZrManageHuawei& array, Journal& journal);
};

Scenario Inventory();
Scenario Shares();
Scenario LunPresentation();
Scenario Provisioning();
const std::vector<Scenario>& AllScenarios();
// The scenario of that family; throws std::out_of_range for another name.
const Scenario& FindScenario(const std::string& family);

// Logs in to the array at host with the simulator's account, runs the scenario and logs out.
// The array's device identifier, which it also reports as its system identifier, is written as
// {deviceid}, as in the recording: a replay serves a fresh one.
Json RunScenario(const Scenario& scenario, const std::string& host, const std::string& deviceId);

}  // namespace conformance
