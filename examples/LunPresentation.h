// Presents an activated LUN snapshot to the backup host and withdraws it again, through
// ZrManageHuawei alone: LUN group, mapping view, and the host group the caller already has.
#pragma once

#include <functional>
#include <string>

#include "ZrManageHuawei.h"

struct LunPresentation {
  std::string snapshotLunId;
  std::string hostGroupId;
  // Names the LUN group and the mapping view made for the presentation.
  std::string name;
  std::string vstoreId = "-12345";
};

// Puts the snapshot LUN into a new LUN group, ties that group and the host group together in a
// new mapping view, checks that the view holds both, calls `whilePresented` (the backup reads
// the LUN there), then undoes every step in reverse order. A failing step stops the
// presentation; what was made until then is withdrawn all the same. Answers the first error.
CXoError presentAndWithdraw(ZrManageHuawei& array, const LunPresentation& presentation,
                            const std::function<void()>& whilePresented = {});
