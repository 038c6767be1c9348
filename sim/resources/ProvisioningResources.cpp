#include "resources/ProvisioningResources.h"

#include "resources/CloneResources.h"

namespace arraysim {

void ProvisioningResources::Declare(ResourceTable& table) {
  const auto inExistingPool = [](RouteContext& c) -> std::optional<Reply> {
    const auto pool = c.body.find("PARENTID");
    if (pool != c.body.end() && pool->is_string() && c.visible(kPoolType, pool->get<std::string>())) return std::nullopt;
    return c.fail({codes::kObjectNotFound, "The storage pool does not exist."});
  };
  // A LUN that takes part in a clone, as primary or secondary, stays until the clone lets it go.
  const auto notInClone = [](RouteContext& c) -> std::optional<Reply> {
    const auto lun = c.visible();
    const bool primary = lun && lun->value("SPLITMIRRORIDS", "[]") != "[]";
    if (!primary && !c.store.get(CloneResources::kTargetType, c.id)) return std::nullopt;
    return c.fail({codes::kObjectInUse, "The LUN is used by a clone."});
  };
  Record fresh = Record::object();
  fresh["RUNNINGSTATUS"] = "27";
  fresh["HEALTHSTATUS"] = "1";
  fresh["SPLITMIRRORIDS"] = "[]";

  table.add(ResourceRoute("POST", "lun", kLunType, Action::Create)
                .requiring({"NAME", "CAPACITY", "ALLOCTYPE", "PARENTID", "OWNINGCONTROLLER"})
                .withDefaults(fresh)
                .hooked(inExistingPool));
  table.add(ResourceRoute("PUT", "lun/{}", kLunType, Action::Modify));
  table.add(ResourceRoute("DELETE", "lun/{}", kLunType, Action::Delete).hooked(notInClone));
  table.add(ResourceRoute("GET", "lun/associate", kLunType, Action::ListAssociated));
  table.add(ResourceRoute("GET", "storagepool", kPoolType, Action::List).unscoped());
  table.add(ResourceRoute("GET", "storagepool/{}", kPoolType, Action::Get).unscoped());
}

}  // namespace arraysim
