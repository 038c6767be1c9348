#pragma once

namespace zrcurl {

// libcurl's process-wide initialisation, done once whichever thread asks first.
void EnsureCurlGlobalInit();

}  // namespace zrcurl
