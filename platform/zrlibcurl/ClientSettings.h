// One generation of the process-wide client settings: the options, and the trust store, connection
// share and idle handles made for them. A client holds its generation for its whole life, so a
// change of options starts a fresh generation while the old one lives on until its last client is
// gone; the old generation's handles are no longer recycled.
#pragma once

#include <memory>

#include "ConnectionShare.h"
#include "HandlePool.h"
#include "TrustStore.h"
#include "ZRLibCurlOptions.h"

namespace zrcurl {

struct ClientSettings {
  explicit ClientSettings(const ZRLibCurlOptions& options);

  const ZRLibCurlOptions options;
  TrustStore trust;
  // Null when sharing is off.
  const std::unique_ptr<ConnectionShare> share;
  // Declared after the share, so its handles are freed before the share they are attached to.
  HandlePool handles;
};

std::shared_ptr<ClientSettings> CurrentClientSettings();

}  // namespace zrcurl
