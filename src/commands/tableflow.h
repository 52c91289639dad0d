#pragma once

#include "commands/commandsfwd.h"
#include "platform/platformfwd.h"

#include <QString>
#include <QVariant>

#include <functional>

namespace Vantry {
class EditorDialogs;
class UserPrompts;
} // namespace Vantry

// The table dialogs' round: read the document, fill the values, ask the dialog, write the
// answer back as one undo step. Each returns true when the document changed.
namespace Vantry::Dialogs {

struct TableFlow
{
    Platform::DesignSurface &surface;
    Commands::SelectionAccess &selection;
    Platform::DocumentReferences &references;
    EditorDialogs &dialogs;
    UserPrompts &prompts;
    // Where a chosen background image goes before its path is written; unset keeps it.
    std::function<QString(const QString &)> placeImage;
    QString imageDirectory;
};

// Asks for a new table; on OK *parameters holds the insert-table command's parameters
// (NumRows, NumCols, TableAttrs, CellAttrs).
bool askInsertTable(const TableFlow &flow, QVariant *parameters);
// The table or the cell around the selection; nothing happens outside one.
bool editTableProperties(const TableFlow &flow);
bool editCellProperties(const TableFlow &flow);

} // namespace Vantry::Dialogs
