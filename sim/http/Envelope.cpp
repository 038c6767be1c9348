#include "http/Envelope.h"

#include <string_view>

namespace arraysim {
namespace {

// The text of "data", or nothing when the style leaves it out. A pre-rendered text is handed
// out as a view of the reply: a change-list page is large, and is copied once, into the body.
bool DataText(const Reply& reply, const AnswerStyle& style, std::string& rendered, std::string_view& text) {
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
  rendered = (bare ? reply.data.at(0) : reply.data).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  text = rendered;
  return true;
}

}  // namespace

std::string RenderEnvelope(const Reply& reply, const AnswerStyle& style, bool withErrorObject) {
  std::string rendered;
  std::string_view data;
  const bool hasData = DataText(reply, style, rendered, data);
  nlohmann::json error = {{"code", reply.code}, {"description", reply.description}};
  if (reply.code != 0) {
    error["errorParam"] = "";
    error["suggestion"] = reply.suggestion;
  }

  const std::string errorText = error.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  std::string body;
  body.reserve(data.size() + errorText.size() + 20);
  body.push_back('{');
  if (hasData) body.append("\"data\":").append(data);
  if (withErrorObject) {
    if (hasData) body.push_back(',');
    body.append("\"error\":").append(errorText);
  }
  body.push_back('}');
  return body;
}

}  // namespace arraysim
