// Decoding one change-list page: repair of the array's text and the records, beside RapidJSON's DOM
// parse of the same page text and beside the decode through the document model (the way of any
// page that is not in the array's plain form). The steps are timed in interleaved rounds, so the
// ratios are taken round by round and a busy machine's slow phases fall on all of them alike.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
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

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
  tklog::SetMaxLevel(4);  // the decoder's level-6 lines are off, as in production
  const std::string wire = zrbench::changeListPageText(1000, true);
  std::string repaired = wire;
  {
    HuaweiJSONGetChangeListResult request(1);
    if (!request.parseResponse(repaired) || request.getChangeListInfo("s").changes.size() != 1000) {
      std::fprintf(stderr, "page did not decode\n");
      return 1;
    }
  }
  // The benchmark copies the page before each decode, because the decoder repairs the text in
  // place; the library decodes the string the transport received and makes no such copy.
  enum Step { kCopy, kRepair, kDecode, kThroughModel, kRapidWire, kRapidRepaired };
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
      }};
  const auto samples = zrbench::interleavedSecondsPerIteration(steps, 20, rounds);

  // Per round: the decode's own time (without the benchmark's copy), RapidJSON's faster parse.
  std::vector<double> decode, model, repair, records, rapid, ratio, modelRatio;
  for (int r = 0; r < rounds; ++r) {
    const double copy = samples[kCopy][r];
    decode.push_back(samples[kDecode][r] - copy);
    model.push_back(samples[kThroughModel][r] - copy);
    repair.push_back(samples[kRepair][r] - copy);
    records.push_back(samples[kDecode][r] - samples[kRepair][r]);
    rapid.push_back(std::min(samples[kRapidWire][r], samples[kRapidRepaired][r]));
    ratio.push_back(rapid.back() / decode.back());
    modelRatio.push_back(rapid.back() / model.back());
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
  return 0;
}
