#include "ModuleSearch.h"

#include "ContentTables.h"
#include "RecordRow.h"

#include <Poco/NumberParser.h>
#include <Poco/String.h>

#include <algorithm>
#include <deque>
#include <iterator>

namespace devices::database {

using namespace Poco::Data::Keywords;

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
    static const std::vector<FieldSql> fields = {
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
        throw Poco::InvalidArgumentException("there is no field \"" + name + "\"");
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
    SearchSql(Poco::Data::Session& session, const SqlDialect& sqlDialect)
        : statement(session), dialect(sqlDialect)
    {}

    void addWord(const std::string& word)
    {
        texts.push_back(foldedText(word));
        addCondition(found("m.search_text", placeholder(texts.back())));
    }

    void add(const ModuleCondition& condition)
    {
        const FieldSql& field = fieldNamed(condition.field);
        const std::string comparison = field.field.isNumber ? numberComparison(field, condition)
                                                            : textComparison(field, condition);
        addCondition(Poco::replace(std::string(field.condition), std::string("{}"), comparison));
    }

    Poco::Data::Statement& complete()
    {
        statement << "SELECT p.family, p.module_id, p.brand_label_name, p.in_data_size,"
                     " p.out_data_size, length(p.default_parameter_block), length(p.mx_file_data),"
                     " CASE WHEN m.module IS NULL THEN 0 ELSE 1 END FROM device_properties p"
                     " LEFT JOIN modules m ON m.record_family = p.family AND"
                     " m.record_module_id = p.module_id" +
                         conditions + " ORDER BY p.family, p.module_id";
        return statement;
    }

private:
    // Binds the value; the statement keeps a reference to it.
    template <typename Value>
    std::string placeholder(Value& value)
    {
        statement, use(value);
        return "$" + std::to_string(++bound);
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
            throw Poco::InvalidArgumentException("field \"" + condition.field +
                                                 "\" is compared with a whole number, not with \"" +
                                                 condition.value + "\"");
        }
        numbers.push_back(number);
        return field.value + std::string(operatorOf(condition.comparison)) +
               placeholder(numbers.back());
    }

    std::string textComparison(const FieldSql& field, const ModuleCondition& condition)
    {
        texts.push_back(condition.value);
        const std::string value = placeholder(texts.back());
        const char* const comparison = operatorOf(condition.comparison);
        return comparison == nullptr ? found(field.value, value)
                                     : field.value + std::string(comparison) + value;
    }

    void addCondition(const std::string& condition)
    {
        conditions += (conditions.empty() ? " WHERE " : " AND ") + condition;
    }

    std::deque<std::string> texts;
    std::deque<Poco::Int64> numbers;
    Poco::Data::Statement statement;
    const SqlDialect& dialect;
    std::string conditions;
    unsigned bound = 0;
};

std::vector<ModuleSummary> fetchSummaries(Poco::Data::Statement& select)
{
    std::vector<Poco::Data::BLOB> family;
    std::vector<Poco::Data::BLOB> moduleId;
    std::vector<Poco::Data::BLOB> label;
    std::vector<Poco::Int64> in;
    std::vector<Poco::Int64> out;
    std::vector<Poco::Int64> parameters;
    std::vector<Poco::Int64> file;
    std::vector<int> hasContent;
    select, into(family), into(moduleId), into(label), into(in), into(out), into(parameters),
        into(file), into(hasContent), now;
    std::vector<ModuleSummary> summaries;
    for (std::size_t i = 0; i < family.size(); ++i) {
        summaries.push_back({toText(family[i]), toText(moduleId[i]), toText(label[i]),
                             static_cast<std::uint32_t>(in[i]), static_cast<std::uint32_t>(out[i]),
                             static_cast<std::uint64_t>(parameters[i]),
                             // A stored file has one byte more than the file on disk.
                             static_cast<std::uint64_t>(file[i] > 0 ? file[i] - 1 : 0),
                             hasContent[i] != 0});
    }
    return summaries;
}

} // namespace

std::vector<ModuleSummary> searchModules(Poco::Data::Session& session, const SqlDialect& dialect,
                                         const ModuleQuery& query)
{
    SearchSql search(session, dialect);
    for (const std::string& word : query.words) {
        search.addWord(word);
    }
    for (const ModuleCondition& condition : query.conditions) {
        search.add(condition);
    }
    return fetchSummaries(search.complete());
}

const std::vector<ModuleField>& moduleFields()
{
    static const std::vector<ModuleField> fields = [] {
        std::vector<ModuleField> list;
        std::transform(fieldsWithSql().begin(), fieldsWithSql().end(), std::back_inserter(list),
                       [](const FieldSql& field) { return field.field; });
        return list;
    }();
    return fields;
}

} // namespace devices::database
