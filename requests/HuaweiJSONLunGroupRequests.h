// Requests of LUN groups and of the associations that LUN groups and mapping views take part in.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "HuaweiIncludes.h"
#include "HuaweiJSONBase.h"

namespace jsonxx {
class Object;
}

namespace HuaweiResponse {

// How a list answer without a "data" array reports a non-zero code: the level of the line and
// whether the code is cut to a signed 32-bit number first.
struct ListErrorReport {
  int level;
  bool signed32;
};

// A list answer: each element of the "data" array through readElement (false stops the list);
// without the array, an error object with code 0, or none at all, is an empty list.
bool readList(const char* logName, unsigned long long jobId, const std::string& response, ListErrorReport report,
              const std::function<bool(const jsonxx::Object&)>& readElement);

// An answer that carries nothing but its status.
bool readStatus(const char* logName, unsigned long long jobId, const std::string& response);

// The object under "data" of a creation's answer; false, logged, when there is none.
bool readCreated(const char* logName, unsigned long long jobId, const std::string& response,
                 const std::function<void(const jsonxx::Object&)>& readData);

}  // namespace HuaweiResponse

// The body `{"K":"v", ...}` closed by the vStore piece when a vStore is meant: the piece
// `,"vstoreId":"<id>" ` stands right before the brace.
std::string closedWithVstore(std::string body, const std::string& vstoreId);

// A list request: the answer's records, read one by one. Instantiated for the records of LUN
// groups, snapshot LUNs, host groups and mapping views.
template <typename Record>
class HuaweiJSONGetRecordList : public HuaweiJSONBase {
 public:
  bool parseResponse(std::string& response) override;

 protected:
  HuaweiJSONGetRecordList(unsigned long long const& jobId, const char* logName, HuaweiResponse::ListErrorReport report)
      : HuaweiJSONBase(jobId), m_logName(logName), m_report(report) {}
  ~HuaweiJSONGetRecordList() = default;

  std::vector<Record> m_records;

 private:
  const char* m_logName;
  HuaweiResponse::ListErrorReport m_report;
};

// An association between an owner (the ID of the body) and an object of a given type.
class HuaweiJSONAssociationRequest : public HuaweiJSONBase {
 public:
  bool buildRequest(std::string& body) override;
  bool parseResponse(std::string& response) override;

 protected:
  HuaweiJSONAssociationRequest(unsigned long long const& jobId, const char* logName, std::string const& ownerId,
                               std::string const& objectId, std::string const& objectTypeText,
                               std::string const& vstoreId)
      : HuaweiJSONBase(jobId),
        m_logName(logName),
        m_ownerId(ownerId),
        m_objectId(objectId),
        m_objectTypeText(objectTypeText),
        m_vstoreId(vstoreId) {}
  ~HuaweiJSONAssociationRequest() = default;

 private:
  const char* m_logName;
  std::string m_ownerId;
  std::string m_objectId;
  std::string m_objectTypeText;
  std::string m_vstoreId;
};

class HuaweiJSONGetLunGroupInfo : public HuaweiJSONGetRecordList<_HuaweiLunGroupInfo> {
 public:
  explicit HuaweiJSONGetLunGroupInfo(unsigned long long const& jobId)
      : HuaweiJSONGetRecordList(jobId, "HuaweiJSONGetLunGroupInfo::parseResponse", {3, false}) {}
  void getLunGroupInfo(std::vector<_HuaweiLunGroupInfo>& groups) { groups = m_records; }
};

class HuaweiJSONGetSnapLunAssociatedWithLunGroup : public HuaweiJSONGetRecordList<_HuaweiLUNSnapshotInfo> {
 public:
  explicit HuaweiJSONGetSnapLunAssociatedWithLunGroup(unsigned long long const& jobId)
      : HuaweiJSONGetRecordList(jobId, "HuaweiJSONGetSnapLunAssociatedWithLunGroup::parseResponse", {3, false}) {}
  void getSnapLunInfo(std::vector<_HuaweiLUNSnapshotInfo>& snapshotLuns) { snapshotLuns = m_records; }
};

class HuaweiJSONCreateLunGroup : public HuaweiJSONBase {
 public:
  HuaweiJSONCreateLunGroup(unsigned long long const& jobId, _HuaweiLunGroupInfo const& lunGroup)
      : HuaweiJSONBase(jobId), m_lunGroup(lunGroup) {}
  bool buildRequest(std::string& body) override;
  // Overwrites the record it was built from with the array's group.
  bool parseResponse(std::string& response) override;
  void getLunGroupInfo(_HuaweiLunGroupInfo& lunGroup) { lunGroup = m_lunGroup; }

 private:
  _HuaweiLunGroupInfo m_lunGroup;
};

class HuaweiJSONAssociateLunWithLunGroup : public HuaweiJSONAssociationRequest {
 public:
  HuaweiJSONAssociateLunWithLunGroup(unsigned long long const& jobId, std::string const& objectId,
                                     std::string const& lunGroupId, std::string const& objectTypeText,
                                     std::string const& vstoreId)
      : HuaweiJSONAssociationRequest(jobId, "HuaweiJSONAssociateLunWithLunGroup::parseResponse", lunGroupId,
                                     objectId, objectTypeText, vstoreId) {}
};

// Also reads the answer of a removal that carries all its arguments in the URL; that one is made
// with the job identifier alone.
class HuaweiJSONRemoveAssociation : public HuaweiJSONAssociationRequest {
 public:
  explicit HuaweiJSONRemoveAssociation(unsigned long long const& jobId)
      : HuaweiJSONRemoveAssociation(jobId, std::string(), std::string(), std::string(), std::string()) {}
  HuaweiJSONRemoveAssociation(unsigned long long const& jobId, std::string const& mappingViewId,
                              std::string const& objectId, std::string const& objectTypeText,
                              std::string const& vstoreId)
      : HuaweiJSONAssociationRequest(jobId, "HuaweiJSONRemoveAssociation::parseResponse", mappingViewId, objectId,
                                     objectTypeText, vstoreId) {}
};
