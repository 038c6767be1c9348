#include "ErrorObjectReader.h"

#include "jsonxx_plain.h"

namespace HuaweiTransport {
namespace {

bool readError(jsonxx::PlainReader& in, unsigned long long& code, std::string& description) {
  if (!in.take('{')) return false;
  bool haveCode = false, haveDescription = false;
  do {
    std::string_view key, text;
    if (!in.string(key) || !in.take(':')) return false;
    if (key == "code") {
      jsonxx::PlainReader::Integer number;
      if (haveCode || !in.integer(number)) return false;  // a repeated key: the model keeps the last
      code = number.wrapped();
      haveCode = true;
    } else if (key == "description") {
      if (haveDescription || !in.string(text)) return false;
      description.assign(text);
      haveDescription = true;
    } else if (!in.skip_value()) {
      return false;
    }
  } while (in.take(','));
  return in.take('}') && haveCode && haveDescription;
}

}  // namespace

bool readPlainErrorObject(const std::string& answer, unsigned long long& code, std::string& description) {
  jsonxx::PlainReader in(answer);
  if (!in.take('{')) return false;
  bool haveError = false;
  do {
    std::string_view key;
    if (!in.string(key) || !in.take(':')) return false;
    if (key == "error") {
      if (haveError || !readError(in, code, description)) return false;
      haveError = true;
    } else if (!in.skip_value()) {
      return false;
    }
  } while (in.take(','));
  return in.take('}') && haveError;
}

}  // namespace HuaweiTransport
