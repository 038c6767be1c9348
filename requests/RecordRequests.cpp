#include "RecordRequests.h"

#include "TkDebug.h"

namespace HuaweiResponse {
namespace {

// Beyond this the tree of an answer could reach the model's memory bound, which the plain reading
// would not notice; a record's answer is a few hundred bytes.
constexpr std::size_t kPlainAnswerLimit = 64 * 1024;

// The answer's one "data" object through readPlain, every other member passed over; false for an
// answer that is not wholly in the plain form.
bool readPlainAnswer(const std::string& response, const std::function<bool(jsonxx::PlainReader&)>& readPlain) {
  if (response.size() > kPlainAnswerLimit) return false;
  jsonxx::PlainReader in(response);
  bool haveData = false;
  const bool plain = in.object([&](std::string_view name) {
    if (name != "data") return in.skip_value();
    if (haveData || in.peek() != '{') return false;
    haveData = true;
    return readPlain(in);
  });
  return plain && haveData && in.at_end();
}

}  // namespace

bool readObjectAnswer(unsigned long long jobId, const std::string& response, const ReadingRules& rules,
                      const std::function<bool(jsonxx::PlainReader&)>& readPlain,
                      const std::function<void()>& storePlain,
                      const std::function<bool(const jsonxx::Object&)>& read) {
  logProgress(rules.log, jobId);
  if (readPlainAnswer(response, readPlain)) {
    storePlain();
    return true;
  }
  jsonxx::Object answer;
  return parseLoggedObject(rules.log, jobId, response, answer) && readDataObject(jobId, answer, rules, read);
}

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

RequiredFields::RequiredFields(const char* logName, int level, std::initializer_list<const std::string*> values)
    : m_logName(logName), m_level(level) {
  for (const std::string* value : values) m_missing = m_missing || value->empty();
}

bool RequiredFields::met(unsigned long long jobId) const {
  if (!m_missing) return true;
  TkDebug(nullptr).DebugLvl(m_logName, m_level, static_cast<long long>(jobId),
                            "Unable to build the request. Invalid parameters!!");
  return false;
}
