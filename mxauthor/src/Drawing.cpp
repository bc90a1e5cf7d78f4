#include "mxauthor/Drawing.h"

#include "mxauthor/ForeignContent.h"
#include <text/Counted.h>

#include <Poco/SAX/DefaultHandler.h>
#include <Poco/SAX/SAXException.h>
#include <Poco/SAX/SAXParser.h>

#include <text/Gzip.h>
#include <text/Hexadecimal.h>

#include <algorithm>
#include <stdexcept>

namespace mxauthor {

namespace {

// A few kilobytes may inflate to any size, and the XML reader's time grows with the square of a
// long name or value.
constexpr std::size_t imageLimit = std::size_t{1} << 20;

constexpr std::ptrdiff_t judgedBytes = 4096; // enough to tell what the content is
const std::string gzipMagic = "\x1F\x8B";
const std::string expectedDrawing = ", expected an SVG drawing compressed with gzip";

std::string shownBegin(const std::string& content)
{
    constexpr std::size_t shown = 4;
    return text::hexOfBytes(content.data(), std::min(shown, content.size()), " ");
}

// Throws a message that says what the bytes are instead of gzip data.
void requireGzip(const Bytes& bytes)
{
    const auto length = std::min<std::ptrdiff_t>(judgedBytes, bytes.end() - bytes.begin());
    const std::string begin(bytes.begin(), bytes.begin() + length);
    if (begin.substr(0, gzipMagic.size()) == gzipMagic.substr(0, begin.size())) {
        return;
    }
    const auto found = foreignContent(begin);
    throw std::runtime_error(
        (found ? "is " + *found : "begins with the bytes " + shownBegin(begin)) + expectedDrawing);
}

// Returns what the bytes hold. Throws where they are damaged.
std::string inflated(const Bytes& bytes)
{
    using text::Gunzipped;
    Gunzipped found = text::gunzip(bytes, imageLimit);
    if (found.end == Gunzipped::End::Longer) {
        throw std::runtime_error("inflates to more than 1 MiB");
    }
    if (found.end == Gunzipped::End::CutOff) {
        throw std::runtime_error("the compressed data ends early");
    }
    if (found.end == Gunzipped::End::Damaged) {
        throw std::runtime_error("the compressed data is damaged in its first " +
                                 text::counted(found.bytesRead, "byte") +
                                 (found.reason.empty() ? "" : ": " + found.reason));
    }
    if (found.bytesLeft > 0) {
        throw std::runtime_error(text::counted(found.bytesLeft, "byte") +
                                 " after the compressed data");
    }
    return std::move(found.content);
}

class RootElement : public Poco::XML::DefaultHandler
{
public:
    void startElement(const Poco::XML::XMLString& /*uri*/, const Poco::XML::XMLString& local,
                      const Poco::XML::XMLString& qualified,
                      const Poco::XML::Attributes& /*attributes*/) override
    {
        if (name.empty()) {
            name = local.empty() ? qualified : local;
        }
    }

    std::string name;
};

std::string rootElement(const std::string& text)
{
    RootElement root;
    Poco::XML::SAXParser parser;
    parser.setContentHandler(&root);
    parser.parseMemoryNP(text.data(), text.size());
    return root.name;
}

} // namespace

Drawing unpackedDrawing(const Bytes& bytes)
{
    std::string text;
    try {
        requireGzip(bytes);
        text = inflated(bytes);
        const std::string root = rootElement(text);
        if (root == "svg") {
            return {std::move(text), {}};
        }
        return {{}, "is an XML document of \"" + root + "\", expected \"svg\""};
    } catch (const Poco::Exception& failure) {
        const auto found = text.compare(0, 1, "<") == 0 ? std::nullopt : foreignContent(text);
        return {{},
                found ? "is " + *found + " compressed with gzip" + expectedDrawing
                      : "is not well-formed XML: " + failure.message()};
    } catch (const std::runtime_error& failure) {
        return {{}, failure.what()};
    }
}

} // namespace mxauthor
