#pragma once

#include <mxmodule/mxmodule.h>

#include <memory>
#include <string>

namespace testkit {

/// An object of a C interface, freed by `freeObject` when it goes.
template <typename Object, void (*freeObject)(Object*)>
struct FreedBy
{
    void operator()(Object* object) const { freeObject(object); }
};
template <typename Object, void (*freeObject)(Object*)>
using FromC = std::unique_ptr<Object, FreedBy<Object, freeObject>>;

/// Returns the content of `bytes` and frees it; "null" for a null pointer.
inline std::string contentOf(mxmodule_bytes* bytes)
{
    const FromC<mxmodule_bytes, mxmodule_bytes_free> freed(bytes);
    return bytes == nullptr ? "null"
                            : std::string(mxmodule_bytes_data(bytes), mxmodule_bytes_size(bytes));
}

/// Where a function of a C interface stores its error. It says "code TEXT", such as "5 Found a null
/// pointer, expected a module", and "none" without one.
class ErrorFromC
{
public:
    ErrorFromC() = default;
    ~ErrorFromC() { mxmodule_error_free(stored); }
    ErrorFromC(const ErrorFromC&) = delete;
    ErrorFromC& operator=(const ErrorFromC&) = delete;

    /// For one call after another.
    mxmodule_error** place()
    {
        mxmodule_error_free(stored);
        stored = nullptr;
        return &stored;
    }

    const mxmodule_error* error() const { return stored; }

    std::string shown() const
    {
        return stored == nullptr ? "none"
                                 : std::to_string(mxmodule_error_code(stored)) + " " +
                                       mxmodule_error_text(stored);
    }

private:
    mxmodule_error* stored = nullptr;
};

/// Returns the error of `call`, which takes a place for it, as `ErrorFromC::shown`. A call without
/// an error must have a result, one with an error must have none, also if it does not take it.
template <typename Call>
std::string errorOf(const Call& call)
{
    ErrorFromC error;
    const bool hasResult = call(error.place()) ? true : false;
    if (error.error() != nullptr && call(static_cast<mxmodule_error**>(nullptr))) {
        return "a result without a place for the error";
    }
    return hasResult == (error.error() == nullptr) ? error.shown() : "result and error disagree";
}

} // namespace testkit
