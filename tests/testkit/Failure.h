#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <typeinfo>

namespace testkit {

/// Runs `operation` and returns the message of the `std::runtime_error` that it throws. It is a
/// test failure when nothing is thrown, or an exception of any other type, derived ones included.
template <class Operation>
std::string failureOf(Operation&& operation)
{
    try {
        operation();
    } catch (const std::exception& failure) {
        EXPECT_EQ(typeid(failure), typeid(std::runtime_error)) << failure.what();
        return failure.what();
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}

} // namespace testkit
