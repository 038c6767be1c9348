// Readers of the LUN snapshot, host, host-group and initiator objects of an answer. Required keys
// are read with the asserting getters (an absent or mistyped key ends the process); optional ones
// give the empty text when absent.
#pragma once

#include "HuaweiIncludes.h"
#include "jsonxx.h"

namespace HuaweiSanRecords {

void read(const jsonxx::Object& data, _HuaweiLUNSnapshotInfo& record);
void read(const jsonxx::Object& data, _HuaweiLUNHostInfo& record);
void read(const jsonxx::Object& data, _HuaweiHostGroupInfo& record);
// A created group's echo: identifier and name only; the vStore stays as sent.
void readIdentity(const jsonxx::Object& data, _HuaweiHostGroupInfo& record);
// A created initiator's echo: each key into its own field.
void read(const jsonxx::Object& data, _HuaweiInitiator& record);

}  // namespace HuaweiSanRecords
