// A row's call written as the operation and its arguments, in order:
//
//   calling(&ZrManageHuawei::getLUNSnapshotInfo, out, "{snapshot}", out, "3")
//
// `out` stands for an output parameter, fresh on each call; "{name}" in a text argument is the
// scene's identifier. The outcome is read in the generation of what the operation returns.
#pragma once

#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "ShapeRow.h"

namespace zrtest {

struct OutputParameter {};
inline constexpr OutputParameter out{};

inline Outcome OutcomeOf(bool answer) { return FirstGeneration(answer); }
inline Outcome OutcomeOf(const CXoError& error) { return SecondGeneration(error); }
inline Outcome OutcomeOf(const HuaweiApi::ResultStatus& status) { return ThirdGeneration(status); }

namespace detail {

template <class T>
T Given(OutputParameter, const ShapeScene&) {
  return T();
}
template <class T>
T Given(const char* text, const ShapeScene& scene) {
  return T(Fill(text, scene));
}
template <class T>
T Given(const std::vector<std::string>& texts, const ShapeScene& scene) {
  T filled;
  for (const auto& text : texts) filled.push_back(Fill(text, scene));
  return filled;
}
template <class T, class Value>
T Given(const Value& value, const ShapeScene&) {
  return T(value);
}

template <class Answer, class... Parameters, class Arguments, std::size_t... I>
Invocation Invoke(Answer (ZrManageHuawei::*operation)(Parameters...), Arguments arguments, std::size_t emptied,
                  std::index_sequence<I...>) {
  return [operation, arguments, emptied](ZrManageHuawei& array, const ShapeScene& scene) {
    std::tuple<std::decay_t<Parameters>...> values{
        (I == emptied ? std::decay_t<Parameters>() : Given<std::decay_t<Parameters>>(std::get<I>(arguments), scene))...};
    return OutcomeOf((array.*operation)(std::get<I>(values)...));
  };
}

}  // namespace detail

template <class Answer, class... Parameters, class... Arguments>
Calling calling(Answer (ZrManageHuawei::*operation)(Parameters...), Arguments... arguments) {
  static_assert(sizeof...(Parameters) == sizeof...(Arguments), "one argument per parameter of the operation");
  const auto given = std::make_tuple(arguments...);
  const auto sequence = std::index_sequence_for<Arguments...>();
  const std::size_t none = sizeof...(Arguments);
  return {detail::Invoke(operation, given, none, sequence),
          [operation, given, sequence](std::size_t index) { return detail::Invoke(operation, given, index, sequence); }};
}

}  // namespace zrtest
