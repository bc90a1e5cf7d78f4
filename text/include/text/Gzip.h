#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace text {

/// Returns `content` as a gzip file without a name and with the time 0: the same content always
/// gives the same bytes.
std::vector<std::uint8_t> gzipped(const std::string& content);

/// Returns the content of the gzip file `bytes`; nothing if it is not one, has bytes after its end
/// or holds more than `limit` bytes.
[[nodiscard]] std::optional<std::string> gunzipped(const std::vector<std::uint8_t>& bytes,
                                                   std::size_t limit);

/// Bytes read as a gzip file.
struct [[nodiscard]] Gunzipped
{
    enum class End
    {
        Whole,  ///< The content is complete.
        Longer, ///< The content is longer than the limit.
        CutOff, ///< The bytes end early.
        Damaged ///< Or not a gzip file at all.
    };

    std::string content;
    End end = End::Whole;
    std::size_t bytesRead = 0; ///< From the start of the file.
    std::size_t bytesLeft = 0; ///< After its end.
    std::string reason;        ///< Why they are damaged; may be empty.
};

/// Returns the content of the gzip file `bytes`, at most its first `limit` bytes.
Gunzipped gunzip(const std::vector<std::uint8_t>& bytes, std::size_t limit);

} // namespace text
