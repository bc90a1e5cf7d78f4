#include "ModuleSearch.h"

#include "ContentTables.h"

#include <Poco/NumberParser.h>
#include <Poco/String.h>

#include <algorithm>
#include <iterator>

namespace devices::database {

namespace {

// A field and its SQL. "{}" in `condition` stands for the comparison of `value`.
struct FieldSql
{
    ModuleField field;
    const char* value;
    const char* condition;
};

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
        {{"module_id", false, "module identifier, eight hexadecimal digits"}, "m.module", plain},
        {{"family", false, "module family"}, "m.family", plain},
        {{"label", false, "label text"}, "m.label", plain},
        {{"order_code", false, "order code"}, "m.order_code", plain},
        {{"in_bytes", true, "input process data in bytes"}, "p.in_data_size", plain},
        {{"out_bytes", true, "output process data in bytes"}, "p.out_data_size", plain},
        {{"parameter_bytes", true, "default parameter block in bytes"},
         "length(p.default_parameter_block)",
         plain},
        {{"file_bytes", true, "mx file in bytes"}, "(length(p.mx_file_data) - 1)", plain},
        {{"channels", true, "number of channels"},
         "(SELECT count(*) FROM channels c WHERE c.family = m.family AND c.module = m.module)",
         plain},
        {{"parameters", true, "number of parameters"},
         "(SELECT count(*) FROM parameters c WHERE c.family = m.family AND c.module = m.module)",
         plain},
        {{"channel", false, "name of any of its channels"}, "c.name", ofChannels},
        {{"direction", false, "direction of any of its channels, in or out"},
         "c.direction",
         ofChannels},
        {{"size_letter", false, "IEC size letter of any of its channels"},
         "c.size_letter",
         ofChannels},
        {{"parameter", false, "name of any of its parameters"}, "c.name", ofParameters},
        {{"unit", false, "unit of any of its parameters"}, "c.unit", ofParameters},
        {{"option", false, "text of any option of its parameters"}, "c.text", ofOptions}};
    return fields;
}

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

// The SQL of a query and the values bound in it.
class SearchSql
{
public:
    explicit SearchSql(const SqlDialect& sqlDialect) : dialect(sqlDialect) {}

    void addWord(const std::string& word)
    {
        addCondition(found("m.search_text", placeholder(foldedText(word))));
    }

    void add(const ModuleCondition& condition)
    {
        const FieldSql& field = fieldNamed(condition.field);
        const std::string comparison = field.field.isNumber ? numberComparison(field, condition)
                                                            : textComparison(field, condition);
        addCondition(Poco::replace(std::string(field.condition), std::string("{}"), comparison));
    }

    std::string select() const
    {
        return "SELECT p.family, p.module_id, p.brand_label_name, p.in_data_size,"
               " p.out_data_size, length(p.default_parameter_block), length(p.mx_file_data),"
               " CASE WHEN m.module IS NULL THEN 0 ELSE 1 END FROM device_properties p"
               " LEFT JOIN modules m ON m.record_family = p.family AND"
               " m.record_module_id = p.module_id" +
               conditions + " ORDER BY p.family, p.module_id";
    }

    const std::vector<SqlParameter>& values() const { return bound; }

private:
    std::string placeholder(const std::string& value)
    {
        bound.push_back({value, false});
        return "$" + std::to_string(bound.size());
    }

    std::string found(const std::string& text, const std::string& part) const
    {
        return std::string(dialect.findText) + "(" + text + ", " + part + ") > 0";
    }

    std::string numberComparison(const FieldSql& field, const ModuleCondition& condition)
    {
        Poco::Int64 number = 0;
        if (condition.comparison == Comparison::Contains ||
            !Poco::NumberParser::tryParse64(condition.value, number)) {
            throw SqlFailure("field \"" + condition.field +
                             "\" is compared with a whole number, not with \"" + condition.value +
                             "\"");
        }
        return field.value + std::string(operatorOf(condition.comparison)) + "CAST(" +
               placeholder(condition.value) + " AS BIGINT)";
    }

    std::string textComparison(const FieldSql& field, const ModuleCondition& condition)
    {
        const std::string value = placeholder(condition.value);
        const char* const comparison = operatorOf(condition.comparison);
        return comparison == nullptr ? found(field.value, value)
                                     : field.value + std::string(comparison) + value;
    }

    void addCondition(const std::string& condition)
    {
        conditions += (conditions.empty() ? " WHERE " : " AND ") + condition;
    }

    const SqlDialect& dialect;
    std::string conditions;
    std::vector<SqlParameter> bound;
};

ModuleSummary toSummary(const SqlConnection::Row& row)
{
    ModuleSummary summary;
    summary.family = row[0];
    summary.moduleIdText = row[1];
    summary.brandLabelName = row[2];
    summary.inDataSize = static_cast<std::uint32_t>(numberOf(row[3]));
    summary.outDataSize = static_cast<std::uint32_t>(numberOf(row[4]));
    summary.parameterBlockSize = static_cast<std::uint64_t>(numberOf(row[5]));
    const auto stored = static_cast<std::uint64_t>(numberOf(row[6]));
    summary.mxFileSize = stored == 0 ? 0 : stored - 1; // one byte more than the file on disk
    summary.hasContent = row[7] == "1";
    return summary;
}

} // namespace

std::vector<ModuleSummary> searchModules(SqlConnection& connection, const ModuleQuery& query)
{
    SearchSql search(connection.dialect());
    for (const std::string& word : query.words) {
        search.addWord(word);
    }
    for (const ModuleCondition& condition : query.conditions) {
        search.add(condition);
    }
    constexpr std::size_t columns = 8;
    std::vector<ModuleSummary> found;
    connection.query(search.select(), search.values(), columns,
                     [&](const SqlConnection::Row& row) { found.push_back(toSummary(row)); });
    return found;
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
