#include "UnreadBytes.h"
#include "mxauthor/TextForm.h"
#include "mxauthor/Utf8.h"
#include "mxauthor/YamlDocument.h"
#include "sections/Sections.h"

#include <devices/parser/mx/HexText.h>
#include <text/NearestWords.h>

namespace mxauthor {

namespace {

constexpr std::size_t sizeLimit = 0xFFFF; // of a group, and of a file with a header

// Why the text cannot be read at all; nothing if it is one YAML document.
std::optional<SourceError> findUnreadable(const std::string& source)
{
    const auto error = findNonUtf8(source);
    return error ? error : findYamlMistake(source, "a text describes one module");
}

// The keys of the text; an error and nothing when it has none.
std::optional<YAML::Node> loadDocument(const std::string& source, SourceErrors& errors)
{
    const YAML::Node document = YAML::Load(source);
    if (document.IsMap()) {
        return document;
    }
    errors.add(YAML::Mark::null_mark(), "no module found: keys such as \"module:\" expected");
    return std::nullopt;
}

void buildStated(const Section& file, const std::string& key,
                 void (*build)(const YAML::Node&, BuildContext&), BuildContext& context)
{
    if (const auto node = file.find(key)) {
        build(*node, context);
    }
}

// In the order in which texts get their identifiers, then the groups computed from the others.
void buildSections(const Section& file, BuildContext& context)
{
    context.listsAreKnown = !file.isMisspelt("optionLists");
    context.conversionsAreKnown = !file.isMisspelt("conversions");
    startTexts(file.find("texts"), context);
    buildStated(file, "optionLists", buildOptionLists, context);
    buildStated(file, "conversions", buildConversions, context);
    buildStated(file, "parameters", buildParameters, context);
    buildStated(file, "channels", buildChannels, context);
    buildChannelNames(file.find("channelNames"), context);
    buildStated(file, "extension", buildExtension, context);
    buildStated(file, "module", buildModule, context);
    buildStated(file, "catalogue", buildCatalogue, context);
    buildStated(file, "component", buildComponent, context);
    buildStated(file, "image", buildImage, context);
    buildStated(file, "raw", buildRawGroups, context);
    buildParameterBlock(file.find("parameterBlock"), context);
    buildDataSizes(file.find("dataSizes"), context);
    buildTextTable(file.find("texts"), context);
    buildStated(file, "unread", buildUnreadBytes, context);
}

using OrderedGroups = std::vector<std::pair<Group, YAML::Mark>>;

// Removes the groups from the context one by one.
class Taker
{
public:
    explicit Taker(BuildContext& buildContext) : context(buildContext) {}

    bool take(std::uint16_t id)
    {
        const auto found = context.groups.find(id);
        if (found == context.groups.end()) {
            return false;
        }
        Group group;
        group.id = id;
        group.content = std::move(found->second);
        ordered.emplace_back(std::move(group), context.marks[id]);
        context.groups.erase(found);
        return true;
    }

    bool takeRaw()
    {
        if (nextRaw == context.rawGroups.size()) {
            return false;
        }
        ordered.emplace_back(std::move(context.rawGroups[nextRaw]), context.rawMarks[nextRaw]);
        ++nextRaw;
        return true;
    }

    void takeAllInUsualOrder()
    {
        for (const std::uint16_t id : usualOrder()) {
            take(id);
        }
        while (takeRaw()) {
        }
    }

    bool isDone() const { return context.groups.empty() && nextRaw == context.rawGroups.size(); }

    OrderedGroups ordered;

private:
    BuildContext& context;
    std::size_t nextRaw = 0;
};

void takeWord(const YAML::Node& node, Taker& taker, SourceErrors& errors)
{
    const auto word = readScalar(node, errors);
    if (!word) {
        return;
    }
    const auto id = groupOfWord(*word);
    if (!id && *word != rawWord) {
        std::vector<std::string> words = groupWords();
        words.push_back(rawWord);
        errors.add(node, "unknown group \"" + *word + "\"" + text::acceptedWords(*word, words));
    } else if (!(id ? taker.take(*id) : taker.takeRaw())) {
        errors.add(node, "there is no (other) group \"" + *word + "\" in this text");
    }
}

// The groups in file order: the usual one, followed by the raw groups, or the one that `node`
// states by the words of the groups and "raw" for the next raw one.
OrderedGroups orderedGroups(const std::optional<YAML::Node>& node, BuildContext& context)
{
    Taker taker(context);
    if (!node) {
        taker.takeAllInUsualOrder();
        return std::move(taker.ordered);
    }
    for (const YAML::Node& item : readSequence(*node, context.errors)) {
        takeWord(item, taker, context.errors);
    }
    if (!taker.isDone()) {
        const std::string missing =
            context.groups.empty() ? rawWord : groupWord(context.groups.begin()->first);
        context.errors.add(*node, "the order must name all groups, \"" + missing + "\" is missing");
    }
    return std::move(taker.ordered);
}

void setChecksums(const YAML::Node& node, MxFile& file, SourceErrors& errors)
{
    for (const auto& [key, value] : readMapping(node, errors)) {
        const auto id = groupOfWord(key.Scalar());
        const auto isMeant = [&id](const Group& group) { return group.id == id; };
        const auto found = std::find_if(file.groups.begin(), file.groups.end(), isMeant);
        if (!id) {
            errors.add(key, "unknown group \"" + key.Scalar() + "\"" +
                                text::acceptedWords(key.Scalar(), groupWords()));
        } else if (found == file.groups.end()) {
            errors.add(key, "there is no group \"" + key.Scalar() + "\" in this text");
        } else {
            const auto checksum = readNumber(value, 0xFFFF, errors).value_or(0);
            found->checksum = static_cast<std::uint16_t>(checksum);
        }
    }
}

// Returns the size of all groups. Called only without errors, since counts have to fit.
std::size_t checkSizes(const OrderedGroups& groups, SourceErrors& errors)
{
    std::size_t size = 0;
    for (const auto& [group, mark] : groups) {
        const std::size_t length = writePayload(group.content).size() + mxformat::groupOverhead;
        size += length;
        if (length > sizeLimit) {
            errors.add(mark, "group " + devices::parser::mx::u16AsHex(group.id) + " (" +
                                 groupWord(group.id) + ") would have " + std::to_string(length) +
                                 " bytes, 65535 at most");
        }
    }
    return size;
}

void setContentLength(MxFile& file, std::size_t size, SourceErrors& errors)
{
    if (size > sizeLimit) {
        errors.add(YAML::Mark::null_mark(), "the file would have " + std::to_string(size) +
                                                " bytes, the content length in its header holds "
                                                "65535 at most");
        return;
    }
    for (Group& group : file.groups) {
        if (auto* header = std::get_if<Header>(&group.content)) {
            header->contentLength = static_cast<std::uint16_t>(size);
        }
    }
}

GroupOrigin originOf(const Group& group, const YAML::Mark& mark, BuildContext& context)
{
    const bool isRaw = std::holds_alternative<RawGroup>(group.content);
    return {group.id, mark,
            isRaw ? std::vector<RecordOrigin>() : std::move(context.records[group.id])};
}

MxFile buildFile(const Section& section, BuildContext& context, TextOrigins& origins)
{
    MxFile file;
    buildSections(section, context);
    const bool lengthIsComputed = buildHeader(section.find("header"), context);
    const auto groups = orderedGroups(section.find("order"), context);
    const std::size_t size = context.errors.empty() ? checkSizes(groups, context.errors) : 0;
    for (const auto& [group, mark] : groups) {
        file.groups.push_back(group);
        origins.groups.push_back(originOf(group, mark, context));
    }
    if (const auto checksums = section.find("checksums")) {
        setChecksums(*checksums, file, context.errors);
    }
    file.tail = section.hex("tail");
    if (lengthIsComputed) {
        setContentLength(file, size, context.errors);
    }
    return file;
}

} // namespace

BuildResult buildFromText(const std::string& source, const std::filesystem::path& directory,
                          const FileReader& read)
{
    BuildResult result;
    if (const auto error = findUnreadable(source)) {
        result.errors = {*error};
        return result;
    }
    SourceErrors errors(source);
    if (const auto document = loadDocument(source, errors)) {
        BuildContext context{errors, directory, read};
        try {
            const Section file(*document, "file", errors);
            const auto origins = std::make_shared<TextOrigins>();
            result.file = buildFile(file, context, *origins);
            result.origins = origins;
        } catch (const TooManyErrors&) { // they are the result
        }
        result.filesRead = std::move(context.filesRead);
    }
    result.errors = errors.sorted();
    if (!result.errors.empty()) {
        result.origins = nullptr;
    }
    return result;
}

} // namespace mxauthor
