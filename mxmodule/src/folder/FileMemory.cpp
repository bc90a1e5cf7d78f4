#include "folder/FileMemory.h"

#include <algorithm>

namespace mxmodule {

std::optional<BuiltModule> FileMemory::find(const std::string& name)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = files.find(name);
    if (found == files.end()) {
        return std::nullopt;
    }
    found->second.used = ++uses;
    return found->second.built;
}

void FileMemory::add(const std::string& name, const BuiltModule& built)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (const auto before = files.find(name); before != files.end()) {
        bytes -= before->second.built.bytes;
        files.erase(before);
    }
    if (built.bytes > mostBytes) {
        return;
    }
    files.emplace(name, Remembered{built, ++uses});
    bytes += built.bytes;
    while (files.size() > mostFiles || bytes > mostBytes) {
        forgetOldest();
    }
}

void FileMemory::forgetOldest()
{
    const auto oldest =
        std::min_element(files.begin(), files.end(), [](const auto& a, const auto& b) {
            return a.second.used < b.second.used;
        });
    bytes -= oldest->second.built.bytes;
    files.erase(oldest);
}

} // namespace mxmodule
