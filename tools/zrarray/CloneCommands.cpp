// clone: split mirrors of a primary LUN and the secondary LUNs they copy to.
#include "Calls.h"

namespace zrarray {

std::vector<Command> CloneCommands() {
  const Argument cloneId = text("clone-id", "Clone identifier");
  const Argument secondaryId = text("lun-id", "Secondary LUN identifier");
  return {
      {"clone", "info", "One clone", calls(&Array::getCloneInfo, printed, cloneId)},
      {"clone", "secondaries", "The secondary LUNs of a clone with the state and progress of each pair",
       calls(&Array::getCloneSecondaryLuns, printed, cloneId)},
      {"clone", "create", "Create a clone of a primary LUN; prints its identifier",
       {text("name", "Clone name"), text("primary-lun-id", "LUN to clone")},
       value("id",
             [](Call& c, auto& out) {
               _HuaweiCloneInfo clone;
               clone.name = c["name"];
               clone.priLunId = c["primary-lun-id"];
               return c.array.createClone(out, clone);
             })},
      {"clone", "delete", "Delete a clone that has no secondary LUN left", calls(&Array::deleteClone, cloneId)},
      {"clone", "add-secondary", "Attach a secondary LUN; the copy starts at once unless --no-first-sync",
       {cloneId, secondaryId, orElse(oneOf("speed", "Copy speed", SpeedWords()), "medium"),
        orElse(oneOf("resume-policy", "After an interruption",
                     {{"automatic", HuaweiApiValue::RESUME_POLICY_AUTOMATIC.getValue()},
                      {"manual", HuaweiApiValue::RESUME_POLICY_MANUAL.getValue()}}),
               "automatic"),
        flag("no-first-sync", "Attach without copying yet")},
       action([](Call& c) {
         _HuaweiCloneSecondaryLUN secondary;
         secondary.id = c["lun-id"];
         secondary.parentId = c["clone-id"];
         secondary.speed = HuaweiApi::CopySpeedValue(c["speed"]);
         secondary.resumePolicy = HuaweiApi::ResumePolicyValue(c["resume-policy"]);
         return c.array.addCloneSecondaryLun(
             secondary, c.args.flag("no-first-sync") ? HuaweiApiValue::FIRST_SYNC_NO : HuaweiApiValue::FIRST_SYNC_YES);
       })},
      {"clone", "split", "Split a secondary LUN off its clone",
       shownFirst(cloneId, calls(&Array::splitCloneSecondaryLun, secondaryId, cloneId))},
      {"clone", "sync", "Synchronise a secondary LUN with the primary again",
       shownFirst(cloneId, calls(&Array::syncCloneSecondaryLun, secondaryId, cloneId))},
      {"clone", "remove-secondary", "Detach a secondary LUN from its clone",
       shownFirst(cloneId, calls(&Array::removeCloneSecondaryLun, secondaryId, cloneId))},
  };
}

}  // namespace zrarray
