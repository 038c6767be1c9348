// Built against an installed tree only: the public headers must be enough to use the facade.
#include <list>

#include "HuaweiArrayCodes.h"
#include "TkLogSink.h"
#include "ZRLibCurlOptions.h"
#include "ZrManageHuawei.h"

int main() {
  ZRLibCurlOptions options;
  ZrManageHuawei array(1);
  std::list<_HuaweiFileSystemsInfo> fileSystems;
  _HuaweiLUNInfo lun;
  _HuaweiLunGroupInfo group;
  // Closed session: the operation fails in its guard without sending anything.
  const bool listed = array.getFileSystemsList(fileSystems, "-12345");
  return listed || !lun.id.empty() || !group.id.empty() || HuaweiArrayCode::LUN_DOES_NOT_EXIST == 0 ? 1 : 0;
}
