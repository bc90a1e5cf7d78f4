#pragma once

#include <devices/database/DeviceDatabase.h>
#include <mxmodule/Finding.h>

#include <stdexcept>
#include <string>

namespace mxmodule {

/// Runs `work`, which calls only the database. Its `std::runtime_error` becomes a `Failure` with
/// `hint`, or with what to do when it is not known whether a change is stored.
template <typename Work>
auto withDatabase(const std::string& hint, const Work& work) -> decltype(work())
{
    try {
        return work();
    } catch (const devices::database::OutcomeUnknown& failure) {
        throw Failure(Origin::Output, "", failure.what(),
                      "the database has all of the changes or none: make them again");
    } catch (const std::runtime_error& failure) {
        throw Failure(Origin::Output, "", failure.what(), hint);
    }
}

} // namespace mxmodule
