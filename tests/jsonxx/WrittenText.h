// The text that the document model's writer makes of a tree, for comparisons in tests.
#pragma once

#include <sstream>
#include <string>

template <class T>
std::string written(const T& tree) {
  std::ostringstream out;
  out << tree;
  return out.str();
}
