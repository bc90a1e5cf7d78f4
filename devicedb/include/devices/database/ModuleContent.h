#pragma once

#include <optional>
#include <string>
#include <vector>

namespace devices::database {

/// What is inside a module, for the tables of the catalogue that are asked in SQL.
///
/// Unlike the texts of a record these are for reading: valid UTF-8 without NUL bytes. The mx file
/// of the record stays the source; whoever stores a module says how its bytes are shown.
struct ModuleContent
{
    /// A channel.
    struct Channel
    {
        unsigned number = 0;    ///< As the module counts.
        std::string name;       ///< As shown.
        std::string direction;  ///< "in" or "out".
        std::string sizeLetter; ///< IEC size letter; empty: no process data.
        std::string symbol;     ///< Such as "IW2"; empty: no address.
    };

    /// A value that a parameter may take, and its text.
    struct Option
    {
        std::string text;  ///< As shown.
        std::string value; ///< As people read it.
    };

    /// A parameter of a channel or of the module.
    struct Parameter
    {
        std::string name;                ///< As shown.
        std::optional<unsigned> channel; ///< Number of its channel; none: of the module itself.
        unsigned widthBits = 0;          ///< Width of the value in bits; 0: it has none.
        std::string defaultValue;        ///< As people read it, like the two limits.
        std::string minimum;             ///< The lower limit.
        std::string maximum;             ///< The upper limit.
        std::string unit;                ///< Empty: none.
        std::vector<Option> options;     ///< In the order of the module's list.
    };

    std::string label;                 ///< What is printed on the module.
    std::string orderCode;             ///< What it is ordered by.
    std::vector<Channel> channels;     ///< In the order of the module.
    std::vector<Parameter> parameters; ///< In the order of the module.
};

} // namespace devices::database
