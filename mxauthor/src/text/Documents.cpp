#include "Documents.h"

#include <yaml-cpp/eventhandler.h>

#include <sstream>

namespace mxauthor {

namespace {

// Remembers where the root of a document stands.
class RootPlace : public YAML::EventHandler
{
public:
    void OnDocumentStart(const YAML::Mark& /*mark*/) override { root.reset(); }
    void OnDocumentEnd() override {}
    void OnNull(const YAML::Mark& mark, YAML::anchor_t /*anchor*/) override { take(mark); }
    void OnAlias(const YAML::Mark& mark, YAML::anchor_t /*anchor*/) override { take(mark); }
    void OnScalar(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                  const std::string& /*value*/) override
    {
        take(mark);
    }
    void OnSequenceStart(const YAML::Mark& mark, const std::string& /*tag*/,
                         YAML::anchor_t /*anchor*/, YAML::EmitterStyle::value /*style*/) override
    {
        take(mark);
    }
    void OnSequenceEnd() override {}
    void OnMapStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                    YAML::EmitterStyle::value /*style*/) override
    {
        take(mark);
    }
    void OnMapEnd() override {}

    std::optional<YAML::Mark> root;

private:
    void take(const YAML::Mark& mark)
    {
        if (!root) {
            root = mark;
        }
    }
};

} // namespace

// Not by reading all documents: of a stray "," the YAML library makes one empty document after the
// other, without end.
std::optional<YAML::Mark> secondDocument(const std::string& source)
{
    std::istringstream stream(source);
    YAML::Parser parser(stream);
    RootPlace place;
    const bool isThere = parser.HandleNextDocument(place) && parser.HandleNextDocument(place);
    return isThere ? place.root : std::nullopt;
}

} // namespace mxauthor
