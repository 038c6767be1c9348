// Decoding one change-list page: repair of the array's text and the records, beside RapidJSON's DOM
// parse of the same page text, beside the decode with exact names (the list string decoded, then
// read as JSON text), and beside the decode through the document model (the way of any page that
// is not in the array's plain form). The steps are timed in interleaved rounds, so the ratios are
// taken round by round and a busy machine's slow phases fall on all of them alike.
//
//   bench_page_decode [rounds]                       the figures
//   bench_page_decode --only WAY PAGES               decodes PAGES pages one way and nothing else,
//                                                    for counting instructions under callgrind
//
// The ways of --only: repaired, exact (the library's decode), rapidjson-sent, rapidjson-plain (a
// RapidJSON document of the page as sent, or of its list as the plain array the repair makes), and
// simdjson-sent, simdjson-plain where simdjson was found at build time. Only the decode itself is
// counted (MeasuredPart), not the copy of the page the in-place repair needs.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <rapidjson/document.h>
#ifdef ZR_BENCH_SIMDJSON
#include <simdjson.h>
#endif
#include <unistd.h>

#include "BenchClock.h"
#include "ChangeListPageText.h"
#include "HuaweiJSONChangeListRequests.h"
#include "MeasuredPart.h"
#include "TkLogSink.h"

namespace {

// Median and spread of a per-round figure.
void printFigure(const char* label, std::vector<double> values, const char* unit, double scale) {
  std::sort(values.begin(), values.end());
  std::printf("%-52s %9.2f%s (rounds %.2f-%.2f)\n", label, zrbench::median(values) * scale, unit,
              values.front() * scale, values.back() * scale);
}

}  // namespace

// Decodes the page `pages` times one way; false for a way this build does not know.
bool decodeOnly(const std::string& wire, const std::string& way, int pages, std::size_t& entries) {
  std::string plain = wire;
  HuaweiPageRepair::repair(plain);
  const bool sent = way.size() > 5 && way.compare(way.size() - 5, 5, "-sent") == 0;
  const std::string& page = sent ? wire : plain;
  if (way == "repaired" || way == "exact") {
    const bool exact = way == "exact";
    for (int i = 0; i < pages; ++i) {
      std::string text = wire;
      zrbench::MeasuredPart measured;
      HuaweiJSONGetChangeListResult request(1);
      if (!(exact ? request.readExactPage(text) : request.parseResponse(text))) return false;
      entries += std::move(request).getChangeListInfo("s").changes.size();
    }
    return true;
  }
  if (way == "rapidjson-sent" || way == "rapidjson-plain") {
    for (int i = 0; i < pages; ++i) {
      zrbench::MeasuredPart measured;
      rapidjson::Document document;
      if (document.Parse(page.c_str(), page.size()).HasParseError()) return false;
      const auto& list = document["data"]["changeList"];
      if (list.IsArray()) entries += list.Size();  // as sent, the list is one string
    }
    return true;
  }
#ifdef ZR_BENCH_SIMDJSON
  if (way == "simdjson-sent" || way == "simdjson-plain") {
    const simdjson::padded_string padded(page);
    simdjson::dom::parser parser;  // reused from page to page, as simdjson is meant to be used
    for (int i = 0; i < pages; ++i) {
      zrbench::MeasuredPart measured;
      simdjson::dom::element document;
      if (parser.parse(padded).get(document) != simdjson::SUCCESS) return false;
      const simdjson::dom::element list = document["data"]["changeList"];
      if (list.is_array()) entries += simdjson::dom::array(list).size();
    }
    return true;
  }
#endif
  return false;
}

int main(int argc, char** argv) {
  tklog::SetMaxLevel(4);  // the decoder's level-6 lines are off, as in production
  const std::string wire = zrbench::changeListPageText(1000, true);
  if (argc > 3 && std::strcmp(argv[1], "--only") == 0) {
    std::size_t entries = 0;
    const int pages = std::atoi(argv[3]);
    if (!decodeOnly(wire, argv[2], pages, entries)) {
      std::fprintf(stderr, "--only %s %d: unknown way, or the page did not decode\n", argv[2], pages);
      return 2;
    }
    std::printf("%s: %d pages, %zu entries\n", argv[2], pages, entries);
    return 0;
  }
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
