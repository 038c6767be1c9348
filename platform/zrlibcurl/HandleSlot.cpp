#include "HandleSlot.h"

namespace zrcurl {

HandleSlot::~HandleSlot() {
  if (handle) curl_easy_cleanup(handle);
}

}  // namespace zrcurl
