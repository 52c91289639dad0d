#pragma once

class QKeySequence;
class QWidget;

namespace Vantry::Control {

// Whether an action on window or inside it (the editor's buttons, the host's menus) has
// keys as one of its shortcuts, enabled or not: such keys belong to the application, not
// to the design surface's own key bindings.
bool windowHasShortcut(const QWidget *window, const QKeySequence &keys);

} // namespace Vantry::Control
