// SPDX-License-Identifier: Apache-2.0
//
// The completions of three shells, from the table of commands. tools/paramtool/completions/ holds what this
// prints.

#include "descriptions.h"

#include <algorithm>
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

/// All that an option's value can be that isn't a file.
std::vector<std::string> ValuesOf(Parameter const& parameter) {
    return parameter.name == "--layout" ? std::vector<std::string>{"sample"} : parameter.choices;
}

/// Whether an argument can be a file.
bool TakesFiles(Command const& command) {
    std::vector<Parameter> const parameters = ParametersOf(command);
    return std::any_of(parameters.begin(), parameters.end(), [](Parameter const& parameter) {
        return !IsOption(parameter) && parameter.choices.empty();
    });
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
/// Their names come a line each, as they may hold blanks.
constexpr char const* BashEnd = R"(    esac
    case $current in -*) files= ;; esac
    mapfile -t COMPREPLY < <(
        compgen -W "$words" -- "$current"
        [ -z "$files" ] || compgen -f -- "$current"
    )
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

/// What may stand behind an option.
std::string BashValue(std::string const& option, std::vector<std::string> const& words, bool takesFiles) {
    return "        [ \"$previous\" != " + option + " ] || { words=\"" + Joined(words) +
           "\" files=" + (takesFiles ? "1" : "") + "; }\n";
}

void PrintBash() {
    std::cout << Replaced(BashBegin, "GROUPS", Alternatives(Groups()));
    std::cout << "    '')\n        words=\"" << Joined(FirstWords())
              << " --layout --json --version --help\"\n"
              << BashValue("--layout", {"sample"}, true) << "        ;;\n";
    for (std::string const& group : Groups()) {
        std::cout << "    '" << group << "') words=\"" << Joined(CommandsOf(group)) << "\" files= ;;\n";
    }
    for (Command const& command : Commands) {
        std::cout << "    '" << command.name << "')\n        words=\"" << Joined(WordsOf(command))
                  << " --help\" files=" << (TakesFiles(command) ? "1" : "") << '\n';
        for (Parameter const& parameter : ParametersOf(command)) {
            for (std::string const& name :
                 parameter.value.empty() ? std::vector<std::string>() : NamesOf(parameter)) {
                std::cout << BashValue(name, ValuesOf(parameter), parameter.choices.empty());
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
        << "    case $command in\n    '')\n        [[ $words[CURRENT-1] != --layout ]] || { _files; return; "
           "}\n"
        << "        local -a commands=(";
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

/// The same search once more; and whether it finds just that command.
constexpr char const* FishBegin = R"(# fish completion for paramtool; paramtool completion fish prints it
function __paramtool_is
    set -l words (commandline -opc)
    set -l command
    set -l isValue 0
    for word in $words[2..-1]
        if test $isValue = 1
            set isValue 0
            continue
        end
        switch $word
            case --layout
                set isValue 1
            case '-*'
            case '*'
                set command $command $word
                contains -- $command[1] GROUPS; and test (count $command) -lt 2; or break
        end
    end
    test $isValue = 0; and test "$command" = "$argv[1]"
end
)";

std::string FishCondition(std::string const& name) {
    return "-n " + FishText("__paramtool_is " + FishText(name));
}

void PrintFishCommand(Command const& command) {
    std::string const begin =
        "complete -c paramtool " + FishCondition(command.name) + (TakesFiles(command) ? "" : " -f");
    for (Parameter const& parameter : ParametersOf(command)) {
        std::string const values =
            parameter.choices.empty() ? "" : " -xa " + FishText(Joined(parameter.choices));
        // Beside the files that are offered for any value.
        std::string const more = ValuesOf(parameter).empty() ? "" : " -a " + Joined(ValuesOf(parameter));
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
                      : values.empty()        ? " -r" + more
                                              : values)
                  << " -d " << FishText(parameter.help) << '\n';
    }
}

void PrintFish() {
    std::cout << Replaced(FishBegin, "GROUPS", Joined(Groups()));
    std::string const any = "complete -c paramtool -f " + FishCondition("");
    std::cout << "complete -c paramtool " << FishCondition("") << " -l layout -r\n"
              << any << " -l json\n"
              << any << " -l version\n"
              << "complete -c paramtool -l help\n";
    for (std::string const& group : Groups()) {
        std::cout << any << " -a " << group << '\n';
    }
    for (Command const& command : Commands) {
        std::string const name = command.name;
        std::size_t const blank = name.find(' ');
        bool const isOfGroup = blank != std::string::npos;
        std::cout << "complete -c paramtool -f " << FishCondition(isOfGroup ? name.substr(0, blank) : "")
                  << " -a " << name.substr(isOfGroup ? blank + 1 : 0) << " -d " << FishText(command.purpose)
                  << '\n';
    }
    for (Command const& command : Commands) {
        PrintFishCommand(command);
    }
}

} // namespace

Action DeclareCompletion(CommandLine& line) {
    auto const shell = std::make_shared<std::wstring>();
    line.NeedOneOf("SHELL", *shell, {"bash", "zsh", "fish"}, "bash, zsh or fish");
    return [shell](Context& context) {
        PrintText(context.output, *shell == L"bash" ? PrintBash : *shell == L"zsh" ? PrintZsh : PrintFish);
        return Same;
    };
}

} // namespace Paramtool
