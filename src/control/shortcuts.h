#pragma once

#include "platform/designsurface.h"

#include <functional>

class QAction;
class QKeySequence;
class QWidget;

namespace Vantry::Control {

// Who takes keys pressed in the design surface. Keys that an action on window or inside it
// (the editor's buttons, the host's menus) has as one of its shortcuts, enabled or not,
// belong to the application, not to the engine's own key bindings. Among them, keys of an
// action for which enginesOwn holds go on to the engine when no shortcut takes them: the
// engine's binding does what that action's command would.
Platform::DesignSurface::KeyClaim shortcutClaim(const QWidget *window, const QKeySequence &keys,
    const std::function<bool(const QAction *)> &enginesOwn);

} // namespace Vantry::Control
