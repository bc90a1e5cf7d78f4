#pragma once

#include "Diagnostic.h"
#include <mxmodule/CsvStyle.h>

#include <CLI/CLI.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mxtool {

/// Returns the arguments with "help VERB" replaced by "VERB --help".
std::vector<std::string> withHelpAsOption(std::vector<std::string> words);

/// Returns an error for each of the arguments `words` that `program` does not know, in the order of
/// the command line, each with the nearest verb or option. To be called after parsing.
std::vector<Finding> unknownArguments(const CLI::App& program,
                                      const std::vector<std::string>& words);

/// Returns whether the command line ends where `program` expects a verb, or a verb one of its own.
bool needsVerb(const CLI::App& program);

/// Returns the error for a command line without a verb.
Finding missingVerb(const CLI::App& program);

/// Returns the hint that names the help of `program` or of the verb in use.
std::string helpHint(const CLI::App& program);

/// Returns the whole number in `word`, in decimal or, after 0x, in hexadecimal; nothing for any
/// other text.
[[nodiscard]] std::optional<std::uint64_t> numberOfWord(const std::string& word);

/// Adds an option for the byte of a process image at which the data begins: a whole number in
/// decimal or, after 0x, in hexadecimal. `offset` must outlive the parsing.
void addOffsetOption(CLI::App& verb, const std::string& name, unsigned& offset,
                     const std::string& description);

/// Returns the message for a value `word` that is not one of `accepted`: the nearest ones and the
/// whole list.
std::string notAccepted(const std::string& word, const std::vector<std::string>& accepted);

/// Makes the parser reject values of `option` other than `accepted`, which its help lists.
void acceptOneOf(CLI::Option& option, const std::vector<std::string>& accepted);

/// Makes the parser reject an empty value of `option`, such as an unset variable of a script: it
/// would otherwise count as if the option were left out.
void rejectEmptyValue(CLI::Option& option);

/// Adds -o/--output to `verb`. `path` must outlive the parsing.
void addOutputOption(CLI::App& verb, std::string& path);

/// The CSV options of a command line.
struct CsvOptions
{
    std::string separator = "comma"; ///< "comma", "semicolon" or "tab".
    bool byteOrderMark = false;
    bool given = false; ///< Whether one of the options was given.

    mxmodule::CsvStyle style() const;
};

/// Adds --separator and --bom to `verb`. `options` must outlive the parsing.
void addCsvOptions(CLI::App& verb, CsvOptions& options);

/// Throws `CLI::ValidationError` if CSV options were given but `format` is not CSV.
void requireCsv(const CsvOptions& options, const std::string& format);

} // namespace mxtool
