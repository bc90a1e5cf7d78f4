#pragma once

#include <mxmodule/IecVariable.h>
#include <mxstation/Declarations.h>

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace mxstation {

/// The addresses of a plan's variables in an address style.
class IecAddresses
{
public:
    IecAddresses(const Plan& plan, AddressStyle style);

    /// Returns the address of `variable`, which is one of a channel of the plan, such as "%IX0.0";
    /// empty: the style cannot say it.
    std::optional<std::string> of(const mxmodule::IecVariable& variable) const;

    /// Returns why the style cannot say it: "byte 6 is no multiple of 4".
    static std::string reason(const mxmodule::IecVariable& variable);

    /// Returns what addresses count, as a sentence.
    const char* meaning() const;

private:
    using Space = std::pair<bool, char>; // image and size

    void number(const Plan& plan);

    AddressStyle style;
    // By first bit, for `AddressStyle::Separate`.
    std::map<Space, std::map<std::uint64_t, std::uint64_t>> numbers;
};

} // namespace mxstation
