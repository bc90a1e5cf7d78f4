#include "CommandLineOptions.h"

#include <mxmodule/FileKind.h>

#include <text/NearestWords.h>
#include <text/WholeNumber.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

namespace mxtool {

namespace {

// Byte addresses have 32 bits.
constexpr unsigned largestOffset = 0xFFFFFFFF;

bool isOption(const std::string& word)
{
    return word.size() > 1 && word[0] == '-';
}

void addLongNames(const CLI::App& app, std::vector<std::string>& names)
{
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
}

std::vector<std::string> verbNames(const CLI::App& program)
{
    std::vector<std::string> names;
    for (const CLI::App* verb : program.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(verb->get_name());
    }
    return names;
}

// The program, the verb in use and its own verb, as far as there are.
std::vector<const CLI::App*> appsInUse(const CLI::App& program)
{
    std::vector<const CLI::App*> apps = {&program};
    for (auto verbs = program.get_subcommands(); !verbs.empty();
         verbs = apps.back()->get_subcommands()) {
        apps.push_back(verbs.front());
    }
    return apps;
}

std::string callOf(const CLI::App& program)
{
    std::string call;
    for (const CLI::App* app : appsInUse(program)) {
        call += (call.empty() ? "" : " ") + app->get_name();
    }
    return call;
}

std::string unknownOption(const CLI::App& program, const std::string& word)
{
    const std::string name = word.substr(0, word.find('='));
    std::vector<std::string> names;
    for (const CLI::App* app : appsInUse(program)) {
        addLongNames(*app, names);
    }
    return fmt::format("{} has no option \"{}\"{}", callOf(program), name,
                       text::didYouMean(name, names));
}

// The error for a file or directory in place of a verb: names its kind and the verb for it.
std::optional<Finding> forgottenVerb(const std::string& word)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(word, ignored)) {
        return Finding{Severity::Error, "", "A verb is missing, found the directory " + word,
                       "mxtool check " + word + " checks the mx files in it, mxtool populate " +
                           word + " inserts them into a database"};
    }
    const mxmodule::FileKind kind = mxmodule::kindOfFile(word);
    const std::string call = mxmodule::callThatTakes(kind, word);
    if (call.empty()) {
        return std::nullopt;
    }
    return Finding{Severity::Error, "",
                   fmt::format("A verb is missing, found {}: {}", mxmodule::nameOf(kind), word),
                   call};
}

Finding unknownVerb(const CLI::App& program, const std::string& word)
{
    const CLI::App& app = *appsInUse(program).back();
    if (auto forgotten = forgottenVerb(word); forgotten && &app == &program) {
        return *forgotten;
    }
    const std::vector<std::string> verbs = verbNames(app);
    const std::string which =
        &app == &program ? "There is no verb" : callOf(program) + " has no verb";
    return {Severity::Error, "",
            fmt::format("{} \"{}\"{}{}", which, word, text::didYouMean(word, verbs),
                        text::nearestWords(word, verbs).empty()
                            ? fmt::format(", expected one of {}", fmt::join(verbs, ", "))
                            : "")};
}

Finding unknownWord(const CLI::App& program, const std::string& word)
{
    if (needsVerb(program)) {
        return unknownVerb(program, word);
    }
    return {Severity::Error, "",
            fmt::format("{} takes no further argument, found \"{}\"", callOf(program), word)};
}

// The arguments of `words` that the parser did not consume, in order.
std::vector<std::string> leftOver(const CLI::App& program, const std::vector<std::string>& words)
{
    std::map<std::string, unsigned> counts;
    for (const std::string& word : program.remaining(true)) {
        ++counts[word];
    }
    std::vector<std::string> left;
    for (const std::string& word : words) {
        const auto found = counts.find(word);
        if (found != counts.end() && found->second > 0 && word != "--") {
            --found->second;
            left.push_back(word);
        }
    }
    return left;
}

// The characters themselves are accepted as well.
std::string namedSeparator(std::string& word)
{
    word = word == "," ? "comma" : word == ";" ? "semicolon" : word == "\t" ? "tab" : word;
    return "";
}

} // namespace

std::vector<std::string> withHelpAsOption(std::vector<std::string> words)
{
    const auto help = std::find_if_not(words.begin(), words.end(), isOption);
    if (help == words.end() || *help != "help") {
        return words;
    }
    words.erase(help);
    words.emplace_back("--help");
    return withHelpAsOption(std::move(words));
}

std::vector<Finding> unknownArguments(const CLI::App& program,
                                      const std::vector<std::string>& words)
{
    const std::vector<std::string> unknown = leftOver(program, words);
    // The value of an unknown option shifts the arguments after it.
    const bool isExplained =
        !needsVerb(program) && std::any_of(unknown.begin(), unknown.end(), isOption);
    std::vector<Finding> found;
    for (const std::string& word : unknown) {
        if (isOption(word)) {
            found.push_back({Severity::Error, "", unknownOption(program, word)});
        } else if (!isExplained) {
            found.push_back(unknownWord(program, word));
            break; // later errors may follow from this one
        }
    }
    return found;
}

bool needsVerb(const CLI::App& program)
{
    return appsInUse(program).back()->get_require_subcommand_min() > 0;
}

Finding missingVerb(const CLI::App& program)
{
    return {Severity::Error, "",
            fmt::format("A verb is missing, expected one of {}",
                        fmt::join(verbNames(*appsInUse(program).back()), ", "))};
}

std::string helpHint(const CLI::App& program)
{
    return callOf(program) + " --help lists what is accepted";
}

std::optional<std::uint64_t> numberOfWord(const std::string& word)
{
    const bool isHexadecimal = word.compare(0, 2, "0x") == 0 || word.compare(0, 2, "0X") == 0;
    return text::wholeNumber<std::uint64_t>(word.substr(isHexadecimal ? 2 : 0),
                                            isHexadecimal ? 16 : 10);
}

void addOffsetOption(CLI::App& verb, const std::string& name, unsigned& offset,
                     const std::string& description)
{
    const auto read = [](std::string& text) {
        const auto number = numberOfWord(text);
        if (!number || *number > largestOffset) {
            return fmt::format("found \"{}\", expected a whole number from 0 to {}, in decimal or, "
                               "after 0x, in hexadecimal",
                               text, largestOffset);
        }
        text = std::to_string(*number);
        return std::string();
    };
    verb.add_option(name, offset,
                    fmt::format("{}, 0 to {}, in decimal or, after 0x, in hexadecimal", description,
                                largestOffset))
        ->transform(CLI::Validator(read, ""));
}

std::string notAccepted(const std::string& word, const std::vector<std::string>& accepted)
{
    return fmt::format("found \"{}\"{}", word, text::acceptedWords(word, accepted));
}

void acceptOneOf(CLI::Option& option, const std::vector<std::string>& accepted)
{
    option.check(CLI::Validator(
        [accepted](const std::string& word) {
            const bool found = std::find(accepted.begin(), accepted.end(), word) != accepted.end();
            return found ? "" : notAccepted(word, accepted);
        },
        fmt::format("{{{}}}", fmt::join(accepted, ","))));
}

void rejectEmptyValue(CLI::Option& option)
{
    option.check(CLI::Validator(
        [](const std::string& value) {
            return value.empty() ? "the value is empty; leave the option out, or give it one" : "";
        },
        ""));
}

void addOutputOption(CLI::App& verb, std::string& path)
{
    verb.add_option("-o,--output", path, "Write to this file, - for standard output")
        ->type_name("FILE");
}

mxmodule::CsvStyle CsvOptions::style() const
{
    return {separator == "semicolon" ? ';' : separator == "tab" ? '\t' : ',', byteOrderMark};
}

void addCsvOptions(CLI::App& verb, CsvOptions& options)
{
    auto* const separator = verb.add_option("--separator", options.separator,
                                            "What separates the cells of CSV, comma by default: "
                                            "comma, semicolon, tab, or the character itself");
    acceptOneOf(*separator, {"comma", "semicolon", "tab"});
    separator->transform(CLI::Validator(namedSeparator, "", "named separator"))
        ->each([&options](const std::string& /*word*/) { options.given = true; });
    verb.add_flag("--bom", options.byteOrderMark,
                  "Begin CSV with a byte order mark, from which spreadsheets recognise UTF-8")
        ->each([&options](const std::string& /*word*/) { options.given = true; });
}

void requireCsv(const CsvOptions& options, const std::string& format)
{
    if (options.given && format != "csv") {
        throw CLI::ValidationError(options.byteOrderMark ? "--bom" : "--separator",
                                   "goes with --format csv only, not with " + format);
    }
}

} // namespace mxtool
