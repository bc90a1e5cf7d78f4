#include "explain/ExplanationParts.h"

#include <text/Hexadecimal.h>
#include <text/JsonText.h>
#include <text/Utf8.h>

namespace mxmodule {

namespace {

// Numbers of more than 32 bits are written as strings: some JSON readers round them.
text::Json valueJson(const ExplainedPart& part)
{
    switch (part.kind) {
    case ExplainedPart::Kind::Number:
        return part.length > 4 ? text::Json(part.value) : text::Json(std::stoul(part.value));
    case ExplainedPart::Kind::Text:
        return part.value;
    default:
        return {};
    }
}

text::Json indexJson(const std::optional<std::size_t>& index)
{
    return index ? text::Json(*index) : text::Json();
}

text::Json partJson(const Explanation& explanation, const ExplainedPart& part)
{
    return {{"offset", part.offset},          {"length", part.length},
            {"group", indexJson(part.group)}, {"record", indexJson(part.record)},
            {"subject", part.subject},        {"field", part.field},
            {"value", valueJson(part)},       {"bytes", hexOfPart(explanation, part)},
            {"meaning", part.meaning},        {"read", part.isRead}};
}

text::Json groupJson(const ExplainedGroup& group)
{
    return {{"id", text::hexOf(group.id, 4)},
            {"name", group.name},
            {"offset", group.offset},
            {"length", group.length},
            {"read", group.isRead}};
}

} // namespace

std::string Explanation::json() const
{
    const auto part = [this](const ExplainedPart& one) { return partJson(*this, one); };
    return text::jsonText({{"schema", text::jsonSchema("mxtool.explain", 1)},
                           {"file", text::toUtf8(file().name())},
                           {"size", file().bytes().size()},
                           {"groups", text::listJson(groups(), groupJson)},
                           {"parts", text::listJson(parts(), part)},
                           {"failure", failure() ? text::Json(failure()->text) : text::Json()}});
}

} // namespace mxmodule
