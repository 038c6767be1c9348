// Runs the zrarray executable as an operator would: its own process, arguments, standard input,
// environment, and standard error on a pipe or on a pseudo-terminal.
#pragma once

#include <sys/types.h>

#include <string>
#include <utility>
#include <vector>

namespace zrtest {

struct ToolInput {
  std::string standardInput;
  std::vector<std::pair<std::string, std::string>> environment;
  // Standard error on a pseudo-terminal, as when a person runs the tool.
  bool errorOnTerminal = false;
  // A command that runs the tool, such as setpriv with its options; empty: the tool itself.
  std::vector<std::string> runThrough;
};

struct ToolRun {
  int status = -1;  // exit status; -1 when it did not exit normally
  int signal = 0;   // the signal that ended it, 0 when it exited
  std::string out;
  std::string err;
  // Each line of `out`.
  std::vector<std::string> outLines() const;
};

// A run that goes on while the test acts on it, e.g. sends it a signal. Standard input stays open
// until finish(), which must be called.
class ToolProcess {
 public:
  explicit ToolProcess(const std::vector<std::string>& arguments, const ToolInput& input = {});

  pid_t pid() const { return child_; }
  // Closes standard input, reads both streams to their end, waits for the process.
  ToolRun finish();

 private:
  pid_t child_ = -1;
  int in_ = -1, out_ = -1, err_ = -1;
};

// Whether a pseudo-terminal can be opened here (containers may have none).
bool PseudoTerminalOpens();

ToolRun RunZrarray(const std::vector<std::string>& arguments, const ToolInput& input = {});

}  // namespace zrtest
