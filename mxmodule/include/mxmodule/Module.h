#pragma once

#include "mxmodule/Assignment.h"
#include "mxmodule/ChannelMap.h"
#include "mxmodule/Configuration.h"
#include "mxmodule/Finding.h"
#include "mxmodule/ModuleFile.h"
#include "mxmodule/Observer.h"
#include "mxmodule/Values.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

class DatasheetModule;
class TranslatedModule;

/// How a module is made.
struct ModuleOptions
{
    ImageOffsets offsets = {}; ///< Where its data begins in the process images.
    /// Replaces the default parameter block; must have its size. Empty: none.
    std::optional<std::vector<char>> parameterBlock = {};
    std::string parameterBlockPlace = {}; ///< Where the block comes from, for findings.
    Observer* observer = nullptr;         ///< Called while the module is made; may be null.
};

/// How values are written into an image.
struct ComposeOptions
{
    ValueCheck check = ValueCheck::Full; ///< How strictly values are checked.
    /// The image to write into, of the size of the module's; empty: that of the module.
    std::optional<std::vector<char>> image = {};
    std::string imagePlace = {}; ///< Where the image comes from, for findings.
};

/// A parameter image that was read from a module or stored for one.
struct ReadImage
{
    std::vector<char> image;       ///< The raw parameter image.
    std::vector<Finding> findings; ///< Missing identity, missing parameters.
};

/// A module of the kv38 family: what its mx file describes, and the way between named values and
/// the bytes that configure it.
///
/// A module owns everything that it needs; it is immutable, and a copy shares the content. One
/// module may be used by many threads at once, and different modules may be made and used in any
/// threads: where the device parser and the companion library have state for the whole process, the
/// library runs one operation after the other. A host that uses these two directly as well puts its
/// own use in the same thread, see docs/guide/threads.md.
///
/// An operation that has no result throws a `Failure` with its findings. One that ends with
/// `std::bad_alloc` keeps no memory; writing or reading JSON may call `std::terminate` instead,
/// because the JSON library allocates in destructors.
class MXMODULE_API Module
{
public:
    /// Makes the module of the mx file, or of its text form, at `path`.
    static Module fromFile(const std::string& path, const ModuleOptions& options = {});

    /// Makes the module of `bytes`, an mx file or its text form, which findings call `name`. The
    /// files that a text form names are read, see `ModuleFile` and SECURITY.md.
    static Module fromBytes(std::vector<char> bytes, const std::string& name = "<bytes>",
                            const ModuleOptions& options = {});

    /// Makes the module with the identifier `moduleId` of the catalogue at `url`, see `Catalogue`.
    static Module fromCatalogue(const std::string& url, std::uint32_t moduleId,
                                const ModuleOptions& options = {});

    /// The same for the identifier as eight hexadecimal digits.
    static Module fromCatalogue(const std::string& url, const std::string& moduleId,
                                const ModuleOptions& options = {});

    /// Makes the module of `file`.
    explicit Module(const ModuleFile& file, const ModuleOptions& options = {});

    /// Copying and moving share the content: a module is never empty.
    Module(const Module&) = default;
    /// The same.
    Module& operator=(const Module&) = default;
    ~Module() = default;

    /// Returns the same module with its data at other places of the process images. The default
    /// parameter block is that of the mx file.
    Module at(ImageOffsets offsets) const;

    // What it is.

    const std::string& name() const;               ///< Of the file, for messages.
    std::string label() const;                     ///< The label text, as on the product.
    std::string moduleId() const;                  ///< Its identifier, eight hexadecimal digits.
    std::string deviceTypeId() const;              ///< Such as "kv38.5a030304".
    const std::vector<char>& defaultImage() const; ///< The parameter block, at most 255 bytes.

    std::vector<Property> properties() const;  ///< In the order of the device, like all lists.
    std::vector<Channel> channels() const;     ///< Also those without data.
    std::vector<Parameter> parameters() const; ///< With the values of the parameter block.
    std::vector<Set> sets() const;             ///< Sets and roles.
    std::vector<BinaryObject> binaryObjects() const; ///< Such as the picture of the product.
    DataSizes sizes() const;                         ///< Of its data, and where it begins.

    RawTexts rawTexts() const; ///< Its texts byte for byte as in the mx file.

    std::string text() const; ///< All of it as tables for people.
    std::string json() const; ///< All of it, schema "mxtool.device" version 2.

    // Channels in the process images.

    /// Returns the channel map. `observer` gets the parser's lines on channels without a symbol.
    ChannelMap channelMap(Observer* observer = nullptr) const;

    /// Returns warnings if the module's data exceeds the largest process image of a fieldbus.
    /// `inputPlace` and `outputPlace` name the origin of the offsets.
    std::vector<Finding> offsetFindings(const std::string& inputPlace,
                                        const std::string& outputPlace) const;

    // Values.

    /// Returns the positions of the parameters called `name`, as `Assignment` states.
    std::vector<std::size_t> parametersCalled(const std::string& name) const;

    /// Returns the position of the only parameter called `name`. Throws a `Failure` of
    /// `Origin::Request` that lists the nearest names when there is none, or those that it may mean
    /// when there are several.
    std::size_t parameterCalled(const std::string& name) const;

    /// Writes values into the parameter image. Checks all of them before it writes the first; a
    /// rejected value, or one that another one of the call overwrites, is an error, and there is no
    /// image.
    Composition compose(const std::vector<Assignment>& assignments,
                        const ComposeOptions& options = {}) const;

    /// Returns the values in `bytes`, which are the raw image or, for Modbus, the registers, each
    /// with its high byte first. Throws a `Failure` at `place` when they are not a configuration of
    /// this module.
    Configuration decode(const std::vector<char>& bytes, Fieldbus fieldbus,
                         const std::string& place = {}) const;

    /// Returns the configuration of the raw image `image` on `fieldbus`. Throws a `Failure`: at
    /// `place` when the size is wrong, at `name()` when the fieldbus cannot carry a value.
    Configuration configuration(const std::vector<char>& image, Fieldbus fieldbus,
                                const std::string& place = {}) const;

    /// Returns the configuration of the parameter block on `fieldbus`.
    Configuration defaults(Fieldbus fieldbus) const;

    /// Returns the Modbus registers of the raw image `image`. Throws a `Failure` when the size is
    /// wrong or a value has no Modbus form.
    std::vector<std::uint16_t> registers(const std::vector<char>& image) const;

    /// Reads the image in `content`, the file called `name`: bytes, or for Modbus registers; the
    /// JSON or CSV of a `Configuration` of the same module type; in a file .txt or .hex the bytes
    /// as text. `place` names it in findings.
    ReadImage imageOfFile(const std::vector<char>& content, const std::string& name,
                          Fieldbus fieldbus, const std::string& place) const;

    /// Reads the image in `words`: bytes in hexadecimal; on Modbus registers, which may be decimal.
    /// `place` names it in findings.
    ReadImage imageOfWords(const std::string& words, Fieldbus fieldbus,
                           const std::string& place) const;

private:
    friend class DatasheetModule;
    friend class WantedValues;
    explicit Module(std::shared_ptr<const TranslatedModule> content);
    std::shared_ptr<const TranslatedModule> content;
};

} // namespace mxmodule
