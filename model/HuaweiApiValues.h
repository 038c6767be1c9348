// The array's small vocabularies (allocation types, running states, object types, ...). It sends
// them as JSON strings; each vocabulary is its own type so that one cannot stand for another.
#pragma once

#include <string>

namespace HuaweiApi {

class Values {
 public:
  Values() = default;
  explicit Values(std::string const& value) : value(value) {}

  virtual bool isEmpty() const { return value.empty(); }
  virtual void clear() { value.clear(); }
  std::string getValue() const { return value; }

 protected:
  std::string value;
};

// A value of one vocabulary: keeps the text as it comes, unchecked, so that a code the array
// reports outside the known constants is passed on unchanged.
#define HUAWEI_API_VALUE_CLASS(Name)                               \
  class Name : public Values {                                     \
   public:                                                         \
    explicit Name(std::string const& text = std::string())         \
        : Values(text) {}                                          \
  }

HUAWEI_API_VALUE_CLASS(AllocType);
HUAWEI_API_VALUE_CLASS(RunningStatus);
HUAWEI_API_VALUE_CLASS(FirstSyncValue);
HUAWEI_API_VALUE_CLASS(ResumePolicyValue);
HUAWEI_API_VALUE_CLASS(ObjectTypeValue);

#undef HUAWEI_API_VALUE_CLASS

class CloneSecondaryLunRunningStatus : public Values {
 public:
  explicit CloneSecondaryLunRunningStatus(std::string const& text = std::string()) : Values(text) {}
  explicit CloneSecondaryLunRunningStatus(Values other) : Values(other.getValue()) {}
};

// A copy speed from 1 (low) to 4 (highest); anything else is an empty value with speed 0.
class CopySpeedValue : public Values {
 public:
  explicit CopySpeedValue(int speed = 0);
  explicit CopySpeedValue(std::string const& text);

  void clear() override;
  int getSpeed() const { return speed; }

 private:
  int speed;
};

}  // namespace HuaweiApi

namespace HuaweiApiValue {

extern const HuaweiApi::AllocType ALLOC_TYPE_THIN;
extern const HuaweiApi::AllocType ALLOC_TYPE_THICK;
extern const HuaweiApi::AllocType ALLOC_TYPE_DEFAULT;

extern const HuaweiApi::RunningStatus RUNNING_STATUS_UNKNOWN;
extern const HuaweiApi::RunningStatus RUNNING_STATUS_NORM;
extern const HuaweiApi::RunningStatus RUNNING_STATUS_SYNC;
extern const HuaweiApi::RunningStatus RUNNING_STATUS_SPLIT;
extern const HuaweiApi::RunningStatus RUNNING_STATUS_ONLINE;
extern const HuaweiApi::RunningStatus RUNNING_STATUS_TO_BE_RECOVERED;
extern const HuaweiApi::RunningStatus RUNNING_STATUS_INTERRUPTED;
extern const HuaweiApi::RunningStatus RUNNING_STATUS_QUEUING;
extern const HuaweiApi::RunningStatus RUNNING_STATUS_REVERSE_SYNC;

extern const HuaweiApi::CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_UNKNOWN;
extern const HuaweiApi::CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_NORM;
extern const HuaweiApi::CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_SYNC;
extern const HuaweiApi::CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_SPLIT;
extern const HuaweiApi::CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_TO_BE_RECOVERED;
extern const HuaweiApi::CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_INTERRUPTED;
extern const HuaweiApi::CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_QUEUING;
extern const HuaweiApi::CloneSecondaryLunRunningStatus CLONE_SEC_LUN_RUNNING_STATUS_REVERSE_SYNC;

extern const HuaweiApi::FirstSyncValue FIRST_SYNC_YES;
extern const HuaweiApi::FirstSyncValue FIRST_SYNC_NO;

extern const HuaweiApi::ResumePolicyValue RESUME_POLICY_AUTOMATIC;
extern const HuaweiApi::ResumePolicyValue RESUME_POLICY_MANUAL;

extern const HuaweiApi::CopySpeedValue COPY_SPEED_LOW;
extern const HuaweiApi::CopySpeedValue COPY_SPEED_MEDIUM;
extern const HuaweiApi::CopySpeedValue COPY_SPEED_HIGH;
extern const HuaweiApi::CopySpeedValue COPY_SPEED_HIGHEST;

extern const HuaweiApi::ObjectTypeValue OBJECT_TYPE_HOST;
extern const HuaweiApi::ObjectTypeValue OBJECT_TYPE_HOSTGROUP;
extern const HuaweiApi::ObjectTypeValue OBJECT_TYPE_LUN;
extern const HuaweiApi::ObjectTypeValue OBJECT_TYPE_SNAPSHOT_LUN;
extern const HuaweiApi::ObjectTypeValue OBJECT_TYPE_LUN_GROUP;
extern const HuaweiApi::ObjectTypeValue OBJECT_TYPE_MAPPINGVIEW;

}  // namespace HuaweiApiValue
