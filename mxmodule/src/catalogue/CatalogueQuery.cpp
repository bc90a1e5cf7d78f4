#include "catalogue/CatalogueQueryContent.h"

#include <text/NearestWords.h>
#include <text/ShownText.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <sstream>
#include <utility>

namespace mxmodule {

namespace {

using devices::database::Comparison;
using devices::database::ModuleCondition;
using devices::database::ModuleField;
using devices::database::moduleFields;

struct Operator
{
    const char* text;
    Comparison comparison;
};

// Longer operators first: "<=" begins with "<".
constexpr std::array<Operator, 8> operators = {{{"!=", Comparison::NotEqual},
                                                {"<=", Comparison::LessOrEqual},
                                                {">=", Comparison::GreaterOrEqual},
                                                {"==", Comparison::Equal},
                                                {"=", Comparison::Equal},
                                                {"<", Comparison::Less},
                                                {">", Comparison::Greater},
                                                {"~", Comparison::Contains}}};

// Of numbers and of texts.
constexpr const char* commonComparisons = "= != < <= > >=";

std::vector<std::string> comparisonsOf(const ModuleField& field)
{
    std::istringstream words(commonComparisons);
    std::vector<std::string> all(std::istream_iterator<std::string>(words), {});
    if (!field.isNumber) {
        all.insert(all.begin(), "~");
    }
    return all;
}

[[noreturn]] void reject(const std::string& text, const std::string& reason,
                         std::vector<std::string> accepted = {})
{
    throw Failure(Finding{Severity::Error, "", "\"" + text + "\" " + reason, "", Origin::Request,
                          std::move(accepted)});
}

std::string trimmed(const std::string& text)
{
    const auto begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? ""
                                      : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

std::vector<std::string> fieldNames()
{
    std::vector<std::string> names;
    for (const ModuleField& field : moduleFields()) {
        names.push_back(field.name);
    }
    return names;
}

const ModuleField& fieldOf(const std::string& text, const std::string& name)
{
    for (const ModuleField& field : moduleFields()) {
        if (field.name == name) {
            return field;
        }
    }
    reject(text, "names no field" + text::acceptedWords(name, fieldNames()), fieldNames());
}

// A text value may begin or end with blanks. Only in "FIELD = TEXT" the blank after the operator
// does not belong to it.
std::string valueAfter(const std::string& text, std::size_t place, bool isSpaced)
{
    return text.substr(place + (isSpaced && text.compare(place, 1, " ") == 0 ? 1 : 0));
}

bool isWholeNumber(const std::string& value)
{
    long long number = 0;
    const char* const end = value.data() + value.size();
    const auto result = std::from_chars(value.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

ModuleCondition moduleCondition(const std::string& text)
{
    const auto place = text.find_first_of("!<>=~");
    const auto* const found =
        std::find_if(operators.begin(), operators.end(), [&](const Operator& candidate) {
            const std::string sign = candidate.text;
            return place != std::string::npos && text.compare(place, sign.size(), sign) == 0;
        });
    if (found == operators.end()) {
        reject(text, std::string("is not a condition, expected a field, one of ") +
                         commonComparisons + " ~ and a value, such as in_bytes>4");
    }
    const ModuleField& field = fieldOf(text, trimmed(text.substr(0, place)));
    const std::string value =
        valueAfter(text, place + std::string(found->text).size(), text[place - 1] == ' ');
    if (field.isNumber && found->comparison == Comparison::Contains) {
        reject(text, "looks for a text in the number " + field.name + ", expected one of " +
                         commonComparisons);
    }
    if (field.isNumber && !isWholeNumber(trimmed(value))) {
        reject(text, "compares " + field.name + " with \"" + trimmed(value) +
                         "\", expected a whole number");
    }
    return {field.name, found->comparison,
            field.isNumber ? trimmed(value) : text::forTerminal(value)};
}

std::vector<std::string> searchWords(const std::string& text)
{
    std::istringstream stream(text::forTerminal(text));
    return {std::istream_iterator<std::string>(stream), {}};
}

} // namespace

std::vector<ConditionField> conditionFields()
{
    std::vector<ConditionField> fields;
    for (const ModuleField& field : moduleFields()) {
        fields.push_back({field.name, field.isNumber, field.meaning, comparisonsOf(field)});
    }
    return fields;
}

CatalogueQuery::CatalogueQuery(std::shared_ptr<const Content> made) : content(std::move(made)) {}

CatalogueQuery::CatalogueQuery() : content(std::make_shared<const Content>()) {}

CatalogueQuery::CatalogueQuery(const std::string& words, const std::vector<std::string>& conditions)
{
    Content made;
    made.query.words = searchWords(words);
    for (const std::string& condition : conditions) {
        made.query.conditions.push_back(moduleCondition(condition));
    }
    content = std::make_shared<const Content>(std::move(made));
}

CatalogueQuery CatalogueQuery::limitedTo(std::size_t count) const
{
    Content made = *content;
    made.query.limit = count;
    return CatalogueQuery(std::make_shared<const Content>(std::move(made)));
}

CatalogueQuery CatalogueQuery::after(const std::string& moduleId, const std::string& family) const
{
    Content made = *content;
    made.query.after = {family, moduleId};
    return CatalogueQuery(std::make_shared<const Content>(std::move(made)));
}

} // namespace mxmodule
