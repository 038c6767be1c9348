// The records' own readers, shared by every request that lists LUNs or LUN groups.
#include <exception>

#include "HuaweiGroupRecords.h"
#include "HuaweiLUNRecords.h"
#include "SanAnswerReading.h"
#include "TkDebug.h"
#include "jsonxx.h"

namespace {

using HuaweiSanAnswer::textOrEmpty;

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
    const std::string splitMirrorText = textOrEmpty(object, "SPLITMIRRORIDS");
    allocType = HuaweiApi::AllocType(textOrEmpty(object, "ALLOCTYPE"));
    capacity = textOrEmpty(object, "CAPACITY");
    owningController = textOrEmpty(object, "OWNINGCONTROLLER");
    vstoreId = textOrEmpty(object, "vstoreId");
    vstoreName = textOrEmpty(object, "vstoreName");

    jsonxx::Value decoded;
    decoded.parse(splitMirrorText);
    if (!decoded.is<jsonxx::Array>()) return true;
    const jsonxx::Array ids = decoded.get<jsonxx::Array>();
    for (size_t index = 0; index < ids.size(); ++index) {
      splitMirrorIds.push_back(ids.get<std::string>(static_cast<unsigned int>(index)));
    }
    return true;
  } catch (const jsonxx::MissingRequiredValue&) {
    throw;  // the operation's to contain, as the embedder chose: never read as a bad record
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
    appType = textOrEmpty(object, "APPTYPE");
    vstoreId = textOrEmpty(object, "vstoreId");
    vstoreName = textOrEmpty(object, "vstoreName");
    return true;
  } catch (const jsonxx::MissingRequiredValue&) {
    throw;  // the operation's to contain, as the embedder chose: never read as a bad record
  } catch (...) {
    logReadException();
    return false;
  }
}
