#include "store/ObjectStore.h"

#include <stdexcept>

namespace arraysim {

using Lock = std::lock_guard<std::recursive_mutex>;

std::string ObjectStore::insert(const std::string& type, Record record) {
  Lock lock(mutex_);
  if (!record.is_object()) throw std::invalid_argument("a " + type + " record is a JSON object");
  auto& table = tables_[type];
  auto& last = lastIds_[type];
  std::string id;
  if (record.contains("ID")) {
    id = record["ID"].is_string() ? record["ID"].get<std::string>() : record["ID"].dump();
    // A given number moves the sequence on, so later assigned identifiers do not collide.
    if (!id.empty() && id.size() < 20 && id.find_first_not_of("0123456789") == std::string::npos) {
      last = std::max(last, std::stoull(id));
    }
  } else {
    id = std::to_string(++last);
  }
  if (id.empty() || table.count(id) != 0) throw std::invalid_argument(type + " \"" + id + "\" exists or is empty");
  record["ID"] = id;
  table.emplace(id, std::move(record));
  return id;
}

std::optional<Record> ObjectStore::get(const std::string& type, const std::string& id) const {
  Lock lock(mutex_);
  const auto table = tables_.find(type);
  if (table == tables_.end()) return std::nullopt;
  const auto it = table->second.find(id);
  if (it == table->second.end()) return std::nullopt;
  return it->second;
}

bool ObjectStore::update(const std::string& type, const std::string& id, const Record& changes) {
  Lock lock(mutex_);
  const auto table = tables_.find(type);
  if (table == tables_.end()) return false;
  const auto it = table->second.find(id);
  if (it == table->second.end()) return false;
  for (const auto& item : changes.items()) {
    if (item.key() != "ID") it->second[item.key()] = item.value();
  }
  return true;
}

bool ObjectStore::erase(const std::string& type, const std::string& id) {
  Lock lock(mutex_);
  const auto table = tables_.find(type);
  if (table == tables_.end() || table->second.erase(id) == 0) return false;
  const ObjectRef gone{type, id};
  for (auto it = associations_.begin(); it != associations_.end();) {
    it = it->first == gone || it->second == gone ? associations_.erase(it) : std::next(it);
  }
  return true;
}

std::vector<Record> ObjectStore::list(const std::string& type) const {
  Lock lock(mutex_);
  std::vector<Record> records;
  const auto table = tables_.find(type);
  if (table == tables_.end()) return records;
  for (const auto& entry : table->second) records.push_back(entry.second);
  return records;
}

std::size_t ObjectStore::count(const std::string& type) const {
  Lock lock(mutex_);
  const auto table = tables_.find(type);
  return table == tables_.end() ? 0 : table->second.size();
}

std::pair<ObjectRef, ObjectRef> ObjectStore::Ordered(const ObjectRef& a, const ObjectRef& b) {
  return b < a ? std::make_pair(b, a) : std::make_pair(a, b);
}

bool ObjectStore::associate(const ObjectRef& a, const ObjectRef& b) {
  Lock lock(mutex_);
  return associations_.insert(Ordered(a, b)).second;
}

bool ObjectStore::dissociate(const ObjectRef& a, const ObjectRef& b) {
  Lock lock(mutex_);
  return associations_.erase(Ordered(a, b)) != 0;
}

bool ObjectStore::associated(const ObjectRef& a, const ObjectRef& b) const {
  Lock lock(mutex_);
  return associations_.count(Ordered(a, b)) != 0;
}

std::vector<std::string> ObjectStore::associatedWith(const ObjectRef& object, const std::string& type) const {
  Lock lock(mutex_);
  std::set<std::string, IdOrder> ids;
  for (const auto& pair : associations_) {
    if (pair.first == object && pair.second.type == type) ids.insert(pair.second.id);
    if (pair.second == object && pair.first.type == type) ids.insert(pair.first.id);
  }
  return {ids.begin(), ids.end()};
}

nlohmann::json ObjectStore::dump() const {
  Lock lock(mutex_);
  nlohmann::json objects = nlohmann::json::object();
  for (const auto& table : tables_) {
    for (const auto& entry : table.second) objects[table.first][entry.first] = entry.second;
  }
  auto associations = nlohmann::json::array();
  for (const auto& pair : associations_) {
    associations.push_back({pair.first.type, pair.first.id, pair.second.type, pair.second.id});
  }
  return {{"objects", std::move(objects)}, {"associations", std::move(associations)}};
}

void ObjectStore::clear() {
  Lock lock(mutex_);
  tables_.clear();
  lastIds_.clear();
  associations_.clear();
}

}  // namespace arraysim
