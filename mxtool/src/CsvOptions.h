#pragma once

#include "Csv.h"

#include <string>

namespace CLI {
class App;
}

namespace mxtool {

/// The CSV options of a command line.
struct CsvOptions
{
    std::string separator = "comma"; ///< "comma", "semicolon" or "tab".
    bool byteOrderMark = false;
    bool given = false; ///< Whether one of the options was given.

    CsvStyle style() const;
};

/// Adds --separator and --bom to `verb`. `options` must outlive the parsing.
void addCsvOptions(CLI::App& verb, CsvOptions& options);

/// Throws `CLI::ValidationError` if CSV options were given but `format` is not CSV.
void requireCsv(const CsvOptions& options, const std::string& format);

} // namespace mxtool
