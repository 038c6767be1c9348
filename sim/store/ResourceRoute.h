// One row of the resource table: a route of the array declared as data. The generic action
// does the work; the row holds only what is the resource's own.
#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "AnswerStyles.h"
#include "ArrayCodes.h"
#include "http/Reply.h"
#include "store/ObjectStore.h"
#include "store/Query.h"
#include "store/VStoreScope.h"

namespace arraysim {

enum class Action {
  Create,          // POST with the record's keys in the body; answers the new record
  Get,             // GET <path>/{}: the record
  List,            // GET with the query language: the records
  Modify,          // PUT <path>/{} or PUT with "ID" in the body: merges the body
  Delete,          // DELETE <path>/{}
  Set,             // PUT naming the record (path or body "ID"): gives it the row's fields, whatever the body says
  Associate,       // ID, ASSOCIATEOBJTYPE, ASSOCIATEOBJID (body, or query for DELETE)
  Dissociate,      //   the same, undone
  ListAssociated,  // GET <path>?ASSOCIATEOBJTYPE=n&ASSOCIATEOBJID=id: the records tied to that object
  Custom,          // the hook alone; an empty answer when it gives none
};

struct ArrayError {
  long long code;
  std::string description;
};

struct ResourceRoute;

// What an action and a hook see of one request. Handlers run under the state lock.
struct RouteContext {
  const ArrayRequest& request;
  const ResourceRoute& route;
  ObjectStore& store;
  const Query& query;
  const VStoreScope& scope;
  nlohmann::json body;  // POST and PUT: the parsed body; otherwise an empty object
  std::string id;       // the path's identifier, else the body's (or, for DELETE, the query's) "ID"

  Reply fail(const ArrayError& error) const { return Reply::Error(error.code, error.description); }
  // The record of the route's type with the context's id, when the scope sees it.
  std::optional<Record> visible() const;
  std::optional<Record> visible(const std::string& type, const std::string& objectId) const;
};

// Runs before the generic action; a reply ends the request there, nothing lets it go on.
using RouteHook = std::function<std::optional<Reply>(RouteContext&)>;

// Rows read as one expression:
//   ResourceRoute("POST", "lungroup/associate", "lungroup", Action::Associate)
//       .associating({11, 27}).existsAs(1077948997, "The object is already associated.")
struct ResourceRoute {
  ResourceRoute(std::string method, std::string path, std::string type, Action action)
      : method(std::move(method)), path(std::move(path)), type(std::move(type)), action(action) {}

  ResourceRoute& absentAs(long long code, std::string text) { absent = {code, std::move(text)}; return *this; }
  ResourceRoute& absentAs(ArrayError error) { absent = std::move(error); return *this; }
  ResourceRoute& existsAs(long long code, std::string text) { exists = {code, std::move(text)}; return *this; }
  ResourceRoute& notAssociatedAs(long long code, std::string text) { notAssociated = {code, std::move(text)}; return *this; }
  ResourceRoute& requiring(std::vector<std::string> keys) { requiredKeys = std::move(keys); return *this; }
  ResourceRoute& uniqueBy(std::string key) { uniqueKey = std::move(key); return *this; }
  ResourceRoute& withDefaults(Record record) { defaults = std::move(record); return *this; }
  ResourceRoute& setting(Record fields) { setFields = std::move(fields); return *this; }
  ResourceRoute& givenId() { idFromBody = true; return *this; }
  ResourceRoute& unscoped() { scoped = false; return *this; }
  ResourceRoute& associating(std::vector<int> types) { objectTypes = std::move(types); return *this; }
  ResourceRoute& shaped(AnswerStyle answer) { style = answer; return *this; }
  ResourceRoute& hooked(RouteHook routeHook) { hook = std::move(routeHook); return *this; }

  std::string method;
  std::string path;  // matched case-exactly; "{}" stands for the identifier: "lungroup/{}"
  std::string type;  // the store type of its records
  Action action;

  ArrayError absent{codes::kObjectNotFound, "The object does not exist."};
  // Create: a record with the same unique key in the vStore; Associate: already associated.
  ArrayError exists{codes::kNameExists, "The name already exists."};
  ArrayError notAssociated{codes::kObjectNotFound, "The association does not exist."};

  std::vector<std::string> requiredKeys;  // body keys that must be there
  std::string uniqueKey = "NAME";         // Create and Modify; empty: no key is unique
  Record defaults = Record::object();     // Create: keys a new record has unless the body sets them
  Record setFields = Record::object();    // Set: the fields it gives the record
  bool idFromBody = false;                // Create: the body's "ID" names the new object
  bool scoped = true;                     // false: objects of no vStore, seen by every login
  std::vector<int> objectTypes;           // associations: ASSOCIATEOBJTYPE values allowed; empty: any
  AnswerStyle style;
  RouteHook hook;
};

}  // namespace arraysim
