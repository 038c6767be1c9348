#include "RecordRequests.h"

namespace HuaweiResponse {

bool readDataObject(unsigned long long jobId, const jsonxx::Object& answer, const ReadingRules& rules,
                    const std::function<bool(const jsonxx::Object&)>& read) {
  if (rules.without == WithoutData::Fatal || answer.has<jsonxx::Object>("data")) {
    if (read(answer.get<jsonxx::Object>("data"))) return true;
  }
  return unusable(rules.log.name, jobId, kNoDataObject);
}

bool readDataList(unsigned long long jobId, const jsonxx::Object& answer, const ReadingRules& rules,
                  const std::function<bool(const jsonxx::Array&)>& read) {
  if (rules.without == WithoutData::Fatal || answer.has<jsonxx::Array>("data")) {
    return read(answer.get<jsonxx::Array>("data"));
  }
  if (rules.without == WithoutData::Unreadable) return unusable(rules.log.name, jobId, kNoDataList);
  return statusIsZero(rules.log.name, jobId, answer, rules.status);
}

}  // namespace HuaweiResponse
