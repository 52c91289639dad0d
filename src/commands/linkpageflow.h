#pragma once

#include "commands/executor.h"
#include "commands/tableflow.h"

#include <VantryHTMLEditor/LinkDialogValues.h>

#include <optional>

// The link and page dialogs' rounds: fill the values from the document, ask, hand back or
// write the answer.
namespace Vantry::Dialogs {

// The link dialog over an anchor's fields (empty for a new link). sources carries the
// host's lists and targets. The answer's dataFld is the reference of a content or portal
// page, empty for an address.
std::optional<Commands::LinkFields> askLink(
    EditorDialogs &dialogs, LinkPropertiesValues sources, const Commands::LinkFields &current);

// frmPageProperties over the BODY around the selection: its attributes are written as one
// undo step, then the title. Returns true when the user confirmed.
bool editPageProperties(const TableFlow &flow);

} // namespace Vantry::Dialogs
