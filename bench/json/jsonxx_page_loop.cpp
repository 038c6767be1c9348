// Parses and frees a change-list page (the repaired text the decoder hands the
// document model) a given number of times, for instruction counts:
//   valgrind --tool=callgrind --toggle-collect='*parse_and_free_pages*' ./jsonxx_page_loop 20
// A second argument sets the number of entries (1000).
// The first page is parsed outside the counted function, so the counts are those
// of a warm thread, as in a client that decodes page after page.
#include "jsonxx.h"

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace {

// The same page as bench_page_decode's, after the decoder's text repair.
std::string repaired_page(int count) {
  std::mt19937_64 random(42);
  const char* names[] = {"report final.docx", "photo-\xc3\xa9t\xc3\xa9.jpg", "a&amp;b&#40;1&#41;.txt", "data.bin",
                         "notes"};
  std::string list;
  for (int i = 0; i < count; ++i) {
    const unsigned long long big = random();
    char entry[640];
    std::snprintf(entry, sizeof entry,
                  "{\"inode\":%llu,\"changeType\":%d,\"fType\":%d,\"filePath\":\"/export/home/user%d/"
                  "projects/dir%d/%s\",\"crTime\":%llu,\"cTime\":%llu,\"mTime\":%llu,\"aTime\":%llu,"
                  "\"owner\":%d,\"group\":%d,\"size\":%llu,\"links\":1,\"dosAttr\":32}",
                  big, i % 3, i % 2, i % 50, i % 7, names[i % 5], 1700000000ULL + i, 1700000100ULL + i,
                  1700000200ULL + i, 1700000300ULL + i, 1000 + i % 10, 100, big >> 20);
    list += (i ? "," : "");
    list += entry;
  }
  return "{\"data\":{\"changeList\":[" + list +
         "],\"numChanges\":\"1000\",\"progress\":\"42\",\"linkPos\":\"18446744073709551614\","
         "\"linkPosType\":\"255\",\"posObj\":\"1000\",\"posOffset\":\"0\",\"posType\":\"1\"},"
         "\"error\":{\"code\":0,\"description\":\"0\"}}";
}

__attribute__((noinline)) int parse_and_free_pages(const std::string& text, int pages) {
  int ok = 0;
  for (int i = 0; i < pages; ++i) {
    jsonxx::Object answer;
    ok += answer.parse(text) ? 1 : 0;
  }
  return ok;
}

}  // namespace

int main(int argc, char** argv) {
  const int pages = argc > 1 ? std::atoi(argv[1]) : 20;
  const int entries = argc > 2 ? std::atoi(argv[2]) : 1000;
  const std::string text = repaired_page(entries);
  {
    jsonxx::Object warm;
    if (!warm.parse(text) || warm.get<jsonxx::Object>("data").get<jsonxx::Array>("changeList").size() != static_cast<std::size_t>(entries)) {
      std::fprintf(stderr, "the page does not parse\n");
      return 1;
    }
  }
  const int ok = parse_and_free_pages(text, pages);
  std::printf("%d of %d pages parsed, %zu bytes each\n", ok, pages, text.size());
  return ok == pages ? 0 : 1;
}
