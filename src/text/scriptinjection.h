#pragma once

#include "platform/designsurface.h"
#include "platform/documentreferences.h"

#include <QString>
#include <QVariant>

#include <functional>

namespace Vantry::Text {

// The one script function hosts can ask for by name: the image swapper behind roll-over
// images. Any other name gives an empty text.
QString libraryScript(const QString &functionName);

// Puts a library function into the page. Every script block that lacks it gets its own
// copy after its text; a page without scripts gets a new SCRIPT element as the last child
// of the HTML element, after the body, so that it is saved with the page.
class ScriptInjection
{
public:
    // findSelectedElementByTag is the selection lookup, which leaves what it finds in
    // references.found.
    using ElementLookup = std::function<bool(const QString &tagName)>;

    ScriptInjection(Platform::DesignSurface &surface, ElementLookup findSelectedElementByTag,
        Platform::DocumentReferences &references);

    void addJavaScript(const QVariant &functionName);

private:
    Platform::DesignSurface &m_surface;
    ElementLookup m_findSelectedElementByTag;
    Platform::DocumentReferences &m_references;
};

} // namespace Vantry::Text
