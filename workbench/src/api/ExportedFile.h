#pragma once

#include "api/RequestBody.h"
#include "http/Response.h"

#include <mxmodule/CsvStyle.h>
#include <text/Json.h>

#include <string>
#include <vector>

namespace workbench {

/// A form in which a module or a station is exported.
struct ExportFormat
{
    std::string format;      ///< In calls.
    std::string label;       ///< For people.
    bool isOfModule = false; ///< Of a station: made for one of its modules.
};

/// Returns `formats` as the API lists them.
text::Json exportFormatsJson(const std::vector<ExportFormat>& formats);

/// Returns how CSV is wanted in the body of an export: its members `separator` and `byteOrderMark`.
mxmodule::CsvStyle csvStyleIn(const RequestBody& body);

/// Returns `content` as the file NAME-SUFFIX, whose extension states its type. Characters of
/// `name` other than letters, digits, "-" and "_" become %xx.
Response exportedFile(const std::string& name, const std::string& suffix,
                      const std::string& content);

/// Throws a `CallFailure`: none of `formats` is called `found`.
[[noreturn]] void rejectFormat(const std::vector<ExportFormat>& formats, const std::string& found);

} // namespace workbench
