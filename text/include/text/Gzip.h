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

/// Returns what the gzip file `bytes` holds; nothing when it is none, has bytes after its end or
/// holds more than `limit` bytes.
[[nodiscard]] std::optional<std::string> gunzipped(const std::vector<std::uint8_t>& bytes,
                                                   std::size_t limit);

/// What bytes hold as a gzip file.
struct [[nodiscard]] Gunzipped
{
    enum class End
    {
        Whole,  ///< All of the content is there.
        Longer, ///< There is more than was asked for.
        CutOff, ///< The bytes end early.
        Damaged ///< Or no gzip file at all.
    };

    std::string content;
    End end = End::Whole;
    std::size_t bytesRead = 0; ///< From the start of the file on.
    std::size_t bytesLeft = 0; ///< After its end.
    std::string reason;        ///< Why it is damaged; may be empty.
};

/// Returns what the gzip file `bytes` holds; of more than `limit` bytes the beginning.
Gunzipped gunzip(const std::vector<std::uint8_t>& bytes, std::size_t limit);

} // namespace text
