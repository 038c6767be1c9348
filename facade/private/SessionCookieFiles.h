// The cookie files of the sessions this process holds, so that they go with the process when an
// answer without a required value ends it: each holds a live session cookie.
#pragma once

#include <string>

namespace SessionCookieFiles {

// The facade's current cookie file; replaces the path the same owner held before.
void hold(const void* owner, const std::string& path);
// The owner's file is gone, or about to be removed by the owner itself.
void release(const void* owner);

}  // namespace SessionCookieFiles
