// jsonxx: the JSON document model of the library.
//
// A small tree of heap-allocated values, a lenient parser and a stream writer.
// The rest of the library judges a response by Object::empty() rather than by
// the parser's result, so the parser keeps whatever it read before a fault.
// A value that is read with get<T>() without a prior has<T>() is a required
// value: when it is missing or of another kind the process ends (assertion()),
// unless the reading thread holds a ContainedReads.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace jsonxx {

/// The scalar kinds of the model.
struct Null {};
using Number = long double;
using String = std::string;
using Boolean = bool;

class Array;
class Object;
class Value;

namespace detail {
template <class Source>
class Reader;

/// The blocks of a tree: values, containers, map nodes and string objects.
/// Blocks of up to 128 bytes come from the calling thread's free lists and go
/// back to the list of the thread that frees them, whichever thread allocated
/// them: no locks, no atomics, as a tree is used by one thread at a time,
/// though not necessarily always the same. What a thread keeps idle is
/// bounded; the rest, and everything at the thread's exit, goes to a shared
/// depot for other threads. The pool holds a few MiB at most: blocks beyond
/// it, and larger blocks, go to operator new, so the memory of a large tree
/// goes back once the tree is freed.
void* allocate_block(std::size_t size);
void free_block(void* block, std::size_t size) noexcept;

/// Makes the classes that derive from it (values, arrays, objects) blocks of the pool.
struct PooledBlock {
  static void* operator new(std::size_t size) { return allocate_block(size); }
  static void operator delete(void* block, std::size_t size) noexcept { free_block(block, size); }
  static void* operator new(std::size_t, void* where) noexcept { return where; }
  static void operator delete(void*, void*) noexcept {}
};

/// The order of the keys of an Object: std::string's own (bytes compared as
/// unsigned char, a prefix before the longer key), done in line. Keys are
/// short and mostly differ in their first bytes, and the library's memcmp
/// costs more than the whole comparison. Transparent: a key can be looked up
/// as a view, without a string made for it.
struct KeyLess {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const noexcept {
    const std::size_t size = a.size() < b.size() ? a.size() : b.size();
    const char* p = a.data();
    const char* q = b.data();
    for (std::size_t i = 0; i < size; ++i) {
      if (p[i] != q[i]) return static_cast<unsigned char>(p[i]) < static_cast<unsigned char>(q[i]);
    }
    return a.size() < b.size();
  }
};

/// The allocator of the map nodes of an Object.
template <class T>
class BlockAllocator {
 public:
  using value_type = T;

  BlockAllocator() noexcept = default;
  template <class U>
  BlockAllocator(const BlockAllocator<U>&) noexcept {}

  T* allocate(std::size_t n) { return static_cast<T*>(allocate_block(n * sizeof(T))); }
  void deallocate(T* block, std::size_t n) noexcept { free_block(block, n * sizeof(T)); }

  template <class U>
  bool operator==(const BlockAllocator<U>&) const noexcept { return true; }
  template <class U>
  bool operator!=(const BlockAllocator<U>&) const noexcept { return false; }
};
}  // namespace detail

/// Does nothing when @p ok holds. Otherwise writes
/// "[JSONXX] expression '<expression>' failed at <file>:<line> -> " to stderr
/// and aborts through the C library's assertion failure, in every build type.
void assertion(const char* file, int line, const char* expression, bool ok);

/// The failed assertion of a required member: the same text on stderr under
/// the expression "has<T>(key)", and the key and the kind expected for the hook.
[[noreturn]] void missing_member(const char* file, int line, const std::string& key, const char* kind);

/// Called once a failed assertion has written its text, just before the
/// process ends, with what failed (such as: key "iBaseToken", expected a
/// string). Lets the host log it and remove what must not outlive the process.
using AssertionHook = void (*)(const char* what);
void set_assertion_hook(AssertionHook hook);

/// What a failed assertion throws instead of ending the process, on a thread
/// that holds a ContainedReads. what() tells what failed, as the hook is told.
class MissingRequiredValue : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// While one lives, failed assertions of the creating thread throw
/// MissingRequiredValue, with nothing written to stderr and no hook called:
/// for a host that contains such a failure to the operation reading the answer.
/// Scopes nest; each is destroyed on the thread that created it.
class ContainedReads {
 public:
  ContainedReads();
  ~ContainedReads();
  ContainedReads(const ContainedReads&) = delete;
  ContainedReads& operator=(const ContainedReads&) = delete;

 private:
  bool outer_;
};

namespace detail {
template <class T>
constexpr const char* kind_name() {
  if constexpr (std::is_same_v<T, String>) return "a string";
  if constexpr (std::is_same_v<T, Number>) return "a number";
  if constexpr (std::is_same_v<T, Boolean>) return "a boolean";
  if constexpr (std::is_same_v<T, Array>) return "an array";
  if constexpr (std::is_same_v<T, Object>) return "an object";
  return "a value";
}
}  // namespace detail

/// The memory that the tree of a text of N bytes may take while it is parsed:
/// kParseBytesPerTextByte * N + kParseBaseBytes, counted as the chunks that
/// malloc would give its values, containers, map nodes and strings, and the
/// stack of array elements. A text whose tree would take more (such as 50 MB of
/// `[{},{},...]`, some 55 bytes a byte) is no document: the parse frees what it
/// read and fails, and parse_stopped_at_memory_bound() says why. The same holds
/// when the memory runs out before the bound. A stream's bound is that of the
/// text it holds at hand.
constexpr std::size_t kParseBytesPerTextByte = 16;
constexpr std::size_t kParseBaseBytes = std::size_t{16} << 20;
std::size_t memory_bound(std::size_t text_size);

/// True when the last parse on the calling thread failed at its memory bound.
bool parse_stopped_at_memory_bound();

/// A tagged union: a number, string, boolean, null, array or object, or
/// invalid. Strings, arrays and objects are owned through pointers; copies
/// are deep.
class Value : public detail::PooledBlock {
 public:
  /// The kinds; the numbering is fixed and other parts of the library rely on it.
  enum class Type : int { Number = 0, String = 1, Boolean = 2, Null = 3, Array = 4, Object = 5, Invalid = 6 };

  /// An invalid value: it writes nothing and satisfies only is<Value>().
  Value() = default;
  Value(const Value& other);
  Value(Value&& other) noexcept;
  Value& operator=(const Value& other);
  Value& operator=(Value&& other) noexcept;
  ~Value();

  Value(const String& text);
  Value(String&& text);
  Value(const char* text);
  Value(Boolean flag);
  Value(Null);
  Value(const Array& array);
  Value(const Object& object);
  /// Any arithmetic type but bool is stored as a Number.
  template <class T, std::enable_if_t<std::is_arithmetic_v<T> && !std::is_same_v<T, bool>, int> = 0>
  Value(T number) : type_(Type::Number) {
    content_.number = static_cast<Number>(number);
  }

  Type type() const { return type_; }

  /// How the text of a number was written, as far as the parser saw it.
  enum class NumberText : unsigned char {
    Unknown,  ///< not parsed from a buffer: built in code, or read from a stream
    Integer,  ///< a plain integer: an optional '-' and decimal digits, its magnitude below 2^64
    Other,    ///< anything else the parser takes for a number: a fraction, an exponent, a '+', more digits
  };
  /// Meaningful for numbers only.
  NumberText number_text() const { return number_text_; }

  /// True when the tag is T's kind; is<Value>() is always true.
  template <class T>
  bool is() const;

  /// The content as T; ends the process unless is<T>().
  /// get<Value>() gives the value itself.
  template <class T>
  T& get();
  template <class T>
  const T& get() const;

  /// Frees an owned content and leaves the tag alone. The value has to be
  /// assigned or parsed again before its content is read.
  void reset();

  /// Parses one value; see Object::parse for what the parser accepts.
  bool parse(const std::string& text);
  bool parse(std::istream& input);

 private:
  template <class Source>
  friend class detail::Reader;
  friend std::ostream& operator<<(std::ostream& out, const Value& value);

  union Content {
    Number number;
    Boolean boolean;
    String* string;
    Array* array;
    Object* object;
  };

  void copy_from(const Value& other);
  void steal_from(Value& other) noexcept;

  Type type_ = Type::Invalid;
  NumberText number_text_ = NumberText::Unknown;  // in the padding before the content
  Content content_{};
};

/// An ordered array of owned values.
class Array : public detail::PooledBlock {
 public:
  using Container = std::vector<Value*>;

  Array() = default;
  Array(const Array& other);
  Array(Array&& other) noexcept;
  /// Self-assignment does nothing; otherwise frees all values and copies.
  Array& operator=(const Array& other);
  Array& operator=(Array&& other) noexcept;
  /// Frees all values and stores a copy of @p value as the only element, so a
  /// Value that holds an array gives an array of one array.
  Array& operator=(const Value& value);
  ~Array();

  /// Parses an array; see Object::parse for what the parser accepts.
  bool parse(const std::string& text);
  bool parse(std::istream& input);

  std::size_t size() const { return values_.size(); }
  bool empty() const { return values_.empty(); }

  /// True when element @p i exists and is<T>().
  template <class T>
  bool has(unsigned int i) const;

  /// Element @p i as T; ends the process when i >= size() or on another kind.
  template <class T>
  T& get(unsigned int i);
  template <class T>
  const T& get(unsigned int i) const;

  /// Appends a copy of @p value.
  Array& import(const Value& value);

  /// Frees all values.
  void reset();

  const Container& values() const { return values_; }

 private:
  template <class Source>
  friend class detail::Reader;

  Container values_;
};

/// A sorted map from keys to owned values.
class Object : public detail::PooledBlock {
 public:
  using Map = std::map<std::string, Value*, detail::KeyLess,
                       detail::BlockAllocator<std::pair<const std::string, Value*>>>;

  Object() = default;
  Object(const Object& other);
  Object(Object&& other) noexcept;
  /// Clears the pending key; self-assignment does nothing further; otherwise
  /// frees all values and copies.
  Object& operator=(const Object& other);
  Object& operator=(Object&& other) noexcept;
  ~Object();

  /// Parses an object, leniently:
  ///  - `//` comments up to the line end may stand before any token;
  ///  - strings may be single-quoted;
  ///  - a number is whatever `std::istream >> long double` accepts (`+5`, `.5`);
  ///  - a `,` where a value is due counts as null;
  ///  - trailing commas and a key without value before `}` are accepted;
  ///  - text behind the closing brace is ignored.
  /// Nothing is rolled back: on failure the members read so far stay, but
  /// for a text beyond its memory bound (see memory_bound), which leaves the
  /// object empty. Nesting deeper than kMaxDepth fails.
  bool parse(const std::string& text);
  bool parse(std::istream& input);

  /// Containers nested deeper than this make parsing fail.
  static constexpr int kMaxDepth = 512;

  bool empty() const { return values_.empty(); }
  std::size_t size() const { return values_.size(); }

  /// True when @p key exists and its value is<T>().
  template <class T>
  bool has(const std::string& key) const;

  /// The value under @p key as T; ends the process unless has<T>(key).
  template <class T>
  T& get(const std::string& key);
  template <class T>
  const T& get(const std::string& key) const;

  /// Stores a copy of @p value under @p key, replacing an earlier value.
  Object& import(const std::string& key, const Value& value);
  /// Stores a copy of every member of @p other, replacing equal keys.
  Object& import(const Object& other);

  /// Builds by pairs: `object << "key" << value`. A string given while no key
  /// is pending becomes the key; the next value is stored under it. (An empty
  /// key cannot be built this way; use import.)
  Object& operator<<(const Value& value);

  /// Frees all values.
  void reset();

  const Map& kv_map() const { return values_; }

 private:
  template <class Source>
  friend class detail::Reader;

  Map values_;
  std::string pending_key_;
};

/// Writers: no line breaks, ": " and ", " between members, keys in map order.
/// Numbers go through the stream's own formatting. Strings escape `"`, `\`,
/// `/`, the named control characters, and every other byte that is at most 31
/// as a signed char as `\u` with at least four hex digits (byte 195 is written
/// `\uffffffc3`). An invalid value writes nothing.
std::ostream& operator<<(std::ostream& out, const Value& value);
std::ostream& operator<<(std::ostream& out, const Array& array);
std::ostream& operator<<(std::ostream& out, const Object& object);
// A manipulator: strings written to this stream afterwards keep their bytes outside ASCII as they
// are (UTF-8 is JSON's own encoding) instead of the two's-complement escapes written by default.
std::ostream& bytes_outside_ascii_as_written(std::ostream& out);

// ---------------------------------------------------------------------------
// Typed access.

template <class T>
bool Value::is() const {
  static_assert(!std::is_same_v<T, T>, "jsonxx::Value holds Number, String, Boolean, Null, Array or Object");
  return false;
}
template <>
inline bool Value::is<Value>() const { return true; }
template <>
inline bool Value::is<Number>() const { return type_ == Type::Number; }
template <>
inline bool Value::is<String>() const { return type_ == Type::String; }
template <>
inline bool Value::is<Boolean>() const { return type_ == Type::Boolean; }
template <>
inline bool Value::is<Null>() const { return type_ == Type::Null; }
template <>
inline bool Value::is<Array>() const { return type_ == Type::Array; }
template <>
inline bool Value::is<Object>() const { return type_ == Type::Object; }

template <class T>
T& Value::get() {
  return const_cast<T&>(static_cast<const Value&>(*this).get<T>());
}

template <class T>
const T& Value::get() const {
  static_assert(!std::is_same_v<T, T>, "jsonxx::Value::get gives Number, String, Boolean, Array, Object or Value");
  return *static_cast<const T*>(nullptr);
}
template <>
inline const Value& Value::get<Value>() const { return *this; }
template <>
inline const Number& Value::get<Number>() const {
  assertion(__FILE__, __LINE__, "is<Number>()", is<Number>());
  return content_.number;
}
template <>
inline const Boolean& Value::get<Boolean>() const {
  assertion(__FILE__, __LINE__, "is<Boolean>()", is<Boolean>());
  return content_.boolean;
}
// A reset() value keeps its tag but owns nothing: treat it as the wrong kind.
template <>
inline const String& Value::get<String>() const {
  assertion(__FILE__, __LINE__, "is<String>()", is<String>() && content_.string != nullptr);
  return *content_.string;
}
template <>
inline const Array& Value::get<Array>() const {
  assertion(__FILE__, __LINE__, "is<Array>()", is<Array>() && content_.array != nullptr);
  return *content_.array;
}
template <>
inline const Object& Value::get<Object>() const {
  assertion(__FILE__, __LINE__, "is<Object>()", is<Object>() && content_.object != nullptr);
  return *content_.object;
}

template <class T>
bool Array::has(unsigned int i) const {
  return i < size() && values_[i]->is<T>();
}

template <class T>
T& Array::get(unsigned int i) {
  return const_cast<T&>(static_cast<const Array&>(*this).get<T>(i));
}

template <class T>
const T& Array::get(unsigned int i) const {
  assertion(__FILE__, __LINE__, "i < size()", i < size());
  return values_[i]->get<T>();
}

template <class T>
bool Object::has(const std::string& key) const {
  const auto found = values_.find(key);
  return found != values_.end() && found->second->is<T>();
}

template <class T>
T& Object::get(const std::string& key) {
  return const_cast<T&>(static_cast<const Object&>(*this).get<T>(key));
}

template <class T>
const T& Object::get(const std::string& key) const {
  const auto found = values_.find(key);
  if (found == values_.end() || !found->second->is<T>()) missing_member(__FILE__, __LINE__, key, detail::kind_name<T>());
  return found->second->get<T>();
}

}  // namespace jsonxx
