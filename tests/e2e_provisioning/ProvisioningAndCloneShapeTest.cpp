// The shared shape of the LUN provisioning and clone operations, one row each.
#include "OperationShape.h"
#include "ShapeCall.h"
#include "ProvisioningScene.h"

namespace zrtest {

ShapeScene ArrangeShapeScene(arraysim::ArraySimulator& sim, ZrManageHuawei&) {
  ArrangeProvisioning(sim);
  return {};
}

namespace {

// A third-generation row: its failure text says the same, with the status text in its first
// brackets, whether the array refused or the answer could not be read.
ShapeRow Third(const char* name, Calling call, std::string send, std::string failure) {
  return ShapeRow(name, std::move(call), {std::move(send)}, name, failure).emptyResponseSays(failure);
}

using Z = ZrManageHuawei;

_HuaweiCloneInfo Clone(const char* primary) {
  _HuaweiCloneInfo clone;
  clone.name = "c";
  clone.priLunId = primary;
  return clone;
}

INSTANTIATE_TEST_SUITE_P(
    ProvisioningAndClones, OperationShape,
    testing::Values(
        Third("createLUN", calling(&Z::createLUN, out, NewLun("lunA")), "POST lun?",
              "API Error [{status}] Unable to create lun with name [lunA]")
            .emptyArgumentSays(1, "The input parameter [Name] is empty"),
        Third("getStoragePoolInfoForName", calling(&Z::getStoragePoolInfoForName, out, "pool1"),
              "GET storagepool?&filter=NAME::pool1", "API Error [{status}] Unable to get storage pool info for name [pool1]")
            .emptyArgumentSays(1, "The input parameter [Storage pool name] is empty"),
        Third("modifyLun", calling(&Z::modifyLun, [] { auto l = NewLun("lunA"); l.id = "4"; return l; }()),
              "PUT lun/4?", "API Error [{status}] Unable to modify lun info of ID  [4]")
            .answerNotRead()
            .emptyArgumentSays(0, "The input parameter [lun id] is empty"),
        Third("getLunAssociatedToLunGroup", calling(&Z::getLunAssociatedToLunGroup, "1", out),
              "GET lun/associate?&ASSOCIATEOBJID=1&ASSOCIATEOBJTYPE=256",
              "API Error [{status}] Unable to get lun associated to lun group  [1]"),
        Third("addLuntoLunGroup", calling(&Z::addLuntoLunGroup, "1", "4", "-12345"), "POST lungroup/associate?",
              "API Error [{status}] Unable to add lun [4] to lun group [1]")
            .answerNotRead()
            .emptyArgumentSays(0, "The input parameter [lun group id] is empty"),
        Third("removeLunFromLunGroup", calling(&Z::removeLunFromLunGroup, "1", "1", "-12345"),
              "DELETE lungroup/associate?&ID=1&ASSOCIATEOBJID=1&ASSOCIATEOBJTYPE=11",
              "API Error [{status}] Unable to remove lun [1] from lun group [1] ")
            .answerNotRead()
            .emptyArgumentSays(1, "The input parameter [lun id] is empty"),
        Third("deleteLun", calling(&Z::deleteLun, "4", ""), "DELETE lun/4?",
              "API Error [{status}] Unable to delete lun with ID  [4]")
            .answerNotRead(),
        Third("getCloneInfo", calling(&Z::getCloneInfo, out, "1"), "GET splitmirror/1?",
              "API Error [{status}] Unable to get clone info for id [1]")
            .emptyArgumentSays(1, "The input parameter [Clone id] is empty"),
        Third("getCloneSecondaryLuns", calling(&Z::getCloneSecondaryLuns, out, "1"),
              "GET SPLITMIRRORTARGETLUN/targetLUN?&PARENTID=1",
              "API Error [{status}] Unable to get clone secondary lun info for parent id [1]"),
        Third("createClone", calling(&Z::createClone, out, Clone("4")), "POST splitmirror?",
              "API Error [{status}] Unable to create clone with name [c]")
            .emptyArgumentSays(calling(&Z::createClone, out, Clone("")).call,
                               "The input parameter [clone pri lun id] is empty"),
        Third("addCloneSecondaryLun",
              calling(&Z::addCloneSecondaryLun, Secondary("4", "2"), HuaweiApiValue::FIRST_SYNC_YES),
              "PUT SPLITMIRRORTARGETLUN/addTargetLUN?",
              "API Error [{status}] Unable to add clone secondary lun ID [4], parent ID [2]")
            .answerNotRead()
            .emptyArgumentSays(1, "The input parameter [First sync] is empty"),
        Third("splitCloneSecondaryLun", calling(&Z::splitCloneSecondaryLun, "2", "1"), "PUT SPLITMIRRORTARGETLUN/split?",
              "API Error [{status}] Unable to split clone secondary lun with ID [2], clone/parent with ID [1]")
            .answerNotRead()
            .emptyArgumentSays(1, "The input parameter [Clone/Parent ID] is empty")),
    RowName);

}  // namespace
}  // namespace zrtest
