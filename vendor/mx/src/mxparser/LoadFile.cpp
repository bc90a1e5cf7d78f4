#include "devices/parser/mx/LoadFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>

namespace devices::parser::mx {

namespace {

class OpenFile
{
public:
    explicit OpenFile(const std::string& path)
        : descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC))
    {}
    ~OpenFile()
    {
        if (isOpen()) {
            close(descriptor);
        }
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    bool isOpen() const { return descriptor >= 0; }

    // The size that a regular file has now, in bytes; for anything else a first guess.
    std::size_t expectedSize() const
    {
        struct stat status = {};
        const bool known = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
        return known ? static_cast<std::size_t>(status.st_size) : 65536;
    }

    // Reads up to `count` bytes. Returns how many, 0 at the end, below 0 when reading fails.
    ssize_t readSome(char* bytes, std::size_t count) const
    {
        ssize_t result = 0;
        do {
            result = read(descriptor, bytes, count);
        } while (result < 0 && errno == EINTR);
        return result;
    }

private:
    int descriptor;
};

// Reads everything that can be read. Returns false when reading fails, as it does on a directory.
bool readAll(const OpenFile& file, std::vector<char>& buffer)
{
    std::size_t size = 0;
    // With a byte to spare the end of the file is met without another place to read into.
    buffer.resize(file.expectedSize() + 1);
    ssize_t count = 0;
    while ((count = file.readSome(buffer.data() + size, buffer.size() - size)) > 0) {
        size += static_cast<std::size_t>(count);
        if (size == buffer.size()) {
            buffer.resize(2 * size);
        }
    }
    buffer.resize(size);
    return count == 0;
}

} // namespace

void loadFile(const std::string& path, std::vector<char>& buffer)
{
    buffer.clear();
    const OpenFile file(path);
    if (!file.isOpen() || !readAll(file, buffer)) {
        buffer.clear();
        throw std::runtime_error("Cannot open file: " + path);
    }
    // The value of the read that meets the end of the file belongs to the buffer.
    buffer.push_back('\xFF');
}

} // namespace devices::parser::mx
