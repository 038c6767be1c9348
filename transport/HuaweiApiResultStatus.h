// Result of every send and of third-generation operations: a code and its text.
#pragma once

#include <string>

namespace HuaweiApi {

class ResultStatus {
 public:
  ResultStatus() : code_(0) {}
  ResultStatus(unsigned long long const& code, std::string const& text) : code_(code), text_(text) {}

  unsigned long long GetErrorCode() const { return code_; }
  std::string GetErrorString() const { return text_; }
  bool IsError() const { return code_ != 0; }
  // True on failure, the opposite of what the shape suggests; every caller relies on this sense.
  bool operator!() const { return IsError(); }
  bool Is(unsigned long long code) const { return code_ == code; }

 private:
  unsigned long long code_;
  std::string text_;
};

// Codes set on the client side; any other non-zero code is the array's own.
enum ResultCode : unsigned long long {
  RESULT_SUCCESS = 0,
  RESULT_GENERIC_FAILURE = 1,
  RESULT_CLIENT_FAILURE = 2,
};

}  // namespace HuaweiApi
