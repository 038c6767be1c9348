#include "replay/ReplayEndpoint.h"

#include <nlohmann/json.hpp>

#include "ArrayCodes.h"
#include "Sessions.h"
#include "http/Envelope.h"

namespace arraysim {
namespace {

constexpr const char* kHex = "0123456789abcdef";
constexpr const char* kSerial = "0123456789ABCDEFGHJKLMNPQRSTUVWXYZ";

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  if (from.empty()) return;
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

// A text from the client, quoted and escaped so that it cannot break the line it is put on.
std::string Quoted(const std::string& text) {
  return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

HttpAnswer Json(int status, const nlohmann::json& body) {
  HttpAnswer answer;
  answer.status = status;
  answer.body = body.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  return answer;
}

}  // namespace

ReplayEndpoint::ReplayEndpoint(Recording recording, std::ostream& diagnostics, std::function<void()> onUnmatched)
    : matcher_(std::move(recording.exchanges)),
      diagnostics_(diagnostics),
      onUnmatched_(std::move(onUnmatched)),
      random_(std::random_device{}()) {
  // Shaped like an array's serial number, and new on every replay, so that an identifier kept
  // from another array is never taken for this one's.
  deviceId_ = "2102" + randomText(16, kSerial);
}

std::string ReplayEndpoint::randomText(std::size_t length, const char* alphabet) {
  const std::string letters = alphabet;
  std::uniform_int_distribution<std::size_t> pick(0, letters.size() - 1);
  std::string text;
  for (std::size_t i = 0; i < length; ++i) text.push_back(letters[pick(random_)]);
  return text;
}

HttpAnswer ReplayEndpoint::handle(const IncomingRequest& request) {
  if (request.target == kSummaryPath) {
    if (request.method != "GET") return Json(405, {{"error", "GET only"}});
    const auto done = summary();
    nlohmann::json never = nlohmann::json::array();
    for (const auto& exchange : done.neverRequested) never.push_back(exchange.method + " " + exchange.resource);
    return Json(200, {{"exchanges", done.exchanges},
                      {"served", done.served},
                      {"unmatched", done.unmatched},
                      {"neverRequested", never},
                      {"inOrder", done.inOrder}});
  }

  std::string resource = request.target;
  std::string body = request.body;
  ReplaceAll(resource, deviceId_, kDeviceIdPlaceholder);
  ReplaceAll(body, deviceId_, kDeviceIdPlaceholder);

  std::unique_lock<std::mutex> lock(mutex_);
  const RecordedExchange* exchange = matcher_.take(request.method, resource, body);
  if (exchange == nullptr) {
    auto answer = unmatched(request, resource, body);
    lock.unlock();
    if (onUnmatched_) onUnmatched_();
    return answer;
  }
  HttpAnswer answer;
  answer.status = exchange->status;
  answer.body = exchange->answer;
  // The token is the session's, never the client's header: that is no value to put into an answer.
  const bool login = ExchangeMatcher::IsLogin(request.method, resource);
  if (login || token_.empty()) token_ = randomText(32, kHex);
  if (login) {
    answer.headers.emplace_back("Set-Cookie", std::string(SessionRegistry::kCookieName) + "=" + randomText(32, kHex) +
                                                  "; Path=/; Secure; HttpOnly");
  }
  ReplaceAll(answer.body, kDeviceIdPlaceholder, deviceId_);
  ReplaceAll(answer.body, kTokenPlaceholder, token_);
  return answer;
}

HttpAnswer ReplayEndpoint::unmatched(const IncomingRequest& request, const std::string& resource,
                                     const std::string& body) {
  const std::string named = request.method + " " + resource;
  // A login's body holds the password: it is never repeated.
  const bool showBody = !body.empty() && !ExchangeMatcher::IsLogin(request.method, resource);
  diagnostics_ << "replay: unmatched request " << Quoted(named) << (showBody ? " body " + Quoted(body) : "")
               << std::endl;
  HttpAnswer answer;
  answer.body =
      RenderEnvelope(Reply::Error(codes::kResourceNotServed, "The recording holds no exchange for " + named + ".",
                                  "Record the operation against the array, or run the operations that were recorded."),
                     AnswerStyle{});
  return answer;
}

ReplaySummary ReplayEndpoint::summary() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return matcher_.summary();
}

std::string DescribeReplay(const ReplaySummary& summary) {
  std::string text = "replay: " + std::to_string(summary.served) + " of " + std::to_string(summary.exchanges) +
                     " recorded exchanges served, " + std::to_string(summary.neverRequested.size()) +
                     " never requested, " + std::to_string(summary.unmatched.size()) + " unmatched requests" +
                     (summary.inOrder ? "" : ", served out of recorded order") + "\n";
  for (const auto& request : summary.unmatched) text += "  unmatched: " + Quoted(request) + "\n";
  for (const auto& exchange : summary.neverRequested) {
    text += "  never requested (line " + std::to_string(exchange.line) +
            "): " + Quoted(exchange.method + " " + exchange.resource) + "\n";
  }
  return text;
}

}  // namespace arraysim
