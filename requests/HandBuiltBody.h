#pragma once

#include <string>

#include "RequestPlacement.h"

// The body of a plain request, concatenated by hand: {"K1":"v1", "K2":"v2" } with one blank
// behind each comma and one in front of the closing brace. Values are escaped as JSON strings, so
// that ordinary ones go out as they stand and none can add a member.
class HandBuiltBody {
 public:
  HandBuiltBody& add(const char* key, const std::string& value) { return member(", ", key, value); }
  // A member in a piece of its own, its comma behind a blank: {"K1":"v1" ,"K2":"v2" }. Bodies that
  // append optional members write them so.
  HandBuiltBody& addPiece(const char* key, const std::string& value) { return member(" ,", key, value); }
  std::string str() const { return m_text.empty() ? std::string("{ }") : m_text + " }"; }

 private:
  HandBuiltBody& member(const char* separator, const char* key, const std::string& value) {
    m_text += m_text.empty() ? "{" : separator;
    m_text += "\"";
    m_text += key;
    m_text += "\":\"";
    m_text += RequestPlacement::jsonString(value);
    m_text += "\"";
    return *this;
  }

  std::string m_text;
};

#include "HuaweiVstore.h"

// Pieces of bodies whose blanks and commas stand apart from the members: `"K":"v"`, a bare
// number `"K":7`, and the vStore piece `,"vstoreId":"v" ` (with its blank), which is left out for
// no vStore. Values are placed as in HandBuiltBody.
namespace HandBuiltPiece {

inline std::string quoted(const char* key, const std::string& value) {
  return std::string("\"") + key + "\":\"" + RequestPlacement::jsonString(value) + "\"";
}

// A value the array reads as a number; text that is no number goes quoted.
inline std::string bare(const char* key, const std::string& value) {
  return std::string("\"") + key + "\":" + RequestPlacement::jsonNumberOrString(value);
}

inline std::string vstore(const std::string& vstoreId) {
  return HuaweiVstore::isNone(vstoreId) ? std::string() : ",\"vstoreId\":\"" + RequestPlacement::jsonString(vstoreId) + "\" ";
}

// The body that ties an object to its owner: {"ID":"owner", "ASSOCIATEOBJID":"object",
// "ASSOCIATEOBJTYPE":type} with the vStore piece right before the brace.
inline std::string association(const std::string& ownerId, const std::string& objectId, const std::string& objectTypeText,
                               const std::string& vstoreId) {
  return "{" + quoted("ID", ownerId) + ", " + quoted("ASSOCIATEOBJID", objectId) + ", " +
         bare("ASSOCIATEOBJTYPE", objectTypeText) + vstore(vstoreId) + "}";
}

}  // namespace HandBuiltPiece
