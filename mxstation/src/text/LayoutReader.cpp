#include "text/LayoutReader.h"

#include "text/LayoutWords.h"

namespace mxstation {

namespace {

const std::vector<std::string> layoutKeys = {
    "like",          "start",         "order",        "align",      "pad_module", "pad_image",
    "status_before", "status_behind", "most_modules", "most_bytes", "byte_order"};

std::vector<std::string> namesOfLayouts()
{
    std::vector<std::string> names;
    for (const NamedLayout& named : namedLayouts()) {
        names.push_back(named.layout.name);
    }
    return names;
}

Layout layoutCalled(const YamlNode& node, StationErrors& errors)
{
    const auto index = readWord(node, "layout", namesOfLayouts(), errors);
    return namedLayouts()[index.value_or(0)].layout;
}

// Reads the statements of a layout into it.
class LayoutStatements
{
public:
    LayoutStatements(const YamlNode& node, Layout& described, StationErrors& collected)
        : section(node, "key of a layout", layoutKeys, collected),
          layout(described),
          errors(collected)
    {}

    // Of both images, or of each in a map.
    template <typename Member, typename Reader>
    void read(const std::string& key, Member ImageLayout::*member, const Reader& reader) const
    {
        const YamlNode* const node = section.find(key);
        if (node == nullptr) {
            return;
        }
        if (node->kind == YamlNode::Kind::Map) {
            const YamlSection images(*node, "image", {"in", "out"}, errors);
            assign(images.find("in"), layout.input.*member, reader);
            assign(images.find("out"), layout.output.*member, reader);
        } else {
            assign(node, layout.input.*member, reader);
            layout.output.*member = layout.input.*member;
        }
    }

    template <typename Member>
    void number(const std::string& key, std::uint32_t least, Member ImageLayout::*member) const
    {
        read(key, member, [this, least](const YamlNode& node) {
            return readNumber(node, least, mostBytesStated, errors);
        });
    }

    void order() const
    {
        read("order", &ImageLayout::order, [this](const YamlNode& node) {
            const auto index = readWord(node, "order", orderWords, errors);
            return index ? std::optional(*index == 0 ? ImageOrder::Row : ImageOrder::BytesFirst)
                         : std::nullopt;
        });
    }

    void ofWhole() const
    {
        if (const YamlNode* const most = section.find("most_modules")) {
            assign(most, layout.mostModules, [this](const YamlNode& node) {
                return readNumber(node, 1, mostModulesOfAnyLayout, errors);
            });
        }
        if (const YamlNode* const order = section.find("byte_order")) {
            const auto index = readWord(*order, "byte order", byteOrderWords, errors);
            layout.byteOrder = index.value_or(0) == 0 ? ByteOrder::Big : ByteOrder::Little;
        }
    }

private:
    template <typename Value, typename Reader>
    static void assign(const YamlNode* node, Value& value, const Reader& reader)
    {
        if (node == nullptr) {
            return;
        }
        if (const auto read = reader(*node)) {
            value = *read;
        }
    }

    YamlSection section;
    Layout& layout;
    StationErrors& errors;
};

// The layout that the statements of `node` begin from.
Layout baseOf(const YamlNode& node, StationErrors& errors)
{
    for (const auto& [key, value] : node.members) {
        if (key->text == "like" && value->kind != YamlNode::Kind::Nothing) {
            return layoutCalled(*value, errors);
        }
    }
    return {};
}

} // namespace

Layout readLayout(const YamlNode& node, StationErrors& errors)
{
    if (node.kind != YamlNode::Kind::Map) {
        return layoutCalled(node, errors);
    }
    Layout layout = baseOf(node, errors);
    layout.name = "of the station";
    const LayoutStatements statements(node, layout, errors);
    statements.number("start", 0, &ImageLayout::start);
    statements.order();
    statements.number("align", 1, &ImageLayout::alignment);
    statements.number("pad_module", 1, &ImageLayout::modulePadding);
    statements.number("pad_image", 1, &ImageLayout::imagePadding);
    statements.number("status_before", 0, &ImageLayout::statusBefore);
    statements.number("status_behind", 0, &ImageLayout::statusBehind);
    statements.number("most_bytes", 0, &ImageLayout::mostBytes);
    statements.ofWhole();
    return layout;
}

} // namespace mxstation
