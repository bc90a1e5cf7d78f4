#pragma once

#include <gtest/gtest.h>
#include <text/TextWidth.h>

#include <Poco/DOM/AutoPtr.h>
#include <Poco/DOM/DOMParser.h>
#include <Poco/DOM/Document.h>
#include <Poco/DOM/Element.h>
#include <Poco/DOM/NodeList.h>

#include <string>
#include <vector>

/// A text of a picture with its bounding box, in tenths of a pixel.
struct SvgText
{
    std::string text;
    std::string kind; ///< Its class.
    long left;
    long right;
    long top;
    long bottom;
};

/// The texts of an SVG document in a monospaced font. Reading what is not XML throws.
struct SvgPicture
{
    /// `letter`: width of a letter in tenths of a pixel.
    SvgPicture(const std::string& svg, long letter)
    {
        Poco::XML::DOMParser parser;
        const Poco::XML::AutoPtr<Poco::XML::Document> document = parser.parseString(svg);
        const auto* root = document->documentElement();
        width = number(*root, "width");
        height = number(*root, "height");
        const Poco::XML::AutoPtr<Poco::XML::NodeList> elements = root->getElementsByTagName("text");
        for (const Poco::XML::Node* node = elements->item(0); node != nullptr;
             node = elements->item(texts.size())) {
            texts.push_back(boxOf(static_cast<const Poco::XML::Element&>(*node), letter));
        }
    }

    std::vector<std::string> words() const
    {
        std::vector<std::string> all;
        for (const SvgText& text : texts) {
            all.push_back(text.text);
        }
        return all;
    }

    /// Expects that no text lies over another or leaves the picture.
    void expectReadable() const
    {
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const SvgText& text = texts[i];
            EXPECT_GE(text.left, 0) << text.text;
            EXPECT_LE(text.right, width) << text.text;
            EXPECT_LE(text.bottom, height) << text.text;
            for (std::size_t other = 0; other < i; ++other) {
                if (overlap(text, texts[other])) {
                    ADD_FAILURE() << text.text << " over " << texts[other].text;
                }
            }
        }
    }

    long width;
    long height;
    std::vector<SvgText> texts;

private:
    static long number(const Poco::XML::Element& element, const char* attribute)
    {
        return 10 * std::stol(element.getAttribute(attribute));
    }

    static SvgText boxOf(const Poco::XML::Element& element, long letter)
    {
        const std::string text = element.innerText();
        const long width = letter * static_cast<long>(text::columnsOf(text));
        long left = number(element, "x");
        const std::string anchor = element.getAttribute("text-anchor");
        if (anchor == "end") {
            left -= width;
        } else if (anchor == "middle") {
            left -= width / 2;
        }
        const long baseline = number(element, "y");
        return {text,         element.getAttribute("class"), left, left + width, baseline - 90,
                baseline + 30};
    }

    static bool overlap(const SvgText& a, const SvgText& b)
    {
        return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
    }
};
