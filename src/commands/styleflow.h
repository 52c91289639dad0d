#pragma once

#include "commands/tableflow.h"

// The style, Flash and element-properties dialogs' rounds, on the same context as the table
// dialogs: read the document, fill the values, ask the dialog, write the answer back as one
// undo step. Each returns true when the document changed.
namespace Vantry::Dialogs {

// frmSelectStyle for the current element: a class of a sheet goes into its class
// attribute; a sheet picked with "Pick StyleSheet" is linked and the dialog shown again.
bool selectStyle(const TableFlow &flow);
// frmFlashProperties: the OBJECT around the selection is edited in place, else a new OBJECT
// block is pasted at the selection. The movie is placed like an image first.
bool editFlashProperties(const TableFlow &flow);
// The current element's attributes in a table: added, changed and removed ones are written
// together.
bool editElementProperties(const TableFlow &flow);

// A property of the current element's style attribute (the name as CSS or as a script
// writes it); empty without one.
QString currentElementStyle(const TableFlow &flow, const QString &name);
// Sets it, the value exactly as given; an empty value removes it. Nothing happens without
// a selection: a selected control, or selected text.
bool setCurrentElementStyle(const TableFlow &flow, const QString &name, const QString &value);

} // namespace Vantry::Dialogs
