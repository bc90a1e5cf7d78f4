#include "UnreadBytes.h"
#include "mxauthor/TextForm.h"
#include "sections/Sections.h"

#include <text/Hexadecimal.h>

#include <algorithm>
#include <stdexcept>

namespace mxauthor {

namespace {

// A section of the text, and the group that is written as raw bytes when the section fails.
struct DumpedSection
{
    std::uint16_t group;
    std::string (*dump)(const DumpContext&);
};

const std::vector<DumpedSection>& sections()
{
    static const std::vector<DumpedSection> all = {
        {mxformat::group::identity, dumpModule},
        {mxformat::group::catalogue, dumpCatalogue},
        {mxformat::group::component, dumpComponent},
        {mxformat::group::extension, dumpExtension},
        {mxformat::group::channels, dumpChannels},
        {mxformat::group::channelNames, dumpChannelNames},
        {mxformat::group::parameters, dumpParameters},
        {mxformat::group::optionLists, dumpOptionLists},
        {mxformat::group::conversions, dumpConversions},
        {mxformat::group::parameterBlock, dumpParameterBlock},
        {mxformat::group::dataSizes, dumpDataSizes},
        {mxformat::group::texts, dumpTexts},
        {mxformat::group::header, dumpHeader},
        {mxformat::group::productImage, dumpImage},
    };
    return all;
}

std::string dumpUnreadBytes(const DumpContext& context)
{
    FlowMapping line;
    for (std::size_t i = 0; i < context.file().groups.size(); ++i) {
        const Group& group = context.file().groups[i];
        const Bytes* bytes = context.isTyped(i) ? unreadBytes(group.content) : nullptr;
        if (bytes != nullptr && !bytes->empty()) {
            line.add(groupWord(group.id), yamlQuoted(text::toHex(*bytes)));
        }
    }
    return line.empty() ? "" : "unread: " + line.text() + "\n";
}

std::string dumpChecksums(const DumpContext& context)
{
    FlowMapping line;
    for (std::size_t i = 0; i < context.file().groups.size(); ++i) {
        const Group& group = context.file().groups[i];
        if (context.isTyped(i) && group.checksum.value != 0) {
            line.add(groupWord(group.id), hexText(group.checksum.value, 4));
        }
    }
    return line.empty() ? "" : "checksums: " + line.text() + "\n";
}

// The words of the groups in file order, "raw" for each raw one.
std::vector<std::string> orderOf(const DumpContext& context)
{
    std::vector<std::string> words;
    for (std::size_t i = 0; i < context.file().groups.size(); ++i) {
        words.push_back(context.isTyped(i) ? groupWord(context.file().groups[i].id) : rawWord);
    }
    return words;
}

std::string dumpOrder(const DumpContext& context)
{
    const std::vector<std::string> words = orderOf(context);
    std::vector<std::string> usual = groupWords();
    usual.push_back(rawWord);
    const auto rank = [&usual](const std::string& word) {
        return std::find(usual.begin(), usual.end(), word);
    };
    const bool isUsual =
        std::is_sorted(words.begin(), words.end(),
                       [&rank](const auto& a, const auto& b) { return rank(a) < rank(b); });
    return isUsual ? "" : "order: " + flowList(words) + "\n";
}

std::string dumpTail(const DumpContext& context)
{
    const Bytes& tail = context.file().tail.value;
    return tail.empty() ? "" : "tail: " + yamlDigits(text::toHex(tail), "  ");
}

std::size_t lineCount(const std::string& text)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

/// One text for a file, and where its sections start.
struct Draft
{
    std::string text;
    std::vector<std::pair<std::size_t, std::uint16_t>> starts; // first line and group

    std::uint16_t groupOfLine(std::size_t line) const
    {
        std::uint16_t group = mxformat::group::header;
        for (const auto& [start, id] : starts) {
            group = start <= line ? id : group;
        }
        return group;
    }
};

Draft draftOf(const DumpContext& context)
{
    Draft draft;
    for (const DumpedSection& section : sections()) {
        draft.starts.emplace_back(lineCount(draft.text) + 1, section.group);
        draft.text += section.dump(context);
    }
    draft.starts.emplace_back(lineCount(draft.text) + 1, mxformat::group::header);
    draft.text += dumpUnreadBytes(context) + dumpOrder(context) + dumpChecksums(context) +
                  dumpRawGroups(context) + dumpTail(context);
    return draft;
}

// The identifiers of the groups that the draft does not reproduce.
std::set<std::uint16_t> failedGroups(const Draft& draft, const MxFile& file)
{
    std::set<std::uint16_t> failed;
    const BuildResult built = buildFromText(draft.text, "");
    for (const SourceError& error : built.errors) {
        failed.insert(draft.groupOfLine(error.line));
    }
    if (!failed.empty()) {
        return failed;
    }
    for (std::size_t i = 0; i < file.groups.size(); ++i) {
        const Group& group = file.groups[i];
        if (i >= built.file.groups.size() || built.file.groups[i].id != group.id ||
            writePayload(built.file.groups[i].content) != writePayload(group.content)) {
            failed.insert(group.id);
        }
    }
    return failed;
}

// Adds the first group of each identifier; returns whether there was one to add.
bool makeRaw(const std::set<std::uint16_t>& ids, const MxFile& file, std::set<std::size_t>& raw)
{
    const std::size_t before = raw.size();
    for (const std::uint16_t id : ids) {
        const auto found = std::find_if(file.groups.begin(), file.groups.end(),
                                        [id](const Group& group) { return group.id == id; });
        if (found != file.groups.end()) {
            raw.insert(static_cast<std::size_t>(found - file.groups.begin()));
        }
    }
    return raw.size() > before;
}

bool hasLongTexts(const MxFile& file)
{
    for (const Group& group : file.groups) {
        if (const auto* table = std::get_if<TextTable>(&group.content)) {
            return std::any_of(table->texts.begin(), table->texts.end(),
                               [](const TextRecord& record) {
                                   return record.text.value.size() > DumpContext::longestInlineText;
                               });
        }
    }
    return false;
}

} // namespace

// Tries the most readable form first and builds it. Content that is lost is written in a plainer
// form: texts with their identifiers, then groups as raw bytes.
std::string dumpText(const MxFile& file)
{
    std::set<std::size_t> raw;
    bool fixedTexts = hasLongTexts(file);
    for (;;) {
        const Draft draft = draftOf(DumpContext(file, raw, fixedTexts));
        const std::set<std::uint16_t> failed = failedGroups(draft, file);
        if (failed.empty()) {
            return draft.text;
        }
        if (!fixedTexts && failed.count(mxformat::group::texts) != 0) {
            fixedTexts = true;
        } else if (!makeRaw(failed, file, raw)) {
            throw std::logic_error("The text form cannot hold this file");
        }
    }
}

} // namespace mxauthor
