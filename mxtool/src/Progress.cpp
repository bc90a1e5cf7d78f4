#include "Progress.h"

#include <fmt/format.h>

#include <unistd.h>

#include <iostream>

namespace mxtool {

namespace {

constexpr const char* emptyLine = "\r\033[K";

bool lineIsShown = false;

std::function<void(const std::string&)> terminal()
{
    if (isatty(STDERR_FILENO) != 1) {
        return {};
    }
    return [](const std::string& text) { std::cerr << text << std::flush; };
}

} // namespace

Progress::Progress(std::string ofThings, std::size_t count)
    : Progress(std::move(ofThings), count, terminal(), &std::chrono::steady_clock::now)
{}

Progress::Progress(std::string ofThings, std::size_t count,
                   std::function<void(const std::string&)> writeTo, Clock clock)
    : things(std::move(ofThings)),
      total(count),
      write(std::move(writeTo)),
      now(std::move(clock)),
      start(now()),
      shownAt(start)
{}

Progress::~Progress()
{
    if (visible) {
        write(emptyLine);
        lineIsShown = false;
    }
}

void Progress::show(std::size_t done)
{
    if (!write) {
        return;
    }
    const auto time = now();
    const auto untilShown = visible ? std::chrono::milliseconds(100) : std::chrono::seconds(1);
    if (time - shownAt < untilShown) {
        return;
    }
    shownAt = time;
    visible = true;
    lineIsShown = true;
    write(emptyLine + line(done, std::chrono::duration<double>(time - start).count()));
}

std::string Progress::line(std::size_t done, double seconds) const
{
    const double rate = static_cast<double>(done) / seconds;
    std::string text = fmt::format("{}/{} {}, {:.0f}/s", done, total, things, rate);
    if (rate > 0 && done <= total) {
        text += fmt::format(", {:.0f} s left", static_cast<double>(total - done) / rate);
    }
    return text;
}

void clearProgressLine()
{
    if (lineIsShown) {
        std::cerr << emptyLine << std::flush;
        lineIsShown = false;
    }
}

} // namespace mxtool
