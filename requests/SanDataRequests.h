// Plain requests of the LUN, snapshot and host-mapping operations, by the shape of their answer:
// one record under "data", a list under "data", or only the status in "error". A concrete request
// names its log, its reader and its getter.
#pragma once

#include <string>
#include <vector>

#include "HuaweiJSONBase.h"
#include "SanAnswerReading.h"

template <typename Record>
using SanRecordReader = void (*)(const jsonxx::Object&, Record&);

// One record read from the "data" object into the request's own record, which holds what was
// sent until then.
template <typename Record>
class HuaweiJSONSanDataObject : public HuaweiJSONBase {
 public:
  bool parseResponse(std::string& response) override {
    jsonxx::Object answer;
    if (!HuaweiSanAnswer::open(m_logName, m_jobId, response, answer)) return false;
    if (!answer.has<jsonxx::Object>("data")) {
      return HuaweiSanAnswer::unusable(m_logName, m_jobId, HuaweiSanAnswer::kNoDataObject);
    }
    m_reader(answer.get<jsonxx::Object>("data"), m_record);
    return true;
  }

 protected:
  HuaweiJSONSanDataObject(unsigned long long jobId, const char* logName, SanRecordReader<Record> reader,
                          const Record& sent = Record())
      : HuaweiJSONBase(jobId), m_record(sent), m_logName(logName), m_reader(reader) {}
  ~HuaweiJSONSanDataObject() = default;

  Record m_record;

 private:
  const char* m_logName;
  SanRecordReader<Record> m_reader;
};

// What a list answer without a "data" array means.
enum class MissingList {
  Unreadable,       // a parse failure
  EmptyOnCodeZero,  // nothing matched, when error.code is 0
};

template <typename Record>
class HuaweiJSONSanDataList : public HuaweiJSONBase {
 public:
  bool parseResponse(std::string& response) override {
    jsonxx::Object answer;
    if (!HuaweiSanAnswer::open(m_logName, m_jobId, response, answer)) return false;
    if (answer.has<jsonxx::Array>("data")) {
      const jsonxx::Array& data = answer.get<jsonxx::Array>("data");
      for (unsigned int i = 0; i < data.size(); ++i) {
        Record record;
        m_reader(data.get<jsonxx::Object>(i), record);
        m_records.push_back(record);
      }
      return true;
    }
    if (m_missing == MissingList::Unreadable) {
      return HuaweiSanAnswer::unusable(m_logName, m_jobId, HuaweiSanAnswer::kNoDataList);
    }
    return HuaweiSanAnswer::statusIsZero(m_logName, m_jobId, answer, HuaweiSanAnswer::CodeWidth::Signed32);
  }

 protected:
  HuaweiJSONSanDataList(unsigned long long jobId, const char* logName, SanRecordReader<Record> reader,
                        MissingList missing)
      : HuaweiJSONBase(jobId), m_logName(logName), m_reader(reader), m_missing(missing) {}
  ~HuaweiJSONSanDataList() = default;

  std::vector<Record> m_records;

 private:
  const char* m_logName;
  SanRecordReader<Record> m_reader;
  MissingList m_missing;
};

// Answers that carry only a status; a request with a body adds its buildRequest.
class HuaweiJSONSanStatus : public HuaweiJSONBase {
 public:
  bool parseResponse(std::string& response) override {
    jsonxx::Object answer;
    return HuaweiSanAnswer::open(m_logName, m_jobId, response, answer) &&
           HuaweiSanAnswer::statusIsZero(m_logName, m_jobId, answer, m_width, m_level);
  }

 protected:
  HuaweiJSONSanStatus(unsigned long long jobId, const char* logName,
                      HuaweiSanAnswer::CodeWidth width = HuaweiSanAnswer::CodeWidth::Signed32, int level = 3)
      : HuaweiJSONBase(jobId), m_logName(logName), m_width(width), m_level(level) {}
  ~HuaweiJSONSanStatus() = default;

 private:
  const char* m_logName;
  HuaweiSanAnswer::CodeWidth m_width;
  int m_level;
};
