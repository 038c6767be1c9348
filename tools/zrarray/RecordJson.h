// The library's records as JSON objects under their own field names, in the order they are
// declared, so that `jq '.[].name'` reads as the C++ does. The fields are the records' key tables.
#pragma once

#include <type_traits>

#include <nlohmann/json.hpp>

#include "HuaweiIncludes.h"
#include "RecordKeys.h"

namespace zrarray {
using Json = nlohmann::ordered_json;
}

namespace HuaweiApi {
// The array's vocabularies travel as its own text.
template <class JsonType>
void to_json(JsonType& json, const Values& value) {
  json = value.getValue();
}
}  // namespace HuaweiApi

template <class JsonType, class Record, std::enable_if_t<HuaweiKeys::kHasKeys<Record>, int> = 0>
void to_json(JsonType& json, const Record& record) {
  static const auto fields = HuaweiKeys::inDeclaredOrder<Record>();
  json = JsonType::object();
  for (const auto* field : fields) {
    std::visit([&](auto member) { json[field->field] = record.*member; }, field->member);
  }
}
