#include "Csv.h"

#include "ShownText.h"

namespace mxtool {

namespace {

bool startsFormula(const std::string& field)
{
    return !field.empty() && std::string("=+-@\t\r").find(field[0]) != std::string::npos;
}

bool isNumber(const std::string& field)
{
    return field.find_first_not_of("0123456789.", field[0] == '-' ? 1 : 0) == std::string::npos;
}

std::string csvField(const std::string& bytes)
{
    std::string field = toUtf8(bytes);
    if (startsFormula(field) && !isNumber(field)) {
        field.insert(0, 1, '\'');
    }
    if (field.find_first_of(",\"\r\n") == std::string::npos) {
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
