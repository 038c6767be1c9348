#include "ClientSettings.h"

#include <mutex>

namespace zrcurl {
namespace {

struct Current {
  std::mutex mutex;
  std::shared_ptr<ClientSettings> settings;
};

// Never destroyed: clients may be made and freed from static destructors at exit.
Current& CurrentGeneration() {
  static Current* current = new Current;
  return *current;
}

}  // namespace

ClientSettings::ClientSettings(const ZRLibCurlOptions& options)
    : options(options),
      trust(options.caBundlePath),
      share(options.shareConnections ? std::make_unique<ConnectionShare>() : nullptr),
      handles(share && share->Handle()) {}

std::shared_ptr<ClientSettings> CurrentClientSettings() {
  Current& current = CurrentGeneration();
  std::lock_guard<std::mutex> lock(current.mutex);
  if (!current.settings) current.settings = std::make_shared<ClientSettings>(ZRLibCurlOptions());
  return current.settings;
}

}  // namespace zrcurl

void ZRLibCurlSetOptions(const ZRLibCurlOptions& options) {
  auto fresh = std::make_shared<zrcurl::ClientSettings>(options);
  std::shared_ptr<zrcurl::ClientSettings> previous;
  {
    zrcurl::Current& current = zrcurl::CurrentGeneration();
    std::lock_guard<std::mutex> lock(current.mutex);
    previous = std::move(current.settings);
    current.settings = std::move(fresh);
  }
  // Outside the lock: freeing handles and closing pooled connections takes time. Clients still
  // holding the old generation finish with it; their handles are freed, not recycled.
  if (previous) previous->handles.Retire();
}

ZRLibCurlOptions ZRLibCurlGetOptions() { return zrcurl::CurrentClientSettings()->options; }
