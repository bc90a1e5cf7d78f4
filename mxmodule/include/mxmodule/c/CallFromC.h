#pragma once

#include "mxmodule/Configuration.h"
#include "mxmodule/CsvStyle.h"
#include "mxmodule/Finding.h"
#include "mxmodule/Module.h"
#include "mxmodule/MxmoduleApi.h"
#include "mxmodule/c/bytes.h"
#include "mxmodule/c/configuration.h"
#include "mxmodule/c/error.h"
#include "mxmodule/c/module.h"

#include <string>
#include <vector>

// For libraries with a C interface of their own over this one.

namespace mxmodule {

/// Returns the exception that is handled at present as an error of the C interface.
MXMODULE_API mxmodule_error* errorOfException() noexcept;

/// Calls `operation` and returns its result. An exception becomes `error`, if that is not null, and
/// the result is null or 0.
template <typename Operation>
auto callFromC(mxmodule_error** error, const Operation& operation) noexcept -> decltype(operation())
{
    if (error != nullptr) {
        *error = nullptr;
    }
    try {
        return operation();
    } catch (...) {
        if (error != nullptr) {
            *error = errorOfException();
        }
        return {};
    }
}

/// Throws what becomes the error `MXMODULE_MISUSE` with `text`.
[[noreturn]] MXMODULE_API void misused(const std::string& text);

/// Returns what `pointer` leads to. A null pointer becomes an error that says `what` it should be.
template <typename Object>
Object& requirePointer(Object* pointer, const char* what)
{
    if (pointer != nullptr) {
        return *pointer;
    }
    misused(std::string("Found a null pointer, expected ") + what);
}

/// Returns the text that `text` leads to. A null pointer becomes an error, as above.
inline std::string requireText(const char* text, const char* what)
{
    return &requirePointer(text, what);
}

/// Returns the `size` bytes at `data`. A null pointer becomes an error, as above, if `size` is not
/// 0.
MXMODULE_API std::vector<char> requireBytes(const void* data, std::size_t size, const char* what);

/// Returns the `count` texts at `texts`. A null pointer becomes an error, as above, that says what
/// `all` of them and what `each` should be.
MXMODULE_API std::vector<std::string> requireTexts(const char* const* texts, std::size_t count,
                                                   const char* all, const char* each);

/// Returns the fieldbus of C++. A number that is none becomes the error `MXMODULE_MISUSE`.
MXMODULE_API Fieldbus fieldbusOf(mxmodule_fieldbus fieldbus);

/// Returns the style with `separator`, and a byte order mark if `mark` is not 0. Another separator
/// than ',', ';' and a tab becomes such an error.
MXMODULE_API CsvStyle csvStyleOf(char separator, int mark);

/// Returns new bytes for C.
MXMODULE_API mxmodule_bytes* newBytes(std::string content);

/// The same.
MXMODULE_API mxmodule_bytes* newBytes(const std::vector<char>& content);

/// Returns as bytes what `convert` returns for what `handle` leads to. A null pointer becomes an
/// error, as above.
template <typename Handle, typename Convert>
mxmodule_bytes* bytesOfHandle(Handle* handle, const char* what, mxmodule_error** error,
                              const Convert& convert)
{
    return callFromC(error, [&] { return newBytes(convert(requirePointer(handle, what))); });
}

/// Returns a new module for C.
MXMODULE_API mxmodule_module* newModule(const Module& module);

/// Returns `findings` as JSON, schema "mxmodule.findings" version 1.
MXMODULE_API std::string findingsJson(const std::vector<Finding>& findings);

} // namespace mxmodule
