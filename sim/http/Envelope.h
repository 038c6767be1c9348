// Puts a reply into the array's envelope: {"data": ..., "error": {"code": N, "description": "..."}}.
#pragma once

#include <string>

#include "AnswerStyles.h"
#include "http/Reply.h"

namespace arraysim {

// Error replies always carry "data":{} and the error's "errorParam" and "suggestion". `withErrorObject` false leaves "error" out, to imitate
// a broken answer.
std::string RenderEnvelope(const Reply& reply, const AnswerStyle& style, bool withErrorObject = true);

}  // namespace arraysim
