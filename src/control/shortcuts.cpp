#include "control/shortcuts.h"

#include <QAction>
#include <QKeySequence>
#include <QWidget>

namespace Vantry::Control {

using KeyClaim = Platform::DesignSurface::KeyClaim;

KeyClaim shortcutClaim(const QWidget *window, const QKeySequence &keys,
    const std::function<bool(const QAction *)> &enginesOwn)
{
    if (!window || keys.isEmpty())
        return KeyClaim::Engine;
    QList<QAction *> actions = window->actions();
    actions += window->findChildren<QAction *>();
    KeyClaim claim = KeyClaim::Engine;
    for (const QAction *action : std::as_const(actions)) {
        if (!action->shortcuts().contains(keys))
            continue;
        if (enginesOwn && enginesOwn(action))
            return KeyClaim::ApplicationThenEngine;
        claim = KeyClaim::Application;
    }
    return claim;
}

} // namespace Vantry::Control
