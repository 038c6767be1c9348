// Decoding one change-list page: repair of the array's text and the records, beside RapidJSON's DOM
// parse of the same page text, beside the decode with exact names (the list string decoded, then
// read as JSON text), and beside the decode through the document model (the way of any page that
// is not in the array's plain form). The steps are timed in interleaved rounds, so the ratios are
// taken round by round and a busy machine's slow phases fall on all of them alike.
//
//   bench_page_decode [rounds]                       the figures
//   bench_page_decode --only repaired|exact PAGES    decodes PAGES pages one way and nothing else,
//                                                    for counting instructions under callgrind
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <rapidjson/document.h>
#include <unistd.h>

#include "BenchClock.h"
#include "ChangeListPageText.h"
#include "HuaweiJSONChangeListRequests.h"
#include "TkLogSink.h"

namespace {

// Median and spread of a per-round figure.
void printFigure(const char* label, std::vector<double> values, const char* unit, double scale) {
  std::sort(values.begin(), values.end());
  std::printf("%-52s %9.2f%s (rounds %.2f-%.2f)\n", label, zrbench::median(values) * scale, unit,
              values.front() * scale, values.back() * scale);
}

}  // namespace

// Decodes the page `pages` times with the repair or with exact names.
int decodeOnly(const std::string& wire, const char* mode, int pages) {
  const bool exact = std::strcmp(mode, "exact") == 0;
  if (!exact && std::strcmp(mode, "repaired") != 0) {
    std::fprintf(stderr, "--only repaired|exact PAGES\n");
    return 2;
  }
  std::size_t entries = 0;
  for (int i = 0; i < pages; ++i) {
    std::string text = wire;
    HuaweiJSONGetChangeListResult request(1);
    if (!(exact ? request.readExactPage(text) : request.parseResponse(text))) return 1;
    entries += std::move(request).getChangeListInfo("s").changes.size();
  }
  std::printf("%s: %d pages, %zu entries\n", mode, pages, entries);
  return 0;
}

int main(int argc, char** argv) {
  tklog::SetMaxLevel(4);  // the decoder's level-6 lines are off, as in production
  const std::string wire = zrbench::changeListPageText(1000, true);
  if (argc > 3 && std::strcmp(argv[1], "--only") == 0) return decodeOnly(wire, argv[2], std::atoi(argv[3]));
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
  std::string repaired = wire, exactText = wire;
  {
    HuaweiJSONGetChangeListResult request(1), exact(1);
    if (!request.parseResponse(repaired) || request.getChangeListInfo("s").changes.size() != 1000 ||
        !exact.readExactPage(exactText) || exact.getChangeListInfo("s").changes.size() != 1000) {
      std::fprintf(stderr, "page did not decode\n");
      return 1;
    }
  }
  // The benchmark copies the page before each decode, because the decoder repairs the text in
  // place; the library decodes the string the transport received and makes no such copy.
  enum Step { kCopy, kRepair, kDecode, kThroughModel, kRapidWire, kRapidRepaired, kExact };
  const std::vector<std::function<void()>> steps = {
      [&] {
        std::string text = wire;
        asm volatile("" : : "r"(text.data()) : "memory");
      },
      [&] {
        std::string text = wire;
        HuaweiPageRepair::repair(text);
      },
      [&] {
        std::string text = wire;
        HuaweiJSONGetChangeListResult request(1);
        request.parseResponse(text);
      },
      [&] {
        std::string text = wire;
        HuaweiPageRepair::repair(text);
        HuaweiJSONGetChangeListResult request(1);
        request.readRepairedPage(text, true);
      },
      [&] {
        rapidjson::Document document;
        document.Parse(wire.c_str(), wire.size());
      },
      [&] {
        rapidjson::Document document;
        document.Parse(repaired.c_str(), repaired.size());
      },
      [&] {
        std::string text = wire;
        HuaweiJSONGetChangeListResult request(1);
        request.readExactPage(text);
      }};
  const auto samples = zrbench::interleavedSecondsPerIteration(steps, 20, rounds);

  // Per round: the decode's own time (without the benchmark's copy), RapidJSON's faster parse.
  std::vector<double> decode, model, repair, records, rapid, ratio, modelRatio, exact, exactRatio, exactToRepaired;
  for (int r = 0; r < rounds; ++r) {
    const double copy = samples[kCopy][r];
    decode.push_back(samples[kDecode][r] - copy);
    model.push_back(samples[kThroughModel][r] - copy);
    repair.push_back(samples[kRepair][r] - copy);
    records.push_back(samples[kDecode][r] - samples[kRepair][r]);
    rapid.push_back(std::min(samples[kRapidWire][r], samples[kRapidRepaired][r]));
    ratio.push_back(rapid.back() / decode.back());
    modelRatio.push_back(rapid.back() / model.back());
    exact.push_back(samples[kExact][r] - copy);
    exactRatio.push_back(rapid.back() / exact.back());
    exactToRepaired.push_back(exact.back() / decode.back());
  }
  std::printf("page of 1000 entries, %.1f KB; %d rounds, steps interleaved; %ld cores\n",
              static_cast<double>(wire.size()) / 1e3, rounds, sysconf(_SC_NPROCESSORS_ONLN));
  printFigure("decode (repair + records)", decode, " us", 1e6);
  printFigure("  of which repair", repair, " us", 1e6);
  printFigure("  of which records", records, " us", 1e6);
  printFigure("decode through the document model", model, " us", 1e6);
  printFigure("RapidJSON DOM, faster of page as sent and repaired", rapid, " us", 1e6);
  printFigure("ratio decode / RapidJSON (throughput, target >= 0.60x)", ratio, "x", 1);
  printFigure("ratio through the document model / RapidJSON", modelRatio, "x", 1);
  printFigure("decode with exact names", exact, " us", 1e6);
  printFigure("ratio exact names / RapidJSON (throughput)", exactRatio, "x", 1);
  printFigure("time of exact names / time of repair + records", exactToRepaired, "x", 1);
  return 0;
}
