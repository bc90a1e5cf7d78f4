#include "ShellCompletion.h"

#include <Poco/String.h>

#include <fmt/format.h>

#include <algorithm>

namespace mxtool::manual {

namespace {

// The completion function. Bash splits "--format=js" into three words.
constexpr const char* bashScript = R"(# bash completion of {0}; made from the program's own options
_{0}()
{{
    local cur=${{COMP_WORDS[COMP_CWORD]}} prev=${{COMP_WORDS[COMP_CWORD - 1]}} verb= word i
    if [[ $cur == = ]]; then
        cur=
    elif [[ $prev == = ]]; then
        prev=${{COMP_WORDS[COMP_CWORD - 2]}}
    fi
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${{COMP_WORDS[i]}}
        case $word in
            {1}) ((i++)) ;;
            -* | =) ;;
            *)
                verb=${{verb:+$verb }}$word
                case $verb in
                    {4}) ;;
                    *) break ;;
                esac
                ;;
        esac
    done
    COMPREPLY=()
    case $verb,$prev in
{2}    esac
    case $verb,$cur in
{3}    esac
}}

_{0}_words()
{{
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur")
}}

_{0}_files()
{{
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen "$1" -- "$cur")
}}

complete -F _{0} {0}
)";

std::string joined(const std::vector<std::string>& words, const char* between)
{
    return fmt::format("{}", fmt::join(words, between));
}

// The command that completes the value of `option`.
std::string offer(const std::string& program, const OptionWords& option)
{
    switch (option.kind) {
    case ValueKind::Choice:
        return fmt::format("_{}_words '{}'", program, joined(option.choices, " "));
    case ValueKind::File:
        return fmt::format("_{}_files -f", program);
    case ValueKind::Directory:
        return fmt::format("_{}_files -d", program);
    default:
        return ":";
    }
}

// A verb as a pattern of the shell.
std::string pattern(const std::string& verb)
{
    return Poco::replace(verb, " ", "\\ ");
}

// "show,-o | show,--output) ...;;": completes the value of an option of `verb`, "*" for any.
std::string valueCases(const std::string& program, const std::string& verb,
                       const std::vector<OptionWords>& options)
{
    std::string cases;
    for (const OptionWords& option : options) {
        if (option.kind != ValueKind::None) {
            const std::string between = " | " + verb + ",";
            cases +=
                fmt::format("        {},{})\n            {}\n            return\n            ;;\n",
                            verb, joined(option.names, between.c_str()), offer(program, option));
        }
    }
    return cases;
}

// The names of options with a value, to skip them before the verb.
std::string namesWithValue(const std::vector<OptionWords>& options)
{
    std::vector<std::string> names;
    for (const OptionWords& option : options) {
        if (option.kind != ValueKind::None) {
            names.insert(names.end(), option.names.begin(), option.names.end());
        }
    }
    return joined(names, " | ");
}

void addNames(const std::vector<OptionWords>& options, std::vector<std::string>& names)
{
    for (const OptionWords& option : options) {
        for (const std::string& name : option.names) {
            if (std::find(names.begin(), names.end(), name) == names.end()) {
                names.push_back(name);
            }
        }
    }
}

std::string wordCase(const std::string& words, const std::string& command)
{
    return fmt::format("        {}) {} ;;\n", words, command);
}

// Completes a word of `verb` that is not the value of an option.
std::string wordsOfVerb(const ProgramWords& words, const VerbWords& verb)
{
    const std::string& program = words.program.name;
    std::vector<std::string> names;
    addNames(verb.options, names);
    addNames(words.program.options, names);
    std::string cases = wordCase(pattern(verb.name) + ",-*",
                                 fmt::format("_{}_words '{}'", program, joined(names, " ")));
    std::string offers;
    for (const OptionWords& argument : verb.arguments) {
        if (offers.empty() && argument.kind != ValueKind::FreeText) {
            offers = offer(program, argument);
        }
    }
    return cases + (offers.empty() ? "" : wordCase(pattern(verb.name) + ",*", offers));
}

// The verbs of `group`.
std::string verbsOf(const ProgramWords& words, const std::string& group)
{
    std::vector<std::string> verbs;
    for (const VerbWords& verb : words.verbs) {
        if (verb.group == group) {
            verbs.push_back(lastWord(verb));
        }
    }
    return joined(verbs, " ");
}

} // namespace

std::string bashCompletion(const ProgramWords& words)
{
    const std::string& program = words.program.name;
    std::string values;
    std::string others;
    std::vector<std::string> groups;
    for (const VerbWords& verb : words.verbs) {
        values += valueCases(program, pattern(verb.name), verb.options);
        others += wordsOfVerb(words, verb);
        if (verb.hasVerbs) {
            groups.push_back(verb.name);
            others += wordCase(verb.name + ",*",
                               fmt::format("_{}_words '{}'", program, verbsOf(words, verb.name)));
        }
    }
    values += valueCases(program, "*", words.program.options);
    std::vector<std::string> names;
    addNames(words.program.options, names);
    others += wordCase(",-*", fmt::format("_{}_words '{}'", program, joined(names, " ")));
    others += wordCase(",*", fmt::format("_{}_words '{}'", program, verbsOf(words, "")));
    return fmt::format(bashScript, program, namesWithValue(words.program.options), values, others,
                       groups.empty() ? "''" : joined(groups, " | "));
}

} // namespace mxtool::manual
