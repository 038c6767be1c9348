// The shared shape of the LUN group and mapping view operations, one row each.
#include "LunGroupAndMappingViewScene.h"
#include "OperationShape.h"

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

using Call = std::function<CXoError(ZrManageHuawei&, const ShapeScene&)>;
Invocation Second(Call call) {
  return [call](ZrManageHuawei& a, const ShapeScene& s) { return SecondGeneration(call(a, s)); };
}

// A row of an operation whose empty response, build and parse texts carry no prefix.
ShapeRow Row(const char* name, Call call, std::string send, std::string failure, Call withEmpty,
             std::string emptyText = kInvalid) {
  return ShapeRow(name, Second(call), {std::move(send)}, name, std::move(failure))
      .emptyResponseSays(kEmptyAnswer)
      .emptyArgumentSays(Second(withEmpty), std::move(emptyText));
}

std::vector<_HuaweiLUNSnapshotInfo> snapshots;
std::vector<_HuaweiLunGroupInfo> lunGroups;
std::vector<_HuaweiLUNMappingView> views;
_HuaweiLunGroupInfo lunGroup;
std::string id;

INSTANTIATE_TEST_SUITE_P(
    LunGroups, OperationShape,
    testing::Values(
        Row("getLUNGroupIDFromName", [](auto& a, auto&) { return a.getLUNGroupIDFromName("lg", id, kNone); },
            "GET lungroup?filter=NAME:lg", "[ERROR] Unable to find the information for the lungroup with name [lg]",
            [](auto& a, auto&) { return a.getLUNGroupIDFromName("", id, kNone); }, "The entered host name is empty")
            .emptyResponseSays("[ERROR] Empty response is returned from the array")
            .guardsBare(),
        Row("createLUNGroup", [](auto& a, auto&) { return a.createLUNGroup(lunGroup, "new", kNone, "0"); },
            "POST lungroup", "[ERROR] Unable to create lungroup with name [new]",
            [](auto& a, auto&) { return a.createLUNGroup(lunGroup, "", kNone, "0"); },
            "[ERROR] The hostgroup name is empty"),
        Row("addSnapshotLuntoLunGroup",
            [](auto& a, auto& s) { return a.addSnapshotLuntoLunGroup(s.at("lg"), s.at("snap2"), kNone); },
            "POST lungroup/associate", "[ERROR] Failed to associate snapshot LUN [{snap2}] with LUN Group [{lg}]",
            [](auto& a, auto& s) { return a.addSnapshotLuntoLunGroup(s.at("lg"), "", kNone); })
            .guardNames("addLuntoLunGroup"),
        Row("getSnapshotLunAssociatedToLunGroup",
            [](auto& a, auto& s) { return a.getSnapshotLunAssociatedToLunGroup(s.at("lg"), snapshots, kNone); },
            "GET snapshot/associate?ASSOCIATEOBJID={lg}&ASSOCIATEOBJTYPE=256",
            "[ERROR] Failed to get the snapshot luns associated with the Lun Group [{lg}]",
            [](auto& a, auto&) { return a.getSnapshotLunAssociatedToLunGroup("", snapshots, kNone); }),
        Row("removeSnapshotLunFromLunGroup",
            [](auto& a, auto& s) { return a.removeSnapshotLunFromLunGroup(s.at("lg"), s.at("snap"), kNone); },
            "DELETE lungroup/associate?ID={lg}&ASSOCIATEOBJID={snap}&ASSOCIATEOBJTYPE=27",
            "[ERROR] Failed to remove the lun [{snap}] from lungroup [{lg}]",
            [](auto& a, auto& s) { return a.removeSnapshotLunFromLunGroup(s.at("lg"), "", kNone); }),
        Row("deleteLunGroup", [](auto& a, auto& s) { return a.deleteLunGroup(s.at("spare"), kNone); },
            "DELETE lungroup/{spare}", "[ERROR] Failed to delete the lun group with Id [{spare}]",
            [](auto& a, auto&) { return a.deleteLunGroup("", kNone); })
            .emptyResponseSays("[ERROR] Empty response returned from the array")),
    RowName);

INSTANTIATE_TEST_SUITE_P(
    MappingViews, OperationShape,
    testing::Values(
        Row("addHostGroupToMappingView",
            [](auto& a, auto& s) { return a.addHostGroupToMappingView(s.at("hg"), s.at("bare"), kNone); },
            "PUT mappingview/create_associate", "[ERROR] Failed to associate hostgroup [{hg}] with mappingview [{bare}]",
            [](auto& a, auto& s) { return a.addHostGroupToMappingView(s.at("hg"), "", kNone); })
            .logsBeforeSending("REQUESSTT:["),
        Row("getLunGroupAssociatedToMappingView",
            [](auto& a, auto& s) { return a.getLunGroupAssociatedToMappingView(s.at("mv"), lunGroups, kNone); },
            "GET lungroup/associate?ASSOCIATEOBJID={mv}&ASSOCIATEOBJTYPE=245",
            "[ERROR] Failed to get the lun groups associated with the mappingview [{mv}]",
            [](auto& a, auto&) { return a.getLunGroupAssociatedToMappingView("", lunGroups, kNone); }),
        Row("getMappingViewAssociatedToLunGroup",
            [](auto& a, auto& s) { return a.getMappingViewAssociatedToLunGroup(s.at("lg"), views, kNone); },
            "GET mapping/associate?ASSOCIATEOBJID={lg}&ASSOCIATEOBJTYPE=256",
            "[ERROR] Failed to get the mapping views associated with the lungroup with ID [{lg}]",
            [](auto& a, auto&) { return a.getMappingViewAssociatedToLunGroup("", views, kNone); }),
        // A refusal is told in the array's own words.
        Row("removeLunGroupAssociatedToMappingView",
            [](auto& a, auto& s) { return a.removeLunGroupAssociatedToMappingView(s.at("lg"), s.at("mv"), kNone); },
            "PUT mappingview/remove_associate", "{status}",
            [](auto& a, auto& s) { return a.removeLunGroupAssociatedToMappingView(s.at("lg"), "", kNone); })
            .guardNames("removeLunGroupToMappingView"),
        Row("deleteMappingView", [](auto& a, auto& s) { return a.deleteMappingView(s.at("bare"), kNone); },
            "DELETE mappingview/{bare}", "[ERROR] Failed to delete the mappingview with Id [{bare}]",
            [](auto& a, auto&) { return a.deleteMappingView("", kNone); })
            .emptyResponseSays("[ERROR] Empty response returned from the array")),
    RowName);

}  // namespace
}  // namespace zrtest
