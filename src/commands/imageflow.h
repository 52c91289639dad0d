#pragma once

#include "commands/tableflow.h"

// The image dialog's round (command 15): read the selected image and its link, ask the
// dialog, place the chosen files, write the markup as one undo step.
namespace Vantry::Dialogs {

// Edits the image selected as a whole, else inserts one at the selection. True when the
// document changed.
bool editImage(const TableFlow &flow);

} // namespace Vantry::Dialogs
