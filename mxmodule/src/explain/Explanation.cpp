#include "mxmodule/Explanation.h"

#include "SourcePlace.h"

#include <mxauthor/Explain.h>

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Utf8.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace mxmodule {

struct __attribute__((visibility("hidden"))) Explanation::Content
{
    ModuleFile file;
    std::vector<ExplainedPart> parts = {};
    std::vector<ExplainedGroup> groups = {};
    std::vector<NamedPlace> names = {};
    std::optional<Finding> failure = {};
};

namespace {

std::optional<std::size_t> indexOf(int index)
{
    return index < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(index));
}

ExplainedPart::Kind kindOfPart(mxauthor::ExplainedPart::Kind kind)
{
    switch (kind) {
    case mxauthor::ExplainedPart::Kind::Number:
        return ExplainedPart::Kind::Number;
    case mxauthor::ExplainedPart::Kind::Text:
        return ExplainedPart::Kind::Text;
    default:
        return ExplainedPart::Kind::Raw;
    }
}

ExplainedPart plainPart(const mxauthor::ExplainedPart& part)
{
    ExplainedPart plain;
    plain.offset = part.place.offset;
    plain.length = part.place.length;
    plain.group = indexOf(part.group);
    plain.record = indexOf(part.record);
    plain.subject = text::toUtf8(part.subject);
    plain.field = part.field;
    plain.kind = kindOfPart(part.kind);
    plain.value = text::toUtf8(part.value);
    plain.meaning = text::toUtf8(part.meaning);
    plain.isRead = part.isRead;
    return plain;
}

ExplainedGroup plainGroup(const mxauthor::ExplainedGroup& group)
{
    return {group.id, group.name, group.place.offset, group.place.length, group.isRead};
}

NamedPlace plainPlace(const mxauthor::NamedPlace& place)
{
    return {place.what, text::toUtf8(place.name), place.place.group, place.place.offset,
            place.place.length};
}

// Of the bytes after the last whole group, the last part.
Finding framingFailure(const ModuleFile& file, const std::string& text, std::size_t offset)
{
    return {
        Severity::Error, file.placeOf(offset), text,
        fmt::format("mxtool check {} shows the details", isPath(file.name()) ? file.name() : "-")};
}

} // namespace

Explanation::Explanation(const ModuleFile& file)
{
    const mxauthor::Explanation found = mxauthor::explain(file.bytes());
    auto made = std::make_shared<Content>(Content{file});
    std::transform(found.parts.begin(), found.parts.end(), std::back_inserter(made->parts),
                   plainPart);
    std::transform(found.groups.begin(), found.groups.end(), std::back_inserter(made->groups),
                   plainGroup);
    std::transform(found.names.begin(), found.names.end(), std::back_inserter(made->names),
                   plainPlace);
    if (found.failure) {
        made->failure = framingFailure(file, *found.failure, made->parts.back().offset);
    }
    content = std::move(made);
}

const ModuleFile& Explanation::file() const
{
    return content->file;
}

const std::vector<ExplainedPart>& Explanation::parts() const
{
    return content->parts;
}

const std::vector<ExplainedGroup>& Explanation::groups() const
{
    return content->groups;
}

const std::vector<NamedPlace>& Explanation::names() const
{
    return content->names;
}

const std::optional<Finding>& Explanation::failure() const
{
    return content->failure;
}

const ExplainedPart& Explanation::partAt(std::uint64_t offset) const
{
    const std::size_t size = file().bytes().size();
    if (offset >= size) {
        throw Failure(Origin::Request, file().name(),
                      fmt::format("{0} ({0:#x}) lies outside the file of {1}", offset,
                                  text::counted(size, "byte")));
    }
    return *std::find_if(parts().begin(), parts().end(), [offset](const ExplainedPart& part) {
        return offset < part.offset + part.length;
    });
}

} // namespace mxmodule
