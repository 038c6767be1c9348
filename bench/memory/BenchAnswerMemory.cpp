// Memory of one large answer through the facade: getSystemInformation answered by a system record
// that carries 1, 10 or 100 MB of records beside its own keys, from the simulator in a process of
// its own. The records are file-system records, or the shapes that cost the document model most
// for their size: empty objects `{},{},...` and zeros `0,0,...`. For each size a fresh process of
// this program reports its resident memory before the call, its peak during it, what stays once the
// facade is gone, and whether the call succeeded (a tree beyond the parse's memory bound is refused).
//
//   bench_answer_memory [--rounds R]                     R fresh processes per shape and size (default 3)
//   bench_answer_memory --megabytes N [--shape S]        one process, one answer of about N MB of
//                                                        shape records (default), empty-objects or zeros
#include <curl/curl.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "ChildProcess.h"
#include "TkLogSink.h"
#include "ZRLibCurlOptions.h"
#include "ZrManageHuawei.h"

namespace {

constexpr const char* kAddress = "127.0.0.23";

// A figure of /proc/self/status in MiB, such as "VmRSS" or "VmHWM".
double StatusMiB(const char* key) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.compare(0, std::strlen(key), key) == 0 && line[std::strlen(key)] == ':') {
      return std::strtod(line.c_str() + std::strlen(key) + 1, nullptr) / 1024.0;
    }
  }
  throw std::runtime_error(std::string("no ") + key + " in /proc/self/status");
}

// Makes the peak start again from the present resident size.
void ResetPeak() {
  std::ofstream clear("/proc/self/clear_refs");
  clear << "5";
}

std::string Records(const std::string& shape, std::size_t megabytes) {
  const std::size_t bytes = megabytes * 1000000;
  std::string records;
  if (shape == "empty-objects" || shape == "zeros") {
    const std::string element = shape == "zeros" ? "0," : "{},";
    records.reserve(bytes + element.size());
    while (records.size() < bytes) records += element;
    records.pop_back();
    return records;
  }
  if (shape != "records") throw std::runtime_error("unknown shape " + shape);
  for (std::size_t i = 0; records.size() < bytes; ++i) {
    const std::string id = std::to_string(i);
    records += (i ? "," : "");
    records += "{\"ID\":\"" + id + "\",\"NAME\":\"filesystem_" + id +
               "\",\"PARENTID\":\"0\",\"CAPACITY\":\"2147483648\",\"ALLOCTYPE\":1,\"HEALTHSTATUS\":\"1\","
               "\"RUNNINGSTATUS\":\"27\",\"SECTORSIZE\":512,\"DESCRIPTION\":\"generated for the memory benchmark\"}";
  }
  return records;
}

std::string SystemAnswer(const std::string& shape, std::size_t megabytes) {
  const std::string records = Records(shape, megabytes);
  return "{\"data\":{\"ID\":\"2102353GTH10L8000007\",\"NAME\":\"array\",\"PRODUCTMODE\":\"812\","
         "\"PRODUCTVERSION\":\"V600R005C00\",\"HEALTHSTATUS\":\"1\",\"RUNNINGSTATUS\":\"1\",\"records\":[" +
         records + "]},\"error\":{\"code\":0,\"description\":\"0\"}}";
}

size_t Append(char* data, size_t size, size_t count, void* text) {
  static_cast<std::string*>(text)->append(data, size * count);
  return size * count;
}

// Has the simulator answer every GET of system/ with `body`.
void CanSystemAnswer(const std::string& caPath, const std::string& body) {
  const std::string rule = nlohmann::json{{"method", "GET"}, {"resource", "system/"}, {"exact", true},
                                          {"kind", "cannedBody"}, {"body", body}, {"times", -1}}
                               .dump();
  CURL* handle = curl_easy_init();
  const std::string url = std::string("https://") + kAddress + ":8088/simulator/faults";
  curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
  curl_easy_setopt(handle, CURLOPT_CAINFO, caPath.c_str());
  curl_slist* json = curl_slist_append(nullptr, "Content-Type: application/json");
  curl_easy_setopt(handle, CURLOPT_HTTPHEADER, json);
  curl_easy_setopt(handle, CURLOPT_POSTFIELDS, rule.c_str());
  curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(rule.size()));
  std::string answer;
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &Append);
  curl_easy_setopt(handle, CURLOPT_WRITEDATA, &answer);
  long status = 0;
  const CURLcode result = curl_easy_perform(handle);
  curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
  curl_easy_cleanup(handle);
  curl_slist_free_all(json);
  if (result != CURLE_OK || status != 200) {
    throw std::runtime_error("the simulator refused the canned answer: " +
                             (result != CURLE_OK ? std::string(curl_easy_strerror(result)) : std::to_string(status) + " " + answer));
  }
}

int MeasureOnce(const std::string& shape, std::size_t megabytes) {
  tklog::SetMaxLevel(4);
  tklog::SetSink([](const tklog::LogLine& line) {
    if (line.level < 0) std::fprintf(stderr, "%s: %s\n", line.name.c_str(), line.text.c_str());
  });
  zrbench::SimulatorProcess simulator({ZR_ARRAY_SIMULATOR, "--address", kAddress, "--no-record"});
  CanSystemAnswer(simulator.caPath(), SystemAnswer(shape, megabytes));
  ZRLibCurlOptions tls;
  tls.caBundlePath = simulator.caPath();
  ZRLibCurlSetOptions(tls);

  bool ok = false;
  double before = 0, peak = 0, afterCall = 0;
  {
    ZrManageHuawei array(1);
    if (!array.createSession("admin", "Admin@storage1", kAddress)) throw std::runtime_error("login failed");
    malloc_trim(0);  // the canned answer built above is gone; start from what the process needs
    before = StatusMiB("VmRSS");
    ResetPeak();
    _HuaweiSystemInformation info;
    ok = array.getSystemInformation(info) && info.id == "2102353GTH10L8000007";
    peak = StatusMiB("VmHWM");
    afterCall = StatusMiB("VmRSS");
  }
  const double afterFacade = StatusMiB("VmRSS");
  ZRLibCurlSetOptions(ZRLibCurlOptions());
  simulator.stop();
  std::printf("RESULT before=%.1f peak=%.1f call=%.1f gone=%.1f ok=%d\n", before, peak, afterCall, afterFacade,
              ok ? 1 : 0);
  return 0;
}

struct Series {
  const char* shape;
  std::vector<const char*> megabytes;
};

int Drive(int rounds) {
  const std::string self = zrbench::SelfPath();
  const char* const kColumns[] = {"before", "peak", "call", "gone"};
  const Series kSeries[] = {{"records", {"1", "10", "100"}}, {"empty-objects", {"1", "10", "50"}},
                            {"zeros", {"1", "10", "50"}}};
  std::printf("resident memory of this process in MiB, median of %d fresh processes (min-max)\n", rounds);
  std::printf("%-14s %8s %22s %22s %22s %22s  %s\n", "shape", "answer", "before the call", "peak during it",
              "after it", "after the facade", "call");
  for (const Series& series : kSeries) {
    for (const char* size : series.megabytes) {
      std::map<std::string, std::vector<double>> figures;
      int succeeded = 0;
      for (int round = 0; round < rounds; ++round) {
        zrbench::Child run({self, "--megabytes", size, "--shape", series.shape});
        for (std::string line; run.readLine(line);) {
          if (line.rfind("RESULT ", 0) != 0) continue;
          for (const char* column : kColumns) figures[column].push_back(std::stod(zrbench::Field(line, column)));
          succeeded += std::stoi(zrbench::Field(line, "ok"));
        }
        if (run.stop(0) != 0 || figures["peak"].size() != static_cast<std::size_t>(round + 1)) return 1;
      }
      std::printf("%-14s %5s MB", series.shape, size);
      for (const char* column : kColumns) {
        std::vector<double>& values = figures[column];
        std::sort(values.begin(), values.end());
        std::printf(" %8.1f (%5.1f-%5.1f)", values[values.size() / 2], values.front(), values.back());
      }
      std::printf("  %s\n", succeeded == rounds ? "succeeded" : succeeded == 0 ? "refused" : "mixed");
    }
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  int rounds = 3;
  std::size_t megabytes = 0;
  std::string shape = "records";
  for (int i = 1; i < argc; ++i) {
    const bool hasValue = i + 1 < argc;
    if (hasValue && !std::strcmp(argv[i], "--rounds")) {
      rounds = std::atoi(argv[++i]);
    } else if (hasValue && !std::strcmp(argv[i], "--megabytes")) {
      megabytes = std::strtoull(argv[++i], nullptr, 10);
    } else if (hasValue && !std::strcmp(argv[i], "--shape")) {
      shape = argv[++i];
    } else {
      std::fprintf(stderr, "usage: %s [--rounds R | --megabytes N [--shape records|empty-objects|zeros]]\n", argv[0]);
      return 2;
    }
  }
  if (rounds <= 0) return 2;
  try {
    return megabytes ? MeasureOnce(shape, megabytes) : Drive(rounds);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_answer_memory: %s\n", error.what());
    return 1;
  }
}
