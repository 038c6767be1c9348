#include "ErrorObjectReader.h"

#include "ErrorCode.h"
#include "jsonxx_plain.h"

namespace HuaweiTransport {
namespace {

bool readError(jsonxx::PlainReader& in, unsigned long long& code, std::string& description) {
  bool haveCode = false, haveDescription = false;
  const bool plain = in.object([&](std::string_view name) {
    std::string_view text;
    jsonxx::PlainReader::Integer number;
    // A repeated key is refused: the model would keep its last value.
    if (name == "code") {
      if (haveCode || !in.integer(number) || !trustedCode(number, code)) return false;
      haveCode = true;
      return true;
    }
    if (name == "description") {
      if (haveDescription || !in.string(text)) return false;
      description.assign(text);
      haveDescription = true;
      return true;
    }
    return in.skip_value();
  });
  return plain && haveCode && haveDescription;
}

}  // namespace

bool readPlainErrorObject(const std::string& answer, unsigned long long& code, std::string& description) {
  jsonxx::PlainReader in(answer);
  bool haveError = false;
  const bool plain = in.object([&](std::string_view name) {
    if (name != "error") return in.skip_value();
    if (haveError || !readError(in, code, description)) return false;
    haveError = true;
    return true;
  });
  return plain && haveError;
}

}  // namespace HuaweiTransport
