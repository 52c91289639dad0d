#pragma once

// The command units that the control and the dialogs' flows only hold or pass along.
namespace Vantry::Commands {
class CommandStatusSource;
class ContextMenus;
class DocumentPage;
class EditorToolbar;
class Executor;
class SelectionAccess;
} // namespace Vantry::Commands
