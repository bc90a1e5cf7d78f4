#include "check/Checks.h"
#include "check/Svgz.h"

namespace mxauthor {

void checkImage(const ModuleView& module, Findings& findings)
{
    const auto* const image = module.content<ProductImage>(0x20F1);
    if (image == nullptr) {
        return;
    }
    if (image->bytes.value.empty()) {
        findings.add("image-empty", module.group(0x20F1)->place, "", "the product image is empty");
        return;
    }
    const std::string problem = svgzProblem(image->bytes.value);
    if (!problem.empty()) {
        findings.add("image-unreadable", image->bytes.place, "", problem);
    }
}

} // namespace mxauthor
