// assertion() has to end the process in every build type, so this unit keeps
// assert() alive whatever the build defines.
#undef NDEBUG
#include <cassert>

#include "jsonxx.h"

#include "jsonxx_reader.h"

#include <cstdio>
#include <locale>
#include <memory>
#include <ostream>
#include <sstream>
#include <utility>

namespace jsonxx {

void assertion(const char* file, int line, const char* expression, bool ok) {
  if (ok) return;
  std::fprintf(stderr, "[JSONXX] expression '%s' failed at %s:%d -> ", expression, file, line);
  std::fflush(stderr);
  assert(ok);
}

// ---------------------------------------------------------------------------
// Parsing entry points.

std::vector<Value*>& detail::element_scratch() {
  thread_local std::vector<Value*> stack;
  return stack;
}

namespace {

// The buffer reader knows the "C" rules only; a string stream takes the
// global locale, so under any other the stream itself does the work.
bool global_locale_is_classic() { return std::locale() == std::locale::classic(); }

template <class Target, class Parse>
bool parse_text(const std::string& text, Target& target, Parse parse) {
  if (!global_locale_is_classic()) {
    std::istringstream input(text);
    return target.parse(input);
  }
  detail::BufferSource source(text.data(), text.size());
  detail::Reader<detail::BufferSource> reader(source);
  return parse(reader, target);
}

template <class Target, class Parse>
bool parse_stream(std::istream& input, Target& target, Parse parse) {
  detail::StreamSource source(input);
  detail::Reader<detail::StreamSource> reader(source);
  return parse(reader, target);
}

struct ParseObject {
  template <class Reader>
  bool operator()(Reader& reader, Object& target) const { return reader.object(target); }
};
struct ParseArray {
  template <class Reader>
  bool operator()(Reader& reader, Array& target) const { return reader.array(target); }
};
struct ParseValue {
  template <class Reader>
  bool operator()(Reader& reader, Value& target) const { return reader.value(target); }
};

}  // namespace

bool Object::parse(const std::string& text) { return parse_text(text, *this, ParseObject()); }
bool Object::parse(std::istream& input) { return parse_stream(input, *this, ParseObject()); }
bool Array::parse(const std::string& text) { return parse_text(text, *this, ParseArray()); }
bool Array::parse(std::istream& input) { return parse_stream(input, *this, ParseArray()); }
bool Value::parse(const std::string& text) { return parse_text(text, *this, ParseValue()); }
bool Value::parse(std::istream& input) { return parse_stream(input, *this, ParseValue()); }

// ---------------------------------------------------------------------------
// Value

Value::Value(const Value& other) { copy_from(other); }

Value::Value(Value&& other) noexcept { steal_from(other); }

Value& Value::operator=(const Value& other) {
  if (this != &other) {
    Value copy(other);  // other may live inside this value
    reset();
    steal_from(copy);
  }
  return *this;
}

Value& Value::operator=(Value&& other) noexcept {
  if (this != &other) {
    reset();
    steal_from(other);
  }
  return *this;
}

Value::~Value() { reset(); }

Value::Value(const String& text) : type_(Type::String) { content_.string = new String(text); }
Value::Value(String&& text) : type_(Type::String) { content_.string = new String(std::move(text)); }
Value::Value(const char* text) : type_(Type::String) { content_.string = new String(text); }
Value::Value(Boolean flag) : type_(Type::Boolean) { content_.boolean = flag; }
Value::Value(Null) : type_(Type::Null) {}
Value::Value(const Array& array) : type_(Type::Array) { content_.array = new Array(array); }
Value::Value(const Object& object) : type_(Type::Object) { content_.object = new Object(object); }

void Value::reset() {
  switch (type_) {
    case Type::String:
      delete content_.string;
      content_.string = nullptr;
      break;
    case Type::Array:
      delete content_.array;
      content_.array = nullptr;
      break;
    case Type::Object:
      delete content_.object;
      content_.object = nullptr;
      break;
    default:
      break;
  }
}

// Expects this value to own nothing.
void Value::copy_from(const Value& other) {
  content_ = other.content_;
  switch (other.type_) {
    case Type::String:
      if (other.content_.string) content_.string = new String(*other.content_.string);
      break;
    case Type::Array:
      if (other.content_.array) content_.array = new Array(*other.content_.array);
      break;
    case Type::Object:
      if (other.content_.object) content_.object = new Object(*other.content_.object);
      break;
    default:
      break;
  }
  type_ = other.type_;
}

// Expects this value to own nothing; leaves the other invalid.
void Value::steal_from(Value& other) noexcept {
  type_ = other.type_;
  content_ = other.content_;
  other.type_ = Type::Invalid;
  other.content_ = Content{};
}

// ---------------------------------------------------------------------------
// Array

Array::Array(const Array& other) {
  values_.reserve(other.values_.size());
  for (const Value* value : other.values_) import(*value);
}

Array::Array(Array&& other) noexcept : values_(std::move(other.values_)) { other.values_.clear(); }

Array& Array::operator=(const Array& other) {
  if (this != &other) {
    Array copy(other);
    values_.swap(copy.values_);
  }
  return *this;
}

Array& Array::operator=(Array&& other) noexcept {
  if (this != &other) {
    reset();
    values_.swap(other.values_);
  }
  return *this;
}

Array& Array::operator=(const Value& value) {
  auto copy = std::make_unique<Value>(value);  // value may be one of ours
  reset();
  values_.push_back(copy.get());
  copy.release();
  return *this;
}

Array::~Array() { reset(); }

Array& Array::import(const Value& value) {
  auto copy = std::make_unique<Value>(value);
  values_.push_back(copy.get());
  copy.release();
  return *this;
}

void Array::reset() {
  for (Value* value : values_) delete value;
  values_.clear();
}

// ---------------------------------------------------------------------------
// Object

Object::Object(const Object& other) {
  for (const auto& [key, value] : other.values_) {
    auto copy = std::make_unique<Value>(*value);
    values_.emplace_hint(values_.end(), key, copy.get());
    copy.release();
  }
}

Object::Object(Object&& other) noexcept
    : values_(std::move(other.values_)), pending_key_(std::move(other.pending_key_)) {
  other.values_.clear();
}

Object& Object::operator=(const Object& other) {
  pending_key_.clear();
  if (this != &other) {
    Object copy(other);
    values_.swap(copy.values_);
  }
  return *this;
}

Object& Object::operator=(Object&& other) noexcept {
  pending_key_.clear();
  if (this != &other) {
    reset();
    values_.swap(other.values_);
  }
  return *this;
}

Object::~Object() { reset(); }

Object& Object::import(const std::string& key, const Value& value) {
  pending_key_.clear();
  auto copy = std::make_unique<Value>(value);  // value may be the one replaced
  auto [slot, inserted] = values_.try_emplace(key, copy.get());
  if (!inserted) {
    delete slot->second;
    slot->second = copy.get();
  }
  copy.release();
  return *this;
}

Object& Object::import(const Object& other) {
  pending_key_.clear();
  if (this == &other) return *this;  // every member would replace itself
  for (const auto& [key, value] : other.values_) import(key, *value);
  return *this;
}

Object& Object::operator<<(const Value& value) {
  if (pending_key_.empty()) {
    assertion(__FILE__, __LINE__, "value.is<String>()", value.is<String>());
    pending_key_ = value.get<String>();
    return *this;
  }
  const std::string key = std::move(pending_key_);
  return import(key, value);
}

void Object::reset() {
  for (auto& member : values_) delete member.second;
  values_.clear();
}

// ---------------------------------------------------------------------------
// Writing

namespace {

// The escape of a byte, or nullptr when it passes as it is.
const char* named_escape(char c) {
  switch (c) {
    case '"': return "\\\"";
    case '\\': return "\\\\";
    case '/': return "\\/";
    case '\b': return "\\b";
    case '\f': return "\\f";
    case '\n': return "\\n";
    case '\r': return "\\r";
    case '\t': return "\\t";
    default: return nullptr;
  }
}

void write_string(std::ostream& out, const std::string& text) {
  out.put('"');
  const char* run = text.data();
  const char* const end = run + text.size();
  for (const char* p = run; p != end; ++p) {
    const char* escape = named_escape(*p);
    const int as_signed = static_cast<signed char>(*p);
    if (!escape && as_signed > 31) continue;
    out.write(run, p - run);
    run = p + 1;
    if (escape) {
      out << escape;
    } else {
      // Negative bytes come out as 32-bit two's complement: 195 -> \uffffffc3.
      char code[16];
      std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(as_signed));
      out << code;
    }
  }
  out.write(run, end - run);
  out.put('"');
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Value& value) {
  // A reset() value keeps its tag but owns nothing, and writes nothing.
  const Value::Content& content = value.content_;
  switch (value.type_) {
    case Value::Type::Number: return out << content.number;
    case Value::Type::String:
      if (content.string) write_string(out, *content.string);
      return out;
    case Value::Type::Boolean: return out << (content.boolean ? "true" : "false");
    case Value::Type::Null: return out << "null";
    case Value::Type::Array: return content.array ? out << *content.array : out;
    case Value::Type::Object: return content.object ? out << *content.object : out;
    case Value::Type::Invalid: return out;
  }
  return out;
}

std::ostream& operator<<(std::ostream& out, const Array& array) {
  out.put('[');
  const char* separator = "";
  for (const Value* value : array.values()) {
    out << separator << *value;
    separator = ", ";
  }
  return out.put(']');
}

std::ostream& operator<<(std::ostream& out, const Object& object) {
  out.put('{');
  const char* separator = "";
  for (const auto& [key, value] : object.kv_map()) {
    out << separator;
    write_string(out, key);
    out << ": " << *value;
    separator = ", ";
  }
  return out.put('}');
}

}  // namespace jsonxx
