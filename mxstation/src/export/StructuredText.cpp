#include "mxstation/Declarations.h"

#include "export/CommentText.h"
#include "export/DeclaredVariables.h"
#include "export/Provenance.h"

#include <fmt/format.h>
#include <text/TextWidth.h>

namespace mxstation {

namespace {

std::string iecComment(const std::string& text)
{
    return "(* " + commentText(text, {"(*", "*)"}) + " *)";
}

std::string declarationLine(const DeclaredVariable& declared)
{
    if (declared.address.empty()) {
        return "    " +
               iecComment(fmt::format("{} is not declared ({}): {}", declared.identifier,
                                      declared.reason, declared.comment)) +
               "\n";
    }
    return fmt::format("    {} AT {} : {}; {}\n", declared.identifier, declared.address,
                       mxmodule::iecTypeText(declared.variable), iecComment(declared.comment));
}

std::string headComments(const Plan& plan, const DeclaredVariables& variables)
{
    std::string head =
        iecComment(fmt::format("{}. {}", text::labelOf(plan.station), variables.addresses)) + "\n";
    for (const std::string& line : Provenance(plan).lines()) {
        head += iecComment(line) + "\n";
    }
    return head;
}

} // namespace

Declarations declarations(const Plan& plan, const DeclarationOptions& options)
{
    requireOk(plan);
    const DeclaredVariables variables = declaredVariables(plan, options.address);
    std::string body;
    for (const DeclaredVariable& declared : variables.all) {
        body += declarationLine(declared);
    }
    const bool isProgram = options.scope == VariableScope::Program;
    if (variables.declares()) { // compilers reject an empty list
        body = (isProgram ? "VAR\n" : "VAR_GLOBAL\n") + body + "END_VAR\n";
    }
    if (isProgram) {
        body = "PROGRAM " + variables.program + "\n" + body + "    ;\nEND_PROGRAM\n";
    }
    return {headComments(plan, variables) + body, variables.findings};
}

} // namespace mxstation
