#include "mxstation/Declarations.h"

#include "export/DeclaredVariables.h"
#include "export/Provenance.h"
#include "export/XmlText.h"

#include <Poco/DateTimeFormatter.h>
#include <Poco/Timestamp.h>
#include <fmt/format.h>

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace mxstation {

namespace {

constexpr std::int64_t lastSecond = 253402300799; // of the year 9999

// Not the current time: equal stations give equal projects.
std::string dateOfProject()
{
    const char* const stated = std::getenv("SOURCE_DATE_EPOCH");
    const std::string_view digits = stated == nullptr ? "" : stated;
    std::int64_t seconds = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), seconds);
    const bool isDate = read.ec == std::errc() && read.ptr == digits.data() + digits.size() &&
                        seconds >= 0 && seconds <= lastSecond;
    return Poco::DateTimeFormatter::format(Poco::Timestamp::fromEpochTime(isDate ? seconds : 0),
                                           "%Y-%m-%dT%H:%M:%S");
}

// An XML text line by line, each element indented by its depth.
class XmlLines
{
public:
    void add(const std::string& line) { text += std::string(2 * depth, ' ') + line + "\n"; }

    void open(const std::string& name, const std::string& attributes = {})
    {
        add("<" + name + attributes + ">");
        ++depth;
    }

    void close(const std::string& name)
    {
        --depth;
        add("</" + name + ">");
    }

    const std::string& lines() const { return text; }

private:
    std::string text;
    std::size_t depth = 0;
};

std::string attribute(const char* name, const std::string& value)
{
    return fmt::format(" {}=\"{}\"", name, xmlText(value));
}

std::string typeElement(const mxmodule::IecVariable& variable)
{
    const std::string type = "<" + variable.type + "/>";
    return variable.elements == 0
               ? "<type>" + type + "</type>"
               : fmt::format("<type><array><dimension lower=\"0\" upper=\"{}\"/><baseType>{}"
                             "</baseType></array></type>",
                             variable.elements - 1, type);
}

void addVariable(XmlLines& xml, const DeclaredVariable& declared)
{
    if (declared.address.empty()) {
        xml.add(xmlComment(fmt::format("{} is not declared ({}): {}", declared.identifier,
                                       declared.reason, declared.comment)));
        return;
    }
    xml.open("variable",
             attribute("name", declared.identifier) + attribute("address", declared.address));
    xml.add(typeElement(declared.variable));
    xml.add("<documentation><xhtml:p>" + xmlText(declared.comment) + "</xhtml:p></documentation>");
    xml.close("variable");
}

// `list` is the element for the variables.
void addVariables(XmlLines& xml, const std::string& list, const DeclaredVariables& variables)
{
    const bool declares = variables.declares();
    if (declares) {
        xml.open(list);
    }
    for (const DeclaredVariable& declared : variables.all) {
        addVariable(xml, declared);
    }
    if (declares) {
        xml.close(list);
    }
}

void addHeaders(XmlLines& xml, const Plan& plan, const DeclaredVariables& variables,
                const Provenance& provenance)
{
    for (const std::string& line : provenance.lines()) {
        xml.add(xmlComment(line));
    }
    xml.add("<fileHeader" + attribute("companyName", "parser-mx") +
            attribute("productName", "mxtool") +
            attribute("productVersion", Provenance::version()) +
            attribute("creationDateTime", dateOfProject()) +
            attribute("contentDescription",
                      fmt::format("{}. {} SHA-256 of the station: {}", plan.station,
                                  variables.addresses, provenance.stationSum())) +
            "/>");
    xml.open("contentHeader", attribute("name", plan.station));
    xml.open("coordinateInfo");
    for (const char* const language : {"fbd", "ld", "sfc"}) {
        xml.add(fmt::format("<{0}><scaling x=\"1\" y=\"1\"/></{0}>", language));
    }
    xml.close("coordinateInfo");
    xml.close("contentHeader");
}

void addProgram(XmlLines& xml, const DeclaredVariables& variables)
{
    xml.open("pous");
    xml.open("pou", attribute("name", variables.program) + attribute("pouType", "program"));
    xml.open("interface");
    addVariables(xml, "localVars", variables);
    xml.close("interface");
    xml.add("<body><ST><xhtml:p>;</xhtml:p></ST></body>");
    xml.close("pou");
    xml.close("pous");
}

void addResource(XmlLines& xml, const DeclaredVariables& variables)
{
    xml.open("configurations");
    xml.open("configuration", attribute("name", variables.program));
    xml.open("resource", attribute("name", "Coupler"));
    addVariables(xml, "globalVars", variables);
    xml.close("resource");
    xml.close("configuration");
    xml.close("configurations");
}

void addContent(XmlLines& xml, const DeclaredVariables& variables, VariableScope scope)
{
    xml.open("types");
    xml.add("<dataTypes/>");
    if (scope == VariableScope::Program) {
        addProgram(xml, variables);
    } else {
        xml.add("<pous/>");
    }
    xml.close("types");
    xml.open("instances");
    if (scope == VariableScope::Program) {
        xml.add("<configurations/>");
    } else {
        addResource(xml, variables);
    }
    xml.close("instances");
}

} // namespace

Declarations plcopenXml(const Plan& plan, const DeclarationOptions& options)
{
    const Provenance provenance(plan);
    const DeclaredVariables variables = declaredVariables(plan, options.address);
    XmlLines xml;
    xml.add("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    xml.open("project", attribute("xmlns", "http://www.plcopen.org/xml/tc6_0201") +
                            attribute("xmlns:xhtml", "http://www.w3.org/1999/xhtml"));
    addHeaders(xml, plan, variables, provenance);
    addContent(xml, variables, options.scope);
    xml.close("project");
    return {xml.lines(), variables.findings};
}

} // namespace mxstation
