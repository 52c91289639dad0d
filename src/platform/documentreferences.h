#pragma once

#include "platform/designsurface.h"

#include <variant>

namespace Vantry::Platform {

// The two control-wide references into the document that the selection lookups leave
// behind. The find methods keep their search range in current too, so a find overwrites
// what a lookup left there, and a lookup ends a search in progress.
struct DocumentReferences
{
    std::variant<std::monostate, Element, TextRange> current;
    // Set by a successful findSelectedElementByTag.
    Element found;
};

} // namespace Vantry::Platform
