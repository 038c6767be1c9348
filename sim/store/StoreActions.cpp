#include "store/StoreActions.h"

#include "store/ResourceTable.h"

namespace arraysim {
namespace {

Reply Incorrect() { return Reply::Error(codes::kParameterIncorrect, "The entered parameter is incorrect."); }

// The body as a record: every key but the vStore, which the scope decides.
Record RecordOf(const nlohmann::json& body) {
  Record record = Record::object();
  for (const auto& item : body.items()) {
    if (item.key() != "vstoreId") record[item.key()] = AsArrayValue(item.value());
  }
  return record;
}

std::optional<std::string> VStoreOf(const Record& record) {
  const auto it = record.find("vstoreId");
  if (it == record.end() || !it->is_string()) return std::nullopt;
  return it->get<std::string>();
}

// Another record of the type in the same vStore holds the same unique key.
bool UniqueKeyTaken(const RouteContext& c, const Record& record) {
  const auto& key = c.route.uniqueKey;
  if (key.empty() || !record.contains(key)) return false;
  for (const auto& other : c.store.list(c.route.type)) {
    // A record being created has no ID yet: every other record is then another one.
    const bool same = record.contains("ID") && other.value("ID", Record()) == record["ID"];
    if (!same && other.value(key, Record()) == record[key] && VStoreOf(other) == VStoreOf(record)) {
      return true;
    }
  }
  return false;
}

Reply Create(RouteContext& c) {
  if (c.scope.conflicting()) return c.fail(c.route.absent);
  Record record = c.route.defaults;
  record.update(RecordOf(c.body));
  if (!c.route.idFromBody) record.erase("ID");
  if (!c.scope.owner().empty()) record["vstoreId"] = c.scope.owner();
  if (UniqueKeyTaken(c, record)) return c.fail(c.route.exists);
  if (record.contains("ID") && c.store.get(c.route.type, record["ID"].get<std::string>())) return c.fail(c.route.exists);
  const auto id = c.store.insert(c.route.type, std::move(record));
  return Reply::Object(*c.store.get(c.route.type, id));
}

Reply Get(RouteContext& c) {
  const auto record = c.visible();
  return record ? Reply::Object(*record) : c.fail(c.route.absent);
}

Reply List(RouteContext& c) {
  std::vector<Record> seen;
  for (auto& record : c.store.list(c.route.type)) {
    if (c.scope.admits(record)) seen.push_back(std::move(record));
  }
  return Reply::List(c.query.select(seen));
}

Reply Modify(RouteContext& c) {
  auto record = c.visible();
  if (!record) return c.fail(c.route.absent);
  auto changes = RecordOf(c.body);
  changes.erase("ID");
  record->update(changes);
  if (UniqueKeyTaken(c, *record)) return c.fail(c.route.exists);
  c.store.update(c.route.type, c.id, changes);
  return Reply::Object(*record);
}

Reply Delete(RouteContext& c) {
  if (!c.visible()) return c.fail(c.route.absent);
  c.store.erase(c.route.type, c.id);
  return Reply::Object(nlohmann::json::object());
}

Reply Set(RouteContext& c) {
  if (!c.visible()) return c.fail(c.route.absent);
  c.store.update(c.route.type, c.id, c.route.setFields);
  return Reply::Object(nlohmann::json::object());
}

// ASSOCIATEOBJTYPE and ASSOCIATEOBJID, from the body or the query; numbers or strings.
std::optional<ObjectRef> OtherEnd(const RouteContext& c, const ResourceTable& table) {
  const bool inBody = c.request.method == "POST" || c.request.method == "PUT";
  const auto text = [&](const char* key) -> std::optional<std::string> {
    if (!inBody) return c.query.value(key);
    const auto it = c.body.find(key);
    if (it == c.body.end()) return std::nullopt;
    const auto value = AsArrayValue(*it);
    return value.is_string() ? value.get<std::string>() : std::optional<std::string>();
  };
  const auto number = text("ASSOCIATEOBJTYPE");
  const auto id = text("ASSOCIATEOBJID");
  if (!number || !id || number->empty() || number->size() > 9 ||
      number->find_first_not_of("0123456789") != std::string::npos) {
    return std::nullopt;
  }
  const int type = std::stoi(*number);
  const auto& allowed = c.route.objectTypes;
  if (!allowed.empty() && std::find(allowed.begin(), allowed.end(), type) == allowed.end()) return std::nullopt;
  const auto* name = table.typeOf(type);
  if (name == nullptr) return std::nullopt;
  return ObjectRef{*name, *id};
}

Reply ChangeAssociation(RouteContext& c, const ResourceTable& table, bool associate) {
  const auto other = OtherEnd(c, table);
  if (!other || c.id.empty()) return Incorrect();
  if (!c.visible() || !c.visible(other->type, other->id)) return c.fail(c.route.absent);
  const ObjectRef self{c.route.type, c.id};
  if (associate && !c.store.associate(self, *other)) return c.fail(c.route.exists);
  if (!associate && !c.store.dissociate(self, *other)) return c.fail(c.route.notAssociated);
  return Reply::Object(nlohmann::json::object());
}

Reply ListAssociated(RouteContext& c, const ResourceTable& table) {
  const auto other = OtherEnd(c, table);
  if (!other) return Incorrect();
  if (!c.visible(other->type, other->id)) return c.fail(c.route.absent);
  std::vector<Record> seen;
  for (const auto& id : c.store.associatedWith(*other, c.route.type)) {
    if (auto record = c.visible(c.route.type, id)) seen.push_back(std::move(*record));
  }
  return Reply::List(c.query.select(seen));
}

}  // namespace

nlohmann::json AsArrayValue(const nlohmann::json& value) {
  if (value.is_string() || value.is_structured() || value.is_null()) return value;
  return value.dump();
}

Reply RunAction(RouteContext& context, const ResourceTable& table) {
  switch (context.route.action) {
    case Action::Create: return Create(context);
    case Action::Get: return Get(context);
    case Action::List: return List(context);
    case Action::Modify: return Modify(context);
    case Action::Delete: return Delete(context);
    case Action::Set: return Set(context);
    case Action::Associate: return ChangeAssociation(context, table, true);
    case Action::Dissociate: return ChangeAssociation(context, table, false);
    case Action::ListAssociated: return ListAssociated(context, table);
    case Action::Custom: break;
  }
  return Reply::Object(nlohmann::json::object());
}

}  // namespace arraysim
