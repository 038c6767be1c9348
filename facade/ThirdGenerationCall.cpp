#include "ThirdGenerationCall.h"

HuaweiApi::ResultStatus ThirdGenerationCall::check(std::initializer_list<ArgumentCheck> checks) {
  for (const ArgumentCheck& argument : checks) {
    if (argument.missing) return HuaweiApi::ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, argument.failureText);
  }
  return HuaweiApi::ResultStatus();
}
