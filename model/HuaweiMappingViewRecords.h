// Mapping views: the array object that ties a host group to a LUN group.
#pragma once

#include <string>

struct _HuaweiLUNMappingView {
  std::string id;
  std::string name;
  std::string vstoreId;
  std::string vstoreName;

  _HuaweiLUNMappingView() { clear(); }
  void clear() {
    id.clear();
    name.clear();
    vstoreId.clear();
    vstoreName.clear();
  }
};
typedef _HuaweiLUNMappingView HuaweiLUNMappingView_t;
