#include "ArrayEndpoint.h"

#include <chrono>
#include <thread>

#include "ArrayCodes.h"
#include "http/Envelope.h"
#include "http/PercentDecoding.h"
#include "http/StrictJson.h"

namespace arraysim {

struct ArrayEndpoint::Target {
  bool underRoot = false;
  std::string path;
  std::string query;
  std::string device;
  std::string resource;      // after the device, query included
  std::string resourcePath;  // after the device, without the query
  std::map<std::string, std::string> parameters;  // decoded; the first of a key wins
  StrictJson body;                                // accepted when the request has no body
};

struct ArrayEndpoint::Outcome {
  Reply reply;
  AnswerStyle style;
  int status = 200;
  std::vector<std::pair<std::string, std::string>> headers;

  HttpAnswer answer(bool withErrorObject = true) const {
    HttpAnswer answer;
    answer.status = status;
    answer.body = RenderEnvelope(reply, style, withErrorObject);
    answer.headers = headers;
    return answer;
  }
};

namespace {

constexpr const char* kHtmlPage =
    "<!DOCTYPE html>\n<html><head><title>502 Bad Gateway</title></head>\n"
    "<body><h1>Bad Gateway</h1><p>The server returned an invalid response.</p></body></html>\n";


std::string Json(const nlohmann::json& body, const char* key) {
  const auto it = body.find(key);
  return it != body.end() && it->is_string() ? it->get<std::string>() : std::string();
}

Reply Unauthorized() { return Reply::Error(codes::kUnauthorized, "The user is offline or the session is invalid."); }

}  // namespace

HttpAnswer ArrayEndpoint::handle(const IncomingRequest& request) {
  Target target;
  const auto question = request.target.find('?');
  target.path = request.target.substr(0, question);
  target.query = question == std::string::npos ? "" : request.target.substr(question + 1);
  const std::string root = kRoot;
  if (target.path.compare(0, root.size(), root) == 0) {
    target.underRoot = true;
    const auto slash = target.path.find('/', root.size());
    target.device = target.path.substr(root.size(), slash == std::string::npos ? std::string::npos : slash - root.size());
    if (slash != std::string::npos) {
      target.resource = request.target.substr(slash + 1);
      target.resourcePath = target.path.substr(slash + 1);
    }
  }
  RecordedRequest recorded;
  recorded.method = request.method;
  recorded.target = request.target;
  recorded.path = target.path;
  recorded.query = target.query;
  recorded.device = target.device;
  recorded.resource = target.resource;
  recorded.headers = request.headers;
  recorded.body = request.body;
  if (target.underRoot) {
    recorded.segments = DecodedSegments(target.resourcePath);
    recorded.parameters = DecodedQuery(target.query);
    for (const auto& [key, value] : recorded.parameters) target.parameters.emplace(key, value);
    if (!request.body.empty()) {
      target.body = StrictJson::Parse(request.body);
      recorded.members = target.body.value;
      recorded.refusal = target.body.fault;
      if (recorded.members.is_discarded()) recorded.members = nullptr;
    }
  }
  parts_.log.record(std::move(recorded));

  auto fault = parts_.faults.take(request.method, target.resourcePath);
  if (fault && fault->kind == FaultKind::Delay) {
    std::this_thread::sleep_for(fault->delay);
    fault.reset();
  }
  if (fault && !fault->processed) return spoil(*fault, nullptr);
  const auto outcome = process(request, target);
  return fault ? spoil(*fault, &outcome) : outcome.answer();
}

ArrayEndpoint::Outcome ArrayEndpoint::process(const IncomingRequest& request, const Target& target) {
  if (!target.underRoot) return Outcome{Reply::Error(codes::kResourceNotServed, "The resource does not exist."), {}, 404, {}};
  // Before anything reads it: a body with a forged or doubled member is never half applied.
  if (!target.body.accepted()) {
    return Outcome{Reply::Error(codes::kParameterIncorrect, "The entered parameter is incorrect."), {}, 200, {}};
  }
  if (target.resourcePath == "sessions" && request.method == "POST") return login(request, target);

  const auto session = parts_.sessions.authorise(request.header("iBaseToken"), request.header("Cookie"));
  if (target.device != parts_.deviceId || !session) return Outcome{Unauthorized(), {}, 200, {}};
  if (target.resourcePath == "sessions" && request.method == "DELETE") return logout(request);
  return serve(request, target, session->vstoreId);
}

ArrayEndpoint::Outcome ArrayEndpoint::login(const IncomingRequest& request, const Target& target) {
  if (target.device != kLoginDevice && target.device != parts_.deviceId) return Outcome{Unauthorized(), {}, 200, {}};
  const auto body = nlohmann::json::parse(request.body, nullptr, false);
  if (body.is_discarded() || !body.is_object()) {
    return Outcome{Reply::Error(codes::kParameterIncorrect, "The entered parameter is incorrect."), {}, 200, {}};
  }
  const auto session = parts_.sessions.login(Json(body, "username"), Json(body, "password"));
  if (!session) {
    return Outcome{Reply::Error(codes::kBadCredentials, "The user name or password is incorrect."), {}, 200, {}};
  }
  nlohmann::json data = {{"deviceid", parts_.deviceId},
                         {"iBaseToken", session->token},
                         {"username", session->user},
                         {"userid", session->user},
                         {"userscope", "0"},
                         {"level", 2},
                         {"accountstate", 1}};
  if (!session->vstoreId.empty()) data["vstoreId"] = session->vstoreId;
  const std::string cookie = std::string(SessionRegistry::kCookieName) + "=" + session->cookie + "; Path=/; Secure; HttpOnly";
  return Outcome{Reply::Object(std::move(data)), {}, 200, {{"Set-Cookie", cookie}}};
}

ArrayEndpoint::Outcome ArrayEndpoint::logout(const IncomingRequest& request) {
  parts_.sessions.logout(request.header("iBaseToken"));
  return Outcome{Reply::Object(nlohmann::json::object()), {}, 200, {}};
}

ArrayEndpoint::Outcome ArrayEndpoint::serve(const IncomingRequest& request, const Target& target,
                                            const std::string& vstoreId) {
  const auto match = parts_.router.match(request.method, target.resourcePath);
  if (!match) return Outcome{Reply::Error(codes::kResourceNotServed, "The resource does not exist."), {}, 404, {}};
  const ArrayRequest arrayRequest{request.method, target.resourcePath, target.parameters, target.query,
                                  request.body, match->parameters, vstoreId};
  Outcome outcome;
  outcome.style = parts_.styles.find(request.method, match->pattern).value_or(match->style);
  try {
    std::lock_guard<std::recursive_mutex> lock(parts_.stateMutex);
    outcome.reply = (*match->handler)(arrayRequest);
  } catch (const std::exception& error) {
    outcome.reply = Reply::Error(codes::kParameterIncorrect, error.what());
  }
  return outcome;
}

HttpAnswer ArrayEndpoint::spoil(const FaultRule& fault, const Outcome* genuine) const {
  const Outcome fallback{Reply::Object(nlohmann::json::object()), {}, 200, {}};
  const Outcome& base = genuine != nullptr ? *genuine : fallback;
  HttpAnswer answer;
  switch (fault.kind) {
    case FaultKind::ArrayError:
      answer.status = fault.status;
      answer.body = RenderEnvelope(Reply::Error(fault.code, fault.description), AnswerStyle{});
      break;
    case FaultKind::HttpStatus:
      answer = base.answer();
      answer.status = fault.status;
      break;
    case FaultKind::EmptyBody:
      break;
    case FaultKind::EmptyObject:
      answer.body = "{}";
      break;
    case FaultKind::HtmlPage:
      answer.status = fault.status;
      answer.contentType = "text/html";
      answer.body = kHtmlPage;
      break;
    case FaultKind::TruncatedJson:
      answer = base.answer();
      answer.body.resize(answer.body.size() / 2);
      break;
    case FaultKind::WithoutErrorObject:
      answer = base.answer(false);
      break;
    case FaultKind::CannedBody:
      answer.status = fault.status;
      answer.body = fault.body;
      break;
    case FaultKind::DropConnection:
      answer.delivery = Delivery::Drop;
      break;
    case FaultKind::AbortAnswer:
      answer = base.answer();
      answer.delivery = Delivery::AbortBody;
      break;
    case FaultKind::Delay:
      return base.answer();
  }
  return answer;
}

}  // namespace arraysim
