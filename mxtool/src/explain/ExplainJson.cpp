#include "explain/ExplainOutput.h"

#include <devices/parser/mx/HexText.h>
#include <text/Utf8.h>

namespace mxtool {

namespace {

using devices::parser::mx::u16AsHex;
using mxauthor::ExplainedGroup;
using mxauthor::ExplainedPart;

// Numbers of more than 32 bits are written as strings: some JSON readers round them.
Json valueJson(const ExplainedPart& part)
{
    switch (part.kind) {
    case ExplainedPart::Kind::Number:
        return part.place.length > 4 ? Json(part.value) : Json(std::stoul(part.value));
    case ExplainedPart::Kind::Text:
        return text::toUtf8(part.value);
    default:
        return {};
    }
}

Json indexJson(int index)
{
    return index < 0 ? Json() : Json(index);
}

Json partJson(const ExplainedFile& file, const ExplainedPart& part)
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

Json groupJson(const ExplainedGroup& group)
{
    return {{"id", u16AsHex(group.id)},
            {"name", group.name},
            {"offset", group.place.offset},
            {"length", group.place.length},
            {"read", group.isRead}};
}

} // namespace

Json explainJson(const ExplainedFile& file)
{
    const auto part = [&file](const ExplainedPart& one) { return partJson(file, one); };
    const auto& failure = file.explanation.failure;
    return {{"schema", jsonSchema("mxtool.explain", 1)},
            {"file", text::toUtf8(file.name)},
            {"size", file.bytes.size()},
            {"groups", listJson(file.explanation.groups, groupJson)},
            {"parts", listJson(file.explanation.parts, part)},
            {"failure", failure ? Json(*failure) : Json()}};
}

} // namespace mxtool
