#include "check/Svgz.h"

#include "module/ModuleView.h"
#include "mxauthor/Counted.h"
#include "mxauthor/ForeignContent.h"

#include <Poco/SAX/DefaultHandler.h>
#include <Poco/SAX/SAXException.h>
#include <Poco/SAX/SAXParser.h>

#include <text/Hexadecimal.h>

#include <zlib.h>

#include <algorithm>
#include <stdexcept>

namespace mxauthor {

namespace {

// A few kilobytes may inflate to any size, and the XML reader's time grows with the square of a
// long name or value.
constexpr std::size_t imageLimit = std::size_t{1} << 20;
constexpr int gzipOnly = 16 + MAX_WBITS;

constexpr std::ptrdiff_t judgedBytes = 4096; // enough to tell what the content is
const std::string gzipMagic = "\x1F\x8B";
const std::string expectedDrawing = ", expected an SVG drawing compressed with gzip";

std::string shownBegin(const std::string& content)
{
    constexpr std::size_t shown = 4;
    return text::hexOfBytes(content.data(), std::min(shown, content.size()), " ");
}

class Inflation
{
public:
    explicit Inflation(const Bytes& bytes) : input(bytes)
    {
        stream.next_in = input.data();
        stream.avail_in = static_cast<uInt>(input.size());
        if (inflateInit2(&stream, gzipOnly) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Inflation() { inflateEnd(&stream); }
    Inflation(const Inflation&) = delete;
    Inflation& operator=(const Inflation&) = delete;

    // Throws with what the bytes are instead, or where they are damaged.
    std::string text()
    {
        requireGzip();
        std::string all;
        Bytes chunk(std::size_t{1} << 14);
        int state = Z_OK;
        while (state == Z_OK && all.size() <= imageLimit) {
            stream.next_out = chunk.data();
            stream.avail_out = static_cast<uInt>(chunk.size());
            state = inflate(&stream, Z_NO_FLUSH);
            all.append(chunk.begin(), chunk.end() - stream.avail_out);
        }
        requireEnd(state);
        return all;
    }

private:
    void requireGzip() const
    {
        const auto length = std::min<std::ptrdiff_t>(judgedBytes, input.end() - input.begin());
        const std::string begin(input.begin(), input.begin() + length);
        if (begin.substr(0, gzipMagic.size()) == gzipMagic.substr(0, begin.size())) {
            return;
        }
        const std::string found = foreignContent(begin);
        throw std::runtime_error(
            (found.empty() ? "begins with the bytes " + shownBegin(begin) : "is " + found) +
            expectedDrawing);
    }

    void requireEnd(int state) const
    {
        if (state == Z_OK) {
            throw std::runtime_error("inflates to more than 1 MiB");
        }
        if (state == Z_BUF_ERROR) {
            throw std::runtime_error("the compressed data ends early");
        }
        if (state != Z_STREAM_END) {
            throw std::runtime_error("the compressed data is damaged in its first " +
                                     counted(stream.total_in, "byte") +
                                     (stream.msg == nullptr ? "" : std::string(": ") + stream.msg));
        }
        if (stream.avail_in > 0) {
            throw std::runtime_error(counted(stream.avail_in, "byte") +
                                     " after the compressed data");
        }
    }

    Bytes input; // zlib takes no constant pointer
    z_stream stream{};
};

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

std::string svgzProblem(const Bytes& bytes)
{
    std::string text;
    try {
        text = Inflation(bytes).text();
        const std::string root = rootElement(text);
        return root == "svg" ? "" : "is an XML document of \"" + root + "\", expected \"svg\"";
    } catch (const Poco::Exception& failure) {
        const std::string found = text.compare(0, 1, "<") == 0 ? "" : foreignContent(text);
        return found.empty() ? "is no well-formed XML: " + failure.message()
                             : "is " + found + " compressed with gzip" + expectedDrawing;
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
}

} // namespace mxauthor
