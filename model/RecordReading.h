// Reads one object of an answer into its record, key by key as the record's table lists them.
#pragma once

#include <cstdlib>
#include <list>
#include <string>
#include <string_view>
#include <type_traits>

#include "ArrayNumbers.h"
#include "RecordKeys.h"
#include "jsonxx.h"

namespace HuaweiKeys {

// Which of the table's keys a reading takes.
enum class Keys {
  All,
  RequiredOnly,  // the others keep what the record holds
  AllOptional,   // none asserts: an absent required key reads as an absent optional one
};

// In the table's order, or in the order the record declares its fields.
enum class KeyOrder { Listed, Declared };

namespace detail {

// A JSON list of strings written inside the string; anything else reads as no list.
inline void decodeList(std::list<std::string>& field, const std::string& text) {
  field.clear();
  jsonxx::Value decoded;
  decoded.parse(text);
  if (!decoded.is<jsonxx::Array>()) return;
  const jsonxx::Array ids = decoded.get<jsonxx::Array>();
  for (unsigned int index = 0; index < ids.size(); ++index) field.push_back(ids.get<std::string>(index));
}

template <class Field>
void assignText(Field& field, const std::string& text) {
  if constexpr (std::is_same_v<Field, std::string>) {
    field = text;
  } else if constexpr (std::is_same_v<Field, bool>) {
    field = text != "false";  // the array's flags are texts
  } else if constexpr (std::is_same_v<Field, int>) {
    field = std::atoi(text.c_str());
  } else if constexpr (std::is_same_v<Field, std::list<std::string>>) {
    decodeList(field, text);
  } else if constexpr (std::is_base_of_v<HuaweiApi::Values, Field>) {
    field = Field(text);
  }
}

// Truncated towards zero and wrapped to the field's width.
template <class Field>
void assignNumber(Field& field, jsonxx::Number number) {
  if constexpr (std::is_same_v<Field, unsigned long long>) {
    field = HuaweiNumbers::toUnsigned64(number);
  } else if constexpr (std::is_same_v<Field, unsigned int>) {
    field = HuaweiNumbers::toUnsigned32(number);
  } else if constexpr (std::is_same_v<Field, int>) {
    field = HuaweiNumbers::toSigned32(number);
  }
}

// The value under the key, found once and without a string made for the key; null when absent.
inline const jsonxx::Value* valueAt(const jsonxx::Object& object, const char* key) {
  const auto found = object.kv_map().find(std::string_view(key));
  return found == object.kv_map().end() ? nullptr : found->second;
}

template <class Record>
void readKey(const jsonxx::Object& object, Record& record, const Key<Record>& row, Keys which) {
  if (row.presence == Presence::Unread) return;
  const bool asserted = row.presence == Presence::Required && which != Keys::AllOptional;
  if (!asserted && which == Keys::RequiredOnly) return;
  const bool number = row.kind == Kind::Number;
  const jsonxx::Value* value = valueAt(object, row.key);
  const bool ofKind = value != nullptr && (number ? value->is<jsonxx::Number>() : value->is<std::string>());
  visitField<Record>(
      row.member,
      [&](auto member) {
        static const Record fresh;
        if (!ofKind && !asserted) {
          record.*member = fresh.*member;
        } else if (number) {
          // A required value that is absent or of another kind fails as the model's read does.
          assignNumber(record.*member, ofKind ? value->get<jsonxx::Number>() : object.get<jsonxx::Number>(row.key));
        } else {
          assignText(record.*member, ofKind ? value->get<std::string>() : object.get<std::string>(row.key));
        }
      });
}

}  // namespace detail

template <class Record>
void readKeys(const jsonxx::Object& object, Record& record, Keys which = Keys::All,
              KeyOrder order = KeyOrder::Listed) {
  if (order == KeyOrder::Declared) {
    static const auto rows = inDeclaredOrder<Record>();
    for (const Key<Record>* row : rows) detail::readKey(object, record, *row, which);
    return;
  }
  for (const Key<Record>& row : keysOf<Record>()) detail::readKey(object, record, row, which);
}

}  // namespace HuaweiKeys
