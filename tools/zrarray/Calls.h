// A row that hands the operator's values to one operation of the library and prints what the
// operation writes, declared by the operation and what goes into each of its parameters:
//
//   {"lun", "snapshot-stop", "Deactivate a snapshot", calls(&Array::deActivateLUNSnapshot, snapshotId,
//                                                           printedAs("notExist"), vstore)}
//
// An Argument passes the operator's value (and is one of the row's arguments, in this order);
// `vstore` passes the call's vStore; `printed` a record or a list the operation fills, printed
// whole; `printedAs(key)` a string or a flag it writes, printed under `key` (a flag after a failure
// too, since it may tell why); `ignored` an output that is not printed; `unless(flag)` passes the
// flag's opposite; anything else is passed as it is.
#pragma once

#include <algorithm>
#include <tuple>
#include <type_traits>
#include <utility>

#include "Command.h"

namespace zrarray {

using Array = ZrManageHuawei;

struct VStoreOfCall {};
inline constexpr VStoreOfCall vstore{};

// What the operation writes rather than reads.
struct Output {};
struct Printed : Output {};
inline constexpr Printed printed{};
struct PrintedAs : Output {
  const char* key;
};
inline PrintedAs printedAs(const char* key) { return {{}, key}; }
struct Ignored : Output {};
inline constexpr Ignored ignored{};

struct Unless {
  Argument flag;
};
inline Unless unless(Argument flag) { return {std::move(flag)}; }

namespace detail {

template <class T, class = void>
struct IsSequence : std::false_type {};
template <class T>
struct IsSequence<T, std::void_t<typename T::value_type, decltype(std::declval<T&>().begin())>>
    : std::bool_constant<!std::is_same_v<T, std::string>> {};

// The value a parameter of type T gets from one source.
template <class T, class Source>
T Pass(const Source& source, const Call& call) {
  if constexpr (std::is_base_of_v<Output, Source>) {
    return T();
  } else if constexpr (std::is_same_v<Source, VStoreOfCall>) {
    return T(call.vstore);
  } else if constexpr (std::is_same_v<Source, Unless>) {
    return !call.args.flag(source.flag.name);
  } else if constexpr (!std::is_same_v<Source, Argument>) {
    return T(source);
  } else if constexpr (std::is_same_v<T, bool>) {
    return call.args.flag(source.name);
  } else if constexpr (std::is_arithmetic_v<T>) {
    return static_cast<T>(call.args.number(source.name));
  } else if constexpr (IsSequence<T>::value) {
    const auto& given = call.args.list(source.name);
    return T(given.begin(), given.end());
  } else {
    return T(call[source.name]);
  }
}

template <class Source>
void Declare(std::vector<Argument>& arguments, const Source& source) {
  if constexpr (std::is_same_v<Source, Argument>) arguments.push_back(source);
  if constexpr (std::is_same_v<Source, Unless>) arguments.push_back(source.flag);
}

// What the operation wrote into its output parameters, as the row prints it.
struct Printing {
  Json value = Json::object();
  Json flags = Json::object();  // all that is printed after a failure
  bool any = false;
  bool list = false;

  // A record or a list first, then what is printed beside it under its own key.
  template <class Source, class T>
  void whole(const Source&, const T& filled) {
    if constexpr (std::is_same_v<Source, Printed>) {
      value = Json(filled);
      any = true;
      list = IsSequence<T>::value;
    }
  }
  template <class Source, class T>
  void under(const Source& source, const T& written) {
    if constexpr (std::is_same_v<Source, PrintedAs>) {
      value[source.key] = written;
      any = true;
      if (std::is_same_v<T, bool>) flags[source.key] = written;
    }
  }
};

template <class Answer, class... Parameters, class Sources, std::size_t... I>
Runner Bind(Answer (Array::*operation)(Parameters...), Sources sources, std::index_sequence<I...>) {
  return [operation, sources](Call& call) {
    std::tuple<std::decay_t<Parameters>...> slots{Pass<std::decay_t<Parameters>>(std::get<I>(sources), call)...};
    const Outcome outcome = Outcome::of((call.array.*operation)(std::get<I>(slots)...));
    Printing printing;
    (printing.whole(std::get<I>(sources), std::get<I>(slots)), ...);
    (printing.under(std::get<I>(sources), std::get<I>(slots)), ...);
    if (!printing.any) return Result{outcome, std::nullopt};
    const bool flagged = !printing.flags.empty();
    Result result{outcome, outcome.ok || !flagged ? printing.value : printing.flags, flagged};
    result.list = printing.list;
    return result;
  };
}

}  // namespace detail

template <class Answer, class... Parameters, class... Sources>
Bound calls(Answer (Array::*operation)(Parameters...), Sources... sources) {
  static_assert(sizeof...(Parameters) == sizeof...(Sources), "one source per parameter of the operation");
  Bound bound;
  (detail::Declare(bound.arguments, sources), ...);
  bound.run = detail::Bind(operation, std::make_tuple(std::move(sources)...), std::index_sequence_for<Sources...>());
  return bound;
}

// A lookup of `what`, named by the argument `by` (see lookup() in Command.h).
inline Bound lookup(std::string what, std::string by, Bound bound) {
  bound.run = lookup(std::move(what), std::move(by), std::move(bound.run));
  return bound;
}

// The row shows `argument` first, though the operation takes it later.
inline Bound shownFirst(const Argument& argument, Bound bound) {
  auto& shown = bound.arguments;
  const auto at = std::find_if(shown.begin(), shown.end(), [&](const Argument& a) { return a.name == argument.name; });
  if (at != shown.end()) std::rotate(shown.begin(), at, at + 1);
  return bound;
}

}  // namespace zrarray
