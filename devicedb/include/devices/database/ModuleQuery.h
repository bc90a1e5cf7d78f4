#pragma once

#include "devices/database/DeviceDatabaseApi.h"

#include <cstddef>
#include <cstdint>
#include <optional>
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

/// The key of a module: the bytes of the record.
struct ModuleKey
{
    std::string family;       ///< Such as "kv38".
    std::string moduleIdText; ///< Eight hexadecimal digits.
};

/// The modules to select; an empty query selects all.
///
/// The best matches are the first: those that have all words in label and order code, then those
/// that need names of channels too, then of parameters, then texts of options; equally good ones,
/// and all of a query without words, in the order of family and module identifier.
struct ModuleQuery
{
    /// Each occurs in label, order code, the name of a channel or parameter, or the text of an
    /// option, as a part of any length. Case and accents are ignored: "zahler" is in "ZÄHLER".
    std::vector<std::string> words;
    std::vector<ModuleCondition> conditions; ///< All must hold.
};

/// A query of which only some modules are wanted, in the order of the result.
struct PagedQuery : ModuleQuery
{
    std::size_t limit = 0;               ///< At most so many modules; 0: all.
    std::optional<ModuleKey> after = {}; ///< Only modules after this one in the order above.
};

/// How the database carries a query out.
struct SearchExplanation
{
    /// Where the modules come from.
    enum class Source
    {
        Index, ///< The search tables: modules with parts of the words, of which each is looked at.
        Order, ///< All modules in their order, each looked at until there are enough.
        Scan   ///< All modules, by their texts: the database is of a version without search tables.
    };

    Source source = Source::Order;  ///< Where they come from.
    std::vector<std::string> words; ///< As they are compared, without case and accents.
    std::vector<std::string> parts; ///< What is looked up in the index.
    std::size_t blocks = 0;         ///< Parts of the index, each of up to 1,024 modules.
    std::size_t candidates = 0;     ///< Modules that the index names for the parts.
    std::size_t notIndexed = 0;     ///< Modules newer than the index: each is looked at.
    std::string sql;                ///< With it the modules are read: $1 ... are values.
};

/// How many modules a database has, and of how many it has the content.
struct ModuleCounts
{
    std::uint64_t modules = 0;     ///< Records.
    std::uint64_t withContent = 0; ///< Of them with content in the catalogue.
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
