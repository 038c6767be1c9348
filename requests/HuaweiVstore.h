#pragma once

#include <string>

namespace HuaweiVstore {

// The system's value for no vStore at all: no query or body key is generated for it.
const char kNone[] = "-12345";

inline bool isNone(const std::string& vstoreId) { return vstoreId == kNone; }
// Self-describing requests also take an empty identifier for none.
inline bool isNoneOrEmpty(const std::string& vstoreId) { return vstoreId.empty() || isNone(vstoreId); }

// Appends the vStore to a resource of a plain request: "?vstoreId=" when the resource has no query
// yet, "&vstoreId=" when it has one; nothing for kNone.
std::string withVstoreQuery(const std::string& resource, const std::string& vstoreId);

}  // namespace HuaweiVstore
