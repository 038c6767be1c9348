// One generation of the process-wide client settings: the options, and the trust store and
// connection share made for them. A client holds its generation for its whole life, so a change
// of options starts a fresh generation while the old one lives on until its last client is gone.
#pragma once

#include <memory>

#include "ConnectionShare.h"
#include "TrustStore.h"
#include "ZRLibCurlOptions.h"

namespace zrcurl {

struct ClientSettings {
  explicit ClientSettings(const ZRLibCurlOptions& options);

  const ZRLibCurlOptions options;
  TrustStore trust;
  // Null when sharing is off.
  const std::unique_ptr<ConnectionShare> share;
};

std::shared_ptr<ClientSettings> CurrentClientSettings();

}  // namespace zrcurl
