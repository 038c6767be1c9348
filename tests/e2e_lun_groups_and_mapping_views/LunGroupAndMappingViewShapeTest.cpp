// The shared shape of the LUN group and mapping view operations, one row each.
#include "LunGroupAndMappingViewScene.h"
#include "OperationShape.h"
#include "ShapeCall.h"

namespace zrtest {

// Group "lg" holding snapshot LUN "snap", view "mv" holding host group "hg" and group "lg", and
// spares: snapshot LUN "snap2", group "spare", view "bare" with nothing attached.
ShapeScene ArrangeShapeScene(arraysim::ArraySimulator& sim, ZrManageHuawei&) {
  ShapeScene scene{{"snap", SeedSnapshotLun(sim, "snap")},
                   {"snap2", SeedSnapshotLun(sim, "snap2")},
                   {"hg", SeedNamed(sim, "hostgroup", "hg")},
                   {"lg", SeedNamed(sim, "lungroup", "lg")},
                   {"spare", SeedNamed(sim, "lungroup", "spare")},
                   {"mv", SeedNamed(sim, "mappingview", "mv")},
                   {"bare", SeedNamed(sim, "mappingview", "bare")}};
  sim.store().associate({"lungroup", scene["lg"]}, {"snapshot", scene["snap"]});
  sim.store().associate({"mappingview", scene["mv"]}, {"hostgroup", scene["hg"]});
  sim.store().associate({"mappingview", scene["mv"]}, {"lungroup", scene["lg"]});
  return scene;
}

namespace {

const char kNone[] = "-12345";
const char kInvalid[] = "[ERROR] Invalid input parameters";
const char kEmptyAnswer[] = "Empty response returned from the array";

using Z = ZrManageHuawei;

// A row of an operation whose empty response, build and parse texts carry no prefix; `emptied` is
// the argument that, empty, stops the call.
ShapeRow Row(const char* name, Calling call, std::string send, std::string failure, std::size_t emptied,
             std::string emptyText = kInvalid) {
  return ShapeRow(name, std::move(call), {std::move(send)}, name, std::move(failure))
      .emptyResponseSays(kEmptyAnswer)
      .emptyArgumentSays(emptied, std::move(emptyText));
}

INSTANTIATE_TEST_SUITE_P(
    LunGroups, OperationShape,
    testing::Values(
        Row("getLUNGroupIDFromName", calling(&Z::getLUNGroupIDFromName, "lg", out, kNone),
            "GET lungroup?filter=NAME:lg", "[ERROR] Unable to find the information for the lungroup with name [lg]", 0,
            "The entered host name is empty")
            .emptyResponseSays("[ERROR] Empty response is returned from the array")
            .guardsBare(),
        Row("createLUNGroup", calling(&Z::createLUNGroup, out, "new", kNone, "0"), "POST lungroup",
            "[ERROR] Unable to create lungroup with name [new]", 1, "[ERROR] The hostgroup name is empty"),
        Row("addSnapshotLuntoLunGroup", calling(&Z::addSnapshotLuntoLunGroup, "{lg}", "{snap2}", kNone),
            "POST lungroup/associate", "[ERROR] Failed to associate snapshot LUN [{snap2}] with LUN Group [{lg}]", 1)
            .guardNames("addLuntoLunGroup"),
        Row("getSnapshotLunAssociatedToLunGroup", calling(&Z::getSnapshotLunAssociatedToLunGroup, "{lg}", out, kNone),
            "GET snapshot/associate?ASSOCIATEOBJID={lg}&ASSOCIATEOBJTYPE=256",
            "[ERROR] Failed to get the snapshot luns associated with the Lun Group [{lg}]", 0),
        Row("removeSnapshotLunFromLunGroup", calling(&Z::removeSnapshotLunFromLunGroup, "{lg}", "{snap}", kNone),
            "DELETE lungroup/associate?ID={lg}&ASSOCIATEOBJID={snap}&ASSOCIATEOBJTYPE=27",
            "[ERROR] Failed to remove the lun [{snap}] from lungroup [{lg}]", 1),
        Row("deleteLunGroup", calling(&Z::deleteLunGroup, "{spare}", kNone), "DELETE lungroup/{spare}",
            "[ERROR] Failed to delete the lun group with Id [{spare}]", 0)
            .emptyResponseSays("[ERROR] Empty response returned from the array")),
    RowName);

INSTANTIATE_TEST_SUITE_P(
    MappingViews, OperationShape,
    testing::Values(
        Row("addHostGroupToMappingView", calling(&Z::addHostGroupToMappingView, "{hg}", "{bare}", kNone),
            "PUT mappingview/create_associate",
            "[ERROR] Failed to associate hostgroup [{hg}] with mappingview [{bare}]", 1)
            .logsBeforeSending("REQUESSTT:["),
        Row("getLunGroupAssociatedToMappingView", calling(&Z::getLunGroupAssociatedToMappingView, "{mv}", out, kNone),
            "GET lungroup/associate?ASSOCIATEOBJID={mv}&ASSOCIATEOBJTYPE=245",
            "[ERROR] Failed to get the lun groups associated with the mappingview [{mv}]", 0),
        Row("getMappingViewAssociatedToLunGroup", calling(&Z::getMappingViewAssociatedToLunGroup, "{lg}", out, kNone),
            "GET mapping/associate?ASSOCIATEOBJID={lg}&ASSOCIATEOBJTYPE=256",
            "[ERROR] Failed to get the mapping views associated with the lungroup with ID [{lg}]", 0),
        // A refusal is told in the array's own words.
        Row("removeLunGroupAssociatedToMappingView",
            calling(&Z::removeLunGroupAssociatedToMappingView, "{lg}", "{mv}", kNone),
            "PUT mappingview/remove_associate", "{status}", 1)
            .guardNames("removeLunGroupToMappingView"),
        Row("deleteMappingView", calling(&Z::deleteMappingView, "{bare}", kNone), "DELETE mappingview/{bare}",
            "[ERROR] Failed to delete the mappingview with Id [{bare}]", 0)
            .emptyResponseSays("[ERROR] Empty response returned from the array")),
    RowName);

}  // namespace
}  // namespace zrtest
