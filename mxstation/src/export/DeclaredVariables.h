#pragma once

#include "export/IecAddresses.h"

#include <text/IecNames.h>

#include <string>
#include <vector>

namespace mxstation {

/// A variable of a program for a channel or one bit of it, or a channel without one.
struct DeclaredVariable
{
    std::string identifier;
    std::string address;            ///< Such as "%IX0.0"; empty: it cannot be declared.
    std::string reason;             ///< Why it cannot.
    mxmodule::IecVariable variable; ///< Its type and place.
    std::string comment;            ///< UTF-8, of any characters.
};

/// The variables for the channels of a plan.
struct DeclaredVariables
{
    std::vector<DeclaredVariable> all;       ///< In the order of the channels.
    std::vector<mxmodule::Finding> findings; ///< One for each without an address.
    std::string program;   ///< The name of the station as an identifier that no variable has.
    const char* addresses; ///< What addresses count, as a sentence.

    /// Returns whether there is a variable with an address.
    bool declares() const;
};

/// Returns the variables for the channels of `plan` with addresses of `style`.
DeclaredVariables declaredVariables(const Plan& plan, AddressStyle style);

} // namespace mxstation
