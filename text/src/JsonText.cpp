#include "text/JsonText.h"

#include "text/ShownText.h"
#include "text/Utf8.h"

namespace text {

Json jsonSchema(const char* name, int version)
{
    return {{"name", name}, {"version", version}};
}

Json textsJson(const std::vector<std::string>& texts)
{
    return listJson(texts, [](const std::string& one) { return toUtf8(one); });
}

std::string jsonText(const Json& json)
{
    constexpr int indent = 2;
    return harmlessJson(json.dump(indent)) + "\n";
}

} // namespace text
