#include "commands/tablecommands.h"

#include "commands/selectionaccess.h"
#include "platform/designsurface.h"
#include "platform/prompts/userprompts.h"

namespace Vantry::Commands {

bool deletionKeepsTablePart(Command command, const Platform::TableParts &parts)
{
    switch (command) {
    case Command::DeleteRow:
        return parts.rows > 1 && parts.selectedRows < parts.rows;
    case Command::DeleteColumn:
        return parts.cells > 1 && parts.selectedColumns < parts.columns;
    case Command::DeleteCell:
        return parts.cells > 1 && parts.selectedCells < parts.cells;
    default:
        return false;
    }
}

TableEdit deleteTablePart(Platform::DesignSurface &surface, SelectionAccess &selection,
    const DocumentReferences &references, Platform::UserPrompts &prompts, Command command)
{
    const CommandEntry entry = commandEntry(command);
    if (entry.action != CommandAction::GuardedDelete)
        return TableEdit::Failed;
    if (!selection.findSelectedTable())
        return TableEdit::NoTable;
    const Platform::TableParts parts = surface.tableParts(references.found);
    if (surface.lastCallFailed())
        return TableEdit::Failed;
    if (!deletionKeepsTablePart(command, parts)) {
        prompts.information(lastTablePartMessage(command));
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
