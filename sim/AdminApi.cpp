#include "AdminApi.h"

#include <map>
#include <stdexcept>

#include "ArraySimulator.h"
#include "Seed.h"

namespace arraysim {
namespace {

using nlohmann::json;

HttpAnswer Answer(const json& body, int status = 200) {
  HttpAnswer answer;
  answer.status = status;
  answer.contentType = "application/json";
  answer.body = body.dump(-1, ' ', false, json::error_handler_t::replace);
  return answer;
}

json Body(const IncomingRequest& request) {
  if (request.body.empty()) return json::object();
  auto body = json::parse(request.body, nullptr, false);
  if (body.is_discarded()) throw std::invalid_argument("the body is not valid JSON");
  return body;
}

std::map<std::string, std::string> QueryParameters(const std::string& target) {
  std::map<std::string, std::string> values;
  const auto question = target.find('?');
  if (question == std::string::npos) return values;
  std::size_t start = question + 1;
  while (start < target.size()) {
    auto end = target.find('&', start);
    if (end == std::string::npos) end = target.size();
    const auto pair = target.substr(start, end - start);
    const auto equals = pair.find('=');
    values[pair.substr(0, equals)] = equals == std::string::npos ? "" : pair.substr(equals + 1);
    start = end + 1;
  }
  return values;
}

FaultRule Fault(const json& body) {
  static const std::map<std::string, FaultKind> kKinds = {
      {"arrayError", FaultKind::ArrayError},   {"httpStatus", FaultKind::HttpStatus},
      {"emptyBody", FaultKind::EmptyBody},     {"emptyObject", FaultKind::EmptyObject},
      {"htmlPage", FaultKind::HtmlPage},       {"truncatedJson", FaultKind::TruncatedJson},
      {"withoutErrorObject", FaultKind::WithoutErrorObject}, {"cannedBody", FaultKind::CannedBody},
      {"delay", FaultKind::Delay},             {"dropConnection", FaultKind::DropConnection},
      {"abortAnswer", FaultKind::AbortAnswer}};
  const auto kind = kKinds.find(body.value("kind", ""));
  if (kind == kKinds.end()) throw std::invalid_argument("unknown fault kind");
  auto rule = FaultRule::On(body.value("method", ""), body.value("resource", ""));
  switch (kind->second) {
    case FaultKind::ArrayError: rule.arrayError(body.value("code", 0LL), body.value("description", "")); break;
    case FaultKind::HttpStatus: rule.httpStatus(500); break;
    case FaultKind::EmptyBody: rule.emptyBody(); break;
    case FaultKind::EmptyObject: rule.emptyObject(); break;
    case FaultKind::HtmlPage: rule.htmlPage(); break;
    case FaultKind::TruncatedJson: rule.truncatedJson(); break;
    case FaultKind::WithoutErrorObject: rule.withoutErrorObject(); break;
    case FaultKind::CannedBody: rule.cannedBody(body.value("body", "")); break;
    case FaultKind::Delay: rule.delayed(std::chrono::milliseconds(body.value("delayMs", 0))); break;
    case FaultKind::DropConnection: rule.dropConnection(); break;
    case FaultKind::AbortAnswer: rule.abortAnswer(); break;
  }
  if (body.contains("status")) rule.status = body.at("status").get<int>();
  if (body.value("exact", false)) rule.exactly();
  if (body.contains("processed")) rule.afterProcessing(body.at("processed").get<bool>());
  rule.times(body.value("times", 1));
  return rule;
}

json ChangeJson(const Change& change) {
  const auto& a = change.attributes;
  return {{"changeType", static_cast<int>(change.changeType)},
          {"fType", static_cast<int>(change.fileType)},
          {"filePath", change.path},
          {"inode", a.inode},
          {"size", a.size}};
}

}  // namespace

HttpAnswer AdminApi::handle(const IncomingRequest& request) {
  const auto question = request.target.find('?');
  const std::string path = request.target.substr(std::string(kRoot).size(), question - std::string(kRoot).size());
  const auto& method = request.method;
  auto& sim = simulator_;
  try {
    if (method == "GET" && path == "health") {
      return Answer({{"deviceId", sim.deviceId()}, {"address", sim.address()}, {"port", sim.port()},
                     {"caCertPath", sim.caCertPath()}});
    }
    if (method == "GET" && path == "store") return Answer(sim.store().dump());
    if (method == "POST" && path == "reset") {
      sim.reset();
      return Answer(json::object());
    }
    if (method == "POST" && path == "seed") {
      sim.seed(Body(request));
      return Answer(json::object());
    }
    if (method == "POST" && path == "filesystems") {
      const auto body = Body(request);
      FileSystemInfo info;
      info.vstoreId = body.value("vstoreId", "");
      return Answer({{"id", sim.fileSystems().create(body.value("NAME", ""), info)}});
    }
    const std::string prefix = "filesystems/";
    const std::string suffix = "/steps";
    if (method == "POST" && path.rfind(prefix, 0) == 0 && path.size() > prefix.size() + suffix.size() &&
        path.compare(path.size() - suffix.size(), suffix.size(), suffix) == 0) {
      const auto id = path.substr(prefix.size(), path.size() - prefix.size() - suffix.size());
      return Answer({{"snapshots", ApplyFileSteps(sim.model(), id, Body(request))}});
    }
    if (method == "POST" && path == "generate") {
      const auto body = Body(request);
      GenerationPlan plan;
      plan.fileSystemName = body.value("name", plan.fileSystemName);
      plan.vstoreId = body.value("vstoreId", "");
      plan.tree.files = body.value("files", std::size_t{0});
      plan.tree.filesPerDirectory = body.value("filesPerDirectory", plan.tree.filesPerDirectory);
      plan.tree.fileSize = body.value("fileSize", plan.tree.fileSize);
      plan.changes.created = body.value("created", std::size_t{0});
      plan.changes.modified = body.value("modified", std::size_t{0});
      plan.changes.deleted = body.value("deleted", std::size_t{0});
      const auto pair = sim.generateSnapshotPair(plan);
      return Answer({{"fileSystemId", pair.fileSystemId},
                     {"baseSnapshotId", pair.baseSnapshotId},
                     {"incrementalSnapshotId", pair.incrementalSnapshotId},
                     {"changeCount", pair.changeCount}});
    }
    if (method == "GET" && path == "difference") {
      auto query = QueryParameters(request.target);
      const auto changes = sim.changeLists().difference(query["base"], query["incremental"]);
      json answer = {{"count", changes.size()}};
      if (query["list"] == "true") {
        answer["changes"] = json::array();
        for (const auto& change : changes) answer["changes"].push_back(ChangeJson(change));
      }
      return Answer(answer);
    }
    if (method == "PUT" && path == "pagesize") {
      sim.changeLists().setPageSize(Body(request).value("entries", std::size_t{1000}));
      return Answer(json::object());
    }
    if (path == "faults" && (method == "POST" || method == "DELETE")) {
      if (method == "POST") sim.faults().add(Fault(Body(request)));
      else sim.faults().clear();
      return Answer(json::object());
    }
    if (path == "requests" && method == "GET") {
      auto list = json::array();
      for (const auto& recorded : sim.requests().all()) {
        list.push_back({{"sequence", recorded.sequence}, {"method", recorded.method}, {"target", recorded.target},
                        {"body", recorded.body}, {"segments", recorded.segments},
                        {"parameters", recorded.parameters}, {"members", recorded.members},
                        {"refusal", recorded.refusal}});
      }
      return Answer(list);
    }
    if (path == "requests" && method == "DELETE") {
      sim.requests().clear();
      return Answer(json::object());
    }
    return Answer({{"error", "no such administration request"}}, 404);
  } catch (const std::exception& error) {
    return Answer({{"error", error.what()}}, 400);
  }
}

}  // namespace arraysim
