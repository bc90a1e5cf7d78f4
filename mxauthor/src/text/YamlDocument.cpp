#include "mxauthor/YamlDocument.h"

#include "SourceErrors.h"
#include "YamlMistakes.h"

#include <yaml-cpp/eventhandler.h>

#include <algorithm>
#include <sstream>

namespace mxauthor {

namespace {

// More than any file of 65535 bytes or station needs. Each takes up to 300 bytes of memory.
constexpr std::size_t mostValues = 250000;

// The YAML library keeps 200 bytes for each byte of a list in brackets that may be a key.
constexpr std::size_t mostBytes = std::size_t{4} << 20U;

struct TooManyValues
{
    YAML::Mark mark; // of the first that is too many
};

// Records the place of the root of a document, and counts the values: keys, lists and maps too.
class RootPlace : public YAML::EventHandler
{
public:
    void OnDocumentStart(const YAML::Mark& /*mark*/) override { root.reset(); }
    void OnDocumentEnd() override {}
    void OnNull(const YAML::Mark& mark, YAML::anchor_t /*anchor*/) override { take(mark); }
    void OnAlias(const YAML::Mark& mark, YAML::anchor_t /*anchor*/) override { take(mark); }
    void OnScalar(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                  const std::string& /*value*/) override
    {
        take(mark);
    }
    void OnSequenceStart(const YAML::Mark& mark, const std::string& /*tag*/,
                         YAML::anchor_t /*anchor*/, YAML::EmitterStyle::value /*style*/) override
    {
        take(mark);
    }
    void OnSequenceEnd() override {}
    void OnMapStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                    YAML::EmitterStyle::value /*style*/) override
    {
        take(mark);
    }
    void OnMapEnd() override {}

    std::optional<YAML::Mark> root;

private:
    void take(const YAML::Mark& mark)
    {
        if (++values > mostValues) {
            throw TooManyValues{mark};
        }
        if (!root) {
            root = mark;
        }
    }

    std::size_t values = 0;
};

// Where the second document begins. Does not read all documents: for a stray "," the YAML library
// returns empty documents without end.
std::optional<YAML::Mark> secondDocument(const std::string& source)
{
    std::istringstream stream(source);
    YAML::Parser parser(stream);
    RootPlace place;
    const bool isThere = parser.HandleNextDocument(place) && parser.HandleNextDocument(place);
    return isThere ? place.root : std::nullopt;
}

YAML::Mark markAt(const std::string& source, std::size_t offset)
{
    const std::size_t lineStart = source.rfind('\n', offset) + 1;
    YAML::Mark mark;
    mark.pos = static_cast<int>(offset);
    mark.line = static_cast<int>(std::count(source.begin(), source.begin() + mark.pos, '\n'));
    mark.column = static_cast<int>(offset - lineStart);
    return mark;
}

// The YAML library takes a byte 00 for the sign that begins an escape.
std::optional<YAML::Mark> zeroByte(const std::string& source)
{
    const std::size_t at = source.find('\0');
    if (at == std::string::npos) {
        return std::nullopt;
    }
    return markAt(source, at);
}

} // namespace

std::optional<SourceError> findYamlMistake(const std::string& text, const std::string& oneDocument)
{
    const SourceErrors places(text);
    if (const auto zero = zeroByte(text)) {
        return places.located(*zero, "byte 00, expected the characters of a text");
    }
    if (text.size() > mostBytes) {
        return places.located(markAt(text, mostBytes),
                              "more than " + std::to_string(mostBytes) + " bytes, " + oneDocument);
    }
    try {
        if (const auto second = secondDocument(text)) {
            return places.located(*second, "a second document, " + oneDocument);
        }
    } catch (const YAML::Exception& failure) {
        const YamlMistake mistake = explainYamlFailure(text, failure);
        return places.located(mistake.mark, mistake.text);
    } catch (const TooManyValues& found) {
        return places.located(found.mark, "more than " + std::to_string(mostValues) +
                                              " values and keys, " + oneDocument);
    }
    return std::nullopt;
}

} // namespace mxauthor
