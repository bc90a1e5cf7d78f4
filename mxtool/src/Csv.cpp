#include "Csv.h"

#include "ShownText.h"

#include <algorithm>
#include <array>

namespace mxtool {

namespace {

// The wide forms are taken for formulas in some languages.
bool startsFormula(const std::string& field)
{
    constexpr std::array<const char*, 8> starts = {"=",      "+",      "-",      "@",
                                                   "\uFF1D", "\uFF0B", "\uFF0D", "\uFF20"};
    return std::any_of(starts.begin(), starts.end(),
                       [&field](const char* start) { return field.rfind(start, 0) == 0; });
}

bool isNumber(const std::string& field)
{
    return field.find_first_not_of("0123456789.", field[0] == '-' ? 1 : 0) == std::string::npos;
}

std::string csvField(const std::string& bytes)
{
    std::string field = forTerminal(bytes);
    if (startsFormula(field) && !isNumber(field)) {
        field.insert(0, 1, '\'');
    }
    if (field.find_first_of(",\"") == std::string::npos) {
        return field;
    }
    std::string quoted = "\"";
    for (const char c : field) {
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    }
    return quoted + "\"";
}

} // namespace

std::string csvLine(const std::vector<std::string>& fields)
{
    std::string line;
    for (const std::string& field : fields) {
        line += (&field == &fields.front() ? "" : ",") + csvField(field);
    }
    return line + "\r\n";
}

} // namespace mxtool
