// One first-generation GET (getSystemInformation) through the whole facade and transport, a fresh
// HTTPS client per request as the library makes it, beside one reused libcurl easy handle doing
// the same GET on the same session, in the same run, against the simulator running as a process
// of its own, so that its threads do not compete with this process's for the same cores. Between the
// two ends stand the steps that make up the difference, each timed alike: a fresh easy handle per
// GET over a shared pool, the cookie read from the cookie file, the platform client as the
// transport drives it; the facade adds the transport, request objects, parsing and log lines.
//
//   bench_facade_get [--requests N] [--rounds R] [--only facade|raw] [--stderr-log]
//
// --only times one side alone, for a profiler (perf record, strace -c) to look at; under callgrind
// with --collect-atstart=no only its timed requests are counted (bench/instr-count).
//
// Each step is timed in rounds interleaved with the other steps; the table gives the median and
// the spread (fastest and slowest round) per step, and per GET this thread's CPU time and the
// times it gave up the CPU (voluntary context switches: a wait for the network or a lock), which
// a busy machine does not blur as it blurs the times.
//
// The library logs at its default level 4 into a sink that counts and drops the lines, as a host
// product's log writer would take them (the lines are formatted; nothing goes to the terminal).
// --stderr-log keeps the default sink instead, which writes them to standard error.
#include <curl/curl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "ArraySimulator.h"
#include "BenchClock.h"
#include "ChildProcess.h"
#include "MeasuredPart.h"
#include "TkLogSink.h"
#include "ZRLibCurl.h"
#include "ZRLibCurlOptions.h"
#include "ZrManageHuawei.h"

namespace {

constexpr const char* kAddress = "127.0.0.21";

// This thread's voluntary context switches and CPU time so far.
struct ThreadUsage {
  long waits = 0;
  double cpuSeconds = 0;
};

ThreadUsage UsageNow() {
  rusage usage{};
  getrusage(RUSAGE_THREAD, &usage);
  const auto seconds = [](const timeval& time) { return static_cast<double>(time.tv_sec) + time.tv_usec / 1e6; };
  return {usage.ru_nvcsw, seconds(usage.ru_utime) + seconds(usage.ru_stime)};
}

size_t AppendTo(char* data, size_t size, size_t count, void* target) {
  static_cast<std::string*>(target)->append(data, size * count);
  return size * count;
}

// A session of its own, opened and used through one libcurl handle: the floor of a GET.
class RawSession {
 public:
  RawSession(const std::string& baseUrl, const std::string& caPath) : handle_(curl_easy_init()) {
    curl_easy_setopt(handle_, CURLOPT_CAINFO, caPath.c_str());
    curl_easy_setopt(handle_, CURLOPT_CAPATH, static_cast<char*>(nullptr));
    curl_easy_setopt(handle_, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle_, CURLOPT_PROXY, "");
    curl_easy_setopt(handle_, CURLOPT_COOKIEFILE, "");  // keeps the session cookie in memory
    curl_easy_setopt(handle_, CURLOPT_WRITEFUNCTION, &AppendTo);
    curl_easy_setopt(handle_, CURLOPT_WRITEDATA, &body_);

    const nlohmann::json login = {{"username", arraysim::SimulatorOptions::kDefaultUser},
                                  {"password", arraysim::SimulatorOptions::kDefaultPassword},
                                  {"scope", "0"}};
    const std::string loginBody = login.dump();
    curl_slist* json = curl_slist_append(nullptr, "Content-Type: application/json");
    curl_easy_setopt(handle_, CURLOPT_URL, (baseUrl + "/deviceManager/rest/xxxxx/sessions").c_str());
    curl_easy_setopt(handle_, CURLOPT_HTTPHEADER, json);
    curl_easy_setopt(handle_, CURLOPT_POSTFIELDS, loginBody.c_str());
    const CURLcode result = curl_easy_perform(handle_);
    curl_slist_free_all(json);
    if (result != CURLE_OK) throw std::runtime_error(std::string("raw login: ") + curl_easy_strerror(result));
    const auto answer = nlohmann::json::parse(body_);
    const std::string token = answer.at("data").at("iBaseToken").get<std::string>();
    const std::string deviceId = answer.at("data").at("deviceid").get<std::string>();

    headers_ = curl_slist_append(nullptr, "Content-Type: application/json");
    headers_ = curl_slist_append(headers_, ("iBaseToken: " + token).c_str());
    url_ = baseUrl + "/deviceManager/rest/" + deviceId + "/system/";
    curl_easy_setopt(handle_, CURLOPT_HTTPGET, 1L);
    curl_easy_setopt(handle_, CURLOPT_URL, url_.c_str());
    curl_easy_setopt(handle_, CURLOPT_HTTPHEADER, headers_);
  }
  ~RawSession() {
    curl_easy_cleanup(handle_);
    curl_slist_free_all(headers_);
  }

  // True when the array answered its system record (error code 0).
  bool get() {
    body_.clear();
    return curl_easy_perform(handle_) == CURLE_OK && body_.find("\"code\":0") != std::string::npos;
  }
  const std::string& url() const { return url_; }

 private:
  CURL* handle_;
  curl_slist* headers_ = nullptr;
  std::string url_;
  std::string body_;
};

// The session of the steps between the two ends: logged in through the platform's client with a
// cookie jar, as the transport logs in, so that the steps can send the cookie file as it does.
struct JarSession {
  std::string token, url, cookieJar, cookie;
};

JarSession LoginWithJar(const std::string& baseUrl, const std::string& cookieJar) {
  ZRLibCurl client;
  client.ZRLibCurlInit("Content-Type: application/json", true, true, nullptr);
  client.ZRLibCurlAppendHeader(HTTP_HDR_COOKIE_JAR, cookieJar.c_str());
  const nlohmann::json login = {{"username", arraysim::SimulatorOptions::kDefaultUser},
                                {"password", arraysim::SimulatorOptions::kDefaultPassword},
                                {"scope", "0"}};
  const std::string body = login.dump();
  const std::string url = baseUrl + "/deviceManager/rest/xxxxx/sessions";
  if (!client.ZRLibCurlSendHttpReq(HTTP_REQ_POST, url.c_str(), body.c_str(), body.size(), false, nullptr)) {
    throw std::runtime_error("login through the platform client failed");
  }
  unsigned long size = 0;
  const auto answer = nlohmann::json::parse(client.GetHttpResponse(size, false));
  client.ZRLibCurlDeInit();
  JarSession session;
  session.token = answer.at("data").at("iBaseToken").get<std::string>();
  session.url = baseUrl + "/deviceManager/rest/" + answer.at("data").at("deviceid").get<std::string>() + "/system/";
  session.cookieJar = cookieJar;
  std::ifstream jar(cookieJar);
  for (std::string line; std::getline(jar, line);) {  // Netscape format: the value is the last field
    const auto tab = line.rfind('\t');
    if (line.find("\tsession\t") != std::string::npos && tab != std::string::npos) {
      session.cookie = "session=" + line.substr(tab + 1);
    }
  }
  if (session.cookie.empty()) throw std::runtime_error("no session cookie in " + cookieJar);
  return session;
}

// A fresh libcurl easy handle per GET over a share of connections, TLS sessions and DNS: what
// libcurl itself costs for a handle that is not reused. The cookie goes as a string, or is read
// from the jar file as the platform client has libcurl do.
class FreshRawHandles {
 public:
  FreshRawHandles(const JarSession& session, const std::string& caPath, bool cookieFromFile)
      : session_(session), caPath_(caPath), cookieFromFile_(cookieFromFile), share_(curl_share_init()) {
    for (curl_lock_data data : {CURL_LOCK_DATA_DNS, CURL_LOCK_DATA_SSL_SESSION, CURL_LOCK_DATA_CONNECT}) {
      curl_share_setopt(share_, CURLSHOPT_SHARE, data);
    }
    headers_ = curl_slist_append(nullptr, "Content-Type: application/json");
    headers_ = curl_slist_append(headers_, ("iBaseToken: " + session.token).c_str());
  }
  ~FreshRawHandles() {
    curl_slist_free_all(headers_);
    curl_share_cleanup(share_);
  }
  bool get() {
    body_.clear();
    CURL* handle = curl_easy_init();
    curl_easy_setopt(handle, CURLOPT_SHARE, share_);
    curl_easy_setopt(handle, CURLOPT_CAINFO, caPath_.c_str());
    curl_easy_setopt(handle, CURLOPT_CAPATH, static_cast<char*>(nullptr));
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_PROXY, "");
    curl_easy_setopt(handle, CURLOPT_URL, session_.url.c_str());
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers_);
    if (cookieFromFile_) {
      curl_easy_setopt(handle, CURLOPT_COOKIEFILE, session_.cookieJar.c_str());
    } else {
      curl_easy_setopt(handle, CURLOPT_COOKIE, session_.cookie.c_str());
    }
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &AppendTo);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &body_);
    const bool ok = curl_easy_perform(handle) == CURLE_OK && body_.find("\"code\":0") != std::string::npos;
    curl_easy_cleanup(handle);
    return ok;
  }

 private:
  const JarSession& session_;
  std::string caPath_;
  bool cookieFromFile_;
  CURLSH* share_;
  curl_slist* headers_ = nullptr;
  std::string body_;
};

// The platform client used exactly as the transport uses it for one GET.
bool PlatformClientGet(const JarSession& session) {
  auto* client = new ZRLibCurl();
  bool ok = client->ZRLibCurlInit("Content-Type: application/json", true, true, nullptr);
  client->ZRLibCurlFreeHttpHeaderList();
  ok = ok && client->ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, ("iBaseToken: " + session.token).c_str());
  ok = ok && client->ZRLibCurlAppendHeader(HTTP_HDR_COOKIE_FILE, session.cookieJar.c_str());
  ok = ok && client->ZRLibCurlSendHttpReq(HTTP_REQ_GET, session.url.c_str(), nullptr, 0, false, nullptr);
  unsigned long size = 0;
  const char* body = ok ? client->GetHttpResponse(size, false) : nullptr;
  ok = body != nullptr && std::strstr(body, "\"code\":0") != nullptr;
  client->ZRLibCurlDeInit();
  delete client;
  return ok;
}

}  // namespace

int main(int argc, char** argv) {
  int requests = 200;
  int rounds = 31;
  std::string only;
  bool stderrLog = false;
  for (int i = 1; i < argc; ++i) {
    const bool hasValue = i + 1 < argc;
    if (!std::strcmp(argv[i], "--stderr-log")) {
      stderrLog = true;
    } else if (hasValue && !std::strcmp(argv[i], "--requests")) {
      requests = std::atoi(argv[++i]);
    } else if (hasValue && !std::strcmp(argv[i], "--rounds")) {
      rounds = std::atoi(argv[++i]);
    } else if (hasValue && !std::strcmp(argv[i], "--only")) {
      only = argv[++i];
    } else {
      std::fprintf(stderr, "usage: %s [--requests N] [--rounds R] [--only facade|raw] [--stderr-log]\n", argv[0]);
      return 2;
    }
  }
  if (requests <= 0 || rounds <= 0) return 2;

  tklog::SetMaxLevel(4);  // the default: level-5 lines (requests, responses) are not formatted
  std::atomic<unsigned long long> logLines{0};
  if (!stderrLog) tklog::SetSink([&](const tklog::LogLine&) { ++logLines; });

  zrbench::SimulatorProcess simulator({ZR_ARRAY_SIMULATOR, "--address", kAddress, "--no-record"});
  const std::string baseUrl = std::string("https://") + kAddress + ":8088";
  ZRLibCurlOptions tls;
  tls.caBundlePath = simulator.caPath();
  ZRLibCurlSetOptions(tls);
  const std::string cookieJar = std::filesystem::temp_directory_path() / ("bench-facade-" + std::to_string(getpid()));

  int exitCode = 0;
  {
    ZrManageHuawei array(1);
    if (!array.createSession(arraysim::SimulatorOptions::kDefaultUser, arraysim::SimulatorOptions::kDefaultPassword,
                             kAddress)) {
      std::fprintf(stderr, "facade login failed\n");
      return 1;
    }
    RawSession raw(baseUrl, simulator.caPath());
    const JarSession jarSession = LoginWithJar(baseUrl, cookieJar);
    FreshRawHandles freshWithCookieString(jarSession, simulator.caPath(), false);
    FreshRawHandles freshWithCookieFile(jarSession, simulator.caPath(), true);

    bool ok = true;
    _HuaweiSystemInformation info;
    struct Step {
      const char* label;
      std::function<void()> body;
    };
    const std::vector<Step> steps = {
        {"raw libcurl, one reused easy handle", [&] { ok &= raw.get(); }},
        {"+ fresh easy handle per GET (shared pool)", [&] { ok &= freshWithCookieString.get(); }},
        {"+ cookie read from the cookie file", [&] { ok &= freshWithCookieFile.get(); }},
        {"+ platform client ZRLibCurl as the transport uses it", [&] { ok &= PlatformClientGet(jarSession); }},
        {"facade getSystemInformation (whole library)", [&] { ok &= array.getSystemInformation(info); }},
    };
    for (int i = 0; i < 50; ++i) {
      for (const Step& step : steps) step.body();  // connections, TLS sessions, caches
    }

    if (!only.empty()) {
      const std::function<void()>& side = only == "raw" ? steps.front().body : steps.back().body;
      double seconds = 0;
      {
        zrbench::MeasuredPart measured;
        seconds = zrbench::medianSecondsPerIteration(side, requests, rounds);
      }
      std::printf("%s alone: %.1f us per GET\n", only.c_str(), seconds * 1e6);
    } else {
      // Each step's body counts this thread's voluntary switches and CPU time beside its time.
      std::vector<ThreadUsage> usage(steps.size());
      std::vector<std::function<void()>> bodies;
      for (std::size_t i = 0; i < steps.size(); ++i) {
        bodies.push_back([&, i] {
          const ThreadUsage before = UsageNow();
          steps[i].body();
          const ThreadUsage after = UsageNow();
          usage[i].waits += after.waits - before.waits;
          usage[i].cpuSeconds += after.cpuSeconds - before.cpuSeconds;
        });
      }
      const unsigned long long linesBefore = logLines;
      const auto samples = zrbench::interleavedSecondsPerIteration(bodies, requests, rounds);
      const double perStep = static_cast<double>(requests) * rounds;
      const double linesPerRequest = static_cast<double>(logLines - linesBefore) / perStep;
      std::vector<double> medians, ratios;
      for (const auto& oneStep : samples) medians.push_back(zrbench::median(oneStep));
      for (int round = 0; round < rounds; ++round) ratios.push_back(samples.back()[round] / samples.front()[round]);
      const double reused = medians.front(), facade = medians.back();
      std::printf("GET %s\n%d rounds of %d requests per step, steps interleaved; %ld cores\n\n", raw.url().c_str(),
                  rounds, requests, sysconf(_SC_NPROCESSORS_ONLN));
      std::printf("%-54s %9s %17s %9s %9s %9s\n", "", "us/GET", "rounds min-max", "step us", "CPU us", "waits");
      for (std::size_t i = 0; i < steps.size(); ++i) {
        const auto spread = std::minmax_element(samples[i].begin(), samples[i].end());
        std::printf("%-54s %9.1f %8.1f-%-8.1f", steps[i].label, medians[i] * 1e6, *spread.first * 1e6,
                    *spread.second * 1e6);
        if (i > 0) {
          std::printf(" %+9.1f", (medians[i] - medians[i - 1]) * 1e6);
        } else {
          std::printf(" %9s", "");
        }
        std::printf(" %9.1f %9.2f\n", usage[i].cpuSeconds / perStep * 1e6, static_cast<double>(usage[i].waits) / perStep);
      }
      const auto ratioSpread = std::minmax_element(ratios.begin(), ratios.end());
      std::printf("\nfacade %.1f us (%.0f req/s), reused handle %.1f us (%.0f req/s)\n", facade * 1e6, 1.0 / facade,
                  reused * 1e6, 1.0 / reused);
      std::printf("ratio facade / reused handle: %.2fx, rounds %.2fx-%.2fx (median of per-round ratios; "
                  "target <= 1.30x)\n",
                  zrbench::median(ratios), *ratioSpread.first, *ratioSpread.second);
      if (!stderrLog) std::printf("log lines at level <= 4 per facade request: %.1f\n", linesPerRequest);
    }
    if (!ok || info.id.empty()) {
      std::fprintf(stderr, "a request failed\n");
      exitCode = 1;
    }
  }
  std::remove(cookieJar.c_str());
  ZRLibCurlSetOptions(ZRLibCurlOptions());  // closes pooled connections before the simulator stops
  simulator.stop();
  return exitCode;
}
