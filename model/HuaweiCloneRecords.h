// Storage pools and clones: where a LUN is made, and the split mirrors that copy it.
#pragma once

#include <string>

#include "HuaweiApiValues.h"

struct _HuaweiStoragePoolInfo {
  std::string id;
  std::string name;
  std::string parentId;

  _HuaweiStoragePoolInfo() { clear(); }
  void clear() {
    id.clear();
    name.clear();
    parentId.clear();
  }
};

// A split mirror: a named clone of one primary LUN.
struct _HuaweiCloneInfo {
  std::string id;
  std::string name;
  std::string priLunId;

  _HuaweiCloneInfo() { clear(); }
  void clear() {
    id.clear();
    name.clear();
    priLunId.clear();
  }
};

// A secondary LUN of a clone, with the state of its pair as the array reports it.
struct _HuaweiCloneSecondaryLUN {
  std::string id;
  std::string name;
  // The clone it belongs to.
  std::string parentId;
  // Empty unless the array's value is one of the four speeds.
  HuaweiApi::CopySpeedValue speed;
  HuaweiApi::ResumePolicyValue resumePolicy;
  HuaweiApi::CloneSecondaryLunRunningStatus runningStatus;
  // Progress in the array's own unit.
  int process;

  _HuaweiCloneSecondaryLUN() : speed(0), resumePolicy(std::string()), runningStatus(std::string()) { clear(); }
  void clear() {
    id.clear();
    name.clear();
    parentId.clear();
    speed.clear();
    resumePolicy.clear();
    runningStatus.clear();
    process = 0;
  }
};
