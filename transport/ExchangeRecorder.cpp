#include "ExchangeRecorder.h"

#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "JsonLineCheck.h"
#include "JsonStrings.h"
#include "PasswordMask.h"
#include "RecordingAnonymiser.h"
#include "TkDebug.h"
#include "ZrLibrarySettings.h"
#include "ZrManageHuaweiVersion.h"

namespace HuaweiTransport {

namespace {

const char kLoginResourceEnd[] = "/sessions";
const char kPasswordOpening[] = "password\":\"";
const char kPasswordClosing[] = "\", \"scope\"";

bool isWordByte(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; }

// Every occurrence of `secret` that stands on its own (no letter or digit glued to either side)
// becomes `placeholder`: a device identifier of digits must not eat into a longer number.
void replaceWhole(std::string& text, const std::string& secret, const char* placeholder) {
  if (secret.empty()) return;
  const std::size_t length = std::strlen(placeholder);
  for (std::size_t at = text.find(secret); at != std::string::npos; at = text.find(secret, at)) {
    const std::size_t end = at + secret.size();
    if ((at > 0 && isWordByte(text[at - 1])) || (end < text.size() && isWordByte(text[end]))) {
      ++at;
      continue;
    }
    text.replace(at, secret.size(), placeholder);
    at += length;
  }
}

// The path and query of a URL: what follows "scheme://authority".
std::string resourceOf(const char* url) {
  const char* rest = std::strstr(url, "://");
  rest = rest ? rest + 3 : url;
  const char* path = std::strpbrk(rest, "/?");
  return path ? std::string(path) : std::string("/");
}

bool endsWith(const std::string& text, const char* end) {
  const std::size_t length = std::strlen(end);
  return text.size() >= length && text.compare(text.size() - length, length, end) == 0;
}

void remember(std::vector<std::string>& secrets, std::string value) {
  if (value.empty()) return;
  for (const std::string& known : secrets) {
    if (known == value) return;
  }
  secrets.push_back(std::move(value));
}

}  // namespace

ExchangeRecorder::ExchangeRecorder(const std::string& path, bool anonymised)
    : path_(path), anonymiser_(anonymised ? std::make_unique<RecordingAnonymiser>() : nullptr) {
  secrets_.add("\"iBaseToken\"");
  fd_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (fd_ < 0) {
    throw std::runtime_error("Unable to create the recording file [" + path + "]: " + std::strerror(errno));
  }
  writeLine({std::string("{\"recording\":1,\"library\":\"") + ZRMANAGEHUAWEI_VERSION + "\",\"anonymised\":" +
            (anonymised ? "true" : "false") + "}\n"});
}

ExchangeRecorder::~ExchangeRecorder() {
  if (fd_ >= 0) ::close(fd_);
}

// The parts go out in one call, so that no copy of a long answer is made to join them.
void ExchangeRecorder::writeLine(std::initializer_list<std::string_view> parts) {
  std::array<iovec, 3> pieces{};
  int count = 0;
  for (const std::string_view part : parts) {
    if (!part.empty() && count < static_cast<int>(pieces.size())) {
      pieces[count++] = iovec{const_cast<char*>(part.data()), part.size()};
    }
  }
  iovec* next = pieces.data();
  while (count > 0) {
    const ssize_t n = ::writev(fd_, next, count);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) {
      TkDebug(nullptr).DebugLvl("ExchangeRecorder::writeLine", -1, 0,
                                "Unable to write to the recording file [%s]: %s", path_.c_str(),
                                n < 0 ? std::strerror(errno) : "nothing written");
      return;
    }
    auto done = static_cast<std::size_t>(n);
    for (; count > 0 && done >= next->iov_len; --count) done -= (next++)->iov_len;
    if (count > 0) {
      next->iov_base = static_cast<char*>(next->iov_base) + done;
      next->iov_len -= done;
    }
  }
}

// The login tells the secrets of its session: the password in its body, the device identifier
// and the token in its answer.
void ExchangeRecorder::learnSecrets(const std::string& request, const std::string& answer) {
  const std::size_t opening = request.find(kPasswordOpening);
  if (opening != std::string::npos) {
    const std::size_t start = opening + sizeof kPasswordOpening - 1;
    const std::size_t closing = request.find(kPasswordClosing, start);
    if (closing != std::string::npos) remember(passwords_, request.substr(start, closing - start));
  }
  std::string copy = answer;
  rewriteJsonStrings(copy, [this](std::string_view key, std::string_view value, std::string&) {
    if (key == "deviceid") remember(deviceIds_, std::string(value));
    if (key == "iBaseToken") remember(tokens_, std::string(value));
    return false;
  });
  for (const auto* secrets : {&passwords_, &tokens_, &deviceIds_}) {
    for (const std::string& secret : *secrets) secrets_.add(secret);
  }
}

void ExchangeRecorder::hideSecrets(std::string& text) const {
  for (const std::string& password : passwords_) hidePassword(text, password);
  rewriteJsonStrings(text, [](std::string_view key, std::string_view, std::string& replacement) {
    if (key != "iBaseToken") return false;
    replacement = "{iBaseToken}";
    return true;
  });
  for (const std::string& token : tokens_) replaceWhole(text, token, "{iBaseToken}");
  for (const std::string& deviceId : deviceIds_) replaceWhole(text, deviceId, "{deviceid}");
}

// A body as it goes into the line: the client's own bytes when nothing in it must change (as for
// nearly every page of a change list), else a copy in `changed` with the secrets replaced.
std::string_view ExchangeRecorder::recordable(const char* data, std::size_t length, std::string& changed) {
  const std::string_view body(data ? data : "", data ? length : 0);
  if (!secrets_.foundIn(body)) return body;
  changed.assign(body);
  hideSecrets(changed);
  return changed;
}

void ExchangeRecorder::writeExchange(const ZRLibCurlExchange& exchange) {
  std::string resource = resourceOf(exchange.url);
  // Copies kept from one exchange to the next: a fresh copy of a long page each time would cost
  // fresh pages each time, and the program's memory would shrink and grow with every page.
  std::string& request = requestCopy_;
  std::string& answer = answerCopy_;
  std::string_view requestText, answerText;
  if (std::strcmp(exchange.method, "POST") == 0 && endsWith(resource, kLoginResourceEnd)) {
    request.assign(exchange.request ? exchange.request : "", exchange.request ? exchange.requestLength : 0);
    answer.assign(exchange.answer ? exchange.answer : "", exchange.answer ? exchange.answerLength : 0);
    learnSecrets(request, answer);
    maskPassword(request);
    hideSecrets(request);
    hideSecrets(answer);
    requestText = request;
    answerText = answer;
  } else {
    requestText = recordable(exchange.request, exchange.requestLength, request);
    answerText = recordable(exchange.answer, exchange.answerLength, answer);
  }
  hideSecrets(resource);
  if (anonymiser_) {
    request.assign(requestText);
    answer.assign(answerText);
    anonymiser_->anonymise(resource, request, answer);
    requestText = request;
    answerText = answer;
  }

  line_.append("{\"method\":");
  appendJsonString(line_, exchange.method);
  line_.append(",\"resource\":");
  appendJsonString(line_, resource);
  line_.append(",\"request\":");
  appendJsonString(line_, requestText);
  // In whole microseconds, so that no locale puts a comma in place of the point.
  const long long micro = std::llround(std::max(0.0, exchange.milliseconds) * 1000.0);
  char number[96];
  std::snprintf(number, sizeof number, ",\"status\":%ld,\"ms\":%lld.%03lld", exchange.status, micro / 1000,
                micro % 1000);
  line_.append(number);
  // An answer that is one JSON value on one line goes in as it came, last in the line and after
  // its length, so that a reader can cut its bytes out unchanged; any other is written as a string.
  if (isOneLineJsonValue(answerText)) {
    std::snprintf(number, sizeof number, ",\"answerBytes\":%zu,\"answer\":", answerText.size());
    line_.append(number);
    writeLine({line_.view(), answerText, "}\n"});
    return;
  }
  line_.append(",\"answer\":");
  appendJsonString(line_, answerText);
  line_.append("}\n");
  writeLine({line_.view()});
}

void ExchangeRecorder::record(const ZRLibCurlExchange& exchange) noexcept {
  try {
    std::lock_guard<std::mutex> lock(mutex_);
    // The buffer keeps its size from line to line: a long answer does not cost fresh pages each time.
    line_.clear();
    writeExchange(exchange);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "ExchangeRecorder: an exchange was not recorded: %s\n", error.what());
  } catch (...) {
    std::fprintf(stderr, "ExchangeRecorder: an exchange was not recorded\n");
  }
}

bool ExchangeRecorder::startFromSettings(std::string& reason) {
  const ZrLibrarySettings& settings = ZrLibraryGetSettings();
  if (settings.recordingFile.empty()) return true;
  static std::once_flag started;
  static std::string failure;
  std::call_once(started, [&settings] {
    try {
      // Never freed: clients may record up to the last static destructor.
      ZRLibCurlSetRecorder(new ExchangeRecorder(settings.recordingFile, settings.recordingAnonymised));
    } catch (const std::exception& error) {
      failure = error.what();
    }
  });
  reason = failure;
  return failure.empty();
}

}  // namespace HuaweiTransport
