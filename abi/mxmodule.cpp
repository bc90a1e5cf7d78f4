// What abidw describes of libmxmodule, as a host sees it: its headers, without the types that the
// library uses inside. One function for each group of headers takes their classes.

#include <mxmodule/Build.h>
#include <mxmodule/Catalogue.h>
#include <mxmodule/ChannelColumns.h>
#include <mxmodule/Check.h>
#include <mxmodule/Datasheet.h>
#include <mxmodule/Explanation.h>
#include <mxmodule/FileKind.h>
#include <mxmodule/HandWriting.h>
#include <mxmodule/IecVariable.h>
#include <mxmodule/Module.h>
#include <mxmodule/ModuleFolder.h>
#include <mxmodule/Population.h>
#include <mxmodule/ProductPicture.h>
#include <mxmodule/WantedValues.h>
#include <mxmodule/c/CallFromC.h>
#include <mxmodule/mxmodule.h>

using namespace mxmodule;

namespace described {

void modules(Module, ModuleFile, ModuleFolder, ModuleOptions, ImageOffsets, DataSizes, Property,
             Channel, Parameter, Option, ImagePlace, Set, BinaryObject, ProductPicture, RawTexts,
             RawParameterTexts, Observer*)
{}

void values(Assignment, Values, WantedValues, ComposeOptions, Composition, Configuration,
            Comparison, PlacedParameter, ReadImage, Fieldbus, Listing, ValueCheck)
{}

void channelMaps(ChannelColumns, ChannelMap, MappedChannel, ImageArea, ImageBytes, BitRun, CsvStyle,
                 IecVariable)
{}

void findings(Finding, Failure*, Severity, Origin, Advice) {}

void files(FileKind, LostWriting, BuildOptions, BuiltFile, CheckRule, RuleSettings, CheckFinding,
           CheckedFile)
{}

void cInterface(mxmodule_error*, mxmodule_code, mxmodule_bytes*, mxmodule_module*,
                mxmodule_assignment, mxmodule_fieldbus, mxmodule_value_check, mxmodule_listing,
                mxmodule_composition*, mxmodule_configuration*, mxmodule_comparison*,
                mxmodule_catalogue*, mxmodule_observer, mxmodule_columns*, mxmodule_number_column,
                mxmodule_text_column)
{}

void explanations(Explanation, ExplainedPart, ExplainedGroup, NamedPlace) {}

void datasheets(DatasheetPage, DatasheetPlace) {}

void catalogues(Catalogue*, CatalogueEntry, CatalogueRecord, CatalogueQuery, CataloguePage,
                SearchExplanation, ConditionField, MxDirectory, PopulateOptions, Population)
{}

} // namespace described
