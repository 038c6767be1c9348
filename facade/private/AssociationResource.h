// Where the lists of what an owner holds are asked for.
#pragma once

#include <string>

#include "HuaweiApiValues.h"
#include "ResourcePath.h"

// <resource>?ASSOCIATEOBJID=<owner>&ASSOCIATEOBJTYPE=<type>: the objects tied to the owner.
inline ResourcePath associatedWith(const char* resource, const std::string& ownerId,
                                   const HuaweiApi::ObjectTypeValue& ownerType, const std::string& vstoreId) {
  return ResourcePath(resource)
      .add("ASSOCIATEOBJID", ownerId)
      .add("ASSOCIATEOBJTYPE", ownerType.getValue())
      .vstore(vstoreId);
}
