#pragma once

#include <mxmodule/mxmodule.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

// Calls of the C interface as C makes them. What they return is freed at the end.

/// Frees what the C interface returned.
struct FreedForC
{
    void operator()(mxmodule_bytes* one) const { mxmodule_bytes_free(one); }
    void operator()(mxmodule_error* one) const { mxmodule_error_free(one); }
    void operator()(mxmodule_module* one) const { mxmodule_free(one); }
    void operator()(mxmodule_composition* one) const { mxmodule_composition_free(one); }
    void operator()(mxmodule_configuration* one) const { mxmodule_configuration_free(one); }
    void operator()(mxmodule_comparison* one) const { mxmodule_comparison_free(one); }
    void operator()(mxmodule_columns* one) const { mxmodule_columns_free(one); }
    void operator()(mxmodule_catalogue* one) const { mxmodule_catalogue_free(one); }
};

/// For calls that do not ask for the error.
constexpr mxmodule_error** noError = nullptr;

template <typename Handle>
using OwnedByC = std::unique_ptr<Handle, FreedForC>;

/// Returns what `call` returns. It is made twice: with an error to be set to a null pointer, and
/// with a null pointer in its place.
template <typename Call>
auto done(const Call& call)
{
    using Handle = std::remove_pointer_t<decltype(call(noError))>;
    const OwnedByC<Handle> without(call(noError));
    EXPECT_NE(without, nullptr);
    char other = 0;
    auto* error = reinterpret_cast<mxmodule_error*>(&other); // as a variable that was not set
    OwnedByC<Handle> result(call(&error));
    EXPECT_EQ(error, nullptr) << mxmodule_error_text(error);
    EXPECT_NE(result, nullptr);
    return result;
}

/// Returns the error of `call`, which is made twice, as above, and has no result.
template <typename Call>
OwnedByC<mxmodule_error> errorOf(const Call& call)
{
    EXPECT_FALSE(call(noError)); // 0 or a null pointer
    char other = 0;
    auto* error = reinterpret_cast<mxmodule_error*>(&other);
    EXPECT_FALSE(call(&error));
    EXPECT_NE(error, nullptr);
    EXPECT_NE(error, reinterpret_cast<mxmodule_error*>(&other));
    return OwnedByC<mxmodule_error>(error);
}

/// Returns the bytes that `call` returns.
template <typename Call>
std::string bytesOf(const Call& call)
{
    const auto bytes = done(call);
    return {mxmodule_bytes_data(bytes.get()), mxmodule_bytes_size(bytes.get())};
}

/// Returns the path of the example module `name`.
inline std::string examplePath(const std::string& name)
{
    return std::string(EXAMPLE_MODULES) + "/" + name;
}

/// Returns the example module `name`.
inline OwnedByC<mxmodule_module> exampleForC(const std::string& name)
{
    return done(
        [&](auto** error) { return mxmodule_load(examplePath(name).c_str(), 0, 0, error); });
}
