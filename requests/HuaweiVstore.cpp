#include "HuaweiVstore.h"

#include "ConvertToString.h"

namespace HuaweiVstore {

std::string withVstoreQuery(const std::string& resource, const std::string& vstoreId) {
  if (isNone(vstoreId)) return resource;
  const char* separator = resource.find('?') == std::string::npos ? "?vstoreId=" : "&vstoreId=";
  return resource + separator + ConvertToString::to_string<std::string>(vstoreId);
}

}  // namespace HuaweiVstore
