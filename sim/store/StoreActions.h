// The generic actions behind the rows of the resource table.
#pragma once

#include "http/Reply.h"
#include "store/ResourceRoute.h"

namespace arraysim {

class ResourceTable;

Reply RunAction(RouteContext& context, const ResourceTable& table);

// A body value as the array keeps it: strings stay, numbers and booleans become their text.
nlohmann::json AsArrayValue(const nlohmann::json& value);

}  // namespace arraysim
