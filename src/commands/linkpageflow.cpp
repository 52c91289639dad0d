#include "commands/linkpageflow.h"

#include "commands/selectionaccess.h"
#include "dialogs/linklists.h"
#include "dialogs/pagerules.h"
#include "platform/designsurface.h"

#include <VantryHTMLEditor/EditorDialogs.h>

namespace Vantry::Dialogs {

using Platform::DesignSurface;
using Platform::Element;

std::optional<Commands::LinkFields> askLink(
    EditorDialogs &dialogs, LinkPropertiesValues sources, const Commands::LinkFields &current)
{
    LinkPropertiesValues values = std::move(sources);
    values.ClearValues();
    readLinkReference(current.dataFld, values);
    values.URL = current.href;
    values.Target = current.target;
    values.Popup = current.title;
    values.LinkColor = styleColorText(current.color);
    values.Decoration = current.textDecoration;
    if (!dialogs.linkProperties(values) || values.Cancel)
        return std::nullopt;
    Commands::LinkFields link;
    link.href = values.URL;
    link.target = values.Target;
    link.color = values.LinkColor;
    link.title = values.Popup;
    link.textDecoration = values.Decoration;
    link.dataFld = linkReference(values);
    return link;
}

bool editPageProperties(const TableFlow &flow)
{
    if (!flow.selection.findSelectedElementByTag(QStringLiteral("BODY")))
        return false;
    const Element body = flow.references.found;
    const QStringList names = pageReadAttributes();
    const DesignSurface::ElementFields read = flow.surface.elementFields(body, names, {});
    const QString title = flow.surface.title();
    if (flow.surface.lastCallFailed() || read.attributes.size() != names.size())
        return false;

    PagePropertiesValues values;
    values.ImageDirectory = flow.imageDirectory;
    values.ClearValues();
    fillPageValues(values, read.attributes, title);
    const PagePropertiesValues shown = values;
    if (!flow.dialogs.pageProperties(values) || values.Cancel)
        return false;

    // A newly picked background is placed like any image; placement says why it failed.
    if (values.BackgroundImage != shown.BackgroundImage && !values.BackgroundImage.isEmpty()
        && flow.placeImage) {
        values.BackgroundImage = flow.placeImage(values.BackgroundImage);
        if (values.BackgroundImage.isEmpty())
            return false;
    }
    QList<DesignSurface::FieldEdit> edits;
    for (const PageEdit &edit : pageEdits(values))
        edits.append({edit.attribute, edit.value});
    if (!flow.surface.editElementFields(body, edits))
        return false;
    if (values.Title != shown.Title && !flow.surface.setTitle(values.Title))
        return false;
    values.ClearValues();
    return true;
}

} // namespace Vantry::Dialogs
