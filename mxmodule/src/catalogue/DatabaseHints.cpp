#include "catalogue/DatabaseHints.h"

#include <text/NearestWords.h>

#include <filesystem>

namespace mxmodule {

namespace {

const std::string sqliteScheme = "sqlite:";

// Omits the URL of a server: it may contain a password.
std::string hintForMissing(const std::string& url)
{
    const bool isFile = url.compare(0, sqliteScheme.size(), sqliteScheme) == 0;
    std::error_code ignored;
    if (isFile && !std::filesystem::exists(url.substr(sqliteScheme.size()), ignored)) {
        return "make one with: mxtool populate DIRECTORY --db " + url;
    }
    return "";
}

} // namespace

std::string hintForScheme(const std::string& url)
{
    const std::size_t colon = url.find(':');
    if (url.substr(0, colon).find_first_of("=@") != std::string::npos) {
        return "name a server as postgresql:CONNECTION"; // not the URL: it may hold a password
    }
    if (colon == std::string::npos) {
        return "name a file as " + sqliteScheme + url;
    }
    const std::string scheme = url.substr(0, colon);
    const auto nearest = text::nearestWords(scheme, {"sqlite", "postgresql"});
    return nearest.empty() || nearest.front() == scheme
               ? ""
               : "did you mean \"" + nearest.front() + ":\"?";
}

std::string hintForOpening(const std::string& url)
{
    const std::string hint = hintForScheme(url);
    return hint.empty() ? hintForMissing(url) : hint;
}

} // namespace mxmodule
