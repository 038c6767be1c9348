// The bundled array simulator, started in this process by --simulator so the tool can be tried
// without an array: a small array with two file systems and two snapshots of the first, with
// files changed between them.
#pragma once

#include <memory>
#include <string>

namespace arraysim {
class ArraySimulator;
}

namespace zrarray {

class DemoArray {
 public:
  // Listening when it returns; throws std::runtime_error when the address is taken. Its keys and
  // certificates are written to `certificateDirectory`.
  DemoArray(const std::string& address, const std::string& certificateDirectory);
  ~DemoArray();
  DemoArray(const DemoArray&) = delete;
  DemoArray& operator=(const DemoArray&) = delete;

  const std::string& address() const;
  const std::string& caCertPath() const;
  static const char* user();
  static const char* password();

 private:
  std::unique_ptr<arraysim::ArraySimulator> simulator_;
};

}  // namespace zrarray
