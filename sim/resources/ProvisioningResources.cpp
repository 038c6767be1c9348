// LUNs and storage pools: POST lun, PUT lun/<id>, DELETE lun/<id>, GET lun/associate,
// GET storagepool[/<id>]. Pools are seeded by tests; a LUN is made in an existing pool.
#include "ArrayCodes.h"
#include "resources/StoreFamilies.h"

namespace arraysim {

void DeclareProvisioning(ResourceTable& table) {
  using storetype::kLun;
  using storetype::kStoragePool;
  const auto inExistingPool = [](RouteContext& c) -> std::optional<Reply> {
    const auto pool = StringMember(c.body, "PARENTID");
    if (pool && c.visible(kStoragePool, *pool)) return std::nullopt;
    return c.fail({codes::kObjectNotFound, "The storage pool does not exist."});
  };
  // A LUN that takes part in a clone, as primary or secondary, stays until the clone lets it go.
  const auto notInClone = [](RouteContext& c) -> std::optional<Reply> {
    const auto lun = c.visible();
    const bool primary = lun && lun->value("SPLITMIRRORIDS", "[]") != "[]";
    if (!primary && !c.store.get(storetype::kCloneTarget, c.id)) return std::nullopt;
    return c.fail({codes::kObjectInUse, "The LUN is used by a clone."});
  };
  Record fresh = Record::object();
  fresh["RUNNINGSTATUS"] = "27";
  fresh["HEALTHSTATUS"] = "1";
  fresh["SPLITMIRRORIDS"] = "[]";

  table.add(ResourceRoute("POST", "lun", kLun, Action::Create)
                .requiring({"NAME", "CAPACITY", "ALLOCTYPE", "PARENTID", "OWNINGCONTROLLER"})
                .withDefaults(fresh)
                .hooked(inExistingPool));
  table.add(ResourceRoute("PUT", "lun/{}", kLun, Action::Modify));
  table.add(ResourceRoute("DELETE", "lun/{}", kLun, Action::Delete).hooked(notInClone));
  table.add(ResourceRoute("GET", "lun/associate", kLun, Action::ListAssociated));
  table.add(ResourceRoute("GET", "storagepool", kStoragePool, Action::List).unscoped());
  table.add(ResourceRoute("GET", "storagepool/{}", kStoragePool, Action::Get).unscoped());
}

}  // namespace arraysim
