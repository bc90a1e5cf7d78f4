#pragma once

#include "RowModules.h"

#include <array>
#include <optional>

namespace randomstations {

/// A number for the input image and one for the output image.
template <typename Number>
struct OfImages
{
    Number input{};
    Number output{};

    Number& of(bool isInput) { return isInput ? input : output; }
    const Number& of(bool isInput) const { return isInput ? input : output; }
};

/// The rules of a layout for one image, in bytes.
struct Rules
{
    std::uint64_t start = 0;
    std::uint64_t align = 1;
    std::uint64_t padModule = 1;
    std::uint64_t padImage = 1;
    std::uint64_t statusBefore = 0;
    std::uint64_t statusBehind = 0;
    bool isBytesFirst = false;
};

/// An entry of the row: a module, a reserved place, or a module that begins one.
struct RowEntry
{
    const RowModule* module = nullptr;
    std::optional<OfImages<std::uint64_t>> reserve = {};
    OfImages<std::optional<std::uint64_t>> pin = {};
    OfImages<std::uint64_t> begin = {}; ///< Where it is, if it has bytes.

    /// Returns what it takes of an image, without padding.
    std::uint64_t size(bool isInput) const;
};

/// A station, and where the rules of the documentation put its entries.
struct RandomStation
{
    OfImages<Rules> rules;
    std::vector<RowEntry> entries;
    OfImages<std::uint64_t> end; ///< Of the whole images.

    /// Lays out both images; for some entries a pin that fits is chosen if `random` is not null.
    void layOut(std::mt19937* random = nullptr);

    /// Returns the station file. Entry i is in line `firstLine` + i.
    std::string text() const;

    static constexpr std::size_t firstLine = 3;
};

/// Returns a row of some of `modules`, which outlive it, with layout, pins and reserved places.
RandomStation randomStation(std::mt19937& random, const std::vector<RowModule>& modules);

} // namespace randomstations
