// Plain requests by the shape of their answer: one record under "data", a list of records under
// "data", or only the status in "error". A concrete request names its log, its rules and its getter;
// each record is read through its key table.
#pragma once

#include <functional>
#include <initializer_list>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "DeletionAnswer.h"
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

// The same, reading only the required keys: a creation's answer, whose record keeps what was sent
// for the rest.
inline ReadingRules sanIdentityRules(const char* logName) {
  ReadingRules rules = sanRules(logName);
  rules.keys = HuaweiKeys::Keys::RequiredOnly;
  return rules;
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

// The values a body cannot go without, checked when the body is asked for: an empty one keeps the
// request from going out, with "Unable to build the request. Invalid parameters!!" at `level`
// under the request's own log name.
class RequiredFields {
 public:
  RequiredFields() = default;
  RequiredFields(const char* logName, int level, std::initializer_list<const std::string*> values);
  // False, logged, when one of the values was empty.
  bool met(unsigned long long jobId) const;

 private:
  const char* m_logName = nullptr;
  int m_level = 0;
  bool m_missing = false;
};

// Generic requests: an operation that sends only a method, a resource and a body of placed values,
// and reads its answer by its status or through a record's key table, needs no class of its own.
// The call that sends one keeps it and gives it the operation's job identifier (forJob). The log
// name is the one the answer's lines carry.
class StatusRequest final : public HuaweiJSONStatusAnswer {
 public:
  explicit StatusRequest(const char* logName, std::string body = std::string(),
                         HuaweiResponse::StatusReport report = HuaweiResponse::StatusReport())
      : HuaweiJSONStatusAnswer(0, logName, report), m_body(std::move(body)) {}
  bool buildRequest(std::string& body) override { return body = m_body, true; }
  void forJob(unsigned long long jobId) { m_jobId = jobId; }

 private:
  std::string m_body;
};

// A record's own reader, for a record that may refuse what it reads.
template <class Record>
using OwnReader = bool (Record::*)(const jsonxx::Object&);

// Reads the record into `destination` once the whole answer is read; `sent` is what the record
// holds until then.
template <class Record>
class RecordRequest final : public HuaweiJSONRecordObject<Record> {
 public:
  RecordRequest(Record& destination, HuaweiResponse::ReadingRules rules, std::string body = std::string(),
                const Record& sent = Record())
      : HuaweiJSONRecordObject<Record>(0, rules, sent), m_destination(&destination), m_body(std::move(body)) {}
  // Only one field of the record, into the caller's string: the identifier that a creation answers.
  RecordRequest(std::string& destination, std::string Record::*field, HuaweiResponse::ReadingRules rules,
                std::string body)
      : HuaweiJSONRecordObject<Record>(0, rules), m_field(field), m_fieldDestination(&destination),
        m_body(std::move(body)) {}
  RecordRequest&& requiring(RequiredFields fields) && { return m_required = fields, std::move(*this); }
  // What the next send carries, for an operation that asks again in other words.
  void nextBody(std::string body) { m_body = std::move(body); }
  // The record's own reader in place of its key table: a record it refuses is a parse failure.
  RecordRequest&& readBy(OwnReader<Record> reader) && { return m_reader = reader, std::move(*this); }
  // The answer's lines carry job 0 whatever the operation's job.
  RecordRequest&& withoutJob() && { return m_withoutJob = true, std::move(*this); }

  bool buildRequest(std::string& body) override {
    body.clear();
    return m_required.met(this->m_jobId) && (body = m_body, true);
  }
  bool parseResponse(std::string& response) override {
    if (!HuaweiJSONRecordObject<Record>::parseResponse(response)) return false;
    if (m_fieldDestination != nullptr) {
      *m_fieldDestination = this->m_record.*m_field;
    } else {
      *m_destination = this->m_record;
    }
    return true;
  }
  void forJob(unsigned long long jobId) { this->m_jobId = m_withoutJob ? 0 : jobId; }

 private:
  bool readData(const jsonxx::Object& data) override {
    return m_reader != nullptr ? (this->m_record.*m_reader)(data) : HuaweiJSONRecordObject<Record>::readData(data);
  }
  // A record's own reader sees the tree: the plain reading only stands in for the key table.
  bool readPlainData(jsonxx::PlainReader& in, HuaweiKeys::PlainKeys<Record>& plain) override {
    return m_reader == nullptr && HuaweiJSONRecordObject<Record>::readPlainData(in, plain);
  }

  Record* m_destination = nullptr;
  std::string Record::*m_field = nullptr;
  std::string* m_fieldDestination = nullptr;
  std::string m_body;
  RequiredFields m_required;
  OwnReader<Record> m_reader = nullptr;
  bool m_withoutJob = false;
};

template <class Record, template <class...> class Sequence>
class RecordListRequest final : public HuaweiJSONRecordList<Record, Sequence> {
 public:
  RecordListRequest(Sequence<Record>& destination, HuaweiResponse::ReadingRules rules)
      : HuaweiJSONRecordList<Record, Sequence>(0, rules), m_destination(&destination) {}
  // Each element through the record's own reader in place of its key table; a refusal fails the list.
  RecordListRequest&& readBy(OwnReader<Record> reader) && { return m_reader = reader, std::move(*this); }
  bool parseResponse(std::string& response) override {
    if (!HuaweiJSONRecordList<Record, Sequence>::parseResponse(response)) return false;
    *m_destination = this->m_records;
    return true;
  }
  void forJob(unsigned long long jobId) { this->m_jobId = jobId; }

 private:
  bool readElement(const jsonxx::Object& element, Record& record) override {
    return m_reader != nullptr ? (record.*m_reader)(element)
                               : HuaweiJSONRecordList<Record, Sequence>::readElement(element, record);
  }

  Sequence<Record>* m_destination;
  OwnReader<Record> m_reader = nullptr;
};

// A deletion's answer: any error object is read as done, a non-zero code only logged; the
// transport has already turned a refusal into a failed send.
class DeletionRequest final : public HuaweiJSONBase {
 public:
  explicit DeletionRequest(HuaweiResponse::ParserLog log) : m_log(log) {}
  bool parseResponse(std::string& response) override {
    return HuaweiResponse::readDeletionAnswer(m_log, m_jobId, response);
  }
  void forJob(unsigned long long jobId) { m_jobId = jobId; }

 private:
  HuaweiResponse::ParserLog m_log;
};

template <class Record>
RecordListRequest(std::vector<Record>&, HuaweiResponse::ReadingRules) -> RecordListRequest<Record, std::vector>;
template <class Record>
RecordListRequest(std::list<Record>&, HuaweiResponse::ReadingRules) -> RecordListRequest<Record, std::list>;
