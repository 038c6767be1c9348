#include "TestCertificateSet.h"

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>

#include <gtest/gtest.h>

namespace platformtest {
namespace {

class ScratchEnvironment : public testing::Environment {
 public:
  const std::string& Directory() {
    if (directory_.empty()) {
      std::string pattern = (std::filesystem::temp_directory_path() / "platform-tests-XXXXXX").string();
      if (!mkdtemp(&pattern[0])) throw std::runtime_error("cannot make a scratch directory");
      directory_ = pattern;
    }
    return directory_;
  }
  void TearDown() override {
    if (!directory_.empty()) std::filesystem::remove_all(directory_);
  }

 private:
  std::string directory_;
};

ScratchEnvironment* const scratch =
    static_cast<ScratchEnvironment*>(testing::AddGlobalTestEnvironment(new ScratchEnvironment));

arraysim::CertificateFiles Make(const char* name, const char* address) {
  return arraysim::MakeCertificates(ScratchDirectory() + "/" + name, address);
}

}  // namespace

const std::string& ScratchDirectory() { return scratch->Directory(); }

const arraysim::CertificateFiles& LocalCertificates() {
  static const arraysim::CertificateFiles files = Make("local", "127.0.0.1");
  return files;
}

const arraysim::CertificateFiles& OtherCertificates() {
  static const arraysim::CertificateFiles files = Make("other", "127.0.0.1");
  return files;
}

const arraysim::CertificateFiles& ForeignAddressCertificates() {
  static const arraysim::CertificateFiles files = Make("foreign", "10.11.12.13");
  return files;
}

}  // namespace platformtest
