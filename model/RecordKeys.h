// The keys of the array's objects: one table per record says which key fills which field, whether
// the array must send it, and what kind of JSON value it sends. The readers of answers, the tool's
// output and the tests all go through these tables, so a field is listed once.
#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "HuaweiIncludes.h"

namespace HuaweiKeys {

enum class Presence {
  Required,  // read with the asserting getter: absent or of another kind, the read fails
  Optional,  // the key's text when it holds a string; otherwise the field as a fresh record has it
  Unread,    // a field that no answer fills
};

// The JSON kind the array sends under a key.
enum class Kind { String, Number };

// A field of the record, whatever its type.
template <class Record>
using Member = std::variant<std::string Record::*, bool Record::*, int Record::*, unsigned int Record::*,
                            unsigned long long Record::*, std::list<std::string> Record::*,
                            HuaweiApi::AllocType Record::*, HuaweiApi::RunningStatus Record::*,
                            HuaweiApi::CopySpeedValue Record::*, HuaweiApi::ResumePolicyValue Record::*,
                            HuaweiApi::CloneSecondaryLunRunningStatus Record::*>;

template <class Record>
struct Key {
  const char* field;  // the field's own name
  const char* key;    // the array's key; null for an unread field
  Presence presence;
  Kind kind;
  Member<Record> member;
};

// Calls `visit` with the row's member pointer. A table names only its record's own fields, so a
// field type wider than the record is never the one held: it is left out, which spares the code
// (and the compiler's bounds warnings) for fields the record cannot have.
template <class Record, class Visitor>
void visitField(const Member<Record>& member, Visitor&& visit) {
  std::visit(
      [&](auto pointer) {
        using Field = std::remove_reference_t<decltype(std::declval<Record&>().*pointer)>;
        if constexpr (sizeof(Field) <= sizeof(Record)) visit(pointer);
      },
      member);
}

// In the order the array's keys are read: where two required keys are missing, the first is named.
template <class Record>
using KeyTable = std::vector<Key<Record>>;

template <class Record>
struct RecordKeys {
  static const KeyTable<Record>& table();
};

// True for the records that have a table.
template <class Record>
inline constexpr bool kHasKeys = false;

template <class Record>
const KeyTable<Record>& keysOf() {
  return RecordKeys<Record>::table();
}

// The rows of a table in the order the record declares its fields, as the tool prints them.
template <class Record>
std::vector<const Key<Record>*> inDeclaredOrder() {
  static const Record sample;
  const auto offset = [](const Key<Record>& row) {
    return std::visit(
        [](auto member) {
          return reinterpret_cast<const char*>(&(sample.*member)) - reinterpret_cast<const char*>(&sample);
        },
        row.member);
  };
  std::vector<const Key<Record>*> rows;
  for (const Key<Record>& row : keysOf<Record>()) {
    auto at = rows.begin();
    while (at != rows.end() && offset(**at) < offset(row)) ++at;
    rows.insert(at, &row);
  }
  return rows;
}

#define HUAWEI_RECORD_KEYS(Record) \
  template <>                      \
  const KeyTable<Record>& RecordKeys<Record>::table()
#define HUAWEI_RECORD_WITH_KEYS(Record)         \
  template <>                                   \
  inline constexpr bool kHasKeys<Record> = true; \
  HUAWEI_RECORD_KEYS(Record)

HUAWEI_RECORD_WITH_KEYS(_HuaweiSystemInformation);
HUAWEI_RECORD_WITH_KEYS(_HuaweiNDMPServiceSettings);
HUAWEI_RECORD_WITH_KEYS(_HuaweiVStoreInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiFileSystemsInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiArrayInterfaces);
HUAWEI_RECORD_WITH_KEYS(_HuaweiSnapshotInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiSnapshotChangeList);
HUAWEI_RECORD_WITH_KEYS(_HuaweiShareInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiCIFSSharePermissionInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiNFSSharePermissionInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiLUNInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiLUNSnapshotInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiInitiator);
HUAWEI_RECORD_WITH_KEYS(_HuaweiLUNHostInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiHostGroupInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiLunGroupInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiLUNMappingView);
HUAWEI_RECORD_WITH_KEYS(_HuaweiStoragePoolInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiCloneInfo);
HUAWEI_RECORD_WITH_KEYS(_HuaweiCloneSecondaryLUN);

#undef HUAWEI_RECORD_WITH_KEYS

}  // namespace HuaweiKeys
