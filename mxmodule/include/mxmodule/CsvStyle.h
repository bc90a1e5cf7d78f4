#pragma once

namespace mxmodule {

/// The separator of a CSV text, and whether it begins with a byte order mark.
struct CsvStyle
{
    char separator = ',';       ///< ',', ';' or a tab.
    bool byteOrderMark = false; ///< Without it spreadsheets assume their own code page.
};

} // namespace mxmodule
