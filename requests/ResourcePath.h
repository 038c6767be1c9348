// The resource and query of a request, assembled from named pieces in the forms the array takes.
// Every value meets its place through RequestPlacement: query values are percent-encoded where
// they would change the query, identifiers become exactly one path segment or are refused. The
// values of ordinary names and identifiers come out as they stand.
//
//   ResourcePath("cifshare").add("filter", "NAME:" + name).vstore(v)   cifshare?filter=NAME:x&vstoreId=7
//   ResourcePath("fssnapshot").segment(id, "snapshotId").vstore(v)      fssnapshot/12?vstoreId=7
//   ResourcePath("nfshare").add("filter", "FSID:12").add("range", "[0-1]").bareVstore(v)
//                                                                       nfshare?filter=FSID:12&range=[0-1]&7
//   ResourcePath("lun").id("12", "lun").openQuery().add("filter", "NAME::p")
//                                                                       lun/12?&filter=NAME::p
//   ResourcePath("lun").openQuery()                                     lun?
//   ResourcePath("lun").segment("12#", "lunId")                         lun/12%23
//   ResourcePath("lun").segment("../x", "lunId")                        refused: never sent
#pragma once

#include <string>

#include "HuaweiVstore.h"
#include "RequestPlacement.h"

// Query pieces "K1=v1&K2=v2" with each value placed, for a self-describing request's filter.
class QueryPieces {
 public:
  QueryPieces& add(const char* key, const std::string& value) {
    if (!m_text.empty()) m_text += "&";
    m_text += key;
    m_text += "=";
    m_text += RequestPlacement::queryValue(value);
    return *this;
  }
  const std::string& str() const { return m_text; }

 private:
  std::string m_text;
};

class ResourcePath {
 public:
  // A fixed resource of the library's own, such as "hostgroup/associate".
  ResourcePath(const char* resource) : m_text(resource) {}  // NOLINT: fixed texts convert freely
  explicit ResourcePath(std::string resource) : m_text(std::move(resource)) {}

  // "/<id>" behind the resource; nothing for an empty id. `argument` names the value if it is refused.
  ResourcePath& id(const std::string& objectId, const std::string& argument) {
    return objectId.empty() ? *this : segment(objectId, argument);
  }
  // "/<value>", a required identifier: an empty one is refused like any that is no single segment.
  ResourcePath& segment(const std::string& value, const std::string& argument) {
    if (const char* reason = RequestPlacement::pathSegmentRefusal(value)) {
      if (!m_refusal.refused()) m_refusal = PlacementRefusal(argument, reason);
      return *this;
    }
    m_text += "/" + RequestPlacement::pathSegment(value);
    return *this;
  }
  // "?" now, whatever follows: every later piece then opens with "&" (the self-describing form).
  ResourcePath& openQuery() {
    m_text += "?";
    m_open = true;
    return *this;
  }
  // "?key=value" as the first piece, "&key=value" after.
  ResourcePath& add(const char* key, const std::string& value) {
    separate();
    m_text += key;
    m_text += "=";
    m_text += RequestPlacement::queryValue(value);
    return *this;
  }
  // Pieces already placed, such as a QueryPieces text, opened like add().
  ResourcePath& raw(const std::string& placedPieces) {
    separate();
    m_text += placedPieces;
    return *this;
  }
  // The vStore as a query key; nothing for the system's "no vStore".
  ResourcePath& vstore(const std::string& vstoreId) {
    if (HuaweiVstore::isNone(vstoreId)) return *this;
    m_text += m_open ? "&vstoreId=" : "?vstoreId=";
    m_text += RequestPlacement::queryValue(vstoreId);
    m_open = true;
    return *this;
  }
  // The vStore as a bare piece without a key, "&<id>", as the share lookup by file system sends it.
  ResourcePath& bareVstore(const std::string& vstoreId) {
    if (!HuaweiVstore::isNone(vstoreId)) m_text += "&" + RequestPlacement::queryValue(vstoreId);
    return *this;
  }

  // The text to send; meaningless when refused().
  const std::string& str() const { return m_text; }
  // The first value that could not take its place; a refused path is never sent.
  const PlacementRefusal& refusal() const { return m_refusal; }

 private:
  void separate() {
    m_text += m_open ? "&" : "?";
    m_open = true;
  }

  std::string m_text;
  bool m_open = false;
  PlacementRefusal m_refusal;
};
