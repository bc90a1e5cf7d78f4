#include "serve/BrowserFile.h"

#include "Diagnostic.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace mxtool {

namespace {

// The folder of the user's session, which ends with it, else that of temporary files.
std::string parentFolder()
{
    for (const char* const name : {"XDG_RUNTIME_DIR", "TMPDIR"}) {
        const char* const folder = std::getenv(name);
        struct stat found = {};
        if (folder != nullptr && folder[0] == '/' && stat(folder, &found) == 0 &&
            S_ISDIR(found.st_mode) && access(folder, W_OK) == 0) {
            return folder;
        }
    }
    return "/tmp";
}

[[noreturn]] void rejectWriting(const std::string& path)
{
    throw Failure(Origin::Output, path,
                  "cannot write the file that opens the browser: " +
                      std::generic_category().message(errno),
                  "leave out --open and open the address yourself");
}

} // namespace

BrowserFile::BrowserFile(const std::string& address) : folder(parentFolder() + "/mxtool-XXXXXX")
{
    if (mkdtemp(folder.data()) == nullptr) { // of mode 0700
        rejectWriting(folder);
    }
    file = folder + "/workbench.html";
    try {
        // No character of an address has a meaning in HTML.
        write("<!DOCTYPE html>\n<title>mxtool workbench</title>\n"
              "<meta http-equiv=\"refresh\" content=\"0; url=" +
              address + "\">\n");
    } catch (...) {
        remove();
        throw;
    }
}

BrowserFile::~BrowserFile()
{
    remove();
}

void BrowserFile::write(const std::string& content) const
{
    constexpr mode_t ownerOnly = 0600;
    const int descriptor =
        open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, ownerOnly);
    if (descriptor < 0) {
        rejectWriting(file);
    }
    const ssize_t written = ::write(descriptor, content.data(), content.size());
    const int error = errno;
    close(descriptor);
    if (written != static_cast<ssize_t>(content.size())) {
        errno = written < 0 ? error : ENOSPC;
        rejectWriting(file);
    }
}

void BrowserFile::remove() const
{
    static_cast<void>(unlink(file.c_str()));
    static_cast<void>(rmdir(folder.c_str()));
}

} // namespace mxtool
