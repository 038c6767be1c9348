// Applies one generation of settings to a libcurl handle: trust, pinning, TLS floor, time-outs,
// sharing. Every handle of the process goes through here, so no client can forget a setting.
#pragma once

#include <curl/curl.h>

namespace zrcurl {

struct ClientSettings;

// The settings must outlive the handle. False when libcurl refuses a setting. A recycled handle
// keeps them: they are applied once, to a new handle.
bool ApplyClientSettings(CURL* handle, ClientSettings& settings);
// The warnings the settings call for, once per client made.
void WarnOfSettings(const ClientSettings& settings);

}  // namespace zrcurl
