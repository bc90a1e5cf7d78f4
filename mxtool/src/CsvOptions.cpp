#include "CsvOptions.h"

#include "CommandLineOptions.h"

#include <CLI/CLI.hpp>

namespace mxtool {

namespace {

// The characters themselves are accepted as well.
std::string namedSeparator(std::string& word)
{
    word = word == "," ? "comma" : word == ";" ? "semicolon" : word == "\t" ? "tab" : word;
    return "";
}

} // namespace

CsvStyle CsvOptions::style() const
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
