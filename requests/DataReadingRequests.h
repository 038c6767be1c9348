// Plain GET requests whose answer is one record under "data", or a list of records under "data".
// A concrete request names its log and its getter; decoding is the record's reader.
#pragma once

#include <list>
#include <string>

#include "HuaweiJSONBase.h"
#include "RecordReaders.h"
#include "ResponseReading.h"

template <typename Record>
class HuaweiJSONGetDataObject : public HuaweiJSONBase {
 public:
  HuaweiJSONGetDataObject(unsigned long long const& jobId, const char* logName)
      : HuaweiJSONBase(jobId), m_logName(logName) {}

  bool parseResponse(std::string& response) override {
    jsonxx::Object answer;
    if (!HuaweiResponse::parseObject(m_logName, m_jobId, response, answer)) return false;
    HuaweiRecords::readRecord(answer.get<jsonxx::Object>("data"), m_record);
    return true;
  }

 protected:
  ~HuaweiJSONGetDataObject() = default;

  Record m_record;

 private:
  const char* m_logName;
};

template <typename Record>
class HuaweiJSONGetDataList : public HuaweiJSONBase {
 public:
  HuaweiJSONGetDataList(unsigned long long const& jobId, const char* logName)
      : HuaweiJSONBase(jobId), m_log{logName} {}
  HuaweiJSONGetDataList(unsigned long long const& jobId, const HuaweiResponse::ParserLog& log)
      : HuaweiJSONBase(jobId), m_log(log) {}

  // "data" is required: an array with nothing to list, answered without it, ends the process.
  bool parseResponse(std::string& response) override {
    jsonxx::Object answer;
    if (!HuaweiResponse::parseObject(m_log, m_jobId, response, answer)) return false;
    jsonxx::Array& data = answer.get<jsonxx::Array>("data");
    for (unsigned int i = 0; i < data.size(); ++i) {
      Record record;
      readElement(data.get<jsonxx::Object>(i), record);
      m_records.push_back(record);
    }
    return true;
  }

 protected:
  ~HuaweiJSONGetDataList() = default;

  // One element of the list, in order; a list whose elements depend on those before overrides it.
  virtual void readElement(const jsonxx::Object& element, Record& record) {
    HuaweiRecords::readRecord(element, record);
  }

  std::list<Record> m_records;

 private:
  HuaweiResponse::ParserLog m_log;
};
