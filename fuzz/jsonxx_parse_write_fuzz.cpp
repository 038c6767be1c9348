// Parses arbitrary bytes as an object, an array and a value, through the
// in-place string reader and through a string stream, and writes what came
// out. Both readers have to agree on the result and on the tree; nothing may
// crash, hang or read out of bounds. What the writer gives for an object has
// to parse back to the same text (numbers are written at full precision).
#include "jsonxx.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>

namespace {

template <class T>
std::string written(const T& tree) {
  std::ostringstream out;
  out << std::setprecision(std::numeric_limits<long double>::max_digits10) << tree;
  return out.str();
}

[[noreturn]] void mismatch(const char* what, const std::string& input, const std::string& a, const std::string& b) {
  std::fprintf(stderr, "%s differ on input of %zu bytes:\n  string: %s\n  stream: %s\n", what, input.size(), a.c_str(),
               b.c_str());
  std::abort();
}

template <class T>
void check_both_readers(const std::string& input) {
  T fast;
  T reference;
  std::istringstream stream(input);
  const bool fast_ok = fast.parse(input);
  const bool reference_ok = reference.parse(stream);
  const std::string fast_tree = written(fast);
  const std::string reference_tree = written(reference);
  if (fast_ok != reference_ok) mismatch("results", input, fast_ok ? "true" : "false", reference_ok ? "true" : "false");
  if (fast_tree != reference_tree) mismatch("trees", input, fast_tree, reference_tree);
}

// The writer's output of an object is a document the parser reads back to the
// same tree, unless it holds bytes above 127: those go out as "\uffffffXX",
// of which the parser takes "\uffff" as the byte 255 and the rest as text.
void check_round_trip(const std::string& input) {
  jsonxx::Object first;
  first.parse(input);
  const std::string text = written(first);
  if (text.find("\\uffffff") != std::string::npos) return;
  jsonxx::Object second;
  if (!second.parse(text)) mismatch("round trip result", input, text, "false");
  const std::string again = written(second);
  if (again != text) mismatch("round trip trees", input, text, again);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  check_both_readers<jsonxx::Object>(input);
  check_both_readers<jsonxx::Array>(input);
  check_both_readers<jsonxx::Value>(input);
  check_round_trip(input);
  return 0;
}
