#include "ModuleFields.h"

#include "ContentTables.h"

#include <Poco/String.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <vector>

namespace devices::database {

namespace {

constexpr const char* plain = "{}";

// The module of the catalogue, which some records do not have. A subquery: of a join SQLite would
// read this table first, as a whole.
constexpr const char* isOfRecord =
    "m.record_family = p.family AND m.record_module_id = p.module_id";

std::string catalogueColumn(const std::string& column)
{
    return "(SELECT m." + column + " FROM modules m WHERE " + std::string(isOfRecord) + ")";
}

std::string partsOfModule(const std::string& table)
{
    return "FROM modules m CROSS JOIN " + table + " c WHERE " + isOfRecord +
           " AND c.family = m.family AND c.module = m.module";
}

std::string anyOf(const std::string& table)
{
    return "EXISTS (SELECT 1 " + partsOfModule(table) + " AND {})";
}

std::string numberOfParts(const std::string& table)
{
    return "(SELECT count(*) " + partsOfModule(table) + ")";
}

const std::vector<FieldSql>& fieldsWithSql()
{
    // Never destroyed: a host may still query while its own statics are destroyed.
    static const auto& fields = *new std::vector<FieldSql>{
        {{"module_id", false, "module identifier, eight hexadecimal digits"},
         catalogueColumn("module"),
         plain,
         {},
         Fact::ModuleId},
        {{"family", false, "module family"}, catalogueColumn("family"), plain, {}, Fact::Family},
        {{"label", false, "label text"}, catalogueColumn("label"), plain, TextClass::Names, {}},
        {{"order_code", false, "order code"},
         catalogueColumn("order_code"),
         plain,
         TextClass::Names,
         {}},
        {{"in_bytes", true, "input process data in bytes"}, "p.in_bytes", plain, {}, Fact::InBytes},
        {{"out_bytes", true, "output process data in bytes"},
         "p.out_bytes",
         plain,
         {},
         Fact::OutBytes},
        {{"parameter_bytes", true, "default parameter block in bytes"},
         "p.parameter_bytes",
         plain,
         {},
         Fact::ParameterBytes},
        {{"file_bytes", true, "mx file in bytes"}, "p.file_bytes", plain, {}, Fact::FileBytes},
        {{"channels", true, "number of channels"},
         numberOfParts("channels"),
         plain,
         {},
         Fact::Channels},
        {{"parameters", true, "number of parameters"},
         numberOfParts("parameters"),
         plain,
         {},
         Fact::Parameters},
        {{"channel", false, "name of any of its channels"},
         "c.name",
         anyOf("channels"),
         TextClass::Channels,
         {}},
        {{"direction", false, "direction of any of its channels, in or out"},
         "c.direction",
         anyOf("channels"),
         {},
         Fact::Direction},
        {{"size_letter", false, "IEC size letter of any of its channels"},
         "c.size_letter",
         anyOf("channels"),
         {},
         Fact::SizeLetter},
        {{"parameter", false, "name of any of its parameters"},
         "c.name",
         anyOf("parameters"),
         TextClass::Parameters,
         {}},
        {{"unit", false, "unit of any of its parameters"},
         "c.unit",
         anyOf("parameters"),
         {},
         Fact::Unit},
        {{"option", false, "text of any option of its parameters"},
         "c.text",
         anyOf("options"),
         TextClass::Options,
         {}}};
    return fields;
}

const char* operatorOf(Comparison comparison)
{
    switch (comparison) {
    case Comparison::Equal:
        return " = ";
    case Comparison::NotEqual:
        return " <> ";
    case Comparison::Less:
        return " < ";
    case Comparison::LessOrEqual:
        return " <= ";
    case Comparison::Greater:
        return " > ";
    case Comparison::GreaterOrEqual:
        return " >= ";
    case Comparison::Contains:
        break;
    }
    return nullptr;
}

std::string foundSql(const std::string& text, const std::string& part, const SqlDialect& dialect)
{
    return std::string(dialect.findText) + "(" + text + ", " + part + ") > 0";
}

std::string numberComparison(const FieldSql& field, const ModuleCondition& condition,
                             BoundValues& values)
{
    comparedNumber(condition); // or a failure
    return field.value + std::string(operatorOf(condition.comparison)) + "CAST(" +
           values.text(condition.value) + " AS BIGINT)";
}

std::string textComparison(const FieldSql& field, const ModuleCondition& condition,
                           const SqlDialect& dialect, BoundValues& values)
{
    if (!isReadable(condition.value)) {
        throw SqlFailure("field \"" + condition.field +
                         "\" is compared with a text of UTF-8 without NUL");
    }
    const std::string value = values.text(condition.value);
    const char* const comparison = operatorOf(condition.comparison);
    return comparison == nullptr ? foundSql(field.value, value, dialect)
                                 : field.value + std::string(comparison) + value;
}

} // namespace

const FieldSql& fieldNamed(const std::string& name)
{
    const auto& fields = fieldsWithSql();
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const FieldSql& field) {
        return field.field.name == name;
    });
    if (found == fields.end()) {
        throw SqlFailure("there is no field \"" + name + "\"");
    }
    return *found;
}

std::int64_t comparedNumber(const ModuleCondition& condition)
{
    std::int64_t number = 0;
    const char* const end = condition.value.data() + condition.value.size();
    const auto result = std::from_chars(condition.value.data(), end, number);
    if (condition.comparison == Comparison::Contains || result.ec != std::errc() ||
        result.ptr != end) {
        throw SqlFailure("field \"" + condition.field +
                         "\" is compared with a whole number, not with \"" + condition.value +
                         "\"");
    }
    return number;
}

bool namesOneModule(const ModuleCondition& condition)
{
    return condition.field == "module_id" && condition.comparison == Comparison::Equal;
}

std::string conditionSql(const ModuleCondition& condition, const SqlDialect& dialect,
                         BoundValues& values)
{
    const FieldSql& field = fieldNamed(condition.field);
    const std::string comparison = field.field.isNumber
                                       ? numberComparison(field, condition, values)
                                       : textComparison(field, condition, dialect, values);
    std::string sql = Poco::replace(field.condition, std::string("{}"), comparison);
    if (namesOneModule(condition)) {
        sql += " AND p.module_id = " + values.bytes(condition.value); // the key of a table
    }
    return sql;
}

const std::vector<ModuleField>& moduleFields()
{
    static const std::vector<ModuleField>& fields = []() -> const std::vector<ModuleField>& {
        auto& list = *new std::vector<ModuleField>;
        std::transform(fieldsWithSql().begin(), fieldsWithSql().end(), std::back_inserter(list),
                       [](const FieldSql& field) { return field.field; });
        return list;
    }();
    return fields;
}

} // namespace devices::database
