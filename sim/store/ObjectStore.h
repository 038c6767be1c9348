// The array's objects of every kind that needs no state of its own beyond its record: typed
// records (type -> id -> record) and the associations between them. A record is a JSON object
// whose values are strings, as the array sends them; "ID" always holds the record's identifier.
//
// Every member locks the array's state mutex (recursive), so tests may seed and read while
// clients talk to the simulator, and route handlers, which run under that lock, may call them.
#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include <nlohmann/json.hpp>

namespace arraysim {

using Record = nlohmann::json;

// One end of an association: the store type and the identifier of an object.
struct ObjectRef {
  std::string type;
  std::string id;
  bool operator<(const ObjectRef& other) const { return std::tie(type, id) < std::tie(other.type, other.id); }
  bool operator==(const ObjectRef& other) const { return type == other.type && id == other.id; }
};

class ObjectStore {
 public:
  explicit ObjectStore(std::recursive_mutex& mutex) : mutex_(mutex) {}

  // Adds a record and answers its identifier: the record's "ID" when it has one, otherwise the
  // next number of the type. Throws std::invalid_argument on a taken identifier or a record
  // that is not an object.
  std::string insert(const std::string& type, Record record);
  std::optional<Record> get(const std::string& type, const std::string& id) const;
  // Merges `changes` into the record; false when there is no such record. "ID" stays.
  bool update(const std::string& type, const std::string& id, const Record& changes);
  // Removes the record with its associations; false when there was none.
  bool erase(const std::string& type, const std::string& id);
  // Records of a type in identifier order (numbers by value).
  std::vector<Record> list(const std::string& type) const;
  std::size_t count(const std::string& type) const;

  // Associations have no direction: associate(a, b) is found from either end.
  bool associate(const ObjectRef& a, const ObjectRef& b);  // false when they already were
  bool dissociate(const ObjectRef& a, const ObjectRef& b);  // false when they were not
  bool associated(const ObjectRef& a, const ObjectRef& b) const;
  // The identifiers of the objects of `type` associated with `object`, in identifier order.
  std::vector<std::string> associatedWith(const ObjectRef& object, const std::string& type) const;

  // The whole store in one canonical document, for comparing states:
  // {"objects": {type: {id: record}}, "associations": [[typeA, idA, typeB, idB], ...]}.
  // Types without records are left out, so creating and deleting an object leaves it equal.
  nlohmann::json dump() const;
  void clear();

 private:
  // Numbers sort by value, other identifiers after them by their text.
  struct IdOrder {
    bool operator()(const std::string& a, const std::string& b) const {
      return std::make_tuple(a.size(), a) < std::make_tuple(b.size(), b);
    }
  };
  using Table = std::map<std::string, Record, IdOrder>;
  static std::pair<ObjectRef, ObjectRef> Ordered(const ObjectRef& a, const ObjectRef& b);

  std::recursive_mutex& mutex_;
  std::map<std::string, Table> tables_;
  std::map<std::string, unsigned long long> lastIds_;
  std::set<std::pair<ObjectRef, ObjectRef>> associations_;
};

}  // namespace arraysim
