#include "text/JsonText.h"

#include "text/ShownText.h"

namespace text {

Json jsonSchema(const char* name, int version)
{
    return {{"name", name}, {"version", version}};
}

std::string jsonText(const Json& json)
{
    constexpr int indent = 2;
    return harmlessJson(json.dump(indent)) + "\n";
}

} // namespace text
