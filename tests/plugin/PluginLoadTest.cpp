#include <dlfcn.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace {

// Loads copies of the eater under new names until the static TLS space is used up, as in a host
// that loaded many plugins before this one. True when it is used up.
bool UseUpStaticTls(const std::filesystem::path& directory) {
  for (int copy = 0; copy < 1000; ++copy) {
    const std::filesystem::path slice = directory / ("slice-" + std::to_string(copy) + ".so");
    std::filesystem::copy_file(ZR_EATER_FILE, slice);
    if (dlopen(slice.c_str(), RTLD_NOW | RTLD_LOCAL) == nullptr) {
      return std::string(dlerror()).find("static TLS") != std::string::npos;
    }
  }
  return false;
}

TEST(Plugin, LoadsWithDlopenWhenTheStaticTlsSpaceIsUsedUp) {
  const std::filesystem::path directory =
      std::filesystem::temp_directory_path() / ("zr-plugin-" + std::to_string(getpid()));
  std::filesystem::create_directories(directory);
  const bool usedUp = UseUpStaticTls(directory);
  std::filesystem::remove_all(directory);
  ASSERT_TRUE(usedUp);

  void* library = dlopen(ZR_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(library, nullptr) << dlerror();
  EXPECT_EQ(dlclose(library), 0) << dlerror();
}

}  // namespace
