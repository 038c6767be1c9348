#pragma once

#include <string>

// A resource with a query string assembled from named pieces: "res?k1=v1&k2=v2". Values go in
// as they stand, without URL encoding, as the array expects them.
class ResourcePath {
 public:
  explicit ResourcePath(std::string resource) : m_text(std::move(resource)) {}
  ResourcePath& add(const char* key, const std::string& value) {
    m_text += m_hasQuery ? "&" : "?";
    m_text += key;
    m_text += "=";
    m_text += value;
    m_hasQuery = true;
    return *this;
  }
  const std::string& str() const { return m_text; }

 private:
  std::string m_text;
  bool m_hasQuery = false;
};
