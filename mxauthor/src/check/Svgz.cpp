#include "check/Svgz.h"

#include "module/ModuleView.h"

#include <Poco/SAX/DefaultHandler.h>
#include <Poco/SAX/SAXException.h>
#include <Poco/SAX/SAXParser.h>

#include <zlib.h>

#include <stdexcept>

namespace mxauthor {

namespace {

// A few kilobytes may inflate to any size, and the XML reader's time grows with the square of a
// long name or value.
constexpr std::size_t imageLimit = std::size_t{1} << 20;
constexpr int gzipOnly = 16 + MAX_WBITS;

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

    std::string text()
    {
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
    void requireEnd(int state) const
    {
        if (state == Z_OK) {
            throw std::runtime_error("inflates to more than 1 MiB");
        }
        if (state == Z_BUF_ERROR) {
            throw std::runtime_error("the compressed data ends early");
        }
        if (state != Z_STREAM_END) {
            throw std::runtime_error(std::string("cannot be inflated: ") +
                                     (stream.msg == nullptr ? "damaged" : stream.msg));
        }
        if (stream.avail_in > 0) {
            throw std::runtime_error(byteCount(stream.avail_in) + " behind the compressed data");
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
    try {
        const std::string root = rootElement(Inflation(bytes).text());
        return root == "svg" ? "" : "is an XML document of \"" + root + "\", expected \"svg\"";
    } catch (const Poco::Exception& failure) {
        return "is no well-formed XML: " + failure.message();
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
}

} // namespace mxauthor
