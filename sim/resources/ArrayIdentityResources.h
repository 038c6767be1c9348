// Array identity: GET system/, GET ndmpservice[/<vstoreId>], GET vstore/<id>.
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>

#include <nlohmann/json.hpp>

#include "http/Router.h"
#include "store/ObjectStore.h"
#include "store/ResourceTable.h"

namespace arraysim {

// All values are strings on the wire, the booleans included ("true"/"false").
struct NdmpSettings {
  std::string isEnabled = "true";
  std::string ip = "192.168.100.10";
  std::string port = "10000";
  std::string version = "4";
  std::string isSupportSnapshot = "true";
  std::string vstoreId;    // empty: the array-wide service; also leaves the key out of the answer
  std::string vstoreName;  // left out of the answer when empty
};

struct VStore {
  std::string id;
  std::string name;
  std::string runningStatus = "1";
};

class ArrayIdentityResources {
 public:
  ArrayIdentityResources(std::recursive_mutex& mutex, ObjectStore& store, std::string deviceId);

  // The record of GET system/. It starts with ID (the device identifier), NAME,
  // HEALTHSTATUS "1", RUNNINGSTATUS "1", PRODUCTVERSION and a few more strings.
  nlohmann::json systemRecord() const;
  void setSystemField(const std::string& key, const std::string& value);
  void eraseSystemField(const std::string& key);

  // Settings are kept per vStore; those with an empty vstoreId answer GET ndmpservice.
  void setNdmp(const NdmpSettings& settings);
  void removeNdmp(const std::string& vstoreId);
  std::optional<NdmpSettings> ndmp(const std::string& vstoreId) const;

  void addVStore(const VStore& vstore);
  void removeVStore(const std::string& id);
  std::optional<VStore> vstore(const std::string& id) const;

  // Back to the defaults: the system record and array-wide NDMP settings. The vStores are
  // records of the store, which is cleared with it.
  void clear();
  void registerRoutes(Router& router);
  static void Declare(ResourceTable& table);
  static constexpr const char* kVStoreType = "vstore";

 private:
  Reply getSystem() const;
  Reply getNdmp(const std::string& vstoreId) const;

  std::recursive_mutex& mutex_;
  ObjectStore& store_;
  std::string deviceId_;
  nlohmann::json system_;
  std::map<std::string, NdmpSettings> ndmp_;
};

}  // namespace arraysim
