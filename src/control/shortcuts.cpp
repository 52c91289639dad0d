#include "control/shortcuts.h"

#include <QAction>
#include <QKeySequence>
#include <QWidget>

#include <algorithm>

namespace Vantry::Control {

bool windowHasShortcut(const QWidget *window, const QKeySequence &keys)
{
    if (!window || keys.isEmpty())
        return false;
    const auto bound
        = [&keys](const QAction *action) { return action->shortcuts().contains(keys); };
    const QList<QAction *> own = window->actions();
    if (std::any_of(own.cbegin(), own.cend(), bound))
        return true;
    const QList<QAction *> inside = window->findChildren<QAction *>();
    return std::any_of(inside.cbegin(), inside.cend(), bound);
}

} // namespace Vantry::Control
