#include "store/VStoreScope.h"

namespace arraysim {

bool VStoreScope::admits(const Record& record) const {
  if (account_.empty() && !requested_) return true;
  if (conflicting()) return false;
  const auto it = record.find("vstoreId");
  return it != record.end() && it->is_string() && it->get_ref<const std::string&>() == owner();
}

}  // namespace arraysim
