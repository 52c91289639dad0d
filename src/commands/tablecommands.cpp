#include "commands/tablecommands.h"

#include "commands/selectionaccess.h"
#include "platform/designsurface.h"
#include "platform/prompts/userprompts.h"

namespace Vantry::Commands {

bool deletionKeepsTablePart(int number, const Platform::TableParts &parts)
{
    switch (number) {
    case 29:
        return parts.rows > 1 && parts.selectedRows < parts.rows;
    case 31:
        return parts.cells > 1 && parts.selectedColumns < parts.columns;
    case 33:
        return parts.cells > 1 && parts.selectedCells < parts.cells;
    default:
        return false;
    }
}

TableEdit deleteTablePart(Platform::DesignSurface &surface, SelectionAccess &selection,
    const DocumentReferences &references, Platform::UserPrompts &prompts, int number)
{
    const CommandEntry entry = commandEntry(number);
    if (entry.action != CommandAction::GuardedDelete)
        return TableEdit::Failed;
    if (!selection.findSelectedTable())
        return TableEdit::NoTable;
    const Platform::TableParts parts = surface.tableParts(references.found);
    if (surface.lastCallFailed())
        return TableEdit::Failed;
    if (!deletionKeepsTablePart(number, parts)) {
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
