#include <dlfcn.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace {

// A host that loaded many plugins before: copies of the eater under new names are loaded until
// there is no static TLS space left. The library must still load.
TEST(Plugin, LoadsWithDlopenWhenTheStaticTlsSpaceIsUsedUp) {
  const auto directory = std::filesystem::temp_directory_path() / ("zr-plugin-" + std::to_string(getpid()));
  std::filesystem::create_directories(directory);
  std::string refusal;
  for (int copy = 0; copy < 1000 && refusal.empty(); ++copy) {
    const auto slice = directory / ("slice-" + std::to_string(copy) + ".so");
    std::filesystem::copy_file(ZR_EATER_FILE, slice);
    if (dlopen(slice.c_str(), RTLD_NOW | RTLD_LOCAL) == nullptr) refusal = dlerror();
  }
  std::filesystem::remove_all(directory);
  ASSERT_NE(refusal.find("static TLS"), std::string::npos) << refusal;

  void* library = dlopen(ZR_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(library, nullptr) << dlerror();
  EXPECT_EQ(dlclose(library), 0) << dlerror();
}

}  // namespace
