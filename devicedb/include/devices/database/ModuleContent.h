#pragma once

#include <optional>
#include <string>
#include <vector>

namespace devices::database {

/// The content of a module, for the tables of the catalogue, which are queried in SQL.
///
/// Unlike the texts of a record these are for display: valid UTF-8 without NUL bytes. The mx file
/// of the record stays the source; the caller that stores a module decides how its bytes are shown.
struct ModuleContent
{
    /// A channel.
    struct Channel
    {
        unsigned number = 0;    ///< In the module's numbering.
        std::string name;       ///< As shown.
        std::string direction;  ///< "in" or "out".
        std::string sizeLetter; ///< IEC size letter; empty: no process data.
        std::string symbol;     ///< Such as "IW2"; empty: no address.
    };

    /// A value that a parameter may take, and its text.
    struct Option
    {
        std::string text;  ///< As shown.
        std::string value; ///< For display.
    };

    /// A parameter of a channel or of the module.
    struct Parameter
    {
        std::string name;                ///< As shown.
        std::optional<unsigned> channel; ///< Number of its channel; empty: of the module itself.
        unsigned widthBits = 0;          ///< Width of the value in bits; 0: no value.
        std::string defaultValue;        ///< For display, like the two limits.
        std::string minimum;             ///< The lower limit.
        std::string maximum;             ///< The upper limit.
        std::string unit;                ///< Empty: none.
        std::vector<Option> options;     ///< In the order of the module's list.
    };

    std::string label;                 ///< Printed on the module.
    std::string orderCode;             ///< The number to order it by.
    std::vector<Channel> channels;     ///< In the order of the module.
    std::vector<Parameter> parameters; ///< In the order of the module.
};

} // namespace devices::database
