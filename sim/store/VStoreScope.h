// The vStore a request speaks for. A login with a vStore account sees only its vStore's
// objects, as on a real array; any request may narrow further by naming a vStore (the query's
// vstoreId= for GET and DELETE, the body's "vstoreId" for POST and PUT). Without either, the
// whole array is visible. Objects outside every vStore carry no "vstoreId".
#pragma once

#include <optional>
#include <string>

#include "store/ObjectStore.h"

namespace arraysim {

class VStoreScope {
 public:
  VStoreScope(std::string account, std::optional<std::string> requested)
      : account_(std::move(account)), requested_(std::move(requested)) {}

  bool admits(const Record& record) const;
  // A vStore account that names another vStore: it may see nothing and make nothing.
  bool conflicting() const { return !account_.empty() && requested_ && *requested_ != account_; }
  // The vStore a new object belongs to; empty for none.
  std::string owner() const { return requested_ ? *requested_ : account_; }

 private:
  std::string account_;
  std::optional<std::string> requested_;
};

}  // namespace arraysim
