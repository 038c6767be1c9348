#include "LunPresentation.h"

#include <algorithm>
#include <vector>

namespace {

using Step = std::function<CXoError()>;

template <typename Group>
bool holds(const std::vector<Group>& groups, const std::string& id) {
  return std::any_of(groups.begin(), groups.end(), [&](const Group& group) { return group.id == id; });
}

// Runs the undo steps last to first; keeps the first error.
CXoError withdraw(std::vector<Step>& undo, CXoError result) {
  for (auto step = undo.rbegin(); step != undo.rend(); ++step) {
    const CXoError undone = (*step)();
    if (!result.IsError()) result = undone;
  }
  return result;
}

}  // namespace

CXoError presentAndWithdraw(ZrManageHuawei& array, const LunPresentation& p,
                            const std::function<void()>& whilePresented) {
  std::vector<Step> undo;
  _HuaweiLunGroupInfo lunGroup;
  _HuaweiLUNMappingView view;

  const std::vector<Step> present = {
      [&] { return array.createLUNGroup(lunGroup, p.name, p.vstoreId, "0"); },
      [&] {
        undo.push_back([&] { return array.deleteLunGroup(lunGroup.id, p.vstoreId); });
        return array.addSnapshotLuntoLunGroup(lunGroup.id, p.snapshotLunId, p.vstoreId);
      },
      [&] {
        undo.push_back([&] { return array.removeSnapshotLunFromLunGroup(lunGroup.id, p.snapshotLunId, p.vstoreId); });
        return array.isSnapshotLunAssociatedToLunGroup(lunGroup.id, p.snapshotLunId, p.vstoreId);
      },
      [&] { return array.createMappingView(view, p.name, p.vstoreId); },
      [&] {
        undo.push_back([&] { return array.deleteMappingView(view.id, p.vstoreId); });
        return array.addHostGroupToMappingView(p.hostGroupId, view.id, p.vstoreId);
      },
      [&] {
        undo.push_back([&] { return array.removeHostGroupAssociatedToMappingView(p.hostGroupId, view.id, p.vstoreId); });
        return array.addLunGroupToMappingView(lunGroup.id, view.id, p.vstoreId);
      },
      [&] {
        undo.push_back([&] { return array.removeLunGroupAssociatedToMappingView(lunGroup.id, view.id, p.vstoreId); });
        std::vector<_HuaweiHostGroupInfo> hostGroups;
        std::vector<_HuaweiLunGroupInfo> lunGroups;
        CXoError listed = array.getHostGroupAssociatedToMappingView(view.id, hostGroups, p.vstoreId);
        if (!listed.IsError()) listed = array.getLunGroupAssociatedToMappingView(view.id, lunGroups, p.vstoreId);
        if (listed.IsError() || (holds(hostGroups, p.hostGroupId) && holds(lunGroups, lunGroup.id))) return listed;
        return CXoError(-1, "the mapping view [" + view.id + "] does not hold both groups", YbCodeLocation("", "", 0));
      },
  };
  for (const Step& step : present) {
    const CXoError result = step();
    if (result.IsError()) return withdraw(undo, result);
  }
  if (whilePresented) whilePresented();
  return withdraw(undo, CXoError::Success());
}
