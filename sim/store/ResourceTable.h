// The routes served from the object store. A resource is a few rows:
//
//   table.add(ResourceRoute("POST", "lungroup", "lungroup", Action::Create).requiring({"NAME"}));
//   table.add(ResourceRoute("GET", "lungroup", "lungroup", Action::List));
//   table.add(ResourceRoute("DELETE", "lungroup/{}", "lungroup", Action::Delete));
//
// Every row gets the same frame: strict JSON for POST and PUT bodies, the query language,
// vStore scoping and the array's error answers.
#pragma once

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "http/Router.h"
#include "store/ObjectStore.h"
#include "store/ResourceRoute.h"

namespace arraysim {

class ResourceTable {
 public:
  explicit ResourceTable(ObjectStore& store);

  // Rows added after registerRoutes() are served at once; add them before clients talk.
  void add(ResourceRoute route);
  // The array's number for an object type, as ASSOCIATEOBJTYPE carries it. Host 21, host group
  // 14, LUN 11, snapshot LUN 27, LUN group 256 and mapping view 245 are known from the start.
  void objectType(int number, std::string type);
  const std::string* typeOf(int number) const;

  void registerRoutes(Router& router);
  Reply serve(const ResourceRoute& route, const ArrayRequest& request) const;

 private:
  void route(const ResourceRoute& row);

  ObjectStore& store_;
  std::deque<ResourceRoute> routes_;  // the router keeps pointers to them
  std::map<int, std::string> objectTypes_;
  Router* router_ = nullptr;
};

}  // namespace arraysim
