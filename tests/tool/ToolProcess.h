// Runs the zrarray executable as an operator would: its own process, arguments, standard input,
// environment, and standard error on a pipe or on a pseudo-terminal.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zrtest {

struct ToolInput {
  std::string standardInput;
  std::vector<std::pair<std::string, std::string>> environment;
  // Standard error on a pseudo-terminal, as when a person runs the tool.
  bool errorOnTerminal = false;
};

struct ToolRun {
  int status = -1;  // exit status; -1 when it did not exit normally
  std::string out;
  std::string err;
  // Each line of `out`.
  std::vector<std::string> outLines() const;
};

ToolRun RunZrarray(const std::vector<std::string>& arguments, const ToolInput& input = {});

}  // namespace zrtest
