#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace mxtool::manual {

/// The kind of value that an option or argument takes.
enum class ValueKind
{
    None,      ///< The option is a flag.
    FreeText,  ///< Cannot be completed: a number, an identifier, a URL.
    Choice,    ///< One of `OptionWords::choices`.
    File,      ///< The name of a file.
    Directory, ///< The name of a directory.
};

/// An option or, without names, a positional argument.
struct OptionWords
{
    std::vector<std::string> names;    ///< With dashes, short ones first.
    std::string value;                 ///< The name of its value in the help; empty for a flag.
    ValueKind kind = ValueKind::None;  ///< What completes the value.
    std::vector<std::string> choices;  ///< The accepted values; empty: any.
    std::string description;           ///< One sentence, without a full stop.
    std::vector<std::string> excludes; ///< Options that it excludes, in order.
    bool required = false;             ///< Whether it must be given.
    bool repeatable = false;           ///< Whether it may be given several times.
};

/// A section of a help text after the options, such as the example.
struct Section
{
    std::string title; ///< Without its colon.
    std::string text;  ///< The lines without indentation.
};

/// The program or one of its verbs.
struct VerbWords
{
    std::string name;      ///< As typed: "show", "station show".
    std::string group;     ///< The verb that it is one of: "station"; empty: of the program.
    bool hasVerbs = false; ///< Whether it takes a verb of its own as the next word.
    std::string description;
    std::vector<OptionWords> options;
    std::vector<OptionWords> arguments;
    std::vector<Section> sections;
};

/// The command line syntax of the program.
struct ProgramWords
{
    VerbWords program;            ///< Its options are also accepted by every verb.
    std::vector<VerbWords> verbs; ///< Each before its own verbs.
    std::string version;          ///< Such as "mxtool 3.0.0".
};

/// Returns the last word of the name of `verb`.
std::string lastWord(const VerbWords& verb);

/// Reads the syntax from the definitions with which `program` parses its command line.
ProgramWords wordsOf(CLI::App& program);

} // namespace mxtool::manual
