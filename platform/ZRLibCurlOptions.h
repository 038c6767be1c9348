// Process-wide settings of ZRLibCurl: trust, time-outs, connection sharing and the answer bound.
// Set them once at start-up; a change applies to clients made afterwards and drops pooled
// connections and recycled handles so that nothing verified under the old trust settings is reused.
#pragma once

#include <string>

struct ZRLibCurlOptions {
  // PEM bundle to trust instead of the system's CA store. Empty: the system store.
  std::string caBundlePath;
  // Public-key pin in libcurl's syntax: "sha256//<base64>[;sha256//...]" or a PEM/DER key file.
  // When set, the server's key must match in addition to the chain check.
  std::string pinnedPublicKey;
  // Certificate and host-name verification. Switching it off is an explicit opt-in for labs and
  // logs a warning whenever a client is made.
  bool verifyPeer = true;
  long connectTimeoutMs = 10000;
  long totalTimeoutMs = 300000;
  // A transfer slower than this many bytes per second for this many seconds is given up, so that
  // a stalled array costs half a minute, not the whole time-out. 0 seconds: no such limit.
  long lowSpeedBytesPerSecond = 1;
  long lowSpeedSeconds = 30;
  // Share DNS, TLS sessions and connections between clients, so that a fresh client per
  // request reuses the connection of the one before.
  bool shareConnections = true;
  // Largest answer body accepted, in bytes: a longer one ends the transfer and fails the send, so
  // that a runaway answer cannot exhaust the process's memory. Far above any real answer.
  unsigned long long maxResponseBytes = 256ULL << 20;
};

void ZRLibCurlSetOptions(const ZRLibCurlOptions& options);
ZRLibCurlOptions ZRLibCurlGetOptions();
