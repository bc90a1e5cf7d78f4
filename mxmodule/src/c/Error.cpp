#include "c/Handles.h"

#include <mxmodule/c/CallFromC.h>

#include <text/Utf8.h>

#include <algorithm>
#include <new>
#include <stdexcept>
#include <vector>

namespace mxmodule {

namespace {

// A null pointer or a number that a function of the C interface does not take.
class Misuse : public std::invalid_argument
{
public:
    using std::invalid_argument::invalid_argument;
};

// Made when the library is loaded: without memory there is none for an error either.
mxmodule_error noMemory{MXMODULE_NO_MEMORY, "No memory", "", "", findingsJson({})};

mxmodule_code codeOf(Origin origin)
{
    switch (origin) {
    case Origin::Request:
        return MXMODULE_REQUEST;
    case Origin::Input:
        return MXMODULE_INPUT;
    default:
        return MXMODULE_OUTPUT;
    }
}

// Notes may follow the last error.
const Finding& reasonOf(const std::vector<Finding>& findings)
{
    const auto found = std::find_if(findings.rbegin(), findings.rend(), [](const Finding& one) {
        return one.severity == Severity::Error;
    });
    return found == findings.rend() ? findings.back() : *found;
}

mxmodule_error* newError(mxmodule_code code, const std::vector<Finding>& findings)
{
    const Finding& reason = reasonOf(findings);
    return new mxmodule_error{code, text::toUtf8(reason.text), text::toUtf8(reason.place),
                              text::toUtf8(reason.hint), findingsJson(findings)};
}

mxmodule_error* newError(mxmodule_code code, const char* text)
{
    return newError(code, {{Severity::Error, "", text, "", Origin::Request}});
}

mxmodule_error* newErrorOfException()
{
    try {
        throw;
    } catch (const Failure& failure) {
        return newError(codeOf(failure.reason().origin), failure.findings());
    } catch (const Misuse& misuse) {
        return newError(MXMODULE_MISUSE, misuse.what());
    } catch (const std::bad_alloc&) {
        return &noMemory;
    } catch (const std::exception& failure) {
        return newError(MXMODULE_DEFECT, failure.what());
    } catch (...) {
        return newError(MXMODULE_DEFECT, "An exception of unknown type");
    }
}

} // namespace

mxmodule_error* errorOfException() noexcept
{
    try {
        return newErrorOfException();
    } catch (...) {
        return &noMemory;
    }
}

void misused(const std::string& text)
{
    throw Misuse(text);
}

} // namespace mxmodule

mxmodule_code mxmodule_error_code(const mxmodule_error* error)
{
    return error == nullptr ? mxmodule_code{} : error->code;
}

const char* mxmodule_error_text(const mxmodule_error* error)
{
    return error == nullptr ? "" : error->text.c_str();
}

const char* mxmodule_error_place(const mxmodule_error* error)
{
    return error == nullptr ? "" : error->place.c_str();
}

const char* mxmodule_error_hint(const mxmodule_error* error)
{
    return error == nullptr ? "" : error->hint.c_str();
}

const char* mxmodule_error_findings(const mxmodule_error* error)
{
    return error == nullptr ? "" : error->findings.c_str();
}

void mxmodule_error_free(mxmodule_error* error)
{
    if (error != &mxmodule::noMemory) {
        delete error;
    }
}
