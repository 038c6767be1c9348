// The parser of the document model, written once over a character source.
//
// StreamSource reads a std::istream. BufferSource reads a string in place and
// reproduces, operation by operation, what the same calls do on a
// std::istringstream over that string in the "C" locale: the state bits
// (eof, fail, bad), the sentry of every input function, put-back into the
// string buffer (which fails, setting badbit, unless the character is the
// one just before the read position), tellg/seekg and the long double
// extraction. The parser therefore gives the same tree through both.
#pragma once

#include "jsonxx.h"
#include "jsonxx_number.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <istream>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace jsonxx {
namespace detail {

class StreamSource {
 public:
  using Position = std::streampos;

  explicit StreamSource(std::istream& input) : input_(input) {}

  bool good() const { return input_.good(); }
  void skip_space() { input_ >> std::ws; }
  bool get(char& c) { return static_cast<bool>(input_.get(c)); }
  // No shortcuts: the stream goes through get() and putback().
  bool take(char) { return false; }
  bool plain_mismatch(char) { return false; }
  int next_plain() const { return -1; }
  void skip_plain() {}
  bool plain_string(const char*&, std::size_t&) { return false; }
  bool extract_integer(Number&) { return false; }
  int peek() { return input_.peek(); }
  void putback(char c) { input_.putback(c); }
  void clear() { input_.clear(); }
  Position tell() { return input_.tellg(); }
  void seek(Position position) { input_.seekg(position); }
  bool extract(Number& number, bool& integer) {
    integer = false;
    return static_cast<bool>(input_ >> number);
  }
  /// The stream does not tell how a number was written.
  static constexpr bool kSeesNumberText = false;

  /// Appends characters up to the next @p quote or backslash, or the end.
  void append_plain(std::string& text, char quote) {
    for (;;) {
      const int c = input_.peek();
      if (c == std::char_traits<char>::eof() || c == static_cast<unsigned char>(quote) || c == '\\') return;
      text.push_back(static_cast<char>(c));
      input_.ignore();
    }
  }

 private:
  std::istream& input_;
};

class BufferSource {
 public:
  using Position = std::ptrdiff_t;

  BufferSource(const char* data, std::size_t size) : begin_(data), next_(data), end_(data + size) {}

  bool good() const { return state_ == 0; }

  void skip_space() {
    if (!sentry()) return;
    skip_space_chars();
    if (next_ == end_) state_ |= kEof;
  }

  /// The next character when the input is good and it is no white space:
  /// then skip_space() would change nothing, and a get() would return it.
  /// Otherwise -1.
  int next_plain() const {
    if (state_ != 0 || next_ == end_ || is_space(*next_)) return -1;
    return static_cast<unsigned char>(*next_);
  }

  /// Consumes the character that next_plain() gave.
  void skip_plain() { ++next_; }

  /// A quoted string without escapes, in place: when the next character is
  /// a quote (no white space before it) and the same quote closes the text
  /// before any backslash, gives the text between them and consumes it all,
  /// which is what the parser's own reading of it leaves behind too.
  /// Otherwise changes nothing.
  bool plain_string(const char*& text, std::size_t& size) {
    if (state_ != 0 || next_ == end_ || (*next_ != '"' && *next_ != '\'')) return false;
    const char quote = *next_;
    const char* const start = next_ + 1;
    const char* const close = find_quote_or_backslash(start, end_, quote);
    if (close == end_ || *close != quote) return false;
    text = start;
    size = static_cast<std::size_t>(close - start);
    next_ = close + 1;
    return true;
  }

  bool get(char& c) {
    if (!sentry()) return false;
    if (next_ == end_) {
      state_ |= kEof | kFail;
      return false;
    }
    c = *next_++;
    return true;
  }

  /// Consumes the next character when it is @p expected: what a successful
  /// get() would do. Otherwise changes nothing.
  bool take(char expected) {
    if (state_ != 0 || next_ == end_ || *next_ != expected) return false;
    ++next_;
    return true;
  }

  /// True when the next character is neither @p expected nor the start of
  /// a comment: then match() gets it, puts it back and finds no comment,
  /// which leaves the input as it was.
  bool plain_mismatch(char expected) const {
    return state_ == 0 && next_ != end_ && *next_ != expected && *next_ != '/';
  }

  int peek() {
    if (!sentry()) return kEndOfInput;
    if (next_ == end_) {
      state_ |= kEof;
      return kEndOfInput;
    }
    return static_cast<unsigned char>(*next_);
  }

  void putback(char c) {
    state_ &= ~kEof;
    if (!sentry()) return;
    if (next_ != begin_ && next_[-1] == c)
      --next_;
    else
      state_ |= kBad;
  }

  void clear() { state_ = 0; }

  Position tell() {
    if (!sentry()) return -1;
    return next_ - begin_;
  }

  void seek(Position position) {
    state_ &= ~kEof;
    if (!sentry()) return;
    if (position < 0 || position > end_ - begin_)
      state_ |= kFail;
    else
      next_ = begin_ + position;
  }

  static constexpr bool kSeesNumberText = true;

  /// @p integer tells whether the number was a plain integer (see read_integer).
  bool extract(Number& number, bool& integer) {
    integer = false;
    if (!sentry()) return false;
    skip_space_chars();
    if (next_ == end_) {
      state_ |= kEof | kFail;
      return false;
    }
    if (extract_integer(number)) return integer = true;
    const NumberScan scan = scan_number(next_, end_);
    next_ += scan.consumed;
    if (!scan.ok) state_ |= kFail;
    if (next_ == end_) state_ |= kEof;
    number = scan.value;
    return scan.ok;
  }

  void append_plain(std::string& text, char quote) {
    if (!sentry()) return;
    const char* run = next_;
    next_ = find_quote_or_backslash(next_, end_, quote);
    text.append(run, static_cast<std::size_t>(next_ - run));
    if (next_ == end_) state_ |= kEof;
  }

  // Only under extract(), or where next_plain() gave a digit or '-': then the
  // white space skipped before it, the sentries and tell() change nothing.
  // The integers of read_integer(); anything else is left to scan_number.
  // Expects a good input, not at its end.
  bool extract_integer(Number& number) {
    std::uint64_t value = 0;
    bool negative = false;
    const char* const p = read_integer(next_, end_, value, negative);
    if (p == nullptr) return false;
    store_integer(number, value, negative);
    next_ = p;
    if (next_ == end_) state_ |= kEof;
    return true;
  }

 private:
  enum : unsigned { kEof = 1, kFail = 2, kBad = 4 };
  static constexpr int kEndOfInput = -1;

  // Every input function of a stream starts with a sentry, which fails, and
  // sets failbit, on a stream that is not good.
  bool sentry() {
    if (state_ == 0) return true;
    state_ |= kFail;
    return false;
  }

  // White space as the classic ctype table has it.
  static bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

  void skip_space_chars() {
    const char* p = next_;
    while (p != end_ && is_space(*p)) ++p;
    next_ = p;
  }

  // The first quote or backslash in [p, end), or end. Eight bytes at a time:
  // a byte equal to the one sought becomes zero under the exclusive or, and
  // the lowest set high bit of (x - 0x01..) & ~x marks the first zero byte
  // exactly (a borrow only marks bytes above a zero byte).
  static const char* find_quote_or_backslash(const char* p, const char* end, char quote) {
    if (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__) {
      constexpr std::uint64_t kOnes = 0x0101010101010101u;
      constexpr std::uint64_t kHighs = 0x8080808080808080u;
      const std::uint64_t quotes = kOnes * static_cast<unsigned char>(quote);
      const std::uint64_t backslashes = kOnes * static_cast<unsigned char>('\\');
      while (end - p >= 8) {
        std::uint64_t word;
        std::memcpy(&word, p, sizeof word);
        const std::uint64_t q = word ^ quotes;
        const std::uint64_t b = word ^ backslashes;
        const std::uint64_t found = (((q - kOnes) & ~q) | ((b - kOnes) & ~b)) & kHighs;
        if (found != 0) return p + (__builtin_ctzll(found) >> 3);
        p += 8;
      }
    }
    while (p != end && *p != quote && *p != '\\') ++p;
    return p;
  }


  // Stores the integer exactly. Where long double is the x87 extended format,
  // the bits are put together directly: the conversion and the 80-bit store
  // of the x87 unit cost more than all the digits before them.
  static void store_integer(Number& number, std::uint64_t value, bool negative) {
#if (defined(__x86_64__) || defined(__i386__)) && __LDBL_MANT_DIG__ == 64
    // Significand with its explicit leading one, then sign and biased exponent.
    std::uint16_t sign_exponent = negative ? 0x8000u : 0u;
    if (value != 0) {
      const int shift = __builtin_clzll(value);
      value <<= shift;
      sign_exponent = static_cast<std::uint16_t>(sign_exponent | (16383 + 63 - shift));
    }
    unsigned char bits[sizeof(Number)] = {};
    std::memcpy(bits, &value, sizeof value);
    std::memcpy(bits + sizeof value, &sign_exponent, sizeof sign_exponent);
    std::memcpy(&number, bits, sizeof number);
#else
    const Number magnitude = static_cast<Number>(value);
    number = negative ? -magnitude : magnitude;
#endif
  }

  const char* begin_;
  const char* next_;
  const char* end_;
  unsigned state_ = 0;
};

/// The calling thread's stack of array elements under construction.
std::vector<Value*>& element_scratch();

/// Records in an array repeat their keys in the same order, and so do the
/// answers of one kind. For each depth the reader remembers, per key position
/// of the last object, which of the keys before it followed it in the map; an
/// object of the same shape then inserts with an exact hint, at two
/// comparisons instead of a search. The map checks every hint, so a wrong
/// guess costs only those comparisons. A successor is always an earlier
/// position (or -1), so what a thread remembers from an earlier text stays a
/// valid guess for the next: the thread keeps it, and its vectors, between
/// parses.
struct KeyOrder {
  std::vector<std::vector<int>> successors;  // by depth, by key position; -1: the end
  std::vector<Object::Map::iterator> stored;  // the keys of the objects being read
};

/// The calling thread's key order, kept between parses.
KeyOrder& key_order_scratch();

/// The string object of a string value, as a block (see allocate_block).
String* new_string();
String* new_string(const char* text, std::size_t size);
void delete_string(String* text) noexcept;

/// Owns a string from new_string() until a value adopts it.
class StringBlock {
 public:
  StringBlock() : text_(new_string()) {}
  ~StringBlock() { delete_string(text_); }
  StringBlock(const StringBlock&) = delete;
  StringBlock& operator=(const StringBlock&) = delete;
  String& operator*() const { return *text_; }
  String* release() {
    String* text = text_;
    text_ = nullptr;
    return text;
  }

 private:
  String* text_;
};

/// What the parts of a tree take from malloc, counted as its chunks: the size asked for and a
/// header word, rounded up to 16 bytes, 32 at least. Blocks of the pool take less, so the count
/// is an upper bound of what a tree holds.
constexpr std::size_t heap_chunk(std::size_t size) { return size + 8 <= 32 ? 32 : (size + 8 + 15) & ~std::size_t{15}; }

struct TreeCost {
  /// A node of an Object's map (the tree's links and colour, then the key and the value pointer),
  /// and what the reader keeps of it while the object is read: its place in the map and in the
  /// order of keys, in vectors that grow by doubling.
  static constexpr std::size_t kMember =
      heap_chunk(4 * sizeof(void*) + sizeof(std::pair<const std::string, Value*>)) + 2 * (sizeof(void*) + sizeof(int));
  static constexpr std::size_t kValue = heap_chunk(sizeof(Value));
  static constexpr std::size_t kString = heap_chunk(sizeof(String));
  static constexpr std::size_t kObject = heap_chunk(sizeof(Object));
  static constexpr std::size_t kArray = heap_chunk(sizeof(Array));
  /// An element's pointer in its array, and twice that on the stack that gathers the elements,
  /// which grows by doubling.
  static constexpr std::size_t kElement = 3 * sizeof(Value*);

  /// The text of a string or key beyond what the string object holds in itself.
  static constexpr std::size_t text(std::size_t size) { return size < 16 ? 0 : heap_chunk(size + 1); }
};

template <class Source>
class Reader {
 public:
  /// @p budget: the bytes that the tree may take (see TreeCost); beyond them the parse fails.
  Reader(Source& input, std::size_t budget)
      : in_(input), elements_(element_scratch()), key_order_(key_order_scratch()), budget_(budget) {}

  /// True when the parse stopped because the tree would have taken more than its budget.
  bool over_budget() const { return over_budget_; }

  bool object(Object& object) {
    object.reset();
    const DepthGuard guard(depth_);
    if (guard.too_deep() || !match('{')) return false;
    if (match('}')) return true;
    KeyInserter keys(key_order_, depth_);
    std::string key;  // a key read with escapes, or from a stream
    for (;;) {
      const char* key_text = nullptr;
      std::size_t key_size = 0;
      if (!in_.plain_string(key_text, key_size)) {
        key.clear();
        if (!parse_string(key)) {
          if (in_.peek() == '}') break;
          return false;
        }
        key_text = key.data();
        key_size = key.size();
      }
      if (!match(':')) return false;
      if (!charge(TreeCost::kMember + TreeCost::kValue + TreeCost::text(key_size))) return false;
      auto value = std::make_unique<Value>();
      if (!this->value(*value)) break;
      keys.store(object.values_, key_text, key_size, std::move(value));
      if (!match(',')) break;
    }
    return match('}');
  }

  bool array(Array& array) {
    array.reset();
    const DepthGuard guard(depth_);
    if (guard.too_deep() || !match('[')) return false;
    if (match(']')) return true;
    const ElementCollector elements(elements_, array.values_);
    for (;;) {
      if (!charge(TreeCost::kElement + TreeCost::kValue)) return false;
      auto value = std::make_unique<Value>();
      if (!this->value(*value)) break;
      elements_.push_back(value.get());
      value.release();
      if (!match(',')) break;
    }
    return match(']');
  }

  // Tries the kinds in a fixed order and takes the first that succeeds.
  bool value(Value& value) {
    value.reset();
    value.type_ = Value::Type::Invalid;
    if (over_budget_) return false;
    const char* text = nullptr;
    std::size_t size = 0;
    if (in_.plain_string(text, size)) {
      if (!charge(TreeCost::kString + TreeCost::text(size))) return false;
      value.content_.string = new_string(text, size);
      value.type_ = Value::Type::String;
      return true;
    }
    char quote = 0;
    if (opening_quote(quote)) {
      StringBlock text;
      if (string_body(quote, *text)) {
        if (!charge(TreeCost::kString + TreeCost::text((*text).size()))) return false;
        value.content_.string = text.release();
        value.type_ = Value::Type::String;
        return true;
      }
    }
    // The value owns nothing here, so the number may go straight in.
    bool integer = false;
    if (this->number(value.content_.number, integer)) {
      value.type_ = Value::Type::Number;
      value.number_text_ = !Source::kSeesNumberText ? Value::NumberText::Unknown
                           : integer                ? Value::NumberText::Integer
                                                    : Value::NumberText::Other;
      return true;
    }
    Boolean flag = false;
    if (boolean(flag)) {
      value.type_ = Value::Type::Boolean;
      value.content_.boolean = flag;
      return true;
    }
    if (null()) {
      value.type_ = Value::Type::Null;
      return true;
    }
    if (in_.peek() == '[') {
      if (!charge(TreeCost::kArray)) return false;
      auto array = std::make_unique<Array>();
      if (this->array(*array)) return adopt(value, Value::Type::Array, &Value::Content::array, array);
      if (over_budget_) return false;
    }
    if (!charge(TreeCost::kObject)) return false;
    auto object = std::make_unique<Object>();
    if (this->object(*object)) return adopt(value, Value::Type::Object, &Value::Content::object, object);
    return false;
  }

 private:
  class DepthGuard {
   public:
    explicit DepthGuard(int& depth) : depth_(++depth) {}
    ~DepthGuard() { --depth_; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;
    bool too_deep() const { return depth_ > Object::kMaxDepth; }

   private:
    int& depth_;
  };

  class KeyInserter {
   public:
    KeyInserter(KeyOrder& order, int depth)
        : order_(order), depth_(static_cast<std::size_t>(depth)), base_(order.stored.size()) {}
    ~KeyInserter() { order_.stored.resize(base_); }
    KeyInserter(const KeyInserter&) = delete;
    KeyInserter& operator=(const KeyInserter&) = delete;

    // A repeated key keeps its place; the later value replaces the earlier.
    void store(Object::Map& map, const char* key, std::size_t key_size, std::unique_ptr<Value> value) {
      if (order_.successors.size() <= depth_) order_.successors.resize(depth_ + 1);
      std::vector<int>& successors = order_.successors[depth_];
      const std::size_t position = order_.stored.size() - base_;
      const auto hint = position < successors.size() ? iterator_at(map, successors[position]) : map.end();
      const std::size_t size_before = map.size();
      // emplace_hint checks the hint once; the hinted try_emplace does it twice.
      const auto slot = map.emplace_hint(hint, std::piecewise_construct, std::forward_as_tuple(key, key_size),
                                         std::forward_as_tuple(value.get()));
      if (map.size() == size_before) {
        delete slot->second;
        slot->second = value.get();
      }
      value.release();
      if (position >= successors.size()) successors.resize(position + 1, -1);
      const auto successor = std::next(slot);
      if (successor != hint) successors[position] = position_of(map, successor);
      order_.stored.push_back(slot);
    }

   private:
    Object::Map::iterator iterator_at(Object::Map& map, int position) const {
      return position < 0 ? map.end() : order_.stored[base_ + static_cast<std::size_t>(position)];
    }

    int position_of(Object::Map& map, Object::Map::iterator slot) const {
      if (slot == map.end()) return -1;
      for (std::size_t i = base_; i < order_.stored.size(); ++i)
        if (order_.stored[i] == slot) return static_cast<int>(i - base_);
      return -1;
    }

    KeyOrder& order_;
    const std::size_t depth_;
    const std::size_t base_;
  };

  // The elements of the arrays being read are stacked on a buffer that the
  // thread keeps, and each array gets its vector once, at its exact size:
  // growing a large vector element by element makes malloc consolidate all
  // the small blocks that the last freed tree left behind. Whatever way the
  // array ends, what it read so far is handed over.
  class ElementCollector {
   public:
    ElementCollector(std::vector<Value*>& stack, Array::Container& target)
        : stack_(stack), base_(stack.size()), target_(target) {}
    ~ElementCollector() {
      target_.assign(stack_.begin() + static_cast<std::ptrdiff_t>(base_), stack_.end());
      stack_.resize(base_);
    }
    ElementCollector(const ElementCollector&) = delete;
    ElementCollector& operator=(const ElementCollector&) = delete;

   private:
    std::vector<Value*>& stack_;
    const std::size_t base_;
    Array::Container& target_;
  };

  template <class T>
  static bool adopt(Value& value, Value::Type type, T* Value::Content::*member, std::unique_ptr<T>& content) {
    value.content_.*member = content.release();
    value.type_ = type;
    return true;
  }

  // match() of a single character. Where the next character is at hand and
  // no white space, it decides alone: taken when it is the one sought, and a
  // mismatch that leaves the input as it was unless it may start a comment.
  bool match(char expected) {
    const int next = in_.next_plain();
    if (next == static_cast<unsigned char>(expected)) {
      in_.skip_plain();
      return true;
    }
    if (next >= 0 && next != '/') return false;
    const char pattern[2] = {expected, '\0'};
    return match(pattern);
  }

  // Skips white space and comments, then takes the pattern whole or puts
  // back what it had taken of it.
  bool match(const char* pattern) {
    in_.skip_space();
    const char* next = pattern;
    while (*next != '\0' && in_.take(*next)) ++next;
    if (next == pattern && in_.plain_mismatch(*next)) return false;
    char c = 0;
    while (*next != '\0' && in_.good() && in_.get(c)) {
      if (c == *next) {
        ++next;
        continue;
      }
      in_.putback(c);
      if (parse_comment()) continue;
      while (next != pattern) in_.putback(*--next);
      return false;
    }
    return *next == '\0';
  }

  // `//` up to a line end, and the white space behind it. Any other use of
  // '/' is left on the input.
  bool parse_comment() {
    if (in_.peek() != '/') return false;
    char c = 0;
    in_.get(c);
    if (in_.peek() != '/') {
      in_.putback('/');
      in_.clear();
      return false;
    }
    in_.get(c);
    while (in_.get(c) && c != '\r' && c != '\n') {
    }
    if (in_.good()) in_.skip_space();
    return true;
  }

  bool opening_quote(char& quote) {
    if (match('"')) {
      quote = '"';
      return true;
    }
    char c = 0;
    if (in_.peek() == '\'' && in_.get(c)) {
      quote = '\'';
      return true;
    }
    return false;
  }

  // A quoted string: double quotes, or single ones, closed by the same.
  bool parse_string(std::string& text) {
    char quote = 0;
    return opening_quote(quote) && string_body(quote, text);
  }

  // Reads up to the closing quote; false at the end of input before it.
  bool string_body(char quote, std::string& text) {
    for (;;) {
      in_.append_plain(text, quote);
      char c = 0;
      if (!in_.get(c)) return false;
      if (c == quote) return true;
      if (!in_.get(c)) return false;  // the character behind the backslash
      switch (c) {
        case '/': text += '/'; break;
        case '\\': text += '\\'; break;
        case 'b': text += '\b'; break;
        case 'f': text += '\f'; break;
        case 'n': text += '\n'; break;
        case 'r': text += '\r'; break;
        case 't': text += '\t'; break;
        case 'u': unicode_escape(text); break;
        default:
          if (c != quote) text += '\\';
          text += c;
      }
    }
  }

  // `\u`: up to four characters are read; their leading hex digits give a
  // number whose low byte is added, without any UTF-8 encoding.
  void unicode_escape(std::string& text) {
    char digits[4];
    int read = 0;
    while (read < 4 && in_.get(digits[read])) ++read;
    unsigned code = 0;
    int used = 0;
    for (; used < read; ++used) {
      const int digit = hex_digit(digits[used]);
      if (digit < 0) break;
      code = code * 16 + static_cast<unsigned>(digit);
    }
    if (used > 0) text += static_cast<char>(code & 0xffu);
  }

  static int hex_digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
  }

  // Whatever `>> long double` accepts; on failure the input is as before.
  // @p integer tells whether it was a plain integer, where the source sees that.
  bool number(Number& number, bool& integer) {
    // A character that no number starts with fails the extraction without
    // taking anything, which the seek back would undo anyway.
    const int next = in_.next_plain();
    if (next >= 0) {
      if (static_cast<unsigned>(next - '0') < 10 || next == '-') {
        if (in_.extract_integer(number)) return integer = true;
      } else if (next != '+' && next != '.') {
        return false;
      }
    }
    in_.skip_space();
    const auto start = in_.tell();
    if (in_.extract(number, integer)) return true;
    in_.clear();
    in_.seek(start);
    return false;
  }

  bool boolean(Boolean& flag) {
    if (match("true")) {
      flag = true;
      return true;
    }
    if (match("false")) {
      flag = false;
      return true;
    }
    return false;
  }

  // A ',' where a value is due counts as null, and stays on the input.
  bool null() { return match("null") || in_.peek() == ','; }

  // Takes @p bytes from the budget, before what they stand for is made.
  bool charge(std::size_t bytes) {
    if (over_budget_ || bytes > budget_) {
      over_budget_ = true;
      return false;
    }
    budget_ -= bytes;
    return true;
  }

  Source& in_;
  std::vector<Value*>& elements_;
  KeyOrder& key_order_;
  int depth_ = 0;
  std::size_t budget_;
  bool over_budget_ = false;
};

}  // namespace detail
}  // namespace jsonxx
