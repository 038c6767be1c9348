#include "ZRLibCurl.h"

#include <curl/curl.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "ClientSettings.h"
#include "CookieFileCache.h"
#include "CookieJar.h"
#include "CurlGlobal.h"
#include "CurlLog.h"
#include "RequestHeaders.h"
#include "TransportSecurity.h"
#include "ZRLibCurlRecorder.h"

namespace {

std::atomic<ZRLibCurlRecorder*> g_recorder{nullptr};

const char* MethodName(_http_req_type_ method) {
  switch (method) {
    case HTTP_REQ_GET: return "GET";
    case HTTP_REQ_POST: return "POST";
    case HTTP_REQ_PUT: return "PUT";
    case HTTP_REQ_DELETE: return "DELETE";
  }
  return nullptr;
}

int OnDebugText(CURL*, curl_infotype type, char* data, size_t size, void*) {
  if (type == CURLINFO_TEXT || type == CURLINFO_HEADER_IN || type == CURLINFO_HEADER_OUT) {
    try {
      zrcurl::Log(zrcurl::kNoiseLevel, "%.*s", static_cast<int>(size), data);
    } catch (...) {
      // Nothing may unwind through libcurl; a lost noise line is harmless.
    }
  }
  return 0;
}

// Runs one public operation; nothing thrown inside (such as by a log sink or an allocation)
// leaves the platform layer.
template <typename Operation>
bool Guarded(const char* what, Operation operation) {
  try {
    return operation();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "ZRLibCurl: %s failed: %s\n", what, error.what());
  } catch (...) {
    std::fprintf(stderr, "ZRLibCurl: %s failed\n", what);
  }
  return false;
}

}  // namespace

struct ZRLibCurl::Impl {
  explicit Impl(ZRLibCurl* owner) : owner(owner) {}

  bool Init(const char* contentTypeHeader, bool failOnTransportErrorOnly, bool followRedirects,
            ZRLibCurlWriteCallback callback);
  void DeInit();
  bool AppendHeader(_http_hdr_type_ kind, const char* value);
  bool Send(_http_req_type_ method, const char* url, const void* data, unsigned long length, bool verbose);
  bool SetMethodAndBody(_http_req_type_ method, const void* data, unsigned long length);
  bool LoadCookieFiles(std::string& error);
  bool UseInheritedCookies(const std::vector<std::shared_ptr<const zrcurl::CookieLines>>& cached);
  void TurnCookieEngineOn();
  void NoteCookiesReceived();
  bool RefuseRedirect(_http_req_type_ method, const char* url);
  void Record(_http_req_type_ method, const char* url, const void* data, unsigned long length,
              std::chrono::steady_clock::time_point started) const;
  void ForgetResponse();
  bool Receive(const char* data, size_t size);
  static size_t OnBody(char* data, size_t size, size_t count, void* slot);
  static bool ApplyToNewHandle(zrcurl::HandleSlot& slot);

  ZRLibCurl* const owner;
  // The handle and its buffers while initialised; `handle` is the slot's.
  std::unique_ptr<zrcurl::HandleSlot> slot;
  CURL* handle = nullptr;
  // Held as long as the handle, which uses its trust store and share.
  std::shared_ptr<zrcurl::ClientSettings> settings;
  std::string cookieJar;
  // The cookie engine of the handle: whether it is on, and the cookie lines it holds when it holds
  // exactly those of one file as read. A recycled handle may come with the engine of the client
  // before, holding `inheritedCookies`: used when this client names that same file, unchanged,
  // before its first request, and dropped otherwise.
  bool cookieEngineOn = false;
  std::shared_ptr<const zrcurl::CookieLines> engineCookies;
  std::shared_ptr<const zrcurl::CookieLines> inheritedCookies;
  ZRLibCurlWriteCallback writeCallback = nullptr;
  // Taken at init, so that a client records all its exchanges or none.
  ZRLibCurlRecorder* recorder = nullptr;

  bool hasResponse = false;
  bool bodyTooLarge = false;
  long httpStatus = 0;
};

bool ZRLibCurl::Impl::Init(const char* contentTypeHeader, bool failOnTransportErrorOnly, bool followRedirects,
                           ZRLibCurlWriteCallback callback) {
  DeInit();
  zrcurl::EnsureCurlGlobalInit();
  settings = zrcurl::CurrentClientSettings();
  slot = settings->handles.Take();
  if (!slot || !slot->handle) {
    slot.reset();
    zrcurl::Log(zrcurl::kFailureLevel, "libcurl gave no handle.");
    settings.reset();
    return false;
  }
  handle = slot->handle;
  inheritedCookies = std::move(slot->keptCookies);
  cookieEngineOn = inheritedCookies != nullptr;
  writeCallback = callback;
  recorder = g_recorder.load(std::memory_order_acquire);
  slot->receiver = this;
  slot->headers.SetInitialContentType(contentTypeHeader);

  zrcurl::WarnOfSettings(*settings);
  if (slot->fresh && !(zrcurl::ApplyClientSettings(handle, *settings) && ApplyToNewHandle(*slot))) {
    slot.reset();  // never recycled with settings half applied
    handle = nullptr;
    zrcurl::Log(zrcurl::kFailureLevel, "libcurl refused a setting of the client.");
    DeInit();
    return false;
  }
  slot->fresh = false;
  (void)followRedirects;  // never followed: see ApplyToNewHandle
  // Set only when it changes: a handle keeps what the client before it set.
  const long failOnError = failOnTransportErrorOnly ? 0L : 1L;
  bool ok = true;
  if (slot->failOnError != failOnError) {
    ok = curl_easy_setopt(handle, CURLOPT_FAILONERROR, failOnError) == CURLE_OK;
    slot->failOnError = ok ? failOnError : -1;
  }
  if (!ok) {
    zrcurl::Log(zrcurl::kFailureLevel, "libcurl refused a setting of the client.");
    DeInit();
  }
  return ok;
}

// What every client sets alike, set once on a handle made for it and kept while it is recycled.
// Bodies and error texts go to the slot, which finds the client that owns it now.
bool ZRLibCurl::Impl::ApplyToNewHandle(zrcurl::HandleSlot& slot) {
  // Redirects are never followed, whatever the caller asks: the login body carries the password
  // and every later request the token, and neither may reach a host the caller did not name.
  bool ok = curl_easy_setopt(slot.handle, CURLOPT_FOLLOWLOCATION, 0L) == CURLE_OK;
  ok &= curl_easy_setopt(slot.handle, CURLOPT_WRITEFUNCTION, &Impl::OnBody) == CURLE_OK;
  ok &= curl_easy_setopt(slot.handle, CURLOPT_WRITEDATA, &slot) == CURLE_OK;
  ok &= curl_easy_setopt(slot.handle, CURLOPT_ERRORBUFFER, slot.errorText) == CURLE_OK;
  return ok;
}

void ZRLibCurl::Impl::DeInit() {
  ForgetResponse();
  if (slot) {
    // Recycled or freed; the engine goes along when it holds one file's cookies as read.
    settings->handles.Give(std::move(slot), cookieEngineOn, engineCookies ? engineCookies : inheritedCookies);
  }
  handle = nullptr;
  cookieEngineOn = false;
  engineCookies.reset();
  inheritedCookies.reset();
  cookieJar.clear();
  settings.reset();  // the last client of an old generation closes its connections here
}

bool ZRLibCurl::Impl::AppendHeader(_http_hdr_type_ kind, const char* value) {
  if (!handle || !value) return false;
  switch (kind) {
    case HTTP_HDR_CUSTOM:
      return slot->headers.AddLine(value);
    case HTTP_HDR_CONTENT_TYPE:
      return slot->headers.ReplaceContentType(value);
    case HTTP_HDR_ACCEPT:
      return slot->headers.SetAccept(value);
    case HTTP_HDR_COOKIE_FILE:
      slot->cookieFiles.add(value);
      return true;
    case HTTP_HDR_COOKIE_JAR: {
      std::string error;
      if (!zrcurl::PrepareCookieJar(value, error)) {
        zrcurl::Log(zrcurl::kErrorLevel, "%s", error.c_str());
        return false;
      }
      // The cookie engine collects what the answer sets; the jar is written by SaveCookieJar.
      TurnCookieEngineOn();
      if (curl_easy_setopt(handle, CURLOPT_COOKIEFILE, "") != CURLE_OK) return false;
      cookieJar = value;
      return true;
    }
  }
  return false;
}

bool ZRLibCurl::Impl::SetMethodAndBody(_http_req_type_ method, const void* data, unsigned long length) {
  const bool hasBody = data != nullptr && length > 0;
  // A plain GET after a plain GET finds the handle set for it already.
  const bool plainGet = method == HTTP_REQ_GET && !hasBody;
  if (plainGet && slot->plainGet) return true;
  slot->plainGet = false;
  bool ok = curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, static_cast<char*>(nullptr)) == CURLE_OK;
  if (plainGet) {
    ok = ok && curl_easy_setopt(handle, CURLOPT_HTTPGET, 1L) == CURLE_OK;
    slot->plainGet = ok;
    return ok;
  }
  if (method == HTTP_REQ_DELETE && !hasBody) {
    ok &= curl_easy_setopt(handle, CURLOPT_HTTPGET, 1L) == CURLE_OK;
    return ok && curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, "DELETE") == CURLE_OK;
  }
  // A body goes out as POST data with its explicit size (it may hold zero bytes); other methods
  // keep that body under their own name. POST and PUT without body send "Content-Length: 0".
  ok &= curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(hasBody ? length : 0)) ==
        CURLE_OK;
  ok &= curl_easy_setopt(handle, CURLOPT_POSTFIELDS, hasBody ? data : "") == CURLE_OK;
  slot->hasPostFields = true;
  if (method != HTTP_REQ_POST) ok &= curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, MethodName(method)) == CURLE_OK;
  return ok;
}

// The engine is about to hold more than the cookies it was handed with the handle, or other
// ones: from now on it holds whatever this client puts in. An inherited engine is dropped first,
// so that the client starts from no cookies, as on a handle of its own.
void ZRLibCurl::Impl::TurnCookieEngineOn() {
  if (inheritedCookies) {
    zrcurl::DropCookieEngine(handle);
    inheritedCookies.reset();
  }
  engineCookies.reset();
  cookieEngineOn = true;
}

// Keeps the inherited engine when this first request names exactly the one file whose lines it
// holds, unchanged; otherwise it goes. True when it was kept.
bool ZRLibCurl::Impl::UseInheritedCookies(const std::vector<std::shared_ptr<const zrcurl::CookieLines>>& cached) {
  if (!inheritedCookies) return false;
  if (cached.size() == 1 && cached.front() == inheritedCookies) {
    engineCookies = std::move(inheritedCookies);
    inheritedCookies.reset();
    return true;
  }
  zrcurl::DropCookieEngine(handle);
  inheritedCookies.reset();
  cookieEngineOn = false;
  return false;
}

// The cookies of the files named since the last request go into the handle's cookie engine, from
// the lines cached for each file; when a file is unusual, libcurl reads them all itself, as it
// does for a file given with CURLOPT_COOKIEFILE.
bool ZRLibCurl::Impl::LoadCookieFiles(std::string& error) {
  zrcurl::PathList& cookieFiles = slot->cookieFiles;
  std::vector<std::shared_ptr<const zrcurl::CookieLines>>& cached = slot->cookieLines;
  cached.clear();
  for (const std::string& path : cookieFiles) {
    cached.push_back(zrcurl::CookieFileLines(path));
    if (!cached.back()) break;
  }
  // libcurl passes over a file it cannot read; the request would then go out without its session.
  for (const std::string& path : cookieFiles) {
    if (!cached.back() && !zrcurl::CookieFileReadable(path, error)) return false;
  }
  const bool complete = !cached.empty() && cached.back();
  if (!complete) cached.clear();
  if (UseInheritedCookies(cached)) {
    cookieFiles.clear();
    return true;
  }
  if (cookieFiles.empty()) return true;
  // An engine that was off and takes one file's lines holds exactly those.
  const bool exactlyOneFile = !cookieEngineOn && complete && cached.size() == 1;
  TurnCookieEngineOn();
  bool ok = true;
  if (complete) {
    // The cookie engine is on with a cookie file, even an empty one; "" reads no file.
    ok &= curl_easy_setopt(handle, CURLOPT_COOKIEFILE, "") == CURLE_OK;
    for (const auto& lines : cached) {
      for (const std::string& line : *lines) {
        ok &= curl_easy_setopt(handle, CURLOPT_COOKIELIST, line.c_str()) == CURLE_OK;
      }
    }
  } else {
    for (const std::string& path : cookieFiles) {
      ok &= curl_easy_setopt(handle, CURLOPT_COOKIEFILE, path.c_str()) == CURLE_OK;
    }
  }
  if (ok && exactlyOneFile) engineCookies = cached.front();
  cookieFiles.clear();
  return ok;
}

// Cookies set by an answer change what the engine holds: it is no longer one file's as read.
void ZRLibCurl::Impl::NoteCookiesReceived() {
  if (!engineCookies) return;
  curl_header* header = nullptr;
  const unsigned int anyOrigin = CURLH_HEADER | CURLH_TRAILER | CURLH_CONNECT | CURLH_1XX | CURLH_PSEUDO;
  const CURLHcode found = curl_easy_header(handle, "Set-Cookie", 0, anyOrigin, -1, &header);
  if (found != CURLHE_MISSING && found != CURLHE_NOHEADERS) engineCookies.reset();
}

void ZRLibCurl::Impl::ForgetResponse() {
  hasResponse = false;
  bodyTooLarge = false;
  httpStatus = 0;
  if (!slot) return;
  slot->body.clear();
  slot->errorText[0] = '\0';
}

bool ZRLibCurl::Impl::Send(_http_req_type_ method, const char* url, const void* data, unsigned long length,
                           bool verbose) {
  ForgetResponse();
  if (!handle) {
    zrcurl::Log(zrcurl::kFailureLevel, "Request sent through a client that is not initialised.");
    return false;
  }
  if (!url || !MethodName(method)) {
    zrcurl::Log(zrcurl::kFailureLevel, "Request without URL or with unknown method %d.", static_cast<int>(method));
    return false;
  }
  std::string cookieError;
  if (!LoadCookieFiles(cookieError)) {
    zrcurl::Log(zrcurl::kErrorLevel, "%s %s not sent: %s", MethodName(method), url, cookieError.c_str());
    return false;
  }
  // libcurl reads the list during the transfer. The slot keeps it, and the handle is told only of
  // a list other than the one it has, so that it never points to a list that is gone.
  bool ok = true;
  bool built = true;
  curl_slist* sentHeaders = slot->headers.Build(data != nullptr && length > 0, built);
  if (sentHeaders != slot->sentHeaders || !sentHeaders) {
    ok = curl_easy_setopt(handle, CURLOPT_HTTPHEADER, sentHeaders) == CURLE_OK;
    slot->sentHeaders = ok ? sentHeaders : nullptr;
  }
  ok = ok && built && SetMethodAndBody(method, data, length);
  // libcurl copies the URL; a handle asked for the same one as before keeps its copy.
  if (ok && (slot->url.empty() || slot->url != url)) {
    ok = curl_easy_setopt(handle, CURLOPT_URL, url) == CURLE_OK;
    if (ok) {
      slot->url.assign(url);
    } else {
      slot->url.clear();
    }
  }
  if (verbose || slot->verbose) {
    ok &= curl_easy_setopt(handle, CURLOPT_VERBOSE, verbose ? 1L : 0L) == CURLE_OK;
    ok &= curl_easy_setopt(handle, CURLOPT_DEBUGFUNCTION, verbose ? &OnDebugText : static_cast<curl_debug_callback>(nullptr)) == CURLE_OK;
    slot->verbose = verbose;
  }
  if (!ok) {
    zrcurl::Log(zrcurl::kFailureLevel, "%s %s: libcurl refused the request settings.", MethodName(method), url);
    return false;
  }

  std::chrono::steady_clock::time_point started;
  if (recorder) started = std::chrono::steady_clock::now();
  const CURLcode result = curl_easy_perform(handle);
  NoteCookiesReceived();
  if (bodyTooLarge) {
    zrcurl::Log(zrcurl::kErrorLevel, "%s %s: the answer is longer than the limit of %llu bytes; it was not read.",
                MethodName(method), url, settings->options.maxResponseBytes);
    slot->body = std::string();  // the memory of the part received goes back at once
    return false;
  }
  if (result != CURLE_OK) {
    zrcurl::Log(zrcurl::kErrorLevel, "%s %s failed: %s (%s)", MethodName(method), url, curl_easy_strerror(result),
                slot->errorText[0] ? slot->errorText : "no detail");
    slot->body.clear();
    return false;
  }
  curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &httpStatus);
  if (RefuseRedirect(method, url)) return false;
  if (!cookieJar.empty()) {
    // Written now rather than at clean-up, so the cookies are on disk when the caller goes on.
    curl_slist* cookies = nullptr;
    curl_easy_getinfo(handle, CURLINFO_COOKIELIST, &cookies);
    std::string error;
    const bool saved = zrcurl::SaveCookieJar(cookieJar, cookies, error);
    curl_slist_free_all(cookies);
    zrcurl::CookieFileWritten();
    if (!saved) {
      zrcurl::Log(zrcurl::kErrorLevel, "%s %s: the session cookies are lost: %s", MethodName(method), url,
                  error.c_str());
      ForgetResponse();
      return false;
    }
  }
  hasResponse = true;
  if (recorder) Record(method, url, data, length, started);
  return true;
}

void ZRLibCurl::Impl::Record(_http_req_type_ method, const char* url, const void* data, unsigned long length,
                             std::chrono::steady_clock::time_point started) const {
  const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - started;
  const bool gathered = writeCallback == nullptr;
  const ZRLibCurlExchange exchange{MethodName(method), url, static_cast<const char*>(data),
                                   data ? static_cast<std::size_t>(length) : 0, httpStatus,
                                   gathered ? slot->body.data() : nullptr, gathered ? slot->body.size() : 0,
                                   took.count()};
  recorder->record(exchange);
}

// A redirect is a failed exchange: its body is not the answer that was asked for.
bool ZRLibCurl::Impl::RefuseRedirect(_http_req_type_ method, const char* url) {
  if (httpStatus < 300 || httpStatus > 399) return false;
  char* location = nullptr;
  curl_easy_getinfo(handle, CURLINFO_REDIRECT_URL, &location);
  std::string target = "no target";
  if (location) {
    target = "host ";
    CURLU* parsed = curl_url();
    char* host = nullptr;
    if (parsed && curl_url_set(parsed, CURLUPART_URL, location, 0) == CURLUE_OK &&
        curl_url_get(parsed, CURLUPART_HOST, &host, 0) == CURLUE_OK) {
      target += host;
    } else {
      target += "unknown";
    }
    curl_free(host);
    curl_url_cleanup(parsed);
  }
  zrcurl::Log(zrcurl::kErrorLevel, "%s %s answered with redirect %ld to %s; redirects are not followed.",
              MethodName(method), url, httpStatus, target.c_str());
  ForgetResponse();
  return true;
}

// Gathers the body within the bound. The announced length, when there is one, is reserved at
// once, so a large body is neither moved while it grows nor held twice.
bool ZRLibCurl::Impl::Receive(const char* data, size_t size) {
  const unsigned long long limit = settings->options.maxResponseBytes;
  std::string& body = slot->body;
  curl_off_t announced = -1;
  if (body.empty()) curl_easy_getinfo(handle, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced);
  if (body.size() + size > limit || (announced > 0 && static_cast<unsigned long long>(announced) > limit)) {
    bodyTooLarge = true;
    return false;
  }
  try {
    if (announced > 0 && static_cast<size_t>(announced) > body.capacity()) body.reserve(static_cast<size_t>(announced));
    body.append(data, size);
  } catch (const std::bad_alloc&) {
    zrcurl::Log(zrcurl::kErrorLevel, "No memory for an answer of more than %zu bytes.", body.size());
    return false;
  }
  return true;
}

size_t ZRLibCurl::Impl::OnBody(char* data, size_t size, size_t count, void* slot) {
  Impl* impl = static_cast<Impl*>(static_cast<zrcurl::HandleSlot*>(slot)->receiver);
  if (!impl) return 0;
  if (impl->writeCallback) return impl->writeCallback(data, size, count, impl->owner);
  try {
    return impl->Receive(data, size * count) ? size * count : 0;  // 0: libcurl ends with a write error
  } catch (...) {
    return 0;  // nothing may unwind through libcurl
  }
}

ZRLibCurl::ZRLibCurl() : impl_(std::make_unique<Impl>(this)) {}

ZRLibCurl::~ZRLibCurl() { impl_->DeInit(); }

bool ZRLibCurl::ZRLibCurlInit(const char* contentTypeHeader, bool failOnTransportErrorOnly, bool followRedirects,
                              ZRLibCurlWriteCallback writeCallback) {
  return Guarded("init", [&] {
    return impl_->Init(contentTypeHeader, failOnTransportErrorOnly, followRedirects, writeCallback);
  });
}

void ZRLibCurl::ZRLibCurlDeInit() { impl_->DeInit(); }

bool ZRLibCurl::ZRLibCurlAppendHeader(_http_hdr_type_ kind, const char* value) {
  return Guarded("append header", [&] { return impl_->AppendHeader(kind, value); });
}

void ZRLibCurl::ZRLibCurlFreeHttpHeaderList() {
  if (impl_->slot) impl_->slot->headers.Clear();
}

bool ZRLibCurl::ZRLibCurlSendHttpReq(_http_req_type_ method, const char* url, const void* data,
                                     unsigned long length, bool verbose, const char* /*reserved*/) {
  return Guarded("send", [&] { return impl_->Send(method, url, data, length, verbose); });
}

const char* ZRLibCurl::GetHttpResponse(unsigned long& size, bool detach) {
  if (!impl_->hasResponse || !impl_->slot) {
    size = 0;
    return nullptr;
  }
  std::string& body = impl_->slot->body;
  size = body.size();
  if (!detach) return body.c_str();
  // A detached body belongs to the caller, who frees it with free().
  char* copy = static_cast<char*>(std::malloc(size + 1));
  if (copy) std::memcpy(copy, body.c_str(), size + 1);
  body.clear();
  impl_->hasResponse = false;
  return copy;
}

bool ZRLibCurl::ZRLibCurlTakeHttpResponse(std::string& body) {
  if (!impl_->hasResponse || !impl_->slot) return false;
  body.clear();
  body.swap(impl_->slot->body);
  impl_->hasResponse = false;
  return true;
}

long ZRLibCurl::GetHttpErrorCode() { return impl_->httpStatus; }

void ZRLibCurlSetRecorder(ZRLibCurlRecorder* recorder) { g_recorder.store(recorder, std::memory_order_release); }
