// A change-list page of generated entries, for the decoding benchmarks: file names with blanks,
// UTF-8 and entities, numbers up to 2^64-1.
#pragma once

#include <cstdio>
#include <random>
#include <string>

namespace zrbench {

// asSent: the list as the array sends it, a string holding the escaped text of an array;
// otherwise the text after the decoder's repair, the list a plain array.
inline std::string changeListPageText(int count, bool asSent) {
  std::mt19937_64 random(42);
  const char* names[] = {"report final.docx", "photo-\xc3\xa9t\xc3\xa9.jpg", "a&amp;b&#40;1&#41;.txt", "data.bin",
                         "notes"};
  const char* q = asSent ? "\\\"" : "\"";
  std::string list;
  for (int i = 0; i < count; ++i) {
    const unsigned long long big = random();
    char entry[768];
    std::snprintf(entry, sizeof entry,
                  "{%sinode%s:%llu,%schangeType%s:%d,%sfType%s:%d,%sfilePath%s:%s/export/home/user%d/projects/dir%d/%s%s,"
                  "%scrTime%s:%llu,%scTime%s:%llu,%smTime%s:%llu,%saTime%s:%llu,%sowner%s:%d,%sgroup%s:%d,"
                  "%ssize%s:%llu,%slinks%s:1,%sdosAttr%s:32}",
                  q, q, big, q, q, i % 3, q, q, i % 2, q, q, q, i % 50, i % 7, names[i % 5], q, q, q,
                  1700000000ULL + i, q, q, 1700000100ULL + i, q, q, 1700000200ULL + i, q, q, 1700000300ULL + i, q,
                  q, 1000 + i % 10, q, q, 100, q, q, big >> 20, q, q, q, q);
    list += (i ? "," : "");
    list += entry;
  }
  const std::string open = asSent ? "\"[" : "[";
  const std::string close = asSent ? "]\"" : "]";
  return "{\"data\":{\"changeList\":" + open + list + close + ",\"numChanges\":\"" + std::to_string(count) +
         "\",\"progress\":\"42\",\"linkPos\":\"18446744073709551614\","
         "\"linkPosType\":\"255\",\"posObj\":\"1000\",\"posOffset\":\"0\",\"posType\":\"1\"},"
         "\"error\":{\"code\":0,\"description\":\"0\"}}";
}

}  // namespace zrbench
