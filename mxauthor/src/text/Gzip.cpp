#include "Gzip.h"

#include <zlib.h>

#include <stdexcept>

namespace mxauthor {

namespace {

constexpr int gzipWindow = 15 + 16; // the largest window, in a gzip file
constexpr int memoryLevel = 8;
constexpr int unknownSystem = 255;

Bytef* input(const void* data)
{
    // zlib reads from here only, its interface is older than const.
    return static_cast<Bytef*>(const_cast<void*>(data)); // NOLINT(*-const-cast)
}

} // namespace

Bytes gzipped(const std::string& text)
{
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, gzipWindow, memoryLevel,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::bad_alloc();
    }
    gz_header header{};
    header.os = unknownSystem;
    deflateSetHeader(&stream, &header);
    Bytes bytes(deflateBound(&stream, static_cast<uLong>(text.size())));
    stream.next_in = input(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = bytes.data();
    stream.avail_out = static_cast<uInt>(bytes.size());
    const int end = deflate(&stream, Z_FINISH);
    bytes.resize(stream.total_out);
    deflateEnd(&stream);
    if (end != Z_STREAM_END) {
        throw std::runtime_error("Cannot compress an image of " + std::to_string(text.size()) +
                                 " bytes");
    }
    return bytes;
}

std::optional<std::string> gunzipped(const Bytes& bytes, std::size_t limit)
{
    z_stream stream{};
    if (inflateInit2(&stream, gzipWindow) != Z_OK) {
        throw std::bad_alloc();
    }
    std::string text(limit, '\0');
    stream.next_in = input(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(text.data());
    stream.avail_out = static_cast<uInt>(text.size());
    const bool whole = inflate(&stream, Z_FINISH) == Z_STREAM_END && stream.avail_in == 0;
    text.resize(stream.total_out);
    inflateEnd(&stream);
    return whole ? std::optional(text) : std::nullopt;
}

} // namespace mxauthor
