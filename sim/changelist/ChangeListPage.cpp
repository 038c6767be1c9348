#include "changelist/ChangeListPage.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace arraysim {
namespace {

constexpr char kHex[] = "0123456789abcdef";

// Writes into the string's own bytes through a cursor: the string grows in large steps and is cut
// to what was written at the end, so an entry costs no check of capacity per piece.
class PageWriter {
 public:
  explicit PageWriter(std::string& out) : out_(out), used_(out.size()) {}
  ~PageWriter() { out_.resize(used_); }

  // Room for `bytes` more; the cursor to write them at, moved on by done().
  char* room(std::size_t bytes) {
    if (out_.size() - used_ < bytes) out_.resize(std::max(out_.size() * 2, used_ + bytes));
    return &out_[used_];
  }
  void done(const char* end) { used_ = static_cast<std::size_t>(end - out_.data()); }

 private:
  std::string& out_;
  std::size_t used_;
};

template <std::size_t N>
char* Put(char* at, const char (&text)[N]) {
  std::memcpy(at, text, N - 1);
  return at + N - 1;
}

char* PutNumber(char* at, std::uint64_t value) { return std::to_chars(at, at + 20, value).ptr; }

// What a byte of a name becomes: its entity, then the escape of the array's text, then the
// escape of the string that carries that text. Empty for a byte that stays as it is.
std::string_view NameByte(unsigned char byte, char (&control)[8]) {
  switch (byte) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '(': return "&#40;";
    case ')': return "&#41;";
    case '\'': return "&#39;";
    case '"': return "\\\\\\\"";   // \" of the array's text, escaped again
    case '\\': return "\\\\\\\\";  // \\ likewise
    default: break;
  }
  if (byte >= 0x20) return {};
  // \u00XX of the array's text; its backslash escaped again.
  control[0] = '\\', control[1] = '\\', control[2] = 'u', control[3] = '0', control[4] = '0';
  control[5] = kHex[byte >> 4], control[6] = kHex[byte & 0xF];
  return std::string_view(control, 7);
}

// The bytes that NameByte replaces.
constexpr auto kReplaced = [] {
  std::array<bool, 256> replaced{};
  for (int byte = 0; byte < 0x20; ++byte) replaced[byte] = true;
  for (const unsigned char byte : std::string_view("&<>()'\"\\")) replaced[byte] = true;
  return replaced;
}();

// At most seven bytes for one of the name (a control character), between escaped quotes.
char* PutName(char* at, std::string_view name) {
  at = Put(at, "\\\"");
  char control[8];
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (!kReplaced[byte]) {
      *at++ = c;
    } else {
      const std::string_view replaced = NameByte(byte, control);
      std::memcpy(at, replaced.data(), replaced.size());
      at += replaced.size();
    }
  }
  return Put(at, "\\\"");
}

void PutEntry(PageWriter& page, const TreeDifference& difference, std::size_t index, std::string& path) {
  const auto& entry = difference.entry(index);
  const auto& a = entry.attributes;
  path.clear();
  difference.appendPath(index, path);
  // The keys, twelve numbers of at most 20 digits, and the name.
  char* at = page.room(200 + 12 * 20 + 7 * path.size());
  at = PutNumber(Put(at, "{\\\"inode\\\":"), a.inode);
  at = PutNumber(Put(at, ",\\\"changeType\\\":"), static_cast<std::uint64_t>(difference.changeType(index)));
  at = PutNumber(Put(at, ",\\\"fType\\\":"), static_cast<std::uint64_t>(entry.type));
  at = PutName(Put(at, ",\\\"filePath\\\":"), path);
  at = PutNumber(Put(at, ",\\\"crTime\\\":"), a.crTime);
  at = PutNumber(Put(at, ",\\\"cTime\\\":"), a.cTime);
  at = PutNumber(Put(at, ",\\\"mTime\\\":"), a.mTime);
  at = PutNumber(Put(at, ",\\\"aTime\\\":"), a.aTime);
  at = PutNumber(Put(at, ",\\\"owner\\\":"), a.owner);
  at = PutNumber(Put(at, ",\\\"group\\\":"), a.group);
  at = PutNumber(Put(at, ",\\\"size\\\":"), a.size);
  at = PutNumber(Put(at, ",\\\"links\\\":"), a.links);
  at = PutNumber(Put(at, ",\\\"dosAttr\\\":"), a.dosAttr);
  *at++ = '}';
  page.done(at);
}

}  // namespace

void AppendJsonString(std::string& out, std::string_view text) {
  out.push_back('"');
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out.push_back('\\');
      out.push_back(c);
    } else if (byte < 0x20) {
      out.append("\\u00");
      out.push_back(kHex[byte >> 4]);
      out.push_back(kHex[byte & 0xF]);
    } else {
      out.push_back(c);
    }
  }
  out.push_back('"');
}

void AppendChangeListString(std::string& out, const TreeDifference& difference, std::size_t begin, std::size_t end) {
  std::string path;
  out.reserve(out.size() + (end - begin) * 280 + 4);
  PageWriter page(out);
  page.done(Put(page.room(2), "\"["));
  for (std::size_t index = begin; index < end; ++index) {
    if (index != begin) page.done(Put(page.room(1), ","));
    PutEntry(page, difference, index, path);
  }
  page.done(Put(page.room(2), "]\""));
}

}  // namespace arraysim
