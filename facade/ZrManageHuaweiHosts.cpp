// Initiators, hosts and host groups: the machines that LUNs are shown to.
#include "ConvertToString.h"
#include "HuaweiArrayCodes.h"
#include "HuaweiJSONHostRequests.h"
#include "HuaweiOpTypes.h"
#include "HuaweiVstore.h"
#include "OperationLog.h"
#include "ResourcePath.h"
#include "SecondGenerationCall.h"
#include "YbString.h"
#include "ZrManageHuawei.h"

namespace {

// The two kinds of initiator live on two resources of the same shape.
struct InitiatorKind {
  explicit InitiatorKind(bool isISCSI) : resource(isISCSI ? "iscsi_initiator" : "fc_initiator"), text(isISCSI ? "ISCSI" : "FC") {}
  const char* resource;
  const char* text;
};

const char* orEmptyWord(const std::string& hostId) { return hostId.empty() ? "EMPTY" : hostId.c_str(); }

// "filter=NAME:" and the name, unescaped, then the vStore.
ResourcePath byName(const char* resource, const std::string& name, const std::string& vstoreId) {
  return ResourcePath(resource).add("filter", "NAME:" + name).vstore(vstoreId);
}

}  // namespace

CXoError ZrManageHuawei::getInitiatorInfoFromID(_HuaweiInitiator& initiatorInfo, std::string const& initiatorId,
                                                bool const& isISCSI, std::string vstoreId) {
  HuaweiJSONGetInitiatorInfo request(m_jobId);
  std::vector<_HuaweiInitiator> initiators;
  const InitiatorKind kind(isISCSI);
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::getInitiatorInfoFromID", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::getInitiatorInfoFromID(HuaweiInitiator_t&, const string&, const bool&, std::string)");
  if (CXoError failed =
          call.open("getInitiatorInfoFromID", GuardStyle::Bare, {{&initiatorId, "The entered initiator ID is empty"}});
      failed.IsError()) {
    return failed;
  }
  const auto texts = SecondGenerationTexts::lookup("").refusedBy([&](unsigned long long code, const std::string&) {
    const char* absent = "[ERROR] The [%s] initiator information with ID [%s] does not exist";
    if (code == HuaweiArrayCode::INITIATOR_DOES_NOT_EXIST) return call.error(absent, kind.text, initiatorId.c_str());
    // The line says more than is known; the error says only what is.
    log.line(3, absent, kind.text, initiatorId.c_str());
    return call.error("[ERROR] Unable to find [%s] initiator information with ID [%s]", kind.text, initiatorId.c_str());
  });
  const PlainCall get{HUAWEI_REQ_GET, ResourcePath(kind.resource).segment(initiatorId, "initiatorId").vstore(vstoreId),
                      HuaweiOpType::GET_INITIATOR_INFO};
  if (CXoError failed = call.exchange(request, get, texts); failed.IsError()) return failed;
  request.getInitiatorInfo(initiators);
  for (const auto& initiator : initiators) {
    if (initiator.id != initiatorId) continue;
    initiatorInfo = initiator;
    log.line(0, "Found the initiator information associted with ID [%s]", initiatorId.c_str());
    return CXoError::Success();
  }
  return call.error("[ERROR] Unable to find the [%s] initiator with ID [%s].", kind.text, initiatorId.c_str());
}

CXoError ZrManageHuawei::getInitiatorInfo(std::vector<_HuaweiInitiator>& initiators, bool const& isISCSI,
                                          std::string vstoreId) {
  HuaweiJSONGetInitiatorInfo request(m_jobId);
  const InitiatorKind kind(isISCSI);
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::getInitiatorInfo", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::getInitiatorInfo(std::vector<_HuaweiInitiator>&, const bool&, std::string)");
  if (CXoError failed = call.guard("getISCSIInitiatorInfo", GuardStyle::Bare); failed.IsError()) return failed;
  // These words for both kinds.
  const PlainCall get{HUAWEI_REQ_GET, ResourcePath(kind.resource).vstore(vstoreId),
                      HuaweiOpType::GET_INITIATOR_INFO};
  if (CXoError failed =
          call.exchange(request, get, SecondGenerationTexts::lookup("[ERROR] Unable to find the ISCSI initiators"));
      failed.IsError()) {
    return failed;
  }
  request.getInitiatorInfo(initiators);
  if (initiators.empty()) return call.error("[ERROR] Unable to get the initiator information");
  log.line(0, "Successfully fetched the information for all [%s] initiators. Count [%llu]", kind.text,
           static_cast<unsigned long long>(initiators.size()));
  return CXoError::Success();
}

CXoError ZrManageHuawei::getHostIDFromInitiatorID(std::string const& initiatorId, bool const& isISCSI,
                                                  std::string& hostId, std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::getHostIDFromInitiatorID", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::getHostIDFromInitiatorID(const string&, const bool&, std::string&, std::string)");
  _HuaweiInitiator initiator;
  if (getInitiatorInfoFromID(initiator, initiatorId, isISCSI, vstoreId).IsError() || initiator.id.empty()) {
    return call.error("[ERROR] Unable to get the information for Initiator with ID [%s].", initiatorId.c_str());
  }
  // An initiator bound to no host answers an empty hostId: that is how a caller learns it is free.
  hostId = initiator.parentId;
  log.line(0, "Successfully got the Host Id [%s] associated with the initiator with ID [%s]", hostId.c_str(),
           initiatorId.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::getHostIDFromHostName(std::string const& hostName, std::string& hostId, std::string vstoreId) {
  HuaweiJSONGetHostInfo request(m_jobId);
  std::vector<_HuaweiLUNHostInfo> hosts;
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::getHostIDFromHostName", m_jobId);
  SecondGenerationCall call =
      secondGeneration(log, "CXoError ZrManageHuawei::getHostIDFromHostName(const string&, std::string&, std::string)");
  if (CXoError failed =
          call.open("getHostIDFromHostName", GuardStyle::Bare, {{&hostName, "The entered host name is empty"}});
      failed.IsError()) {
    return failed;
  }
  const PlainCall get{HUAWEI_REQ_GET, byName("host", hostName, vstoreId), HuaweiOpType::GET_HOST_ID_FROM_HOST_NAME};
  const auto texts =
      SecondGenerationTexts::lookup(YbString::Format("[ERROR] Unable to find the information for the host with name [%s]", hostName.c_str()));
  if (CXoError failed = call.exchange(request, get, texts); failed.IsError()) return failed;
  request.getHostInfo(hosts);
  for (const auto& host : hosts) {
    if (host.name != hostName) continue;
    hostId = host.id;
    log.line(0, "Successfully got the information for host:  ID: [%s] NAME: [%s]", host.id.c_str(), host.name.c_str());
    return CXoError::Success();
  }
  return call.error("[ERROR] Unable to get the information for the host with Name[%s].", hostName.c_str());
}

CXoError ZrManageHuawei::createHost(_HuaweiLUNHostInfo& hostInfo, std::string const& hostName, std::string vstoreId,
                                    bool useOsCode7) {
  _HuaweiLUNHostInfo wanted;
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::createHost", m_jobId);
  SecondGenerationCall call =
      secondGeneration(log, "CXoError ZrManageHuawei::createHost(HuaweiLUNHostInfo_t&, const string&, std::string, bool)");
  if (CXoError failed =
          call.open("createLUNSnapshot", GuardStyle::ErrorPrefix, {{&hostName, "[ERROR] The hostname is empty"}});
      failed.IsError()) {
    return failed;
  }
  wanted.name = hostName;
  wanted.operatingSystem = ConvertToString::to_string<int>(useOsCode7 ? 7 : 0);
  wanted.vstoreId = vstoreId;
  HuaweiJSONCreateHost request(m_jobId, wanted);
  bool adopted = false;
  // A host of that name is taken as the one asked for.
  const auto texts = SecondGenerationTexts::change("").refusedBy([&](unsigned long long code, const std::string&) {
    if (code != HuaweiArrayCode::NAME_ALREADY_IN_USE) {
      const std::string failure = YbString::Format("[ERROR] Unable to create host with name [%s] operating system [%s]",
                                                   hostName.c_str(), wanted.operatingSystem.c_str());
      log.line(3, "%s", failure.c_str());
      return call.error(failure);
    }
    log.line(3, "The host [%s] already exists", hostName.c_str());
    std::string existingId;
    const CXoError lookup = getHostIDFromHostName(hostName, existingId, vstoreId);
    if (lookup.IsError() || existingId.empty()) return call.errorFormattedBy(lookup);
    hostInfo = wanted;
    hostInfo.id = existingId;
    adopted = true;
    return CXoError::Success();
  });
  const CXoError result = call.exchange(request, {HUAWEI_REQ_POST, "host", HuaweiOpType::CREATE_HOST}, texts);
  if (result.IsError() || adopted) return result;
  request.getHostInfo(hostInfo);
  log.line(0, "Successfully created the host with name [%s]", hostInfo.name.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::createInitiator(_HuaweiInitiator& initiatorInfo, std::string const& initiatorId,
                                         std::string const& hostId, bool const& isISCSI, bool& alreadyExists,
                                         std::string vstoreId) {
  _HuaweiInitiator wanted;
  const InitiatorKind kind(isISCSI);
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::createInitiator", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log,
      "CXoError ZrManageHuawei::createInitiator(HuaweiInitiator_t&, const string&, const string&, const bool&, bool&, "
      "std::string)");
  if (CXoError failed = call.guard("createInitiator"); failed.IsError()) return failed;
  if (CXoError failed = call.arguments({&initiatorId}); failed.IsError()) return failed;
  wanted.id = initiatorId;
  wanted.parentId = hostId;
  wanted.vstoreId = vstoreId;
  HuaweiJSONCreateInitiator request(m_jobId, wanted);
  // An existing initiator is an error and a flag at once: the caller decides what to do with it.
  const auto texts = SecondGenerationTexts::change("").refusedBy([&](unsigned long long code, const std::string& message) {
    log.line(3, "[ERROR] Failed to create initiator with ID [%s] Host ID [%s]", initiatorId.c_str(), orEmptyWord(hostId));
    if (code == HuaweiArrayCode::INITIATOR_ALREADY_EXISTS) {
      alreadyExists = true;
      log.line(3, "The iSCSI initiator with ID [%s] already exists", initiatorId.c_str());
      return call.error("The initiator with ID[%s] already exists", initiatorId.c_str());
    }
    if (code == HuaweiArrayCode::HOST_DOES_NOT_EXIST) {
      return call.error(
          "[ERROR] The given host with ID [%s] does not exist. Specify an existing host and add the initiator to the host",
          hostId.c_str());
    }
    return call.error("[ERROR] %s", message.c_str());
  });
  const PlainCall post{HUAWEI_REQ_POST, kind.resource, HuaweiOpType::CREATE_INITIATOR};
  if (CXoError failed = call.exchange(request, post, texts); failed.IsError()) return failed;
  request.getInitiatorInfo(initiatorInfo);
  log.line(0, "Successfully created the [%s] initiator with ID [%s] Host ID [%s]", kind.text, initiatorId.c_str(),
           orEmptyWord(hostId));
  return CXoError::Success();
}

CXoError ZrManageHuawei::updateInitiatorWithHostID(std::string const& initiatorId, std::string const& hostId,
                                                   bool const& isISCSI, std::string vstoreId) {
  _HuaweiInitiator wanted;
  const InitiatorKind kind(isISCSI);
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::updateInitiatorWithHostID", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::updateInitiatorWithHostID(const string&, const string&, const bool&, std::string)");
  if (CXoError failed = call.guard("updateInitiatorWithHostID"); failed.IsError()) return failed;
  if (CXoError failed = call.arguments({&initiatorId, &hostId}); failed.IsError()) return failed;
  wanted.id = initiatorId;
  wanted.parentId = hostId;
  wanted.vstoreId = vstoreId;
  HuaweiJSONUpdateInitiator request(m_jobId, wanted);
  const auto texts = SecondGenerationTexts::change("").refusedBy([&](unsigned long long, const std::string&) {
    log.line(3, "[ERROR] Failed to associate initiator ID [%s] to Host ID [%s]", initiatorId.c_str(), hostId.c_str());
    return call.error("[ERROR] Failed to associate initiator ID[%s]  with Host ID[%s]", initiatorId.c_str(),
                      hostId.c_str());
  });
  // The vStore goes in the body only.
  const PlainCall put{HUAWEI_REQ_PUT, ResourcePath(kind.resource).segment(initiatorId, "initiatorId"),
                      HuaweiOpType::UPDATE_INITIATOR_WITH_HOST_ID};
  if (CXoError failed = call.exchange(request, put, texts); failed.IsError()) return failed;
  log.line(0, "Successfully associated the initiator with ID [%s] to the Host ID [%s]", initiatorId.c_str(),
           hostId.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::getHostGroupIDFromName(std::string const& hostGroupName, std::string& hostGroupId,
                                                std::string vstoreId) {
  HuaweiJSONGetHostGroupInfo request(m_jobId);
  std::vector<_HuaweiHostGroupInfo> groups;
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::getHostGroupIDFromName", m_jobId);
  SecondGenerationCall call =
      secondGeneration(log, "CXoError ZrManageHuawei::getHostGroupIDFromName(const string&, std::string&, std::string)");
  // The empty name speaks of a host.
  if (CXoError failed =
          call.open("getHostGroupIDFromName", GuardStyle::Bare, {{&hostGroupName, "The entered host name is empty"}});
      failed.IsError()) {
    return failed;
  }
  const PlainCall get{HUAWEI_REQ_GET, byName("hostgroup", hostGroupName, vstoreId),
                      HuaweiOpType::GET_HOST_GROUP_ID_FROM_NAME};
  const auto texts = SecondGenerationTexts::lookup(
      YbString::Format("[ERROR] Unable to find the information for the hostgroup with name [%s]", hostGroupName.c_str()));
  if (CXoError failed = call.exchange(request, get, texts); failed.IsError()) return failed;
  request.getHostGroupInfo(groups);
  for (const auto& group : groups) {
    if (group.name != hostGroupName) continue;
    hostGroupId = group.id;
    log.line(0, "Successfully got the information for host group: ID [%s] NAME [%s]", group.id.c_str(),
             group.name.c_str());
    return CXoError::Success();
  }
  return call.error("[ERROR] Unable to get the information for the host group with Name[%s].", hostGroupName.c_str());
}

CXoError ZrManageHuawei::createHostGroup(_HuaweiHostGroupInfo& hostGroupInfo, std::string const& hostGroupName,
                                         std::string vstoreId) {
  _HuaweiHostGroupInfo wanted;
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::createHostGroup", m_jobId);
  SecondGenerationCall call =
      secondGeneration(log, "CXoError ZrManageHuawei::createHostGroup(HuaweiHostGroupInfo_t&, const string&, std::string)");
  if (CXoError failed =
          call.open("createHostGroup", GuardStyle::ErrorPrefix, {{&hostGroupName, "[ERROR] The hostgroup name is empty"}});
      failed.IsError()) {
    return failed;
  }
  wanted.name = hostGroupName;
  wanted.vstoreId = vstoreId;
  HuaweiJSONCreateHostGroup request(m_jobId, wanted);
  bool adopted = false;
  // A group of that name is taken as the one asked for; the caller's vstoreName stays as it was.
  const auto texts = SecondGenerationTexts::change("").refusedBy([&](unsigned long long code, const std::string&) {
    if (code != HuaweiArrayCode::NAME_ALREADY_IN_USE) {
      const std::string failure = YbString::Format("[ERROR] Unable to create hostgroup with name [%s]", hostGroupName.c_str());
      log.line(3, "%s", failure.c_str());
      return call.error(failure);
    }
    log.line(3, "The hostgroup with Name [%s] already exists", hostGroupName.c_str());
    std::string existingId;
    const CXoError lookup = getHostGroupIDFromName(hostGroupName, existingId, vstoreId);
    if (lookup.IsError() || existingId.empty()) return call.errorFormattedBy(lookup);
    hostGroupInfo.id = existingId;
    hostGroupInfo.name = hostGroupName;
    hostGroupInfo.vstoreId = vstoreId;
    adopted = true;
    return CXoError::Success();
  });
  const CXoError result = call.exchange(request, {HUAWEI_REQ_POST, "hostgroup", HuaweiOpType::CREATE_HOST_GROUP}, texts);
  if (result.IsError() || adopted) return result;
  request.getHostGroupInfo(hostGroupInfo);
  log.line(0, "Successfully created the hostgroup with Name [%s] ID [%s]", hostGroupInfo.name.c_str(),
           hostGroupInfo.id.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::addHostToHostGroup(std::string const& hostGroupId, std::string const& hostId,
                                            std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::addHostToHostGroup", m_jobId);
  SecondGenerationCall call =
      secondGeneration(log, "CXoError ZrManageHuawei::addHostToHostGroup(const string&, const string&, std::string)");
  if (CXoError failed = call.guard("addHostToHostGroup"); failed.IsError()) return failed;
  if (CXoError failed = call.arguments({&hostGroupId, &hostId}); failed.IsError()) return failed;
  HuaweiJSONAssociateHostWithHostGroup request(m_jobId, hostId, hostGroupId,
                                               HuaweiApiValue::OBJECT_TYPE_HOST.getValue(), vstoreId);
  bool already = false;
  const auto texts = SecondGenerationTexts::change("").refusedBy([&](unsigned long long code, const std::string&) {
    if (code == HuaweiArrayCode::HOST_ALREADY_IN_GROUP) {
      log.line(0, "The host [%s] is already associated to the host group [%s]", hostId.c_str(), hostGroupId.c_str());
      already = true;
      return CXoError::Success();
    }
    const char* failure = "[ERROR] Failed to associate Host [%s] with Host Group [%s]";
    log.line(3, failure, hostId.c_str(), hostGroupId.c_str());
    return call.error(failure, hostId.c_str(), hostGroupId.c_str());
  });
  const PlainCall post{HUAWEI_REQ_POST, "hostgroup/associate", HuaweiOpType::HOST_GROUP_MEMBERSHIP};
  const CXoError result = call.exchange(request, post, texts);
  if (result.IsError() || already) return result;
  log.line(0, "Successfully associated the Host [%s] with Host Group [%s]", hostId.c_str(), hostGroupId.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::getHostAssociatedToHostGroup(std::string const& hostGroupId,
                                                      std::vector<_HuaweiLUNHostInfo>& hosts, std::string vstoreId) {
  HuaweiJSONGetHostAssociatedWithHostGroup request(m_jobId);
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::getHostAssociatedToHostGroup", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log,
      "CXoError ZrManageHuawei::getHostAssociatedToHostGroup(const string&, std::vector<_HuaweiLUNHostInfo>&, std::string)");
  if (CXoError failed = call.guard("getHostAssociatedToHostGroup"); failed.IsError()) return failed;
  if (CXoError failed = call.arguments({&hostGroupId}); failed.IsError()) return failed;
  const std::string failure = YbString::Format("[ERROR] Failed to get the hosts associated with the Host Group [%s]", hostGroupId.c_str());
  const auto texts = SecondGenerationTexts::change("").refusedBy([&](unsigned long long, const std::string&) {
    log.line(3, "%s", failure.c_str());
    return call.error(failure);
  });
  const PlainCall get{HUAWEI_REQ_GET,
                      ResourcePath("host/associate")
                          .add("ASSOCIATEOBJID", hostGroupId)
                          .add("ASSOCIATEOBJTYPE", HuaweiApiValue::OBJECT_TYPE_HOSTGROUP.getValue())
                          .vstore(vstoreId),
                      HuaweiOpType::HOST_GROUP_MEMBERSHIP};
  if (CXoError failed = call.exchange(request, get, texts); failed.IsError()) return failed;
  request.getHostInfo(hosts);
  if (hosts.empty()) {
    log.line(0, "No hosts has been associated with the Host Group [%s] yet", hostGroupId.c_str());
  } else {
    log.line(0, "Successfully got the hosts associated with the Host Group [%s]. Count [%llu]", hostGroupId.c_str(),
             static_cast<unsigned long long>(hosts.size()));
  }
  return CXoError::Success();
}

CXoError ZrManageHuawei::isHostAssociatedToHostGroup(std::string const& hostGroupId, std::string const& hostId,
                                                     std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::isHostAssociatedToHostGroup", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::isHostAssociatedToHostGroup(const string&, const string&, std::string)");
  if (CXoError failed = call.arguments({&hostGroupId, &hostId}); failed.IsError()) return failed;
  std::vector<_HuaweiLUNHostInfo> hosts;
  // An empty group fails with the text of the inner success, which is empty.
  const CXoError listed = getHostAssociatedToHostGroup(hostGroupId, hosts, vstoreId);
  if (listed.IsError() || hosts.empty()) return call.errorFormattedBy(listed);
  for (const auto& host : hosts) {
    if (host.id != hostId) continue;
    log.line(0, "The host [%s] is associated to the hostgroup [%s]", hostId.c_str(), hostGroupId.c_str());
    return CXoError::Success();
  }
  return call.error("[ERROR] Unable to find the host [%s] associated with the host group [%s].", hostId.c_str(),
                    hostGroupId.c_str());
}
