#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace mxtool::manual {

/// What may stand as the value of an option or as an argument of a verb.
enum class ValueKind
{
    None,      ///< The option is a flag.
    FreeText,  ///< Nothing that a list could offer: a number, an identifier, a URL.
    Choice,    ///< One of `OptionWords::choices`.
    File,      ///< The name of a file.
    Directory, ///< The name of a directory.
};

/// One option or, where it has no names, one argument in its place.
struct OptionWords
{
    std::vector<std::string> names;    ///< With their dashes, short ones first.
    std::string value;                 ///< What the help calls its value; empty for a flag.
    ValueKind kind = ValueKind::None;  ///< What completes the value.
    std::vector<std::string> choices;  ///< The words accepted; empty: any.
    std::string description;           ///< One sentence, without a full stop.
    std::vector<std::string> excludes; ///< Options that it cannot stand beside, in their order.
    bool required = false;             ///< The call is wrong without it.
    bool repeatable = false;           ///< It may be given again, with another value.
};

/// One part of a help text behind the options, such as the example.
struct Section
{
    std::string title; ///< Without its colon.
    std::string text;  ///< Lines without their indentation.
};

/// The program or one of its verbs.
struct VerbWords
{
    std::string name;
    std::string description;
    std::vector<OptionWords> options;
    std::vector<OptionWords> arguments;
    std::vector<Section> sections;
};

/// Everything that can be written in a call of the program.
struct ProgramWords
{
    VerbWords program; ///< Its options are accepted by every verb as well.
    std::vector<VerbWords> verbs;
    std::string version; ///< Such as "mxtool 3.0.0".
};

/// Reads the words off the definitions by which `program` understands its command line.
ProgramWords wordsOf(CLI::App& program);

} // namespace mxtool::manual
