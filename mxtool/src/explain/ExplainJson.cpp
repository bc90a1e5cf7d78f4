#include "explain/ExplainOutput.h"

#include <text/Hexadecimal.h>
#include <text/JsonText.h>
#include <text/Utf8.h>

namespace mxtool {

namespace {

using mxauthor::ExplainedGroup;
using mxauthor::ExplainedPart;

// Numbers of more than 32 bits are written as strings: some JSON readers round them.
text::Json valueJson(const ExplainedPart& part)
{
    switch (part.kind) {
    case ExplainedPart::Kind::Number:
        return part.place.length > 4 ? text::Json(part.value) : text::Json(std::stoul(part.value));
    case ExplainedPart::Kind::Text:
        return text::toUtf8(part.value);
    default:
        return {};
    }
}

text::Json indexJson(int index)
{
    return index < 0 ? text::Json() : text::Json(index);
}

text::Json partJson(const ExplainedFile& file, const ExplainedPart& part)
{
    return {{"offset", part.place.offset},
            {"length", part.place.length},
            {"group", indexJson(part.group)},
            {"record", indexJson(part.record)},
            {"subject", text::toUtf8(part.subject)},
            {"field", part.field},
            {"value", valueJson(part)},
            {"bytes", hexOfPart(file, part)},
            {"meaning", text::toUtf8(part.meaning)},
            {"read", part.isRead}};
}

text::Json groupJson(const ExplainedGroup& group)
{
    return {{"id", text::hexOf(group.id, 4)},
            {"name", group.name},
            {"offset", group.place.offset},
            {"length", group.place.length},
            {"read", group.isRead}};
}

} // namespace

text::Json explainJson(const ExplainedFile& file)
{
    const auto part = [&file](const ExplainedPart& one) { return partJson(file, one); };
    const auto& failure = file.explanation.failure;
    return {{"schema", text::jsonSchema("mxtool.explain", 1)},
            {"file", text::toUtf8(file.name)},
            {"size", file.bytes.size()},
            {"groups", text::listJson(file.explanation.groups, groupJson)},
            {"parts", text::listJson(file.explanation.parts, part)},
            {"failure", failure ? text::Json(*failure) : text::Json()}};
}

} // namespace mxtool
