// The editor's style and movie methods, kept out of the facade: each forwards to the style
// flow or runs a dialog under the rules of a command.
#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include "control/htmleditorcomponent_p.h"

#include "commands/executor.h"
#include "commands/styleflow.h"
#include "dialogs/stylerules.h"

namespace Vantry {

QString HTMLEditorComponent::GetStyleOfCurrentElement(const QString &Style)
{
    const Dialogs::TableFlow flow{*d->surface, *d->selection, d->references, *d->dialogs,
        *d->prompts, {}, d->settings.ImageDirectory};
    return Dialogs::currentElementStyle(flow, Style);
}

void HTMLEditorComponent::SetStyleOfCurrentElement(const QString &Style, const QString &Value)
{
    const Dialogs::TableFlow flow{*d->surface, *d->selection, d->references, *d->dialogs,
        *d->prompts, {}, d->settings.ImageDirectory};
    if (DesignViewActive() && Dialogs::setCurrentElementStyle(flow, Style, Value))
        setisDirty(true);
}

void HTMLEditorComponent::SetFilterOfCurrentElement(const QString &Filter, const QString &Property)
{
    SetStyleOfCurrentElement(QStringLiteral("filter"), Dialogs::filterText(Filter, Property));
}

void HTMLEditorComponent::SelectStyleDialog()
{
    d->executor->runDialog(&Commands::DialogLauncher::selectStyle);
}

void HTMLEditorComponent::FlashMovieDialog()
{
    d->executor->runDialog(&Commands::DialogLauncher::flashProperties);
}

} // namespace Vantry
