// `zrarray completion bash`: a bash completion script made from the tool's own command tree, so
// that it knows every group, subcommand and option of the build that prints it.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace zrarray {

// The words an option takes, by "--option" for a global one and by "<group> <command> --option"
// for one of a subcommand.
using OptionWords = std::map<std::string, std::vector<std::string>>;

// The script for the tree under `app`. An option that takes a value without words completes file
// names, as bash does by default.
std::string BashCompletion(const CLI::App& app, const OptionWords& words);

}  // namespace zrarray
