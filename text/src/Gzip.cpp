#include "text/Gzip.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <memory>
#include <stdexcept>

namespace text {

// Poco's streams are not enough: the compressing one writes the operating system into the file, the
// reading one reports neither the bytes after the end nor the length of the part before the damage.

namespace {

constexpr int gzipWindow = 15 + 16; // the largest window, in a gzip file
constexpr int memoryLevel = 8;
constexpr int unknownSystem = 255;

Bytef* input(const void* data)
{
    // zlib only reads from here; its interface is older than const.
    return static_cast<Bytef*>(const_cast<void*>(data)); // NOLINT(*-const-cast)
}

Gunzipped::End endOf(int state)
{
    return state == Z_STREAM_END  ? Gunzipped::End::Whole
           : state == Z_BUF_ERROR ? Gunzipped::End::CutOff
                                  : Gunzipped::End::Damaged;
}

} // namespace

std::vector<std::uint8_t> gzipped(const std::string& content)
{
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, gzipWindow, memoryLevel,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::bad_alloc();
    }
    gz_header header{};
    header.os = unknownSystem;
    deflateSetHeader(&stream, &header);
    std::vector<std::uint8_t> bytes(deflateBound(&stream, static_cast<uLong>(content.size())));
    stream.next_in = input(content.data());
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = bytes.data();
    stream.avail_out = static_cast<uInt>(bytes.size());
    const int end = deflate(&stream, Z_FINISH);
    bytes.resize(stream.total_out);
    deflateEnd(&stream);
    if (end != Z_STREAM_END) {
        throw std::runtime_error("Cannot compress an image of " + std::to_string(content.size()) +
                                 " bytes");
    }
    return bytes;
}

std::optional<std::string> gunzipped(const std::vector<std::uint8_t>& bytes, std::size_t limit)
{
    Gunzipped found = gunzip(bytes, limit);
    const bool isAll = found.end == Gunzipped::End::Whole && found.bytesLeft == 0;
    return isAll ? std::optional(std::move(found.content)) : std::nullopt;
}

Gunzipped gunzip(const std::vector<std::uint8_t>& bytes, std::size_t limit)
{
    z_stream stream{};
    if (inflateInit2(&stream, gzipWindow) != Z_OK) {
        throw std::bad_alloc();
    }
    const std::unique_ptr<z_stream, int (*)(z_stream*)> open(&stream, &inflateEnd);
    stream.next_in = input(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    Gunzipped found;
    std::array<char, std::size_t{1} << 14> chunk;
    int state = Z_OK;
    while (state == Z_OK && found.content.size() <= limit) {
        // One byte more than the limit shows that the content is longer.
        const std::size_t room = std::min(chunk.size() - 1, limit - found.content.size()) + 1;
        stream.next_out = reinterpret_cast<Bytef*>(chunk.data());
        stream.avail_out = static_cast<uInt>(room);
        state = inflate(&stream, Z_NO_FLUSH);
        found.content.append(chunk.data(), room - stream.avail_out);
    }
    found.end = found.content.size() > limit ? Gunzipped::End::Longer : endOf(state);
    found.content.resize(std::min(found.content.size(), limit));
    found.bytesRead = stream.total_in;
    found.bytesLeft = stream.avail_in;
    found.reason = stream.msg == nullptr ? "" : stream.msg;
    return found;
}

} // namespace text
