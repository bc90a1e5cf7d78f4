#pragma once

#include <mxmodule/Finding.h>

#include <exception>
#include <string>
#include <vector>

namespace workbench {

/// A call that has no result, and the HTTP status that says why.
class CallFailure : public std::exception
{
public:
    /// Of one error.
    CallFailure(unsigned httpStatus, const std::string& text, const std::string& hint = {});

    unsigned status() const { return httpStatus; }
    const std::vector<mxmodule::Finding>& findings() const { return all; }
    const char* what() const noexcept override { return all.front().text.c_str(); }

private:
    unsigned httpStatus;
    std::vector<mxmodule::Finding> all;
};

} // namespace workbench
