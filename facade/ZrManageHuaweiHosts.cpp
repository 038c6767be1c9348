// Initiators, hosts and host groups: the machines that LUNs are shown to.
#include "AdoptionByName.h"
#include "AssociationResource.h"
#include "ConvertToString.h"
#include "ExactRecord.h"
#include "FormatArguments.h"
#include "HandBuiltBody.h"
#include "HuaweiArrayCodes.h"
#include "HuaweiJSONHostRequests.h"
#include "HuaweiOpTypes.h"
#include "HuaweiVstore.h"
#include "OperationLog.h"
#include "ResourcePath.h"
#include "SecondGenerationCall.h"
#include "YbString.h"
#include "ZrManageHuawei.h"

using HandBuiltPiece::association;
using HandBuiltPiece::quoted;
using HandBuiltPiece::vstore;
using HuaweiResponse::sanIdentityRules;
using HuaweiResponse::sanRules;
using PlainCalls::get;
using PlainCalls::post;
using PlainCalls::put;

namespace {

// The two kinds of initiator live on two resources of the same shape.
struct InitiatorKind {
  explicit InitiatorKind(bool isISCSI)
      : resource(isISCSI ? "iscsi_initiator" : "fc_initiator"), text(isISCSI ? "ISCSI" : "FC") {}
  const char* resource;
  const char* text;
};

// One initiator of a kind.
struct Initiator : InitiatorKind {
  Initiator(bool isISCSI, const std::string& initiatorId) : InitiatorKind(isISCSI), id(initiatorId) {}
  // A text about it: a format of the kind's word, then the ID.
  std::string said(const char* format) const { return formatted(format, text, id); }
  ResourcePath path() const { return ResourcePath(resource).segment(id, "initiatorId"); }
  const std::string& id;
};

// The creation of an initiator, bound to the host when one is given.
RecordRequest<_HuaweiInitiator> initiatorCreation(_HuaweiInitiator& created, const std::string& initiatorId,
                                                  const std::string& hostId, const std::string& vstoreId) {
  _HuaweiInitiator wanted;
  wanted.id = initiatorId;
  wanted.parentId = hostId;
  wanted.vstoreId = vstoreId;
  const std::string parent = hostId.empty() ? std::string() : "," + quoted("PARENTID", hostId) + " ";
  return RecordRequest(created, sanRules("HuaweiJSONCreateInitiator::parseResponse"),
                       "{" + quoted("ID", initiatorId) + " " + parent + vstore(vstoreId) + "}", wanted);
}

const char* orEmptyWord(const std::string& hostId) { return hostId.empty() ? "EMPTY" : hostId.c_str(); }

}  // namespace

CXoError ZrManageHuawei::getInitiatorInfoFromID(_HuaweiInitiator& initiatorInfo, std::string const& initiatorId,
                                                bool const& isISCSI, std::string vstoreId) {
  std::vector<_HuaweiInitiator> initiators;
  const Initiator initiator(isISCSI, initiatorId);
  const std::string absent = initiator.said("[ERROR] The [%s] initiator information with ID [%s] does not exist");
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::getInitiatorInfoFromID(HuaweiInitiator_t&, const string&, const bool&, "
             "std::string)")
      .required(initiatorId, "The entered initiator ID is empty")
      .sends(HuaweiJSONGetInitiatorInfo(initiators),
             get(initiator.path().vstore(vstoreId), HuaweiOpType::GET_INITIATOR_INFO),
             SecondGenerationTexts::lookup(""))
      // The line says more than is known; the error says only what is.
      .reacting({on(HuaweiArrayCode::INITIATOR_DOES_NOT_EXIST).fails(absent),
                 otherwise().line(3, absent).fails(
                     initiator.said("[ERROR] Unable to find [%s] initiator information with ID [%s]"))})
      .runFinding(initiators, &_HuaweiInitiator::id, initiatorId, Listed::Any,
                  initiator.said("[ERROR] Unable to find the [%s] initiator with ID [%s]."), initiatorInfo,
                  "Found the initiator information associted with ID [%s]", &_HuaweiInitiator::id);
}

CXoError ZrManageHuawei::getInitiatorInfo(std::vector<_HuaweiInitiator>& initiators, bool const& isISCSI,
                                          std::string vstoreId) {
  const InitiatorKind kind(isISCSI);
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::getInitiatorInfo(std::vector<_HuaweiInitiator>&, const bool&, std::string)")
      .guard("getISCSIInitiatorInfo")
      // These words for both kinds.
      .sends(HuaweiJSONGetInitiatorInfo(initiators),
             get(ResourcePath(kind.resource).vstore(vstoreId), HuaweiOpType::GET_INITIATOR_INFO),
             SecondGenerationTexts::lookup("[ERROR] Unable to find the ISCSI initiators"))
      .run([&](SecondGenerationCall& call) {
        if (initiators.empty()) return call.error("[ERROR] Unable to get the initiator information");
        call.line(0, "Successfully fetched the information for all [%s] initiators. Count [%llu]", kind.text,
                  static_cast<unsigned long long>(initiators.size()));
        return CXoError::Success();
      });
}

CXoError ZrManageHuawei::getHostIDFromInitiatorID(std::string const& initiatorId, bool const& isISCSI,
                                                  std::string& hostId, std::string vstoreId) {
  SecondGenerationCall call = qualifiedSecondGeneration(
      "CXoError ZrManageHuawei::getHostIDFromInitiatorID(const string&, const bool&, std::string&, std::string)");
  _HuaweiInitiator initiator;
  if (getInitiatorInfoFromID(initiator, initiatorId, isISCSI, vstoreId).IsError() || initiator.id.empty()) {
    return call.error("[ERROR] Unable to get the information for Initiator with ID [%s].", initiatorId);
  }
  // An initiator bound to no host answers an empty hostId: that is how a caller learns it is free.
  hostId = initiator.parentId;
  call.line(0, "Successfully got the Host Id [%s] associated with the initiator with ID [%s]", hostId, initiatorId);
  return CXoError::Success();
}

CXoError ZrManageHuawei::getHostIDFromHostName(std::string const& hostName, std::string& hostId, std::string vstoreId) {
  std::vector<_HuaweiLUNHostInfo> hosts;
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::getHostIDFromHostName(const string&, std::string&, std::string)")
      .required(hostName, "The entered host name is empty")
      .sends(
          RecordListRequest(hosts, sanRules("HuaweiJSONGetHostInfo::parseResponse")),
          get(filtered("host", "NAME", hostName, vstoreId), HuaweiOpType::GET_HOST_ID_FROM_HOST_NAME),
          SecondGenerationTexts::lookup("[ERROR] Unable to find the information for the host with name [%s]", hostName))
      .runFinding(hosts, hostName, "[ERROR] Unable to get the information for the host with Name[%s].", hostId,
                  "Successfully got the information for host:  ID: [%s] NAME: [%s]", &_HuaweiLUNHostInfo::id,
                  &_HuaweiLUNHostInfo::name);
}

CXoError ZrManageHuawei::createHost(_HuaweiLUNHostInfo& hostInfo, std::string const& hostName, std::string vstoreId,
                                    bool useOsCode7) {
  _HuaweiLUNHostInfo wanted = namedRecord<_HuaweiLUNHostInfo>(hostName, vstoreId);
  wanted.operatingSystem = ConvertToString::to_string<int>(useOsCode7 ? 7 : 0);
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::createHost(HuaweiLUNHostInfo_t&, const string&, std::string, bool)")
      .guard("createLUNSnapshot")
      .required(hostName, "[ERROR] The hostname is empty")
      .sendsRefusedAs(
          RecordRequest(hostInfo, sanRules("HuaweiJSONCreateHost::parseResponse"),
                        "{" + quoted("NAME", hostName) + ", " + quoted("OPERATIONSYSTEM", wanted.operatingSystem) +
                            " " + vstore(vstoreId) + "}",
                        wanted),
          post("host", HuaweiOpType::CREATE_HOST),
          formatted("[ERROR] Unable to create host with name [%s] operating system [%s]", hostName,
                    wanted.operatingSystem))
      .adoptingNamed(
          formatted("The host [%s] already exists", hostName),
          AdoptionByName(*this, &ZrManageHuawei::getHostIDFromHostName, hostInfo, wanted, Rendering::AsFormat))
      .runTelling("Successfully created the host with name [%s]", hostInfo.name);
}

CXoError ZrManageHuawei::createInitiator(_HuaweiInitiator& initiatorInfo, std::string const& initiatorId,
                                         std::string const& hostId, bool const& isISCSI, bool& alreadyExists,
                                         std::string vstoreId) {
  const InitiatorKind kind(isISCSI);
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::createInitiator(HuaweiInitiator_t&, const string&, const string&, const bool&, "
             "bool&, std::string)")
      .required({&initiatorId})
      // An existing initiator is an error and a flag at once: the caller decides what to do with it.
      .sendsInArrayWords(
          initiatorCreation(initiatorInfo, initiatorId, hostId, vstoreId),
          post(kind.resource, HuaweiOpType::CREATE_INITIATOR),
          {on(HuaweiArrayCode::INITIATOR_ALREADY_EXISTS)
               .setting(alreadyExists)
               .line(3, formatted("The iSCSI initiator with ID [%s] already exists", initiatorId))
               .fails(formatted("The initiator with ID[%s] already exists", initiatorId)),
           on(HuaweiArrayCode::HOST_DOES_NOT_EXIST)
               .fails(formatted("[ERROR] The given host with ID [%s] does not exist. Specify an existing host and add "
                                "the initiator to the host",
                                hostId))},
          formatted("[ERROR] Failed to create initiator with ID [%s] Host ID [%s]", initiatorId, orEmptyWord(hostId)))
      .runTelling("Successfully created the [%s] initiator with ID [%s] Host ID [%s]", kind.text, initiatorId,
                  orEmptyWord(hostId));
}

CXoError ZrManageHuawei::updateInitiatorWithHostID(std::string const& initiatorId, std::string const& hostId,
                                                   bool const& isISCSI, std::string vstoreId) {
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::updateInitiatorWithHostID(const string&, const string&, const bool&, "
             "std::string)")
      .required({&initiatorId, &hostId})
      // The vStore goes in the body only; refusals are logged at level -1.
      .sendsRefusedAs(
          StatusRequest("HuaweiJSONUpdateInitiator::parseResponse",
                        "{" + quoted("PARENTID", hostId) + " " + vstore(vstoreId) + "}",
                        {HuaweiResponse::CodeWidth::Signed32, -1}),
          put(Initiator(isISCSI, initiatorId).path(), HuaweiOpType::UPDATE_INITIATOR_WITH_HOST_ID),
          {formatted("[ERROR] Failed to associate initiator ID [%s] to Host ID [%s]", initiatorId, hostId),
           formatted("[ERROR] Failed to associate initiator ID[%s]  with Host ID[%s]", initiatorId, hostId)})
      .runTelling("Successfully associated the initiator with ID [%s] to the Host ID [%s]", initiatorId, hostId);
}

CXoError ZrManageHuawei::getHostGroupIDFromName(std::string const& hostGroupName, std::string& hostGroupId,
                                                std::string vstoreId) {
  std::vector<_HuaweiHostGroupInfo> groups;
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::getHostGroupIDFromName(const string&, std::string&, std::string)")
      // The empty name speaks of a host.
      .required(hostGroupName, "The entered host name is empty")
      .sends(RecordListRequest(groups, sanRules("HuaweiJSONGetHostGroupInfo::parseResponse")),
             get(filtered("hostgroup", "NAME", hostGroupName, vstoreId), HuaweiOpType::GET_HOST_GROUP_ID_FROM_NAME),
             SecondGenerationTexts::lookup("[ERROR] Unable to find the information for the hostgroup with name [%s]",
                                           hostGroupName))
      .runFinding(groups, hostGroupName, "[ERROR] Unable to get the information for the host group with Name[%s].",
                  hostGroupId, "Successfully got the information for host group: ID [%s] NAME [%s]",
                  &_HuaweiHostGroupInfo::id, &_HuaweiHostGroupInfo::name);
}

CXoError ZrManageHuawei::createHostGroup(_HuaweiHostGroupInfo& hostGroupInfo, std::string const& hostGroupName,
                                         std::string vstoreId) {
  const auto wanted = namedRecord<_HuaweiHostGroupInfo>(hostGroupName, vstoreId);
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::createHostGroup(HuaweiHostGroupInfo_t&, const string&, std::string)")
      .required(hostGroupName, "[ERROR] The hostgroup name is empty")
      // The answer gives the new group's ID and NAME; the vStore stays as sent.
      .sendsRefusedAs(RecordRequest(hostGroupInfo, sanIdentityRules("HuaweiJSONCreateHostGroup::parseResponse"),
                                    "{" + quoted("NAME", hostGroupName) + " " + vstore(vstoreId) + "}", wanted),
                      post("hostgroup", HuaweiOpType::CREATE_HOST_GROUP),
                      formatted("[ERROR] Unable to create hostgroup with name [%s]", hostGroupName))
      // A group of that name is taken as the one asked for; the caller's vstoreName stays as it was.
      .adoptingNamed(formatted("The hostgroup with Name [%s] already exists", hostGroupName),
                     AdoptionByName(*this, &ZrManageHuawei::getHostGroupIDFromName, hostGroupInfo,
                                    renamedAs(hostGroupInfo, wanted), Rendering::AsFormat))
      .runTelling("Successfully created the hostgroup with Name [%s] ID [%s]", hostGroupInfo.name, hostGroupInfo.id);
}

CXoError ZrManageHuawei::addHostToHostGroup(std::string const& hostGroupId, std::string const& hostId,
                                            std::string vstoreId) {
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::addHostToHostGroup(const string&, const string&, std::string)")
      .required({&hostGroupId, &hostId})
      .sendsRefusedAs(
          StatusRequest("HuaweiJSONAssociateHostWithHostGroup::parseResponse",
                        association(hostGroupId, hostId, HuaweiApiValue::OBJECT_TYPE_HOST.getValue(), vstoreId)),
          post("hostgroup/associate", HuaweiOpType::HOST_GROUP_MEMBERSHIP),
          formatted("[ERROR] Failed to associate Host [%s] with Host Group [%s]", hostId, hostGroupId),
          {on(HuaweiArrayCode::HOST_ALREADY_IN_GROUP)
               .line(0, formatted("The host [%s] is already associated to the host group [%s]", hostId, hostGroupId))
               .done()})
      .runTelling("Successfully associated the Host [%s] with Host Group [%s]", hostId, hostGroupId);
}

CXoError ZrManageHuawei::getHostAssociatedToHostGroup(std::string const& hostGroupId,
                                                      std::vector<_HuaweiLUNHostInfo>& hosts, std::string vstoreId) {
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::getHostAssociatedToHostGroup(const string&, std::vector<_HuaweiLUNHostInfo>&, "
             "std::string)")
      .listsHeldBy(RecordListRequest(hosts, sanRules("HuaweiJSONGetHostAssociatedWithHostGroup::parseResponse",
                                                     HuaweiResponse::WithoutData::Status)),
                   {"host/associate", hostGroupId, HuaweiApiValue::OBJECT_TYPE_HOSTGROUP, vstoreId},
                   HuaweiOpType::HOST_GROUP_MEMBERSHIP,
                   "[ERROR] Failed to get the hosts associated with the Host Group [%s]")
      .runCounting(hosts, "No hosts has been associated with the Host Group [%s] yet",
                   "Successfully got the hosts associated with the Host Group [%s]. Count [%llu]");
}

CXoError ZrManageHuawei::isHostAssociatedToHostGroup(std::string const& hostGroupId, std::string const& hostId,
                                                     std::string vstoreId) {
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::isHostAssociatedToHostGroup(const string&, const string&, std::string)")
      .unguarded()
      .required({&hostGroupId, &hostId})
      // An empty group fails with the text of the inner success, which is empty.
      .runHolding(
          *this, &ZrManageHuawei::getHostAssociatedToHostGroup, hostGroupId, vstoreId, hostId, Rendering::AsFormat,
          formatted("[ERROR] Unable to find the host [%s] associated with the host group [%s].", hostId, hostGroupId),
          formatted("The host [%s] is associated to the hostgroup [%s]", hostId, hostGroupId));
}
