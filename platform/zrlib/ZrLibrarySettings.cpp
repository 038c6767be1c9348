#include "ZrLibrarySettings.h"

#include <atomic>
#include <mutex>

namespace {

const ZrLibrarySettings kDefaults;
// Never freed: the settings are read up to the last static destructor.
std::atomic<const ZrLibrarySettings*> g_chosen{nullptr};
std::mutex g_choosing;

}  // namespace

bool ZrLibrarySetSettings(const ZrLibrarySettings& settings) {
  std::lock_guard<std::mutex> lock(g_choosing);
  if (g_chosen.load()) return false;
  g_chosen.store(new ZrLibrarySettings(settings));
  return true;
}

const ZrLibrarySettings& ZrLibraryGetSettings() {
  const ZrLibrarySettings* chosen = g_chosen.load();
  return chosen ? *chosen : kDefaults;
}
