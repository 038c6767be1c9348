// One HTTPS GET, three ways, against a local server:
//   FreshClientShared    a new ZRLibCurl per request over the process-wide connection pool
//   FreshClientUnshared  a new ZRLibCurl per request, pool off: full TCP and TLS handshake each time
//   ReusedRawHandle      one libcurl easy handle kept for every request (the floor)
// and, to show what loading the trust store once saves, a fresh ZRLibCurl and a fresh raw libcurl
// handle, both unshared, trusting the system bundle plus the local CA (the raw handle loads the
// bundle file for each handshake). Ratios against ReusedRawHandle come last.
#include <curl/curl.h>
#include <httplib.h>
#include <stdlib.h>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <thread>

#include "LocalCertificates.h"
#include "TkLogSink.h"
#include "ZRLibCurl.h"
#include "ZRLibCurlOptions.h"

namespace {

constexpr const char* kSystemBundle = "/etc/ssl/certs/ca-certificates.crt";

class LocalServer {
 public:
  explicit LocalServer(const arraysim::CertificateFiles& files)
      : server_(files.serverCertPath.c_str(), files.serverKeyPath.c_str()) {
    server_.set_tcp_nodelay(true);
    server_.set_keep_alive_max_count(1000000);
    server_.Get("/deviceManager/rest/dev/system/", [](const httplib::Request&, httplib::Response& response) {
      response.set_content("{\"data\":{\"NAME\":\"array\"},\"error\":{\"code\":0,\"description\":\"0\"}}",
                           "application/json");
    });
    port_ = server_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  ~LocalServer() {
    server_.stop();
    thread_.join();
  }
  std::string Url() const {
    return "https://127.0.0.1:" + std::to_string(port_) + "/deviceManager/rest/dev/system/";
  }

 private:
  httplib::SSLServer server_;
  int port_ = 0;
  std::thread thread_;
};

struct Fixture {
  std::string directory;
  arraysim::CertificateFiles files;
  std::string systemPlusLocalBundle;
  std::unique_ptr<LocalServer> server;
};

Fixture& Shared() {
  static Fixture fixture;
  return fixture;
}

size_t Discard(char*, size_t size, size_t count, void*) { return size * count; }

void SetClientOptions(const std::string& caBundle, bool share) {
  ZRLibCurlOptions options;
  options.caBundlePath = caBundle;
  options.shareConnections = share;
  ZRLibCurlSetOptions(options);
}

void SendThroughFreshClient(benchmark::State& state) {
  const std::string url = Shared().server->Url();
  for (auto _ : state) {
    ZRLibCurl client;
    client.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr);
    client.ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, "iBaseToken: token");
    if (!client.ZRLibCurlSendHttpReq(HTTP_REQ_GET, url.c_str(), nullptr, 0, false, nullptr)) {
      state.SkipWithError("request failed");
      break;
    }
    unsigned long size = 0;
    benchmark::DoNotOptimize(client.GetHttpResponse(size, false));
  }
}

void FreshClientShared(benchmark::State& state) {
  SetClientOptions(Shared().files.caCertPath, true);
  SendThroughFreshClient(state);
}

void FreshClientUnshared(benchmark::State& state) {
  SetClientOptions(Shared().files.caCertPath, false);
  SendThroughFreshClient(state);
}

void FreshClientUnsharedSystemBundle(benchmark::State& state) {
  SetClientOptions(Shared().systemPlusLocalBundle, false);
  SendThroughFreshClient(state);
}

CURL* NewRawHandle(const std::string& url, const std::string& caBundle) {
  CURL* handle = curl_easy_init();
  curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
  curl_easy_setopt(handle, CURLOPT_CAINFO, caBundle.c_str());
  curl_easy_setopt(handle, CURLOPT_CAPATH, static_cast<char*>(nullptr));
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &Discard);
  curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(handle, CURLOPT_PROXY, "");
  return handle;
}

void ReusedRawHandle(benchmark::State& state) {
  CURL* handle = NewRawHandle(Shared().server->Url(), Shared().files.caCertPath);
  for (auto _ : state) {
    if (curl_easy_perform(handle) != CURLE_OK) {
      state.SkipWithError("request failed");
      break;
    }
  }
  curl_easy_cleanup(handle);
}

void FreshRawHandleSystemBundle(benchmark::State& state) {
  for (auto _ : state) {
    CURL* handle = NewRawHandle(Shared().server->Url(), Shared().systemPlusLocalBundle);
    const CURLcode result = curl_easy_perform(handle);
    curl_easy_cleanup(handle);
    if (result != CURLE_OK) {
      state.SkipWithError("request failed");
      break;
    }
  }
}

// Keeps the console output and remembers the time per request of each benchmark.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.error_occurred) continue;
      const std::string& name = run.run_name.function_name;
      // With --benchmark_repetitions the median stands for the benchmark; otherwise its one run.
      if (run.run_type == Run::RT_Aggregate) {
        if (run.aggregate_name == "median") {
          microseconds_[name] = run.GetAdjustedRealTime();
          fromMedian_.insert(name);
        }
      } else if (run.iterations > 0 && fromMedian_.count(name) == 0) {
        microseconds_[name] = run.GetAdjustedRealTime();
      }
    }
  }

  void PrintSummary() const {
    const double reused = Get("ReusedRawHandle");
    if (reused <= 0) return;
    std::printf("\nMicroseconds per HTTPS GET (wall clock):\n");
    for (const auto& [name, micros] : microseconds_) {
      std::printf("  %-34s %9.1f us  %6.2fx reused\n", name.c_str(), micros, micros / reused);
    }
    std::printf("\nfresh-shared / reused:    %.2fx\n", Get("FreshClientShared") / reused);
    std::printf("fresh-unshared / reused:  %.2fx\n", Get("FreshClientUnshared") / reused);
    const double rawSystem = Get("FreshRawHandleSystemBundle");
    const double oursSystem = Get("FreshClientUnsharedSystemBundle");
    if (rawSystem > 0 && oursSystem > 0) {
      std::printf("system bundle, fresh raw handle (loads it per handshake) / fresh client (loads it once): %.2fx\n",
                  rawSystem / oursSystem);
    }
  }

 private:
  double Get(const std::string& name) const {
    const auto found = microseconds_.find(name);
    return found == microseconds_.end() ? 0.0 : found->second;
  }
  std::map<std::string, double> microseconds_;
  std::set<std::string> fromMedian_;
};

void Prepare() {
  Fixture& fixture = Shared();
  std::string pattern = (std::filesystem::temp_directory_path() / "bench-https-XXXXXX").string();
  if (!mkdtemp(&pattern[0])) throw std::runtime_error("cannot make a scratch directory");
  fixture.directory = pattern;
  fixture.files = arraysim::MakeCertificates(fixture.directory, "127.0.0.1");
  fixture.systemPlusLocalBundle = fixture.directory + "/system-plus-local.pem";
  {
    std::ofstream bundle(fixture.systemPlusLocalBundle);
    bundle << std::ifstream(kSystemBundle).rdbuf() << std::ifstream(fixture.files.caCertPath).rdbuf();
  }
  fixture.server = std::make_unique<LocalServer>(fixture.files);
}

}  // namespace

BENCHMARK(ReusedRawHandle)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(FreshClientShared)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(FreshClientUnshared)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(FreshClientUnsharedSystemBundle)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(FreshRawHandleSystemBundle)->Unit(benchmark::kMicrosecond)->UseRealTime();

int main(int argc, char** argv) {
  curl_global_init(CURL_GLOBAL_DEFAULT);
  tklog::SetMaxLevel(0);
  Prepare();
  benchmark::Initialize(&argc, argv);
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintSummary();
  ZRLibCurlSetOptions(ZRLibCurlOptions());  // closes pooled connections before the server stops
  Shared().server.reset();
  std::filesystem::remove_all(Shared().directory);
  benchmark::Shutdown();
  return 0;
}
