#include "http/Envelope.h"

namespace arraysim {
namespace {

// The text of "data", or nothing when the style leaves it out.
bool DataText(const Reply& reply, const AnswerStyle& style, std::string& text) {
  if (reply.code != 0) {
    text = "{}";
    return true;
  }
  if (style.omitData) return false;
  if (!reply.dataText.empty()) {
    text = reply.dataText;
    return true;
  }
  if (reply.isList && reply.data.empty()) {
    if (style.emptyList == EmptyListAnswer::WithoutData) return false;
    text = "[]";
    return true;
  }
  const bool bare = reply.isList && reply.data.size() == 1 && style.singleItemAsObject;
  text = (bare ? reply.data.at(0) : reply.data).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  return true;
}

}  // namespace

std::string RenderEnvelope(const Reply& reply, const AnswerStyle& style, bool withErrorObject) {
  std::string data;
  const bool hasData = DataText(reply, style, data);
  nlohmann::json error = {{"code", reply.code}, {"description", reply.description}};
  if (reply.code != 0) {
    error["errorParam"] = "";
    error["suggestion"] = reply.suggestion;
  }

  std::string body = "{";
  if (hasData) body.append("\"data\":").append(data);
  if (withErrorObject) {
    if (hasData) body.push_back(',');
    body.append("\"error\":").append(error.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
  }
  body.push_back('}');
  return body;
}

}  // namespace arraysim
