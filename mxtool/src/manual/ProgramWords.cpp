#include "ProgramWords.h"

#include <algorithm>
#include <sstream>

namespace mxtool::manual {

namespace {

bool holds(const std::string& text, const char* word)
{
    return text.find(word) != std::string::npos;
}

// The words in the braces of "TEXT:{text,json}", the form in which CLI11 shows choices.
std::vector<std::string> choicesIn(const std::string& typeName)
{
    std::vector<std::string> choices;
    const auto open = typeName.find('{');
    const auto close = typeName.find('}', open);
    if (open == std::string::npos || close == std::string::npos) {
        return choices;
    }
    std::istringstream list(typeName.substr(open + 1, close - open - 1));
    for (std::string word; std::getline(list, word, ',');) {
        choices.push_back(word);
    }
    return choices;
}

// The kind of a value whose name in the help is `value`. A generic name such as TEXT may be a file.
ValueKind kindOf(const std::string& value)
{
    if (holds(value, "DIRECTORY") || value == "DIR") {
        return ValueKind::Directory;
    }
    for (const char* free : {"INT", "FLOAT", "ID", "URL", "="}) {
        if (holds(value, free)) {
            return ValueKind::FreeText;
        }
    }
    return ValueKind::File;
}

std::vector<std::string> namesOf(const CLI::Option& option)
{
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) {
        names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        names.push_back("--" + name);
    }
    return names;
}

// CLI11's set is ordered by address.
std::vector<std::string> excludedBy(const CLI::Option& option)
{
    std::vector<std::string> names;
    for (const CLI::Option* other : option.get_excludes()) {
        const std::vector<std::string> all = namesOf(*other);
        names.push_back(all.empty() ? other->get_name(true, false) : all.back());
    }
    std::sort(names.begin(), names.end());
    return names;
}

OptionWords wordsOf(const CLI::Option& option)
{
    OptionWords words;
    words.names = namesOf(option);
    words.description = option.get_description();
    words.excludes = excludedBy(option);
    words.required = option.get_required();
    words.repeatable = option.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll ||
                       option.get_items_expected_max() > 1;
    if (option.get_items_expected_max() == 0) {
        return words;
    }
    const std::string typeName = option.get_type_name();
    const std::string type = typeName.substr(0, typeName.find(':'));
    words.choices = choicesIn(typeName);
    words.value = option.get_positional() ? option.get_name(true, false) : type;
    words.kind = words.choices.empty() ? kindOf(words.value) : ValueKind::Choice;
    return words;
}

// "Title:" at the beginning of a line begins a section, whose lines are indented by two blanks.
std::vector<Section> sectionsOf(const std::string& footer)
{
    std::vector<Section> sections;
    std::istringstream lines(footer);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty() && line[0] != ' ' && line.back() == ':') {
            line.pop_back();
            sections.push_back({line, ""});
        } else if (!sections.empty()) {
            sections.back().text += (line.compare(0, 2, "  ") == 0 ? line.substr(2) : line) + "\n";
        }
    }
    for (Section& section : sections) {
        section.text.erase(section.text.find_last_not_of('\n') + 1);
    }
    return sections;
}

void addOptionsOf(const CLI::App& app, VerbWords& words)
{
    for (const CLI::Option* option : app.get_options()) {
        // Options without a group are hidden; option groups have a help of their own.
        const bool isSecondHelp = app.get_name().empty() && option == app.get_help_ptr();
        if (!option->get_group().empty() && !isSecondHelp) {
            (option->get_positional() ? words.arguments : words.options)
                .push_back(wordsOf(*option));
        }
    }
}

VerbWords wordsOfVerb(CLI::App& app, const std::string& group = {})
{
    VerbWords words;
    words.name = (group.empty() ? "" : group + " ") + app.get_name();
    words.group = group;
    words.description = app.get_description();
    words.sections = sectionsOf(app.get_footer());
    addOptionsOf(app, words);
    for (const CLI::App* part : app.get_subcommands([](CLI::App* sub) {
             return sub->get_name().empty(); // a group of options
         })) {
        addOptionsOf(*part, words);
    }
    return words;
}

std::vector<CLI::App*> verbsOf(CLI::App& app)
{
    return app.get_subcommands(
        [](CLI::App* sub) { return !sub->get_name().empty() && !sub->get_group().empty(); });
}

} // namespace

std::string lastWord(const VerbWords& verb)
{
    return verb.name.substr(verb.name.rfind(' ') + 1);
}

ProgramWords wordsOf(CLI::App& program)
{
    ProgramWords words;
    words.program = wordsOfVerb(program);
    words.version = program.version();
    for (CLI::App* verb : verbsOf(program)) {
        const auto inner = verbsOf(*verb);
        words.verbs.push_back(wordsOfVerb(*verb));
        words.verbs.back().hasVerbs = !inner.empty();
        for (CLI::App* app : inner) {
            words.verbs.push_back(wordsOfVerb(*app, verb->get_name()));
        }
    }
    return words;
}

} // namespace mxtool::manual
