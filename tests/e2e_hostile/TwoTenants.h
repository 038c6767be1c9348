// Two tenants of one array, seeded straight into the simulator. Tenant A (vStore 1) owns objects
// numbered 11, tenant B (vStore 2) the same objects numbered 22, so a hostile value aimed at B
// reads "22": a file system each, with a snapshot; a CIFS and an NFS share of it, with a grant
// each; a LUN with a snapshot LUN; a host with an iSCSI initiator, in a host group; a LUN group
// holding the LUN and the snapshot; a mapping view of both groups; a clone of the LUN with a
// secondary LUN. A also owns a CIFS share named "shareB#" (12) and a second snapshot of its file
// system, for change lists.
#pragma once

#include <set>
#include <string>
#include <utility>

#include "ArrayClientTest.h"

namespace zrtest {

constexpr const char* kTenantA = "1";
constexpr const char* kTenantB = "2";

inline void SeedTenant(arraysim::ArraySimulator& sim, const std::string& vstore, const std::string& n) {
  auto& store = sim.store();
  const auto add = [&](const char* type, nlohmann::json record) {
    if (!record.contains("ID")) record["ID"] = n;
    record["vstoreId"] = vstore;
    store.insert(type, std::move(record));
  };
  const std::string fs = "fs" + n, tag = "-" + n;
  sim.fileSystems().create(fs, FileSystemOf(n, vstore));
  sim.files(n).writeFile("/a.txt", 1);
  sim.fileSystemSnapshots().take(n, "base" + tag);
  sim.files(n).writeFile("/b.txt", 2);
  sim.fileSystemSnapshots().take(n, "incremental" + tag);

  add("cifshare", {{"NAME", "share" + tag}, {"SHAREPATH", "/" + fs + "/"}, {"FSID", n}});
  add("nfshare", {{"NAME", "/" + fs}, {"SHAREPATH", "/" + fs}, {"FSID", n}});
  add("CIFS_SHARE_AUTH_CLIENT", {{"NAME", "user" + tag}, {"PARENTID", n}, {"PERMISSION", "1"}, {"DOMAINTYPE", "0"}});
  add("NFS_SHARE_AUTH_CLIENT", {{"NAME", "*"}, {"PARENTID", n}, {"ACCESSVAL", "1"}, {"SYNC", "0"},
                                {"ALLSQUASH", "1"}, {"ROOTSQUASH", "1"}});
  add("lun", {{"NAME", "lun" + tag}, {"PARENTID", "0"}, {"RUNNINGSTATUS", "27"}, {"CAPACITY", "2097152"},
              {"SPLITMIRRORIDS", "[\"" + n + "\"]"}});
  add("snapshot", {{"NAME", "snap" + tag}, {"PARENTID", n}, {"PARENTNAME", "lun" + tag}, {"RUNNINGSTATUS", "43"}});
  add("host", {{"NAME", "host" + tag}, {"OPERATIONSYSTEM", "0"}});
  add("iscsi_initiator", {{"NAME", "port" + tag}, {"PARENTID", n}, {"PARENTNAME", "host" + tag}, {"ISFREE", "false"}});
  add("hostgroup", {{"NAME", "hosts" + tag}});
  add("lungroup", {{"NAME", "luns" + tag}, {"APPTYPE", "0"}});
  add("mappingview", {{"NAME", "view" + tag}});
  add("splitmirror", {{"NAME", "clone" + tag}, {"PRILUNID", n}});
  add("splitmirrortargetlun", {{"ID", n + "1"}, {"NAME", "copy" + tag}, {"PARENTID", n}, {"SPEED", "2"},
                               {"RESUMEPOLICY", "1"}, {"RUNNINGSTATUS", "26"}, {"PROCESS", "100"}});
  for (const auto& [a, b] : {std::pair<const char*, const char*>{"hostgroup", "host"}, {"lungroup", "lun"},
                             {"lungroup", "snapshot"}, {"mappingview", "hostgroup"}, {"mappingview", "lungroup"}}) {
    store.associate({a, n}, {b, n});
  }
}

inline void SeedTwoTenants(arraysim::ArraySimulator& sim) {
  sim.store().insert("storagepool", {{"ID", "0"}, {"NAME", "pool1"}, {"PARENTID", "0"}});
  SeedTenant(sim, kTenantA, "11");
  SeedTenant(sim, kTenantB, "22");
  sim.store().insert("cifshare", {{"ID", "12"}, {"NAME", "shareB#"}, {"SHAREPATH", "/fs11/"}, {"FSID", "11"},
                                  {"vstoreId", kTenantA}});
}

// Everything of one vStore: its records with the associations that touch them, and its file-system
// snapshots. Equal before and after a call when the call left the tenant alone.
inline nlohmann::json TenantView(arraysim::ArraySimulator& sim, const std::string& vstore) {
  const auto dump = sim.store().dump();
  nlohmann::json view = {{"objects", nlohmann::json::object()}, {"associations", nlohmann::json::array()}};
  std::set<std::pair<std::string, std::string>> owned;
  for (const auto& [type, records] : dump["objects"].items()) {
    for (const auto& [id, record] : records.items()) {
      if (record.value("vstoreId", "") != vstore) continue;
      view["objects"][type][id] = record;
      owned.emplace(type, id);
    }
  }
  for (const auto& link : dump["associations"]) {
    if (owned.count({link[0], link[1]}) != 0 || owned.count({link[2], link[3]}) != 0) view["associations"].push_back(link);
  }
  for (const auto& snapshot : sim.fileSystemSnapshots().list()) {
    if (snapshot.vstoreId == vstore) view["fssnapshots"].push_back(snapshot.id + " " + snapshot.name);
  }
  return view;
}

}  // namespace zrtest
