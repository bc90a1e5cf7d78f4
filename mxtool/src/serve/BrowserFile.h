#pragma once

#include <string>

namespace mxtool {

/// A file that leads a browser to an address. Only its owner can read it: the address, which holds
/// a secret, is in no list of processes. It is removed with the object.
class BrowserFile
{
public:
    /// Writes it into a new directory of its own. Throws a `Failure`.
    explicit BrowserFile(const std::string& address);
    ~BrowserFile();
    BrowserFile(const BrowserFile&) = delete;
    BrowserFile& operator=(const BrowserFile&) = delete;

    const std::string& path() const { return file; }

private:
    void write(const std::string& content) const;
    void remove() const;

    std::string folder;
    std::string file;
};

} // namespace mxtool
