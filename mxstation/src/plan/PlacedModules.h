#pragma once

#include "plan/ImageCursor.h"
#include "plan/PlanFindings.h"

#include <map>
#include <optional>
#include <vector>

namespace mxstation {

/// What modules of one mx file have in common wherever they are.
struct ModuleShape
{
    mxmodule::Module module;  ///< Somewhere in the images.
    std::uint64_t input = 0;  ///< Input data, in bytes.
    std::uint64_t output = 0; ///< Output data, in bytes.
    bool isOfBits = false;    ///< Has channels, none of a byte or more.
};

/// A module at its place.
struct PlacedModule
{
    mxmodule::Module module;
    mxmodule::ChannelMap map;
};

/// The modules of a station at the places that its layout gives them.
class PlacedModules
{
public:
    /// Errors of `planned` are added to `collected`. Both outlive the object.
    PlacedModules(const Station& planned, PlanFindings& collected);

    /// Returns the module of the entry `index`; null for a reserved place, and for a module that
    /// cannot be translated or has no possible place.
    const PlacedModule* at(std::size_t index) const;

    /// Returns the number of channels of all modules that have a place in an image.
    std::size_t countOfChannels() const;

    const ImageCursor& input() const { return inputCursor; }
    const ImageCursor& output() const { return outputCursor; }

    /// Returns whether every module has a place.
    bool isComplete() const;

private:
    void translateInRow();
    void placeInOrder();
    void translateElsewhere();
    void translate(std::size_t index, std::uint64_t input, std::uint64_t output);
    Slot slotOf(std::size_t index, bool isInput) const;
    std::vector<std::size_t> orderOf(const ImageLayout& layout) const;
    void addImageFindings(const ImageCursor& cursor, bool isInput);
    void addWrongPin(const WrongPin& wrong, bool isInput);
    void requireFit(std::size_t index, bool isInput);

    const Station& station;
    PlanFindings& findings;
    ImageCursor inputCursor;
    ImageCursor outputCursor;
    std::map<const char*, ModuleShape> shapes;   // by the bytes of the mx file
    std::vector<const ModuleShape*> entryShapes; // null: nothing is translated
    std::vector<std::optional<PlacedModule>> modules;
    std::vector<std::uint64_t> inputOffsets;
    std::vector<std::uint64_t> outputOffsets;
};

} // namespace mxstation
