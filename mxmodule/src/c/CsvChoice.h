#pragma once

#include <mxmodule/CsvStyle.h>

namespace mxmodule {

/// Returns the style with `separator`. Throws what becomes `MXMODULE_MISUSE` for another character
/// than ',', ';' and a tab.
CsvStyle csvChoice(char separator, int byteOrderMark);

} // namespace mxmodule
