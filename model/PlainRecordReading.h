// Reads one object of an answer into its record straight from the text, without the document
// model's tree, giving what readKeys() gives from the tree wherever it takes the text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "RecordReading.h"
#include "jsonxx_plain.h"

namespace HuaweiKeys {

namespace detail {

// A member's value as the key table looks at it. Left unset until read: a table's worth of them
// is made for every answer.
struct PlainValue {
  enum Form : unsigned char { Absent, Text, Integer, Other } form;
  const char* textAt;
  std::size_t textSize;
  std::uint64_t magnitude;
  bool negative;

  std::string_view text() const { return std::string_view(textAt, textSize); }

  // The number as the document model holds it: every 64-bit magnitude is exact in a long double.
  jsonxx::Number modelNumber() const {
    const auto exact = static_cast<jsonxx::Number>(magnitude);
    return negative ? -exact : exact;
  }
};

// The member's value at the cursor; false for a string with escapes or a number that is no plain
// integer, which the document model decodes its own way.
inline bool readPlainValue(jsonxx::PlainReader& in, PlainValue& value) {
  switch (in.peek()) {
    case '"': {
      std::string_view text;
      if (!in.string(text)) return false;
      value.form = PlainValue::Text;
      value.textAt = text.data();
      value.textSize = text.size();
      return true;
    }
    case '{':
    case '[':
    case 't':
    case 'f':
    case 'n':
      value.form = PlainValue::Other;
      return in.skip_value();
    default: {
      jsonxx::PlainReader::Integer number;
      if (!in.integer(number)) return false;
      value.form = PlainValue::Integer;
      value.magnitude = number.magnitude;
      value.negative = number.negative;
      return true;
    }
  }
}

// Compared in line: a call of memcmp costs more than a key's few bytes.
inline bool sameName(std::string_view name, std::string_view key) {
  if (name.size() != key.size()) return false;
  if (key.size() < 2 || key.size() > 16) return name == key;
  return jsonxx::detail::same_bytes(name.data(), key.data(), key.size());
}

template <class Field>
void assignPlainText(Field& field, std::string_view text) {
  if constexpr (std::is_same_v<Field, std::string>) {
    field.assign(text.data(), text.size());
  } else {
    assignText(field, std::string(text));
  }
}

}  // namespace detail

// A record's keys read straight from the text, as readKeys(object, record, which) reads them from
// the object's tree, in two steps: read() takes the object at the cursor and keeps the values as
// views into the text, store() writes them into a record. So a reader can look at the rest of the
// answer before it writes anything.
template <class Record>
class PlainKeys {
 public:
  explicit PlainKeys(Keys which = Keys::All) : which_(which) {}

  // False when the object is not in the plain form (see jsonxx::PlainReader), a string under a
  // key of the table holds an escape, or a required key is absent or of another kind: the tree's
  // reading decides those, and names what it misses. A repeated key counts with its last value,
  // as in the tree.
  bool read(jsonxx::PlainReader& in) {
    const Names& names = namesOf();
    if (names.count > kMaxKeys) return false;
    for (std::size_t i = 0; i < names.count; ++i) values_[i].form = detail::PlainValue::Absent;
    std::size_t expected = 0;  // the keys mostly come in the table's order
    const bool plain = in.object([&](std::string_view name) {
      for (std::size_t tried = 0; tried < names.count; ++tried) {
        const std::size_t row = expected;
        expected = row + 1 == names.count ? 0 : row + 1;
        if (detail::sameName(name, names.keys[row])) return detail::readPlainValue(in, values_[row]);
      }
      return in.skip_value();
    });
    if (!plain) return false;
    const KeyTable<Record>& rows = keysOf<Record>();
    for (std::size_t i = 0; i < names.count; ++i) {
      if (asserted(rows[i]) && !ofKind(rows[i], values_[i])) return false;
    }
    return true;
  }

  // What read() took, into the record; the text read must still be there.
  void store(Record& record) const {
    const KeyTable<Record>& rows = keysOf<Record>();
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const Key<Record>& row = rows[i];
      if (row.presence == Presence::Unread || (!asserted(row) && which_ == Keys::RequiredOnly)) continue;
      const detail::PlainValue& value = values_[i];
      const bool read = ofKind(row, value);
      visitField<Record>(
          row.member,
          [&](auto member) {
            static const Record fresh;
            if (!read) {
              record.*member = fresh.*member;
            } else if (row.kind == Kind::Number) {
              detail::assignNumber(record.*member, value.modelNumber());
            } else {
              detail::assignPlainText(record.*member, value.text());
            }
          });
    }
  }

 private:
  static constexpr std::size_t kMaxKeys = 32;  // a larger table is read through the tree

  // The table's keys with their lengths, found once; an unread field has none.
  struct Names {
    std::size_t count = 0;
    std::string_view keys[kMaxKeys];
  };
  static const Names& namesOf() {
    static const Names names = [] {
      Names found;
      const KeyTable<Record>& rows = keysOf<Record>();
      found.count = rows.size();
      for (std::size_t i = 0; i < rows.size() && i < kMaxKeys; ++i) {
        // A name of the text is never this, so an unread field matches nothing.
        found.keys[i] = rows[i].key != nullptr ? std::string_view(rows[i].key) : std::string_view("\"", 1);
      }
      return found;
    }();
    return names;
  }

  bool asserted(const Key<Record>& row) const {
    return row.presence == Presence::Required && which_ != Keys::AllOptional;
  }
  static bool ofKind(const Key<Record>& row, const detail::PlainValue& value) {
    return value.form == (row.kind == Kind::Number ? detail::PlainValue::Integer : detail::PlainValue::Text);
  }

  Keys which_;
  detail::PlainValue values_[kMaxKeys];
};

}  // namespace HuaweiKeys
