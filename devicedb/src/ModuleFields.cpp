#include "ModuleFields.h"

#include <Poco/NumberParser.h>
#include <Poco/String.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace devices::database {

namespace {

constexpr const char* plain = "{}";
constexpr const char* ofChannels = "EXISTS (SELECT 1 FROM channels c WHERE c.family = m.family"
                                   " AND c.module = m.module AND {})";
constexpr const char* ofParameters = "EXISTS (SELECT 1 FROM parameters c WHERE c.family = m.family"
                                     " AND c.module = m.module AND {})";
constexpr const char* ofOptions = "EXISTS (SELECT 1 FROM options c WHERE c.family = m.family"
                                  " AND c.module = m.module AND {})";

const std::vector<FieldSql>& fieldsWithSql()
{
    // Never destroyed: a host may still query while its own statics are destroyed.
    static const auto& fields = *new std::vector<FieldSql>{
        {{"module_id", false, "module identifier, eight hexadecimal digits"},
         "m.module",
         plain,
         {},
         {}},
        {{"family", false, "module family"}, "m.family", plain, {}, {}},
        {{"label", false, "label text"}, "m.label", plain, TextClass::Names, {}},
        {{"order_code", false, "order code"}, "m.order_code", plain, TextClass::Names, {}},
        {{"in_bytes", true, "input process data in bytes"},
         "p.in_data_size",
         plain,
         {},
         Fact::InBytes},
        {{"out_bytes", true, "output process data in bytes"},
         "p.out_data_size",
         plain,
         {},
         Fact::OutBytes},
        {{"parameter_bytes", true, "default parameter block in bytes"},
         "length(p.default_parameter_block)",
         plain,
         {},
         Fact::ParameterBytes},
        {{"file_bytes", true, "mx file in bytes"},
         "(length(p.mx_file_data) - 1)",
         plain,
         {},
         Fact::FileBytes},
        {{"channels", true, "number of channels"},
         "(SELECT count(*) FROM channels c WHERE c.family = m.family AND c.module = m.module)",
         plain,
         {},
         Fact::Channels},
        {{"parameters", true, "number of parameters"},
         "(SELECT count(*) FROM parameters c WHERE c.family = m.family AND c.module = m.module)",
         plain,
         {},
         Fact::Parameters},
        {{"channel", false, "name of any of its channels"},
         "c.name",
         ofChannels,
         TextClass::Channels,
         {}},
        {{"direction", false, "direction of any of its channels, in or out"},
         "c.direction",
         ofChannels,
         {},
         Fact::Direction},
        {{"size_letter", false, "IEC size letter of any of its channels"},
         "c.size_letter",
         ofChannels,
         {},
         Fact::SizeLetter},
        {{"parameter", false, "name of any of its parameters"},
         "c.name",
         ofParameters,
         TextClass::Parameters,
         {}},
        {{"unit", false, "unit of any of its parameters"}, "c.unit", ofParameters, {}, Fact::Unit},
        {{"option", false, "text of any option of its parameters"},
         "c.text",
         ofOptions,
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
    Poco::Int64 number = 0;
    if (condition.comparison == Comparison::Contains ||
        !Poco::NumberParser::tryParse64(condition.value, number)) {
        throw SqlFailure("field \"" + condition.field +
                         "\" is compared with a whole number, not with \"" + condition.value +
                         "\"");
    }
    return number;
}

std::string conditionSql(const ModuleCondition& condition, const SqlDialect& dialect,
                         BoundValues& values)
{
    const FieldSql& field = fieldNamed(condition.field);
    const std::string comparison = field.field.isNumber
                                       ? numberComparison(field, condition, values)
                                       : textComparison(field, condition, dialect, values);
    return Poco::replace(std::string(field.condition), std::string("{}"), comparison);
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
