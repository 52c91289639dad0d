#include "commands/tablecommands.h"

#include "commands/selectionaccess.h"
#include "platform/designsurface.h"
#include "platform/prompts/userprompts.h"

namespace Vantry::Commands {

TableEdit deleteTablePart(Platform::DesignSurface &surface, SelectionAccess &selection,
    const DocumentReferences &references, Platform::UserPrompts &prompts, int number)
{
    const CommandEntry entry = commandEntry(number);
    if (entry.action != CommandAction::GuardedDelete)
        return TableEdit::Failed;
    if (!selection.findSelectedTable())
        return TableEdit::NoTable;
    const QString markup = surface.outerHTML(references.found);
    if (surface.lastCallFailed())
        return TableEdit::Failed;
    const TableParts parts = countTableParts(markup);
    const int count = number == 29 ? parts.rows : parts.cells;
    if (count <= 1) {
        prompts.information(lastTablePartMessage(number));
        return TableEdit::Refused;
    }
    return surface.execCommand(entry.platformCommand, entry.option) ? TableEdit::Done
                                                                    : TableEdit::Failed;
}

bool insertTableAtSelection(Platform::DesignSurface &surface, const TableArguments &table)
{
    const Platform::TextRange range = surface.selectionRange();
    if (surface.lastCallFailed())
        return false;
    return surface.pasteHTML(range, tableMarkup(table));
}

bool appendTableToBody(Platform::DesignSurface &surface, const TableArguments &table)
{
    const QString content = surface.bodyInnerHTML();
    if (surface.lastCallFailed())
        return false;
    return surface.editBodyInnerHTML(content + tableMarkup(table));
}

} // namespace Vantry::Commands
