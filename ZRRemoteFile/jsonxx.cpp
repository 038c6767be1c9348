// assertion() has to end the process in every build type, so this unit keeps
// assert() alive whatever the build defines.
#undef NDEBUG
#include <cassert>

#include "jsonxx.h"

#include "jsonxx_reader.h"

#include <malloc.h>
#include <sys/mman.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <locale>
#include <memory>
#include <mutex>
#include <new>
#include <ostream>
#include <sstream>
#include <utility>

namespace jsonxx {

namespace {
std::atomic<AssertionHook> assertion_hook{nullptr};
thread_local bool reads_contained = false;

// A value read by position or as a whole has no key to name: say what was expected of it.
std::string unnamed_value(const std::string& expression) {
  static const std::pair<const char*, const char*> kExpected[] = {
      {"is<Number>()", "a value, expected a number"},   {"is<String>()", "a value, expected a string"},
      {"is<Boolean>()", "a value, expected a boolean"}, {"is<Array>()", "a value, expected an array"},
      {"is<Object>()", "a value, expected an object"},  {"i < size()", "an element beyond the end of a list"}};
  for (const auto& [tested, text] : kExpected) {
    if (expression == tested) return text;
  }
  return "expression '" + expression + "'";
}

[[noreturn]] void fail(const char* file, int line, const char* expression, const std::string& what) {
  if (reads_contained) throw MissingRequiredValue(what);
  std::fprintf(stderr, "[JSONXX] expression '%s' failed at %s:%d -> ", expression, file, line);
  std::fflush(stderr);
  if (AssertionHook hook = assertion_hook.load()) hook(what.c_str());
  const bool ok = false;
  assert(ok);
  std::abort();  // not reached: assert() is kept alive above
}
}  // namespace

void set_assertion_hook(AssertionHook hook) { assertion_hook.store(hook); }

ContainedReads::ContainedReads() : outer_(reads_contained) { reads_contained = true; }
ContainedReads::~ContainedReads() { reads_contained = outer_; }

void assertion(const char* file, int line, const char* expression, bool ok) {
  if (ok) return;
  fail(file, line, expression, reads_contained ? unnamed_value(expression) : std::string("expression '") + expression + "'");
}

void missing_member(const char* file, int line, const std::string& key, const char* kind) {
  fail(file, line, "has<T>(key)", "key \"" + key + "\", expected " + kind);
}

// ---------------------------------------------------------------------------
// Blocks.
//
// A page of a thousand records is some thirty thousand blocks of a few sizes,
// built and freed within a millisecond. malloc keeps only seven blocks per size
// in its thread cache; the rest go through its shared bins, with atomics and
// consolidation, and each block carries malloc's header. So blocks of up to
// 128 bytes come from the thread's own free lists, one per multiple of eight
// bytes, with neither locks nor atomics; an empty list is refilled from the
// shared depot, or else carved from a 64 KiB chunk that the thread keeps. A
// block freed on any thread joins that thread's list.
//
// What a thread keeps idle is bounded per size: beyond kListLimit bytes, half
// of the list moves to the depot, where any thread takes it up again. At its
// exit a thread hands all its lists and the rest of its chunk to the depot.
//
// The chunks come from one reserved range of kPoolBytes, which is all the
// pool ever holds: blocks are recycled, never given back, so a bounded pool
// is what keeps a large tree from pinning its peak for the rest of the
// process. Once the range is used up, blocks come from operator new and go
// back to it, and as such a large tree is freed, malloc is asked to return
// its free pages to the system.
//
// Under AddressSanitizer every block goes to operator new and delete, so that
// the sanitizer sees each one.

#if defined(__SANITIZE_ADDRESS__)
#define JSONXX_KEEP_BLOCKS 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define JSONXX_KEEP_BLOCKS 0
#endif
#endif
#ifndef JSONXX_KEEP_BLOCKS
#define JSONXX_KEEP_BLOCKS 1
#endif

namespace {

#if JSONXX_KEEP_BLOCKS

constexpr std::size_t kGranule = 8;
constexpr std::size_t kClasses = 16;  // blocks of 8, 16, ..., 128 bytes
constexpr std::size_t kPoolBytes = std::size_t{4} << 20;  // reserved at once, touched as used
constexpr std::size_t kChunkBytes = std::size_t{64} << 10;  // a thread's share of a region
constexpr std::size_t kCarveBytes = std::size_t{4} << 10;  // carved at once for one size
constexpr std::size_t kListLimit = std::size_t{2} << 20;   // idle bytes a thread keeps per size
constexpr std::size_t kDepotRefill = 256;                  // blocks a thread takes from the depot at once

constexpr std::size_t class_of(std::size_t size) { return (size - 1) / kGranule; }
constexpr std::size_t block_bytes(std::size_t c) { return (c + 1) * kGranule; }
constexpr std::uint32_t list_limit(std::size_t c) { return static_cast<std::uint32_t>(kListLimit / block_bytes(c)); }

struct FreeBlock {
  FreeBlock* next;
};

enum class ListsState : unsigned char {
  Unused,    // nothing kept yet, no exit handler
  Active,    // keeps blocks; the exit handler is registered
  Released,  // the thread is ending: its lists went to the depot
};

// Plain data, zero-initialised, without constructor or destructor: reading it
// costs no guard, and it is usable until the thread's storage goes. It keeps
// the dynamic TLS model, so that the library can also be loaded with dlopen
// by a host whose static TLS space is used up; TLS descriptors, where the
// compiler has them, make its access about as cheap as a static offset.
struct FreeLists {
  FreeBlock* head[kClasses];
  std::uint32_t count[kClasses];
  char* carve_next;  // the rest of the thread's chunk
  char* carve_end;
  ListsState state;
};

thread_local FreeLists free_lists;

// The blocks that threads gave up, and the rests of the chunks of ended
// threads. It is never destroyed, as threads may end after static
// destruction.
struct Depot {
  struct Spare {
    Spare* next;
    char* end;
  };

  std::mutex mutex;
  FreeBlock* head[kClasses] = {};
  std::size_t count[kClasses] = {};
  Spare* spares = nullptr;
  bool reserved = false;  // tried once, whether or not it worked
  char* range_next = nullptr;  // the chunks not yet handed out
  char* range_end = nullptr;
};

// The reserved range, set once; null when the reservation failed.
std::atomic<char*> pool_begin{nullptr};

bool in_pool(const void* block) {
  const char* begin = pool_begin.load(std::memory_order_relaxed);
  return begin != nullptr && static_cast<std::size_t>(static_cast<const char*>(block) - begin) < kPoolBytes;
}

// Bytes of blocks served by operator new beyond the pool. Once they have
// reached kTrimFrom, malloc is asked to give its free pages back each time
// they fall to an eighth, down to none: a large tree is freed in one go, and
// its pages go back in a few steps rather than one per block.
std::atomic<std::size_t> overflow_live{0};
std::atomic<std::size_t> trim_mark{0};  // 0: no trim pending
constexpr std::size_t kTrimFrom = std::size_t{2} << 20;

void* allocate_beyond_pool(std::size_t bytes) {
  void* block = ::operator new(bytes);
  const std::size_t live = overflow_live.fetch_add(bytes, std::memory_order_relaxed) + bytes;
  if (live >= kTrimFrom && live / 8 > trim_mark.load(std::memory_order_relaxed)) {
    trim_mark.store(live / 8, std::memory_order_relaxed);
  }
  return block;
}

void free_beyond_pool(void* block, std::size_t bytes) noexcept {
  ::operator delete(block);
  const std::size_t live = overflow_live.fetch_sub(bytes, std::memory_order_relaxed) - bytes;
  std::size_t mark = trim_mark.load(std::memory_order_relaxed);
  if (mark != 0 && live <= mark && trim_mark.compare_exchange_strong(mark, live / 8)) malloc_trim(0);
}

Depot& depot() {
  static Depot* const instance = new Depot;
  return *instance;
}

// Pushes the chain first..last of n blocks onto the depot's list.
void to_depot(std::size_t c, FreeBlock* first, FreeBlock* last, std::size_t n) {
  Depot& shared = depot();
  const std::lock_guard<std::mutex> lock(shared.mutex);
  last->next = shared.head[c];
  shared.head[c] = first;
  shared.count[c] += n;
}

struct ListsRelease {
  ListsRelease() = default;
  ListsRelease(const ListsRelease&) = delete;
  ListsRelease& operator=(const ListsRelease&) = delete;
  // At the thread's exit (for the main thread: at the start of exit(), before
  // static destructors): everything goes to the depot. Blocks freed on the
  // thread later, by destructors that run afterwards, go there one by one.
  ~ListsRelease() {
    FreeLists& lists = free_lists;
    lists.state = ListsState::Released;
    for (std::size_t c = 0; c < kClasses; ++c) {
      FreeBlock* first = lists.head[c];
      if (!first) continue;
      FreeBlock* last = first;
      while (last->next) last = last->next;
      to_depot(c, first, last, lists.count[c]);
      lists.head[c] = nullptr;
      lists.count[c] = 0;
    }
    const std::size_t rest = static_cast<std::size_t>(lists.carve_end - lists.carve_next);
    if (rest >= sizeof(Depot::Spare) + kGranule) {
      Depot& shared = depot();
      auto* spare = reinterpret_cast<Depot::Spare*>(lists.carve_next);
      spare->end = lists.carve_end;
      const std::lock_guard<std::mutex> lock(shared.mutex);
      spare->next = shared.spares;
      shared.spares = spare;
    }
    lists.carve_next = lists.carve_end = nullptr;
  }
};

void start_lists(FreeLists& lists) {
  static thread_local ListsRelease release;
  (void)release;
  lists.state = ListsState::Active;
}

// A new chunk for the thread: the rest of an ended thread's chunk, or the next
// one of the reserved range, which lies apart from malloc's heap. False when
// the range is used up.
bool new_chunk(FreeLists& lists) {
  Depot& shared = depot();
  const std::lock_guard<std::mutex> lock(shared.mutex);
  if (Depot::Spare* spare = shared.spares) {
    shared.spares = spare->next;
    lists.carve_next = reinterpret_cast<char*>(spare);
    lists.carve_end = spare->end;
    return true;
  }
  if (!shared.reserved) {
    // Reserved, not committed: a page costs memory only once a block on it is used.
    void* range = mmap(nullptr, kPoolBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    shared.reserved = true;
    if (range != MAP_FAILED) {
      shared.range_next = static_cast<char*>(range);
      shared.range_end = shared.range_next + kPoolBytes;
      pool_begin.store(shared.range_next, std::memory_order_relaxed);
    }
  }
  if (shared.range_next == shared.range_end) return false;
  lists.carve_next = shared.range_next;
  lists.carve_end = shared.range_next + kChunkBytes;
  shared.range_next += kChunkBytes;
  return true;
}

// The slow way of an allocation: the list of its size is empty.
__attribute__((noinline)) void* allocate_slowly(std::size_t c) {
  FreeLists& lists = free_lists;
  const std::size_t bytes = block_bytes(c);
  if (lists.state == ListsState::Released) return allocate_beyond_pool(bytes);
  if (lists.state == ListsState::Unused) start_lists(lists);

  // Blocks that other threads gave up.
  {
    Depot& shared = depot();
    const std::lock_guard<std::mutex> lock(shared.mutex);
    if (FreeBlock* first = shared.head[c]) {
      FreeBlock* last = first;
      std::size_t n = 1;
      while (n < kDepotRefill && last->next) {
        last = last->next;
        ++n;
      }
      shared.head[c] = last->next;
      shared.count[c] -= n;
      last->next = nullptr;
      lists.head[c] = first->next;
      lists.count[c] = static_cast<std::uint32_t>(n - 1);
      return first;
    }
  }

  // A run of new blocks, carved in address order. Sizes that are multiples
  // of 16 keep the alignment of long double.
  std::uintptr_t aligned = 0;
  for (;;) {
    aligned = (reinterpret_cast<std::uintptr_t>(lists.carve_next) + 15) & ~std::uintptr_t{15};
    if (lists.carve_next != nullptr && aligned + bytes <= reinterpret_cast<std::uintptr_t>(lists.carve_end)) break;
    // What is left of the old chunk is too small for this size.
    if (!new_chunk(lists)) return allocate_beyond_pool(bytes);
  }
  char* const start = reinterpret_cast<char*>(aligned);
  std::size_t n = static_cast<std::size_t>(lists.carve_end - start) / bytes;
  if (n > kCarveBytes / bytes) n = kCarveBytes / bytes;
  lists.carve_next = start + n * bytes;
  FreeBlock* head = nullptr;
  for (std::size_t i = n - 1; i > 0; --i) {
    auto* block = reinterpret_cast<FreeBlock*>(start + i * bytes);
    block->next = head;
    head = block;
  }
  lists.head[c] = head;
  lists.count[c] = static_cast<std::uint32_t>(n - 1);
  return start;
}

// The slow way of a free: the thread has no lists yet, its list of this size
// is full, or the thread is ending.
__attribute__((noinline)) void free_slowly(void* block, std::size_t c) noexcept {
  FreeLists& lists = free_lists;
  auto* freed = static_cast<FreeBlock*>(block);
  if (lists.state == ListsState::Released) {
    to_depot(c, freed, freed, 1);
    return;
  }
  if (lists.state == ListsState::Unused) {
    start_lists(lists);
  } else {
    // Half of the list goes to the depot.
    const std::size_t n = lists.count[c] / 2;
    FreeBlock* const first = lists.head[c];
    FreeBlock* last = first;
    for (std::size_t i = 1; i < n; ++i) last = last->next;
    lists.head[c] = last->next;
    lists.count[c] -= static_cast<std::uint32_t>(n);
    to_depot(c, first, last, n);
  }
  freed->next = lists.head[c];
  lists.head[c] = freed;
  ++lists.count[c];
}

#endif  // JSONXX_KEEP_BLOCKS

}  // namespace

void* detail::allocate_block(std::size_t size) {
#if JSONXX_KEEP_BLOCKS
  if (size - 1 < kClasses * kGranule) {  // 1 to 128 bytes
    const std::size_t c = class_of(size);
    FreeLists& lists = free_lists;
    if (FreeBlock* block = lists.head[c]) {
      lists.head[c] = block->next;
      --lists.count[c];
      return block;
    }
    return allocate_slowly(c);
  }
#endif
  return ::operator new(size);
}

void detail::free_block(void* block, std::size_t size) noexcept {
#if JSONXX_KEEP_BLOCKS
  if (size - 1 < kClasses * kGranule) {
    const std::size_t c = class_of(size);
    if (!in_pool(block)) {
      free_beyond_pool(block, block_bytes(c));
      return;
    }
    FreeLists& lists = free_lists;
    if (lists.state == ListsState::Active && lists.count[c] < list_limit(c)) {
      auto* kept = static_cast<FreeBlock*>(block);
      kept->next = lists.head[c];
      lists.head[c] = kept;
      ++lists.count[c];
      return;
    }
    free_slowly(block, c);
    return;
  }
#endif
  (void)size;
  ::operator delete(block);
}

// The string of a string value is a block of its own as well.
String* detail::new_string() { return new (allocate_block(sizeof(String))) String(); }

namespace {
template <class... Args>
String* string_block(Args&&... args);
}  // namespace

String* detail::new_string(const char* text, std::size_t size) { return string_block(text, size); }

void detail::delete_string(String* text) noexcept {
  if (!text) return;
  text->~String();
  free_block(text, sizeof(String));
}

namespace {

template <class... Args>
String* string_block(Args&&... args) {
  void* block = detail::allocate_block(sizeof(String));
  try {
    return new (block) String(std::forward<Args>(args)...);
  } catch (...) {
    detail::free_block(block, sizeof(String));
    throw;
  }
}

}  // namespace

// ---------------------------------------------------------------------------
// Parsing entry points.

std::vector<Value*>& detail::element_scratch() {
  thread_local std::vector<Value*> stack;
  return stack;
}

detail::KeyOrder& detail::key_order_scratch() {
  thread_local KeyOrder order;
  return order;
}

namespace {

// The buffer reader knows the "C" rules only; a string stream takes the
// global locale, so under any other the stream itself does the work.
bool global_locale_is_classic() { return std::locale() == std::locale::classic(); }

thread_local bool stopped_at_memory_bound = false;

// The stack that gathers array elements and the key order stay with the thread; after a large
// text they would pin memory of the size of that text's largest array or object.
void release_large_scratch() {
  std::vector<Value*>& stack = detail::element_scratch();
  if (stack.capacity() > 4096) std::vector<Value*>().swap(stack);
  detail::KeyOrder& order = detail::key_order_scratch();
  if (order.stored.capacity() > 4096) decltype(order.stored)().swap(order.stored);
  if (order.successors.size() > 64) {
    order.successors.clear();
    order.successors.shrink_to_fit();
  }
  for (std::vector<int>& positions : order.successors) {
    if (positions.capacity() > 4096) std::vector<int>().swap(positions);
  }
}

// A text whose tree would take more than its bound, or more than the memory left, is no
// document: what was read of it is freed, and the parse fails rather than throw.
template <class Target, class Source>
bool read_within_bound(Target& target, Source& source, std::size_t text_size, bool (*read)(detail::Reader<Source>&, Target&)) {
  stopped_at_memory_bound = false;
  bool ok = false;
  try {
    detail::Reader<Source> reader(source, memory_bound(text_size));
    ok = read(reader, target);
    if (reader.over_budget()) {
      stopped_at_memory_bound = true;
      target.reset();
      ok = false;
    }
  } catch (const std::bad_alloc&) {
    stopped_at_memory_bound = true;
    target.reset();
    ok = false;
  }
  release_large_scratch();
  return ok;
}

template <class Target>
bool parse_text(const std::string& text, Target& target, bool (*buffer)(detail::Reader<detail::BufferSource>&, Target&),
                bool (*stream)(detail::Reader<detail::StreamSource>&, Target&)) {
  if (!global_locale_is_classic()) {
    std::istringstream input(text);
    detail::StreamSource source(input);
    return read_within_bound(target, source, text.size(), stream);
  }
  detail::BufferSource source(text.data(), text.size());
  return read_within_bound(target, source, text.size(), buffer);
}

// A stream does not tell its size: its bound is the one of a text of what it holds at once.
template <class Target>
bool parse_stream(std::istream& input, Target& target, bool (*stream)(detail::Reader<detail::StreamSource>&, Target&)) {
  detail::StreamSource source(input);
  const std::streamsize available = input.rdbuf() != nullptr ? input.rdbuf()->in_avail() : 0;
  return read_within_bound(target, source, available > 0 ? static_cast<std::size_t>(available) : 0, stream);
}

template <class Source>
bool read_object(detail::Reader<Source>& reader, Object& target) { return reader.object(target); }
template <class Source>
bool read_array(detail::Reader<Source>& reader, Array& target) { return reader.array(target); }
template <class Source>
bool read_value(detail::Reader<Source>& reader, Value& target) { return reader.value(target); }

}  // namespace

std::size_t memory_bound(std::size_t text_size) {
  const std::size_t most = std::numeric_limits<std::size_t>::max();
  if (text_size > (most - kParseBaseBytes) / kParseBytesPerTextByte) return most;
  return kParseBytesPerTextByte * text_size + kParseBaseBytes;
}

bool parse_stopped_at_memory_bound() { return stopped_at_memory_bound; }

bool Object::parse(const std::string& text) { return parse_text(text, *this, &read_object, &read_object); }
bool Object::parse(std::istream& input) { return parse_stream(input, *this, &read_object); }
bool Array::parse(const std::string& text) { return parse_text(text, *this, &read_array, &read_array); }
bool Array::parse(std::istream& input) { return parse_stream(input, *this, &read_array); }
bool Value::parse(const std::string& text) { return parse_text(text, *this, &read_value, &read_value); }
bool Value::parse(std::istream& input) { return parse_stream(input, *this, &read_value); }


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

Value::Value(const String& text) : type_(Type::String) { content_.string = string_block(text); }
Value::Value(String&& text) : type_(Type::String) { content_.string = string_block(std::move(text)); }
Value::Value(const char* text) : type_(Type::String) { content_.string = string_block(text); }
Value::Value(Boolean flag) : type_(Type::Boolean) { content_.boolean = flag; }
Value::Value(Null) : type_(Type::Null) {}
Value::Value(const Array& array) : type_(Type::Array) { content_.array = new Array(array); }
Value::Value(const Object& object) : type_(Type::Object) { content_.object = new Object(object); }

void Value::reset() {
  switch (type_) {
    case Type::String:
      detail::delete_string(content_.string);
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
  number_text_ = other.number_text_;
  switch (other.type_) {
    case Type::String:
      if (other.content_.string) content_.string = string_block(*other.content_.string);
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
  number_text_ = other.number_text_;
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
  const std::size_t n = values_.size();
  for (std::size_t i = 0; i < n; ++i) {
    if (i + 4 < n) __builtin_prefetch(values_[i + 4]);
    delete values_[i];
  }
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
  for (auto it = values_.begin(), end = values_.end(); it != end;) {
    Value* value = it->second;
    ++it;
    if (it != end) __builtin_prefetch(it->second);
    delete value;
  }
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

// The stream's flag set by bytes_outside_ascii_as_written().
int bytes_as_written_flag() {
  static const int index = std::ios_base::xalloc();
  return index;
}

void write_string(std::ostream& out, const std::string& text) {
  out.put('"');
  const bool outside_ascii_as_written = out.iword(bytes_as_written_flag()) != 0;
  const char* run = text.data();
  const char* const end = run + text.size();
  for (const char* p = run; p != end; ++p) {
    const char* escape = named_escape(*p);
    const int as_signed = static_cast<signed char>(*p);
    if (!escape && (as_signed > 31 || (as_signed < 0 && outside_ascii_as_written))) continue;
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

std::ostream& bytes_outside_ascii_as_written(std::ostream& out) {
  out.iword(bytes_as_written_flag()) = 1;
  return out;
}

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
