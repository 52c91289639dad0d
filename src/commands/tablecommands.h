#pragma once

#include "commands/commandtables.h"

namespace Vantry {
class UserPrompts;
} // namespace Vantry

namespace Vantry::Platform {
class DesignSurface;
using Vantry::UserPrompts;
} // namespace Vantry::Platform

namespace Vantry::Commands {

class SelectionAccess;
struct DocumentReferences;

enum class TableEdit
{
    Done,
    // The last row, column or cell was kept and the user told so.
    Refused,
    NoTable,
    Failed
};

// Deletes a row (29), column (31) or cell (33) around the selection, refusing to take the
// last one. Columns and cells are both counted over the whole table's cells.
TableEdit deleteTablePart(Platform::DesignSurface &surface, SelectionAccess &selection,
    const DocumentReferences &references, Platform::UserPrompts &prompts, int number);

// Pastes the table over the selection.
bool insertTableAtSelection(Platform::DesignSurface &surface, const TableArguments &table);
// Appends the table to the end of the body, wherever the selection is.
bool appendTableToBody(Platform::DesignSurface &surface, const TableArguments &table);

} // namespace Vantry::Commands
