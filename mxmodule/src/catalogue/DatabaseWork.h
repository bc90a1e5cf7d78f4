#pragma once

#include <mxmodule/Finding.h>

#include <stdexcept>
#include <string>

namespace mxmodule {

/// Runs `work`, which calls only the database. Its `std::runtime_error` becomes a `Failure` with
/// `hint`.
template <typename Work>
auto withDatabase(const std::string& hint, const Work& work) -> decltype(work())
{
    try {
        return work();
    } catch (const std::runtime_error& failure) {
        throw Failure(Origin::Output, "", failure.what(), hint);
    }
}

} // namespace mxmodule
