// A small HTTP interface under /simulator/ for driving a simulator that runs in another
// process (benchmarks that measure the client alone, scripts). No session, not recorded;
// plain JSON in and out, {"error": "..."} with status 400 when something is wrong.
//
//   GET    /simulator/health                        {"deviceId", "address", "port", "caCertPath"}
//   GET    /simulator/store                         the object store's dump (ObjectStore::dump)
//   POST   /simulator/reset
//   POST   /simulator/seed                          body: a seed (Seed.h)
//   POST   /simulator/filesystems                   {"NAME", "vstoreId"?}  -> {"id"}
//   POST   /simulator/filesystems/<id>/steps        body: file steps (Seed.h) -> {"snapshots": [...]}
//   POST   /simulator/generate                      {"name", "files", "filesPerDirectory", "fileSize",
//                                                    "created", "modified", "deleted", "vstoreId"}
//                                                    -> {"fileSystemId", "baseSnapshotId",
//                                                        "incrementalSnapshotId", "changeCount"}
//   GET    /simulator/difference?base=<id>&incremental=<id>[&list=true]  -> {"count", "changes"?}
//   PUT    /simulator/pagesize                      {"entries": n}
//   POST   /simulator/faults                        {"method", "resource", "exact", "times", "kind",
//                                                    "code", "description", "status", "body",
//                                                    "delayMs", "processed"}
//   DELETE /simulator/faults
//   GET    /simulator/requests                      [{"sequence", "method", "target", "body", "segments",
//                                                      "parameters", "members", "refusal"}, ...] (decoded)
//   DELETE /simulator/requests
#pragma once

#include "http/HttpExchange.h"

namespace arraysim {

class ArraySimulator;

class AdminApi {
 public:
  explicit AdminApi(ArraySimulator& simulator) : simulator_(simulator) {}

  HttpAnswer handle(const IncomingRequest& request);

  static constexpr const char* kRoot = "/simulator/";

 private:
  ArraySimulator& simulator_;
};

}  // namespace arraysim
