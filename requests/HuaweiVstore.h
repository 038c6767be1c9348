#pragma once

#include <string>

namespace HuaweiVstore {

// The system's value for no vStore at all: no query or body key is generated for it.
const char kNone[] = "-12345";

inline bool isNone(const std::string& vstoreId) { return vstoreId == kNone; }
// Self-describing requests also take an empty identifier for none.
inline bool isNoneOrEmpty(const std::string& vstoreId) { return vstoreId.empty() || isNone(vstoreId); }

}  // namespace HuaweiVstore
