// Arbitrary bytes as a text from outside: an array's description or an error text that holds a
// caller's names, and a value in a log line. Nothing may crash or read what was not given, and:
// - the renderer gives "%%" as "%" and keeps every other byte, up to the first zero byte;
// - the second-generation error factory gives that rendering, once per level of formatting;
// - every log path gives one line: no control character left, each one escaped in its place.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "CLogWriterInterface.h"
#include "CXoError.h"
#include "HuaweiRestAPI.h"
#include "LogLineText.h"
#include "OperationLog.h"
#include "SecondGenerationCall.h"
#include "TkDebug.h"
#include "TkLogSink.h"
#include "YbString.h"

namespace {

[[noreturn]] void fail(const char* what, const std::string& input, const std::string& got) {
  std::fprintf(stderr, "%s on input of %zu bytes\n  got: %s\n", what, input.size(), got.c_str());
  std::abort();
}

// The renderer written another way: cut at the zero byte, then collapse each "%%" pair.
std::string collapsed(const std::string& text) {
  std::string rest = text.substr(0, text.find('\0'));
  std::string out;
  for (size_t at = 0;;) {
    const size_t pair = rest.find("%%", at);
    if (pair == std::string::npos) return out + rest.substr(at);
    out += rest.substr(at, pair - at + 1);
    at = pair + 2;
  }
}

// Whether `logged` is `value` with each control character replaced by its escape and nothing else
// changed, checked byte by byte without the library's escaper.
bool escapedInPlace(const std::string& value, const std::string& logged) {
  size_t at = 0;
  const auto expect = [&](const std::string& piece) {
    if (logged.compare(at, piece.size(), piece) != 0) return false;
    at += piece.size();
    return true;
  };
  for (size_t i = 0; i < value.size(); ++i) {
    const auto c = static_cast<unsigned char>(value[i]);
    const auto next = i + 1 < value.size() ? static_cast<unsigned char>(value[i + 1]) : 0u;
    const auto third = i + 2 < value.size() ? static_cast<unsigned char>(value[i + 2]) : 0u;
    char escape[8];
    if (c == '\n' || c == '\r' || c == '\t') {
      if (!expect(c == '\n' ? "\\n" : c == '\r' ? "\\r" : "\\t")) return false;
    } else if (c < 0x20 || c == 0x7f) {
      std::snprintf(escape, sizeof escape, "\\x%02x", c);
      if (!expect(escape)) return false;
    } else if (c == 0xc2 && next >= 0x80 && next <= 0x9f) {
      std::snprintf(escape, sizeof escape, "\\u%04x", next);
      if (!expect(escape)) return false;
      ++i;
    } else if (c == 0xe2 && next == 0x80 && (third == 0xa8 || third == 0xa9)) {
      if (!expect(third == 0xa8 ? "\\u2028" : "\\u2029")) return false;
      i += 2;
    } else if (!expect(std::string(1, value[i]))) {
      return false;
    }
  }
  return at == logged.size();
}

struct Captured {
  std::vector<std::string> texts;
};

Captured& captured() {
  static Captured* lines = [] {
    auto* made = new Captured;
    tklog::SetMaxLevel(7);
    tklog::SetSink([made](const tklog::LogLine& line) { made->texts.push_back(line.text); });
    return made;
  }();
  return *lines;
}

void checkRenderer(const std::string& input) {
  const std::string rendered = YbString::Format(input);
  if (rendered != collapsed(input)) fail("rendering differs from the collapsed text", input, rendered);
}

void checkErrorFactory(const std::string& input) {
  static HuaweiRestAPI transport(1);
  static TkDebug debug;
  SecondGenerationCall call(transport, true, debug, "fuzz()", LogName::Operation, 1);
  const YbCodeLocation here(__FILE__, __func__, __LINE__);
  // An inner result's text, and the array's description that the transport rendered once.
  const CXoError inner = call.error(CXoError(-1, input, here).AsString(), Rendering::AsFormat);
  if (!inner.IsError() || inner.AsString() != YbString::Format(input)) fail("inner text", input, inner.AsString());
  const CXoError twice = call.error(CXoError(-1, YbString::Format(input), here).AsString(), Rendering::AsFormat);
  if (twice.AsString() != YbString::Format(YbString::Format(input))) fail("description", input, twice.AsString());
}

void checkLogLines(const std::string& input) {
  const std::string value = input.substr(0, input.find('\0'));  // what "%s" carries
  Captured& lines = captured();
  lines.texts.clear();
  static TkDebug debug;
  OperationLog log = OperationLog::facade(debug, "fuzz", 1);
  log.line(3, "The host [%s] already exists", value.c_str());
  TkEvent().DebugLvl("fuzz", 0, "[%s]", value.c_str());
  g_ptrLogWriter->WriteLog(6, "fuzz", 1, "[%s]", value.c_str());
  tklog::LogLine direct;
  direct.text = input;  // a sink user may hand over any bytes, zeros included
  tklog::Write(direct);
  if (lines.texts.size() != 4) fail("lines lost", input, std::to_string(lines.texts.size()));
  for (const std::string& text : lines.texts) {
    if (!tklog::IsOneLine(text)) fail("a control character reached the sink", input, text);
  }
  const std::string tail = "] already exists";
  const std::string& first = lines.texts[0];
  if (first.size() < 10 + tail.size() || !escapedInPlace(value, first.substr(10, first.size() - 10 - tail.size()))) {
    fail("value not escaped in place", input, first);
  }
  if (!escapedInPlace(input, lines.texts[3])) fail("direct line not escaped in place", input, lines.texts[3]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  checkRenderer(input);
  checkErrorFactory(input);
  checkLogLines(input);
  return 0;
}
