#include "store/ResourceTable.h"

#include "store/StoreActions.h"

namespace arraysim {
namespace {

constexpr const char* kIncorrectParameter = "The entered parameter is incorrect.";

std::optional<std::string> BodyText(const nlohmann::json& body, const char* key) {
  const auto it = body.find(key);
  if (it == body.end() || it->is_null()) return std::nullopt;
  const auto value = AsArrayValue(*it);
  return value.is_string() ? value.get<std::string>() : value.dump();
}

}  // namespace

ResourceTable::ResourceTable(ObjectStore& store)
    : store_(store),
      objectTypes_{{11, "lun"}, {14, "hostgroup"}, {21, "host"}, {27, "snapshot"}, {245, "mappingview"}, {256, "lungroup"}} {}

void ResourceTable::add(ResourceRoute route) {
  routes_.push_back(std::move(route));
  if (router_ != nullptr) this->route(routes_.back());
}

void ResourceTable::objectType(int number, std::string type) { objectTypes_[number] = std::move(type); }

const std::string* ResourceTable::typeOf(int number) const {
  const auto it = objectTypes_.find(number);
  return it == objectTypes_.end() ? nullptr : &it->second;
}

void ResourceTable::registerRoutes(Router& router) {
  router_ = &router;
  for (const auto& row : routes_) route(row);
}

void ResourceTable::route(const ResourceRoute& row) {
  router_->add(row.method, row.path, [this, &row](const ArrayRequest& r) { return serve(row, r); }, row.style);
}

Reply ResourceTable::serve(const ResourceRoute& route, const ArrayRequest& request) const {
  const auto query = Query::Parse(request.queryText);
  if (!query) return Reply::Error(codes::kParameterIncorrect, kIncorrectParameter);

  auto body = nlohmann::json::object();
  const bool withBody = request.method == "POST" || request.method == "PUT";
  if (withBody) {
    // Strict: a body the client failed to escape must show up as the array's refusal.
    body = nlohmann::json::parse(request.body, nullptr, false);
    if (body.is_discarded() || !body.is_object()) return Reply::Error(codes::kParameterIncorrect, kIncorrectParameter);
    for (const auto& key : route.requiredKeys) {
      if (!body.contains(key)) return Reply::Error(codes::kParameterIncorrect, kIncorrectParameter);
    }
  }

  auto requested = withBody ? BodyText(body, "vstoreId") : query->value("vstoreId");
  if (requested && requested->empty()) requested.reset();
  const VStoreScope scope = route.scoped ? VStoreScope(request.accountVStoreId, requested) : VStoreScope("", std::nullopt);

  std::string id;
  if (!request.parameters.empty()) {
    id = request.parameters.front();
  } else if (withBody) {
    id = BodyText(body, "ID").value_or("");
  } else {
    id = query->value("ID").value_or("");
  }

  RouteContext context{request, route, store_, *query, scope, std::move(body), std::move(id)};
  if (route.hook) {
    if (auto reply = route.hook(context)) return std::move(*reply);
  }
  return RunAction(context, *this);
}

std::optional<Record> RouteContext::visible() const { return visible(route.type, id); }

std::optional<Record> RouteContext::visible(const std::string& type, const std::string& objectId) const {
  auto record = store.get(type, objectId);
  if (!record || !scope.admits(*record)) return std::nullopt;
  return record;
}

}  // namespace arraysim
