#include "ShellCompletion.h"

#include <Poco/String.h>

#include <fmt/format.h>

namespace mxtool::manual {

namespace {

// Completes the verb, then the words after it.
constexpr const char* verbChoice = R"(    verbs=(
{0}    )
    _arguments -C $common '1: :->verb' '*:: :->rest' && ret=0
    case $state in
        verb) _describe -t verbs verb verbs && ret=0 ;;
        rest)
            curcontext="${{curcontext%:*}}-$line[1]:"
            case $line[1] in
{1}            esac
            ;;
    esac
    return ret
)";

constexpr const char* zshScript = R"(#compdef {0}
# zsh completion of {0}; made from the program's own options

_{0}() {{
    local curcontext=$curcontext state state_descr line ret=1
    typeset -A opt_args
    local -a common verbs
    common=(
{1}    )
{2}}}

{3}_{0} "$@"
)";

constexpr const char* groupScript = R"(_{0}_{1}()
{{
    local state state_descr line ret=1
    local -a verbs
{2}}}

)";

// `text` with a backslash before each character of `special`.
std::string escaped(const std::string& text, const std::string& special)
{
    std::string result;
    for (const char c : text) {
        if (special.find(c) != std::string::npos) {
            result += '\\';
        }
        result += c;
    }
    return result;
}

// `text` quoted as one word of the shell.
std::string quoted(const std::string& text)
{
    return "'" + Poco::replace(text, "'", "'\\''") + "'";
}

std::string action(const OptionWords& option)
{
    switch (option.kind) {
    case ValueKind::Choice: {
        std::string words;
        for (const std::string& choice : option.choices) {
            words += (words.empty() ? "" : " ") + escaped(choice, "\\ :()");
        }
        return "(" + words + ")";
    }
    case ValueKind::File:
        return "_files";
    case ValueKind::Directory:
        return "_files -/";
    default:
        return " ";
    }
}

// ":NAME OF THE VALUE:ACTION"
std::string valueSpec(const OptionWords& option)
{
    return option.kind == ValueKind::None
               ? ""
               : ":" + escaped(option.value, "\\:") + ":" + action(option);
}

// The names that cannot follow `option`: its own and those that it excludes.
std::string exclusions(const OptionWords& option)
{
    std::vector<std::string> names = option.excludes;
    if (!option.repeatable) {
        names.insert(names.begin(), option.names.begin(), option.names.end());
    }
    return names.empty() ? "" : fmt::format("({})", fmt::join(names, " "));
}

// One word of _arguments for each name of the option.
std::string optionSpecs(const OptionWords& option, const std::string& indent)
{
    std::string lines;
    for (const std::string& name : option.names) {
        const bool isLong = name.compare(0, 2, "--") == 0;
        const std::string joining = option.kind == ValueKind::None ? "" : isLong ? "=" : "+";
        const std::string word =
            fmt::format("{}{}{}{}[{}]{}", exclusions(option), option.repeatable ? "*" : "", name,
                        joining, escaped(option.description, "\\[]:"), valueSpec(option));
        lines += fmt::format("{}{}\n", indent, quoted(word));
    }
    return lines;
}

std::string argumentSpecs(const std::vector<OptionWords>& arguments, const std::string& indent)
{
    std::string lines;
    int place = 1;
    for (const OptionWords& argument : arguments) {
        const std::string number = argument.repeatable ? "*" : std::to_string(place++);
        lines += fmt::format("{}{}\n", indent, quoted(number + valueSpec(argument)));
    }
    return lines;
}

std::string caseOfVerb(const VerbWords& verb)
{
    const std::string indent(20, ' ');
    std::string specs = indent + "$common\n";
    for (const OptionWords& option : verb.options) {
        if (option.names.back() != "--help") { // already among the common options
            specs += optionSpecs(option, indent);
        }
    }
    specs += argumentSpecs(verb.arguments, indent);
    return fmt::format("                {}) local -a words_of_verb=(\n{}                )\n"
                       "                    _arguments $words_of_verb && ret=0 ;;\n",
                       lastWord(verb), specs);
}

// Returns the part of a function that completes the verbs of a group; "" is the program itself.
std::string choiceOfVerbs(const ProgramWords& words, const std::string& group)
{
    std::string lines;
    std::string cases;
    for (const VerbWords& verb : words.verbs) {
        if (verb.group != group) {
            continue;
        }
        const std::string line = escaped(lastWord(verb), "\\:") + ":" + verb.description;
        lines += std::string(8, ' ') + quoted(line) + "\n";
        cases += verb.hasVerbs ? fmt::format("                {1}) _{0}_{1} && ret=0 ;;\n",
                                             words.program.name, verb.name)
                               : caseOfVerb(verb);
    }
    return fmt::format(verbChoice, lines, cases);
}

} // namespace

std::string zshCompletion(const ProgramWords& words)
{
    const std::string indent(8, ' ');
    std::string common;
    for (const OptionWords& option : words.program.options) {
        common += optionSpecs(option, indent);
    }
    std::string functions;
    for (const VerbWords& verb : words.verbs) {
        if (verb.hasVerbs) {
            functions += fmt::format(groupScript, words.program.name, verb.name,
                                     choiceOfVerbs(words, verb.name));
        }
    }
    return fmt::format(zshScript, words.program.name, common, choiceOfVerbs(words, ""), functions);
}

} // namespace mxtool::manual
