#pragma once

#include "devices/database/DeviceDatabaseApi.h"

#include <cstdint>
#include <string>
#include <vector>

namespace devices::database {

/// How a field of a module is compared with a value.
enum class Comparison
{
    Equal,          ///< "="
    NotEqual,       ///< "!="
    Less,           ///< "<"
    LessOrEqual,    ///< "<="
    Greater,        ///< ">"
    GreaterOrEqual, ///< ">="
    Contains        ///< The text holds the value; of texts only.
};

/// A field of a module that a condition may name.
struct ModuleField
{
    std::string name;    ///< As written in a condition.
    bool isNumber;       ///< Compared as a whole number; else as text.
    std::string meaning; ///< For help texts.
};

/// One condition on a module.
struct ModuleCondition
{
    std::string field;     ///< One of `moduleFields`.
    Comparison comparison; ///< How.
    std::string value;     ///< Decimal for a number.
};

/// The modules to select; an empty query selects all.
struct ModuleQuery
{
    /// Each occurs in label, order code, or the name of a channel or parameter; case is ignored.
    std::vector<std::string> words;
    std::vector<ModuleCondition> conditions; ///< All must hold.
};

/// The data of a module in a list. The texts are the bytes of the record.
struct ModuleSummary
{
    std::string family;                   ///< Such as "kv38".
    std::string moduleIdText;             ///< Eight hexadecimal digits.
    std::string brandLabelName;           ///< Printed on the module.
    std::uint32_t inDataSize = 0;         ///< Input process data in bytes.
    std::uint32_t outDataSize = 0;        ///< Output process data in bytes.
    std::uint64_t parameterBlockSize = 0; ///< Default parameters in bytes.
    std::uint64_t mxFileSize = 0;         ///< Of the file on disk, in bytes.
    bool hasContent = false;              ///< Whether the catalogue has its content.
};

/// Returns the fields that a condition may name.
DEVICE_DATABASE_API const std::vector<ModuleField>& moduleFields();

} // namespace devices::database
