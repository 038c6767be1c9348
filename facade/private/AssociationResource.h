// Where the lists of what an owner holds are asked for.
#pragma once

#include <string>

#include "HuaweiApiValues.h"
#include "ResourcePath.h"

// The objects tied to an owner, asked for at <where>?ASSOCIATEOBJID=<owner>&ASSOCIATEOBJTYPE=<type>.
struct HeldObjects {
  const char* where;
  const std::string& ownerId;
  const HuaweiApi::ObjectTypeValue& ownerType;
  const std::string& vstoreId;

  ResourcePath resource() const {
    return ResourcePath(where)
        .add("ASSOCIATEOBJID", ownerId)
        .add("ASSOCIATEOBJTYPE", ownerType.getValue())
        .vstore(vstoreId);
  }
};
