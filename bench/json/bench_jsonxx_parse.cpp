// Parse throughput of the document model on a page of the snapshot change
// list, beside RapidJSON's DOM parser on the same text in the same run.
// The main figures count building the whole tree and freeing it again, as a
// caller pays both; the "ParseOnly" rows leave the freeing out.
//
// malloc is told not to trim the heap nor to map large blocks: otherwise
// every freed 64 KiB chunk of RapidJSON's pool gives pages back to the
// system and faults them in again, and its figure swings threefold with the
// state the earlier benchmarks left the heap in. This is RapidJSON's best
// case, so the ratios are the strict ones.
#include "jsonxx.h"

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>

#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <malloc.h>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>

namespace {

std::string change_list_page(int entries) {
  static const char* const names[] = {"report 2023.docx", ("Fotos/Urlaub \xc3\x9c" "berlingen.jpg"), "data.bin",
                                      "\xe6\x96\x87\xe4\xbb\xb6 backup.tar", "caf\xc3\xa9 menu (final).pdf"};
  std::mt19937_64 random(42);
  std::string page = R"({"data":{"changeList":[)";
  char entry[1024];
  for (int i = 0; i < entries; ++i) {
    const std::uint64_t time = 1600000000u + random() % 100000000u;
    std::snprintf(entry, sizeof entry,
                  R"(%s{"inode":%)" PRIu64 R"(,"changeType":%d,"fType":%d,"filePath":"/fs_%d/dir %d/%s",)"
                  R"("crTime":%)" PRIu64 R"(,"cTime":%)" PRIu64 R"(,"mTime":%)" PRIu64 R"(,"aTime":%)" PRIu64
                  R"(,"owner":%d,"group":%d,"size":%)" PRIu64 R"(,"links":%d,"dosAttr":%d})",
                  i == 0 ? "" : ",", i % 7 == 0 ? UINT64_MAX : random(), static_cast<int>(random() % 4),
                  static_cast<int>(random() % 3), i % 3, i % 50, names[i % 5], time, time + 1, time + 2, time + 3,
                  static_cast<int>(random() % 70000), static_cast<int>(random() % 70000),
                  i % 5 == 0 ? UINT64_MAX : random() % 10000000000u, static_cast<int>(1 + random() % 3),
                  static_cast<int>(random() % 64));
    page += entry;
  }
  page += R"(],"numChanges":"1000","progress":"42","linkPos":"18446744073709551615","linkPosType":"1",)"
          R"("posObj":"4096","posOffset":"123456789","posType":"2"},"error":{"code":0,"description":"0"}})";
  return page;
}

const std::string& page() {
  static const std::string text = change_list_page(1000);
  return text;
}

void JsonxxString(benchmark::State& state) {
  for (auto _ : state) {
    jsonxx::Object object;
    benchmark::DoNotOptimize(object.parse(page()));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * page().size()));
}

void JsonxxStream(benchmark::State& state) {
  for (auto _ : state) {
    std::istringstream input(page());
    jsonxx::Object object;
    benchmark::DoNotOptimize(object.parse(input));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * page().size()));
}

void RapidJsonDom(benchmark::State& state) {
  for (auto _ : state) {
    rapidjson::Document document;
    document.Parse(page().c_str(), page().size());
    benchmark::DoNotOptimize(document.HasParseError());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * page().size()));
}

void JsonxxStringParseOnly(benchmark::State& state) {
  for (auto _ : state) {
    auto object = std::make_unique<jsonxx::Object>();
    benchmark::DoNotOptimize(object->parse(page()));
    state.PauseTiming();
    object.reset();
    state.ResumeTiming();
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * page().size()));
}

void RapidJsonDomParseOnly(benchmark::State& state) {
  for (auto _ : state) {
    auto document = std::make_unique<rapidjson::Document>();
    document->Parse(page().c_str(), page().size());
    benchmark::DoNotOptimize(document->HasParseError());
    state.PauseTiming();
    document.reset();
    state.ResumeTiming();
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * page().size()));
}

BENCHMARK(JsonxxString);
BENCHMARK(JsonxxStream);
BENCHMARK(RapidJsonDom);
BENCHMARK(JsonxxStringParseOnly);
BENCHMARK(RapidJsonDomParseOnly);

// Keeps the throughput of each benchmark (the median when repeated) to print
// the ratios at the end.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (!run.aggregate_name.empty() && run.aggregate_name != "median") continue;
      const auto rate = run.counters.find("bytes_per_second");
      if (rate != run.counters.end()) mb_per_second_[run.run_name.function_name] = rate->second.value / 1e6;
    }
  }

  void print_ratios() const {
    std::printf("\npage: %zu bytes, 1000 change-list entries\n", page().size());
    print("JsonxxString", "RapidJsonDom");
    print("JsonxxStream", "RapidJsonDom");
    print("RapidJsonDom", "RapidJsonDom");
    print("JsonxxStringParseOnly", "RapidJsonDomParseOnly");
    print("RapidJsonDomParseOnly", "RapidJsonDomParseOnly");
  }

 private:
  void print(const std::string& name, const std::string& baseline) const {
    if (rate(name) > 0 && rate(baseline) > 0)
      std::printf("%-22s %8.1f MB/s  %5.2fx %s\n", name.c_str(), rate(name), rate(name) / rate(baseline),
                  baseline.c_str());
  }

  double rate(const std::string& name) const {
    const auto found = mb_per_second_.find(name);
    return found == mb_per_second_.end() ? 0 : found->second;
  }

  std::map<std::string, double> mb_per_second_;
};

}  // namespace

int main(int argc, char** argv) {
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
  jsonxx::Object check;
  rapidjson::Document reference;
  if (!check.parse(page()) || reference.Parse(page().c_str()).HasParseError() ||
      check.get<jsonxx::Object>("data").get<jsonxx::Array>("changeList").size() != 1000) {
    std::fprintf(stderr, "the generated page does not parse\n");
    return 1;
  }
  benchmark::Initialize(&argc, argv);
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.print_ratios();
  benchmark::Shutdown();
  return 0;
}
