#include "c/Handles.h"

#include <mxmodule/c/CallFromC.h>

#include <memory>

namespace mxmodule {

std::vector<char> requireBytes(const void* data, std::size_t size, const char* what)
{
    if (size == 0) {
        return {};
    }
    const char* first = &requirePointer(static_cast<const char*>(data), what);
    return {first, first + size};
}

std::vector<std::string> requireTexts(const char* const* texts, std::size_t count, const char* all,
                                      const char* each)
{
    if (count != 0) {
        requirePointer(texts, all);
    }
    std::vector<std::string> required;
    for (std::size_t i = 0; i < count; ++i) {
        required.push_back(requireText(texts[i], each));
    }
    return required;
}

mxmodule_bytes* newBytes(std::string content)
{
    auto bytes = std::make_unique<mxmodule_bytes>();
    bytes->content = std::move(content);
    return bytes.release();
}

mxmodule_bytes* newBytes(const std::vector<char>& content)
{
    return new mxmodule_bytes{{content.begin(), content.end()}};
}

} // namespace mxmodule

const char* mxmodule_bytes_data(const mxmodule_bytes* bytes)
{
    return bytes == nullptr ? "" : bytes->content.c_str();
}

size_t mxmodule_bytes_size(const mxmodule_bytes* bytes)
{
    return bytes == nullptr ? 0 : bytes->content.size();
}

void mxmodule_bytes_free(mxmodule_bytes* bytes)
{
    delete bytes;
}
