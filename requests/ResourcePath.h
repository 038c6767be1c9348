// The resource and query of a request, assembled from named pieces in the forms the array takes.
// Values go in as they stand, without URL encoding, as the array expects them.
//
//   ResourcePath("cifshare").add("filter", "NAME:" + name).vstore(v)   cifshare?filter=NAME:x&vstoreId=7
//   ResourcePath("fssnapshot").id(id).vstore(v)                         fssnapshot/12?vstoreId=7
//   ResourcePath("nfshare").add("filter", "FSID:12").add("range", "[0-1]").bareVstore(v)
//                                                                       nfshare?filter=FSID:12&range=[0-1]&7
//   ResourcePath("lun").id("12").openQuery().add("filter", "NAME::p")   lun/12?&filter=NAME::p
//   ResourcePath("lun").openQuery()                                     lun?
#pragma once

#include <string>

#include "HuaweiVstore.h"

class ResourcePath {
 public:
  explicit ResourcePath(std::string resource) : m_text(std::move(resource)) {}

  // "/<id>" behind the resource; nothing for an empty id.
  ResourcePath& id(const std::string& objectId) {
    if (!objectId.empty()) m_text += "/" + objectId;
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
    m_text += value;
    return *this;
  }
  // A piece already in "key=value" form (or several joined by "&"), opened like add().
  ResourcePath& raw(const std::string& piece) {
    separate();
    m_text += piece;
    return *this;
  }
  // The vStore as a query key; nothing for the system's "no vStore".
  ResourcePath& vstore(const std::string& vstoreId) {
    if (HuaweiVstore::isNone(vstoreId)) return *this;
    m_text += m_open ? "&vstoreId=" : "?vstoreId=";
    m_text += vstoreId;
    m_open = true;
    return *this;
  }
  // The vStore as a bare piece without a key, "&<id>", as the share lookup by file system sends it.
  ResourcePath& bareVstore(const std::string& vstoreId) {
    if (!HuaweiVstore::isNone(vstoreId)) m_text += "&" + vstoreId;
    return *this;
  }

  const std::string& str() const { return m_text; }
  operator const std::string&() const { return m_text; }

 private:
  void separate() {
    m_text += m_open ? "&" : "?";
    m_open = true;
  }

  std::string m_text;
  bool m_open = false;
};
