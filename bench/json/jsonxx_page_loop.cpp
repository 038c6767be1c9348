// Parses and frees a change-list page (the repaired text the decoder hands the
// document model) a given number of times, for instruction counts:
//   valgrind --tool=callgrind --toggle-collect='*parse_and_free_pages*' ./jsonxx_page_loop 20
// A second argument sets the number of entries (1000).
// The first page is parsed outside the counted function, so the counts are those
// of a warm thread, as in a client that decodes page after page.
#include "ChangeListPageText.h"
#include "jsonxx.h"

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace {

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
  const std::string text = zrbench::changeListPageText(entries, false);
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
