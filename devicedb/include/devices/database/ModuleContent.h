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
    struct Channel
    {
        unsigned number = 0;
        std::string name;
        std::string direction;  ///< "in" or "out".
        std::string sizeLetter; ///< IEC size letter; empty: no process data.
        std::string symbol;     ///< Such as "IW2"; empty: no address.
    };

    struct Option
    {
        std::string text;
        std::string value;
    };

    struct Parameter
    {
        std::string name;
        std::optional<unsigned> channel; ///< Number of its channel; none: of the module itself.
        unsigned widthBits = 0;          ///< Width of the value in bits.
        std::string defaultValue;        ///< As people read it, like the two limits.
        std::string minimum;
        std::string maximum;
        std::string unit;
        std::vector<Option> options; ///< In the order of the module's list.
    };

    std::string label;
    std::string orderCode;
    std::vector<Channel> channels;     ///< In the order of the module.
    std::vector<Parameter> parameters; ///< In the order of the module.
};

} // namespace devices::database
