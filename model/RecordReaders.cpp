// The records' own readers, shared by every request that lists LUNs or LUN groups.
#include <exception>

#include "HuaweiGroupRecords.h"
#include "HuaweiLUNRecords.h"
#include "TkDebug.h"
#include "jsonxx.h"

namespace {

// The member as text when the object has it as a string; the empty text otherwise.
std::string optionalText(jsonxx::Object const& object, const char* key) {
  return object.has<std::string>(key) ? object.get<std::string>(key) : std::string();
}

void logReadException() {
  TkDebug(nullptr).DebugLvl("parseFromJson", -1, "Exception while parsing the json response...");
}

}  // namespace

bool _HuaweiLUNInfo::parseFromJson(jsonxx::Object const& object) {
  try {
    clear();
    id = object.get<std::string>("ID");
    name = object.get<std::string>("NAME");
    parentId = object.get<std::string>("PARENTID");
    runningStatus = HuaweiApi::RunningStatus(object.get<std::string>("RUNNINGSTATUS"));
    // Fetched early, decoded last: the array sends the list as JSON text inside a string.
    const std::string splitMirrorText = optionalText(object, "SPLITMIRRORIDS");
    allocType = HuaweiApi::AllocType(optionalText(object, "ALLOCTYPE"));
    capacity = optionalText(object, "CAPACITY");
    owningController = optionalText(object, "OWNINGCONTROLLER");
    vstoreId = optionalText(object, "vstoreId");
    vstoreName = optionalText(object, "vstoreName");

    jsonxx::Value decoded;
    decoded.parse(splitMirrorText);
    if (!decoded.is<jsonxx::Array>()) return true;
    const jsonxx::Array ids = decoded.get<jsonxx::Array>();
    for (size_t index = 0; index < ids.size(); ++index) {
      splitMirrorIds.push_back(ids.get<std::string>(static_cast<unsigned int>(index)));
    }
    return true;
  } catch (...) {
    logReadException();
    return false;
  }
}

bool _HuaweiLunGroupInfo::parseFromJson(jsonxx::Object const& object) {
  try {
    clear();
    id = object.get<std::string>("ID");
    name = object.get<std::string>("NAME");
    appType = optionalText(object, "APPTYPE");
    vstoreId = optionalText(object, "vstoreId");
    vstoreName = optionalText(object, "vstoreName");
    return true;
  } catch (...) {
    logReadException();
    return false;
  }
}
