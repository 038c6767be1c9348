// Plain requests by the shape of their answer: one record under "data", a list of records under
// "data", or only the status in "error". A concrete request names its log, its rules and its getter;
// each record is read through its key table.
#pragma once

#include <functional>
#include <list>
#include <string>
#include <vector>

#include "HuaweiJSONBase.h"
#include "PlainRecordReading.h"
#include "RecordReading.h"
#include "ResponseReading.h"

namespace HuaweiResponse {

// What an answer without its "data" means.
enum class WithoutData {
  Fatal,       // "data" is required: the asserting getter ends the process
  Unreadable,  // a parse failure
  Status,      // for a list, what error.code says: 0 is an empty list
};

struct ReadingRules {
  ParserLog log;
  WithoutData without = WithoutData::Unreadable;
  StatusReport status = StatusReport();
  HuaweiKeys::Keys keys = HuaweiKeys::Keys::All;
  HuaweiKeys::KeyOrder order = HuaweiKeys::KeyOrder::Listed;
};

// The first generation's parsers: progress at level 5, an empty answer at level -1, "data" required.
inline ReadingRules plainRules(const char* logName) { return {ParserLog{logName}, WithoutData::Fatal}; }

// The LUN and host-mapping parsers: every line at level 3.
inline ReadingRules sanRules(const char* logName, WithoutData without = WithoutData::Unreadable,
                             StatusReport status = StatusReport()) {
  return {sanLog(logName), without, status};
}

// The object under "data" through read; false, logged, when there is none or read refuses it.
bool readDataObject(unsigned long long jobId, const jsonxx::Object& answer, const ReadingRules& rules,
                    const std::function<bool(const jsonxx::Object&)>& read);

// A whole answer read for its "data" object: straight from the text by readPlain, which takes
// the object and stores it by storePlain once the rest of the answer has been found plain too;
// when it declines, through the document model's tree by read, as readDataObject() does.
bool readObjectAnswer(unsigned long long jobId, const std::string& response, const ReadingRules& rules,
                      const std::function<bool(jsonxx::PlainReader&)>& readPlain,
                      const std::function<void()>& storePlain,
                      const std::function<bool(const jsonxx::Object&)>& read);

// The "data" array through read; without it, what the rules say.
bool readDataList(unsigned long long jobId, const jsonxx::Object& answer, const ReadingRules& rules,
                  const std::function<bool(const jsonxx::Array&)>& read);

// Appends each element of the list, read by readElement into a fresh record; a refusal ends it.
template <class Sequence, class ReadElement>
bool appendRecords(const jsonxx::Array& list, Sequence& records, ReadElement readElement) {
  for (unsigned int index = 0; index < list.size(); ++index) {
    typename Sequence::value_type record;
    if (!readElement(list.get<jsonxx::Object>(index), record)) return false;
    records.push_back(record);
  }
  return true;
}

// The same, each element read through its record's key table.
template <class Sequence>
bool appendRecords(const jsonxx::Array& list, Sequence& records) {
  return appendRecords(list, records, [](const jsonxx::Object& element, typename Sequence::value_type& record) {
    HuaweiKeys::readKeys(element, record);
    return true;
  });
}

}  // namespace HuaweiResponse

// One record read from the "data" object into the request's own record, which holds what was
// sent until then.
template <class Record>
class HuaweiJSONRecordObject : public HuaweiJSONBase {
 public:
  bool parseResponse(std::string& response) override {
    HuaweiKeys::PlainKeys<Record> plain(m_rules.keys);
    return HuaweiResponse::readObjectAnswer(
        m_jobId, response, m_rules, [&](jsonxx::PlainReader& in) { return readPlainData(in, plain); },
        [&] { plain.store(m_record); }, [this](const jsonxx::Object& data) { return readData(data); });
  }

 protected:
  HuaweiJSONRecordObject(unsigned long long jobId, HuaweiResponse::ReadingRules rules, const Record& sent = Record())
      : HuaweiJSONBase(jobId), m_record(sent), m_rules(rules) {}
  ~HuaweiJSONRecordObject() = default;

  virtual bool readData(const jsonxx::Object& data) {
    HuaweiKeys::readKeys(data, m_record, m_rules.keys, m_rules.order);
    return true;
  }
  // What readData() reads, taken straight from the text into `plain`; false leaves the answer to
  // readData(). A request that reads its data its own way overrides both.
  virtual bool readPlainData(jsonxx::PlainReader& in, HuaweiKeys::PlainKeys<Record>& plain) { return plain.read(in); }

  Record m_record;

 private:
  HuaweiResponse::ReadingRules m_rules;
};

template <class Record, template <class...> class Sequence = std::vector>
class HuaweiJSONRecordList : public HuaweiJSONBase {
 public:
  bool parseResponse(std::string& response) override {
    m_records.clear();
    jsonxx::Object answer;
    if (!HuaweiResponse::parseObject(m_rules.log, m_jobId, response, answer)) return false;
    const auto readOne = [this](const jsonxx::Object& element, Record& record) { return readElement(element, record); };
    return HuaweiResponse::readDataList(m_jobId, answer, m_rules, [&](const jsonxx::Array& list) {
      return HuaweiResponse::appendRecords(list, m_records, readOne);
    });
  }

 protected:
  HuaweiJSONRecordList(unsigned long long jobId, HuaweiResponse::ReadingRules rules)
      : HuaweiJSONBase(jobId), m_rules(rules) {}
  ~HuaweiJSONRecordList() = default;

  // One element of the list, in order; false ends the list and fails the answer.
  virtual bool readElement(const jsonxx::Object& element, Record& record) {
    HuaweiKeys::readKeys(element, record, m_rules.keys, m_rules.order);
    return true;
  }

  Sequence<Record> m_records;

 private:
  HuaweiResponse::ReadingRules m_rules;
};

// Answers that carry only a status; a request with a body adds its buildRequest.
class HuaweiJSONStatusAnswer : public HuaweiJSONBase {
 public:
  bool parseResponse(std::string& response) override {
    jsonxx::Object answer;
    return HuaweiResponse::parseObject(HuaweiResponse::sanLog(m_logName), m_jobId, response, answer) &&
           HuaweiResponse::statusIsZero(m_logName, m_jobId, answer, m_report);
  }

 protected:
  HuaweiJSONStatusAnswer(unsigned long long jobId, const char* logName,
                         HuaweiResponse::StatusReport report = HuaweiResponse::StatusReport())
      : HuaweiJSONBase(jobId), m_logName(logName), m_report(report) {}
  ~HuaweiJSONStatusAnswer() = default;

 private:
  const char* m_logName;
  HuaweiResponse::StatusReport m_report;
};
