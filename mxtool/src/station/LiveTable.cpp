#include "station/LiveTable.h"

#include <mxonline/SampleText.h>

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/ShownText.h>
#include <text/TextWidth.h>

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <sstream>

namespace mxtool {

namespace {

constexpr const char* colourOfChange = "1;33";
constexpr const char* colourOfFault = "1;31";
constexpr std::size_t mostLinesOfFault = 6;

TerminalSize terminalSize(int descriptor)
{
    winsize size{};
    TerminalSize found;
    if (ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 && size.ws_row > 0) {
        found = {size.ws_col, size.ws_row};
    }
    return found;
}

// A text of several words in lines of at most `columns`.
std::vector<std::string> wrapped(const std::string& text, std::size_t columns)
{
    std::vector<std::string> lines(1);
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const std::string longer = lines.back().empty() ? word : lines.back() + " " + word;
        if (lines.back().empty() || text::columnsOf(longer) <= columns) {
            lines.back() = longer;
        } else {
            lines.push_back(word);
        }
    }
    return lines;
}

} // namespace

LiveTable::LiveTable(std::string heading, const std::vector<mxonline::NamedChannel>& watched)
    : title(std::move(heading)),
      channels(watched),
      output({"-"}, mxmodule::FileKind::Other),
      isColoured(takesColour(STDOUT_FILENO))
{}

void LiveTable::show(const mxonline::Sample& sample)
{
    last = sample;
    draw({});
}

void LiveTable::show(const Failure& fault)
{
    std::vector<std::string> notes;
    for (const Finding& finding : fault.findings()) {
        notes.push_back(toText(finding, false));
    }
    draw(notes);
}

// From the top of the terminal each time: what something else writes meanwhile stays for one sample
// only. What was there before goes up, as after any other output. No line is as wide as the
// terminal, nor are all together as high.
void LiveTable::draw(const std::vector<std::string>& notes)
{
    const TerminalSize size = terminalSize(STDOUT_FILENO);
    std::string text = isFirst ? std::string(size.lines, '\n') : "";
    text += "\033[H";
    for (const std::string& line : lines(notes, size)) {
        text += line + "\033[K\n";
    }
    output.write("-", text + "\033[J");
    isFirst = false;
}

std::vector<std::string> LiveTable::lines(const std::vector<std::string>& notes,
                                          const TerminalSize& size) const
{
    const std::size_t columns = std::max<std::size_t>(size.columns, 2) - 1;
    std::vector<std::string> below;
    for (const std::string& note : notes) {
        for (const std::string& line : wrapped(note, columns)) {
            if (below.size() < mostLinesOfFault) {
                below.push_back(painted(text::shortened(line, columns), colourOfFault, isColoured));
            }
        }
    }
    std::vector<std::string> shown = {text::shortened(text::forTerminal(title), columns)};
    const std::size_t used = shown.size() + below.size() + 1;
    addRows(shown, size.lines > used ? size.lines - used : 0, columns);
    shown.insert(shown.end(), below.begin(), below.end());
    shown.resize(std::min(shown.size(), std::max<std::size_t>(size.lines, 2) - 1));
    return shown;
}

// Time, heading, and as many rows as fit into `room` lines.
void LiveTable::addRows(std::vector<std::string>& shown, std::size_t room,
                        std::size_t columns) const
{
    if (!last || room < 3) {
        return;
    }
    const mxonline::SampleTable table = sampleTable(channels, *last);
    shown.push_back(text::shortened(table.time, columns));
    shown.push_back(text::shortened(table.heading, columns));
    const bool fits = table.rows.size() <= room - 2;
    const std::size_t count = fits ? table.rows.size() : room - 3;
    for (std::size_t i = 0; i < count; ++i) {
        shown.push_back(painted(text::shortened(table.rows[i], columns), colourOfChange,
                                isColoured && last->isChanged[i]));
    }
    if (!fits) {
        shown.push_back(
            text::shortened(fmt::format("{}: make the window larger, or name channels",
                                        text::counted(table.rows.size() - count, "more channel")),
                            columns));
    }
}

} // namespace mxtool
