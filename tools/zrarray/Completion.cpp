#include "Completion.h"

#include <set>
#include <sstream>

namespace zrarray {

namespace {

std::vector<const CLI::App*> Subcommands(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App*) { return true; });
}

std::string Joined(const std::vector<std::string>& words) {
  std::string joined;
  for (const std::string& word : words) joined += (joined.empty() ? "" : " ") + word;
  return joined;
}

// The option names of one level, as typed; those that take a value are added to `valued`.
std::vector<std::string> OptionNames(const CLI::App& app, std::set<std::string>& valued) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    std::vector<std::string> typed;
    for (const std::string& name : option->get_snames()) typed.push_back("-" + name);
    for (const std::string& name : option->get_lnames()) typed.push_back("--" + name);
    for (const std::string& name : typed) {
      names.push_back(name);
      if (option->get_expected_max() > 0) valued.insert(name);  // flags take none
    }
  }
  return names;
}

// One arm of a shell `case`, whose pattern is quoted: the names are the tool's own, never an operator's.
void Arm(std::ostream& out, const std::string& pattern, const std::string& words) {
  out << "    \"" << pattern << "\") echo \"" << words << "\" ;;\n";
}

}  // namespace

std::string BashCompletion(const CLI::App& app, const OptionWords& words) {
  std::set<std::string> valued;
  const std::vector<std::string> globals = OptionNames(app, valued);
  std::vector<std::string> groups;
  std::ostringstream commands, options, values;
  for (const CLI::App* group : Subcommands(app)) {
    groups.push_back(group->get_name());
    std::vector<std::string> names;
    for (const CLI::App* command : Subcommands(*group)) {
      names.push_back(command->get_name());
      const std::string path = group->get_name() + " " + command->get_name();
      Arm(options, path, Joined(OptionNames(*command, valued)));
    }
    // A group without subcommands, such as `completion`, takes one of its words instead.
    const auto own = words.find(group->get_name());
    if (names.empty() && own != words.end()) names = own->second;
    Arm(commands, group->get_name(), Joined(names));
  }
  for (const auto& [option, taken] : words) {
    if (option.find("--") != std::string::npos) Arm(values, option, Joined(taken));
  }

  std::ostringstream script;
  script << "# bash completion for zrarray, printed by `zrarray completion bash` from its own commands.\n"
            "_zrarray_commands() {\n  case $1 in\n"
         << commands.str()
         << "  esac\n}\n"
            "_zrarray_options() {\n  case $1 in\n"
         << options.str()
         << "  esac\n}\n"
            "_zrarray_words() {\n  case $1 in\n"
         << values.str()
         << "  esac\n}\n"
            "_zrarray() {\n"
            "  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}\n"
            "  local valued=\" "
         << Joined({valued.begin(), valued.end()})
         << " \"\n"
            "  local group=\"\" command=\"\" word i\n"
            "  # The group and subcommand typed so far; global options may stand anywhere.\n"
            "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
            "    word=${COMP_WORDS[i]}\n"
            "    if [[ $valued == *\" $word \"* ]]; then\n"
            "      ((i++))\n"
            "    elif [[ $word != -* ]]; then\n"
            "      if [[ -z $group ]]; then group=$word; elif [[ -z $command ]]; then command=$word; fi\n"
            "    fi\n"
            "  done\n"
            "  if [[ $valued == *\" $prev \"* ]]; then\n"
            "    # No words: an empty answer lets bash complete file names.\n"
            "    COMPREPLY=($(compgen -W \"$(_zrarray_words \"$prev\") $(_zrarray_words \"$group $command $prev\")\" "
            "-- \"$cur\"))\n"
            "    return\n"
            "  fi\n"
            "  local globals=\""
         << Joined(globals)
         << "\"\n"
            "  if [[ -z $group && $cur == -* ]]; then\n"
            "    COMPREPLY=($(compgen -W \"$globals\" -- \"$cur\"))\n"
            "  elif [[ -z $group ]]; then\n"
            "    COMPREPLY=($(compgen -W \""
         << Joined(groups)
         << "\" -- \"$cur\"))\n"
            "  elif [[ -z $command && $cur != -* ]]; then\n"
            "    COMPREPLY=($(compgen -W \"$(_zrarray_commands \"$group\")\" -- \"$cur\"))\n"
            "  else\n"
            "    COMPREPLY=($(compgen -W \"$(_zrarray_options \"$group $command\") $globals\" -- \"$cur\"))\n"
            "  fi\n"
            "}\n"
            "complete -o default -F _zrarray zrarray\n";
  return script.str();
}

}  // namespace zrarray
