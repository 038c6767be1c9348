// Writes the exchanges of the process with arrays to a recording: JSON lines, a header first
//   {"recording":1,"library":"1.0.0","anonymised":false}
// then one line per exchange, in the order they ended:
//   {"method":"GET","resource":"/deviceManager/rest/{deviceid}/system/","request":"","status":200,
//    "ms":1.234,"answerBytes":22,"answer":{"data":{},"error":{}}}
// An answer that is one JSON value without line breaks stands as it came, last, after its length
// in bytes; any other answer is a string, and "answerBytes" is absent.
// The resource is the URL without scheme and authority. The device identifier of each login
// answer becomes {deviceid} and every iBaseToken value {iBaseToken}, wherever they stand; the
// login body's password is masked as in the logs, and no header is written, so no cookie is.
#pragma once

#include <initializer_list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "JsonStrings.h"
#include "NeedleSearch.h"
#include "ZRLibCurlRecorder.h"

namespace HuaweiTransport {

class RecordingAnonymiser;

class ExchangeRecorder : public ZRLibCurlRecorder {
 public:
  // Creates the file, never over an existing one, with mode 0600, and writes the header. Throws
  // std::runtime_error naming the file and the reason when it cannot.
  ExchangeRecorder(const std::string& path, bool anonymised);
  ~ExchangeRecorder() override;
  ExchangeRecorder(const ExchangeRecorder&) = delete;
  ExchangeRecorder& operator=(const ExchangeRecorder&) = delete;

  void record(const ZRLibCurlExchange& exchange) noexcept override;

  // Starts recording the exchanges of every later client when the library settings name a file;
  // once per process. False, with the reason, when the file cannot be made (then every call says so).
  static bool startFromSettings(std::string& reason);

 private:
  void writeExchange(const ZRLibCurlExchange& exchange);
  void learnSecrets(const std::string& request, const std::string& answer);
  void hideSecrets(std::string& text) const;
  std::string_view recordable(const char* data, std::size_t length, std::string& changed);
  void writeLine(std::initializer_list<std::string_view> parts);

  std::mutex mutex_;  // one line at a time, and the secrets and stand-ins they share
  int fd_ = -1;
  const std::string path_;
  std::unique_ptr<RecordingAnonymiser> anonymiser_;  // null when not anonymised
  std::vector<std::string> deviceIds_;
  std::vector<std::string> tokens_;
  std::vector<std::string> passwords_;
  NeedleSearch secrets_;  // all of the above and the token's member name: what makes a body change
  TextBuffer line_;
  std::string requestCopy_, answerCopy_;  // the bodies when something in them changes
};

}  // namespace HuaweiTransport
