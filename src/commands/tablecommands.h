#pragma once

#include "commands/commandtables.h"

namespace Vantry {
class UserPrompts;
} // namespace Vantry

namespace Vantry::Platform {
class DesignSurface;
using Vantry::UserPrompts;
struct TableParts;
struct DocumentReferences;
} // namespace Vantry::Platform

namespace Vantry::Commands {

class SelectionAccess;
using Platform::DocumentReferences;

enum class TableEdit
{
    Done,
    // The last row, column or cell was kept and the user told so.
    Refused,
    NoTable,
    Failed
};

// Whether deleting rows, columns or cells (DeleteRow, DeleteColumn, DeleteCell) at the selection
// leaves the table at least one of them. A one-cell table keeps its last column and cell as the
// command numbers have always counted them, over the whole table's cells.
bool deletionKeepsTablePart(Command command, const Platform::TableParts &parts);

// Deletes a row, column or cell around the selection, refusing with the
// matching message to take the last one.
TableEdit deleteTablePart(Platform::DesignSurface &surface, SelectionAccess &selection,
    const DocumentReferences &references, Platform::UserPrompts &prompts, Command command);

// Pastes the table over the selection.
bool insertTableAtSelection(Platform::DesignSurface &surface, const TableArguments &table);
// Appends the table to the end of the body, wherever the selection is.
bool appendTableToBody(Platform::DesignSurface &surface, const TableArguments &table);

} // namespace Vantry::Commands
