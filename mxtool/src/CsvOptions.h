#pragma once

#include "Csv.h"

#include <string>

namespace CLI {
class App;
}

namespace mxtool {

/// How a call wants its CSV.
struct CsvOptions
{
    std::string separator = "comma"; ///< "comma", "semicolon" or "tab".
    bool byteOrderMark = false;
    bool given = false; ///< One of the options is in the call.

    CsvStyle style() const;
};

/// Adds --separator and --bom to `verb`. `options` outlives the parsing.
void addCsvOptions(CLI::App& verb, CsvOptions& options);

/// Throws `CLI::ValidationError` where the call says how CSV is written, but writes `format`.
void requireCsv(const CsvOptions& options, const std::string& format);

} // namespace mxtool
