#pragma once

#include "commands/selectionaccess.h"
#include "platform/designsurface.h"

#include <QString>
#include <QVariant>

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
    ScriptInjection(Platform::DesignSurface &surface, Commands::SelectionAccess &selection,
        Commands::DocumentReferences &references);

    void addJavaScript(const QVariant &functionName);

private:
    Platform::DesignSurface &m_surface;
    Commands::SelectionAccess &m_selection;
    Commands::DocumentReferences &m_references;
};

} // namespace Vantry::Text
