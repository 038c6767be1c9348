// Where the facade's lists are asked for: the records named like a value, and what an owner holds.
#pragma once

#include <string>

#include "HuaweiApiValues.h"
#include "ResourcePath.h"

// <resource>?filter=<key>:<value>, the value unescaped, then the vStore: the records whose key
// holds the value.
inline ResourcePath filtered(const char* resource, const char* key, const std::string& value,
                             const std::string& vstoreId) {
  return ResourcePath(resource).add("filter", key + (":" + value)).vstore(vstoreId);
}

// The resource with ASSOCIATEOBJID=<object>&ASSOCIATEOBJTYPE=<type>, then the vStore.
inline ResourcePath associatedTo(ResourcePath resource, const std::string& objectId,
                                 const HuaweiApi::ObjectTypeValue& objectType, const std::string& vstoreId) {
  return resource.add("ASSOCIATEOBJID", objectId).add("ASSOCIATEOBJTYPE", objectType.getValue()).vstore(vstoreId);
}

// The objects tied to an owner, asked for at <where>?ASSOCIATEOBJID=<owner>&ASSOCIATEOBJTYPE=<type>.
struct HeldObjects {
  const char* where;
  const std::string& ownerId;
  const HuaweiApi::ObjectTypeValue& ownerType;
  const std::string& vstoreId;

  ResourcePath resource() const { return associatedTo(ResourcePath(where), ownerId, ownerType, vstoreId); }
};
