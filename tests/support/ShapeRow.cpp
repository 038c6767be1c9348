#include "ShapeRow.h"

namespace zrtest {

Outcome FirstGeneration(bool answer) { return {Generation::First, answer, ""}; }

Outcome SecondGeneration(const CXoError& error) { return {Generation::Second, !error.IsError(), error.AsString()}; }

Outcome ThirdGeneration(const HuaweiApi::ResultStatus& status) {
  return {Generation::Third, !status.IsError(), status.GetErrorString(), status.GetErrorCode()};
}

std::string Fill(std::string text, const ShapeScene& scene) {
  for (const auto& [name, value] : scene) {
    const std::string mark = "{" + name + "}";
    for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at + value.size())) {
      text.replace(at, mark.size(), value);
    }
  }
  return text;
}

std::string GuardText(Generation generation, const std::string& operation) {
  return std::string(generation == Generation::Second ? "[ERROR] " : "") + "Before calling " + operation +
         "(), please initialize Huawei params using ZrManageHuawei::init().";
}

}  // namespace zrtest
