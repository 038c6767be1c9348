// The records' own readers, shared by every request that lists LUNs or LUN groups.
#include "RecordReading.h"

#include "TkDebug.h"

namespace {

// Every exception but a missing required value, which is the operation's to contain as the
// embedder chose, makes a bad record: logged, and false.
template <class Record>
bool readCaught(jsonxx::Object const& object, Record& record) {
  try {
    record.clear();
    HuaweiKeys::readKeys(object, record);
    return true;
  } catch (const jsonxx::MissingRequiredValue&) {
    throw;
  } catch (...) {
    TkDebug(nullptr).DebugLvl("parseFromJson", -1, "Exception while parsing the json response...");
    return false;
  }
}

}  // namespace

bool _HuaweiLUNInfo::parseFromJson(jsonxx::Object const& object) { return readCaught(object, *this); }

bool _HuaweiLunGroupInfo::parseFromJson(jsonxx::Object const& object) { return readCaught(object, *this); }
