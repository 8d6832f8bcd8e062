// SPDX-License-Identifier: Apache-2.0
//
// The completions of three shells, from the table of commands. tools/paramtool/completions/ holds what this
// prints.

#include "descriptions.h"

#include <iostream>
#include <memory>
#include <sstream>

namespace Paramtool {

namespace {

/// The names of an option: "-o", "--output".
std::vector<std::string> NamesOf(Parameter const& parameter) {
    std::vector<std::string> names;
    std::istringstream in(parameter.name);
    for (std::string name; std::getline(in, name, ',');) {
        names.push_back(name);
    }
    return names;
}

bool IsOption(Parameter const& parameter) { return parameter.name.front() == '-'; }

/// Groups and commands in the order of the table, each word once.
std::vector<std::string> FirstWords() {
    std::vector<std::string> words;
    for (Command const& command : Commands) {
        std::string const name = command.name;
        std::string const word = name.substr(0, name.find(' '));
        // The commands of a group stand together in the table.
        if (words.empty() || words.back() != word) {
            words.push_back(word);
        }
    }
    return words;
}

std::string Joined(std::vector<std::string> const& words) {
    std::string text;
    for (std::string const& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

/// The second words of a group.
std::vector<std::string> CommandsOf(std::string const& group) {
    std::vector<std::string> words;
    for (Command const& command : Commands) {
        std::string const name = command.name;
        if (name.compare(0, group.size() + 1, group + ' ') == 0) {
            words.push_back(name.substr(group.size() + 1));
        }
    }
    return words;
}

/// All that a command's arguments can begin with that isn't a file.
std::vector<std::string> WordsOf(Command const& command) {
    std::vector<std::string> words;
    for (Parameter const& parameter : ParametersOf(command)) {
        if (IsOption(parameter)) {
            for (std::string const& name : NamesOf(parameter)) {
                words.push_back(name);
            }
        } else {
            words.insert(words.end(), parameter.choices.begin(), parameter.choices.end());
        }
    }
    return words;
}

// --- bash ---

/// What finds the command in the words of a line: the values of options are no words of a command.
constexpr char const* BashBegin = R"(# bash completion for paramtool; paramtool completion bash prints it
_paramtool() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} command= word i
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        case $word in
        --layout) ((++i)) ;;
        -*) ;;
        *)
            command="$command${command:+ }$word"
            case $command in GROUPS) ;; *) break ;; esac
            ;;
        esac
    done
    local words= files=
    case $command in
)";

/// Files are completed beside words, since an argument may be either; not where one of a few words is wanted.
constexpr char const* BashEnd = R"(    esac
    COMPREPLY=($(compgen -W "$words" -- "$current"))
    case $current in
    -*) ;;
    *) [ -z "$files" ] || COMPREPLY+=($(compgen -f -- "$current")) ;;
    esac
}
complete -o filenames -F _paramtool paramtool
)";

std::vector<std::string> Groups() {
    std::vector<std::string> groups;
    for (std::string const& word : FirstWords()) {
        if (!CommandsOf(word).empty()) {
            groups.push_back(word);
        }
    }
    return groups;
}

std::string Replaced(std::string text, std::string const& word, std::string const& by) {
    return text.replace(text.find(word), word.size(), by);
}

/// As the patterns of a case.
std::string Alternatives(std::vector<std::string> const& words) {
    std::string text;
    for (std::string const& word : words) {
        text += (text.empty() ? "" : " | ") + word;
    }
    return text;
}

void PrintBash() {
    std::cout << Replaced(BashBegin, "GROUPS", Alternatives(Groups()));
    std::cout << "    '') words=\"" << Joined(FirstWords())
              << " --layout --json --version --help\" files= ;;\n";
    for (std::string const& group : Groups()) {
        std::cout << "    '" << group << "') words=\"" << Joined(CommandsOf(group)) << "\" files= ;;\n";
    }
    for (Command const& command : Commands) {
        std::cout << "    '" << command.name << "')\n        words=\"" << Joined(WordsOf(command))
                  << " --help\" files=1\n";
        for (Parameter const& parameter : ParametersOf(command)) {
            if (IsOption(parameter) && !parameter.choices.empty()) {
                std::cout << "        [ \"$previous\" != " << parameter.name << " ] || { words=\""
                          << Joined(parameter.choices) << "\" files=; }\n";
            }
        }
        std::cout << "        ;;\n";
    }
    std::cout << BashEnd;
}

// --- zsh ---

/// Between single quotes, in a description that "[" and ":" would end.
std::string ZshText(std::string const& text) {
    std::string escaped;
    for (char const c : text) {
        escaped += c == '\''                          ? "'\\''"
                   : c == '[' || c == ']' || c == ':' ? std::string("\\") + c
                                                      : std::string(1, c);
    }
    return escaped;
}

void PrintZshCommand(Command const& command) {
    std::cout << "    '" << command.name << "')\n        _arguments -s";
    for (Parameter const& parameter : ParametersOf(command)) {
        std::string const values =
            parameter.choices.empty() ? "_files" : '(' + Joined(parameter.choices) + ')';
        std::string const many = parameter.takesMany ? "*" : "";
        if (!IsOption(parameter)) {
            std::cout << " \\\n            '" << many << ':' << ZshText(parameter.name) << ':' << values
                      << '\'';
            continue;
        }
        for (std::string const& name : NamesOf(parameter)) {
            std::cout << " \\\n            '" << many << name << '[' << ZshText(parameter.help) << ']'
                      << (parameter.value.empty() ? "" : ':' + ZshText(parameter.value) + ':' + values)
                      << '\'';
        }
    }
    std::cout << "\n        ;;\n";
}

/// The same search as for bash; then the words of the command are cut off, as _arguments counts from the
/// command.
void PrintZsh() {
    std::cout
        << "#compdef paramtool\n# zsh completion for paramtool; paramtool completion zsh prints it\n"
        << "_paramtool() {\n    local command= word\n    local -i i=2 last=CURRENT\n"
        << "    while ((i < last)); do\n        word=$words[i]\n        case $word in\n"
        << "        --layout) ((++i)) ;;\n        -*) ;;\n        *)\n"
        << "            command=\"$command${command:+ }$word\"\n            case $command in "
        << Alternatives(Groups()) << ") ;; *) break ;; esac\n            ;;\n        esac\n"
        << "        ((++i))\n    done\n"
        << "    ((i < last)) && { words=(\"$words[1]\" \"${words[@]:$i}\"); ((CURRENT = last - i + 1)); }\n"
        << "    case $command in\n    '')\n        local -a commands=(";
    for (std::string const& word : FirstWords()) {
        std::cout << ' ' << word;
    }
    std::cout << " --layout --json --version --help)\n        _describe command commands\n        ;;\n";
    for (std::string const& group : Groups()) {
        std::cout << "    '" << group << "')\n        local -a commands=(" << Joined(CommandsOf(group))
                  << ")\n        _describe command commands\n        ;;\n";
    }
    for (Command const& command : Commands) {
        PrintZshCommand(command);
    }
    std::cout << "    esac\n}\n_paramtool \"$@\"\n";
}

// --- fish ---

std::string FishText(std::string const& text) {
    std::string escaped;
    for (char const c : text) {
        escaped += c == '\'' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    }
    return '\'' + escaped + '\'';
}

/// When the words of the line are those of the command so far.
std::string FishCondition(std::string const& name) {
    std::string condition;
    std::istringstream in(name);
    for (std::string word; in >> word;) {
        condition +=
            (condition.empty() ? "__fish_seen_subcommand_from " : "; and __fish_seen_subcommand_from ") +
            word;
    }
    return condition;
}

void PrintFishCommand(Command const& command) {
    std::string const begin = "complete -c paramtool -n " + FishText(FishCondition(command.name));
    for (Parameter const& parameter : ParametersOf(command)) {
        std::string const values =
            parameter.choices.empty() ? "" : " -xa " + FishText(Joined(parameter.choices));
        if (!IsOption(parameter)) {
            if (!values.empty()) {
                std::cout << begin << values << '\n';
            }
            continue;
        }
        std::cout << begin;
        for (std::string const& name : NamesOf(parameter)) {
            std::cout << (name.compare(0, 2, "--") == 0 ? " -l " + name.substr(2) : " -s " + name.substr(1));
        }
        std::cout << (parameter.value.empty() ? ""
                      : values.empty()        ? " -r"
                                              : values)
                  << " -d " << FishText(parameter.help) << '\n';
    }
}

void PrintFish() {
    std::cout << "# fish completion for paramtool; paramtool completion fish prints it\n";
    for (Command const& command : Commands) {
        std::string const name = command.name;
        std::size_t const blank = name.find(' ');
        std::string const condition =
            blank == std::string::npos ? "__fish_use_subcommand" : FishCondition(name.substr(0, blank));
        std::cout << "complete -c paramtool -f -n " << FishText(condition) << " -a "
                  << name.substr(blank == std::string::npos ? 0 : blank + 1) << " -d "
                  << FishText(command.purpose) << '\n';
        // A group is offered once, with the first of its commands, and has no purpose of its own to show.
        if (blank != std::string::npos &&
            CommandsOf(name.substr(0, blank)).front() == name.substr(blank + 1)) {
            std::cout << "complete -c paramtool -f -n __fish_use_subcommand -a " << name.substr(0, blank)
                      << '\n';
        }
    }
    for (Command const& command : Commands) {
        PrintFishCommand(command);
    }
}

} // namespace

Action DeclareCompletion(CommandLine& line) {
    auto const shell = std::make_shared<std::wstring>();
    line.NeedOneOf("SHELL", *shell, {"bash", "zsh", "fish"}, "bash, zsh or fish");
    return [shell](Context&) {
        *shell == L"bash" ? PrintBash() : *shell == L"zsh" ? PrintZsh() : PrintFish();
        return Same;
    };
}

} // namespace Paramtool
