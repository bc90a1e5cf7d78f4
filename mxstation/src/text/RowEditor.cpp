#include "text/RowEditor.h"

#include "text/AliasJoints.h"
#include "text/BlockRow.h"
#include "text/EndedText.h"
#include "text/FirstEntry.h"
#include "text/FlowRow.h"

namespace mxstation {

namespace {

constexpr const char* wouldBeGone = "that would be gone";
constexpr const char* wouldBeAfter = "that would be after it";

template <typename Row>
const Row& known(const Row& row, const EditedText& text)
{
    if (!row.isKnown()) {
        text.reject(text.list()->place);
    }
    return row;
}

// What both kinds of rows move and remove.
template <typename Row>
std::string movedIn(const EditedText& text, const Row& row, std::size_t index, std::size_t before)
{
    const YamlExtent& own = row.item(index);
    const YamlExtent passed = before > index ? YamlExtent{own.end, row.item(before - 1).end}
                                             : YamlExtent{row.item(before).begin, own.begin};
    text.require(aliasesBetween(text.entry(index), own, passed, wouldBeAfter));
    return row.moved(index, before);
}

template <typename Row>
std::string removedFrom(const EditedText& text, const Row& row, std::size_t index)
{
    const YamlExtent& own = row.item(index);
    text.require(
        aliasesBetween(text.entry(index), own, {own.end, text.source().size()}, wouldBeGone));
    return text.count() == 1 && !text.list()->isFlow ? withoutOnlyEntry(text) : row.without(index);
}

} // namespace

void addToRow(EditedText& text, std::size_t before, const YamlMember& item)
{
    const YamlNode* const list = text.list();
    if (text.count() == 0) {
        text.take(withFirstEntry(text, item), text.root().place);
    } else if (list->isFlow) {
        const FlowRow row(text.source(), *list);
        text.take(known(row, text).with(before, item.flow), list->place);
    } else {
        const EndedText ended(text);
        const BlockRow row(ended.text(), text.root(), *list);
        const std::string lines = itemLines(item, row.indentation(), ended.newline());
        text.take(ended.restored(known(row, text).with(before, lines)), list->place);
    }
}

void moveInRow(EditedText& text, std::size_t index, std::size_t before)
{
    if (before == index || before == index + 1) {
        return;
    }
    if (text.list()->isFlow) {
        const FlowRow row(text.source(), *text.list());
        text.take(movedIn(text, known(row, text), index, before), text.entry(index).place);
    } else {
        const EndedText ended(text);
        const BlockRow row(ended.text(), text.root(), *text.list());
        text.take(ended.restored(movedIn(text, known(row, text), index, before)),
                  text.entry(index).place);
    }
}

void removeFromRow(EditedText& text, std::size_t index)
{
    if (text.list()->isFlow) {
        const FlowRow row(text.source(), *text.list());
        text.take(removedFrom(text, known(row, text), index), text.entry(index).place);
    } else {
        const EndedText ended(text);
        const BlockRow row(ended.text(), text.root(), *text.list());
        const std::string removed = removedFrom(text, known(row, text), index);
        text.take(text.count() == 1 ? removed : ended.restored(removed), text.entry(index).place);
    }
}

} // namespace mxstation
