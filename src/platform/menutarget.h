#pragma once

#include "platform/commandstate.h"

#include <QPoint>
#include <QStringList>

#include <optional>

namespace Vantry::Platform {

// What a context menu is about: the element the selection stands in (or holds whole), as
// the tag names of its path up to the root, and the state of its positioning command.
struct MenuTarget
{
    QStringList path;
    CommandState positioning = NotSupported;
};

// A surface that sends what a context menu is about along with the request for the menu,
// so that showing it needs no question to the engine.
class MenuTargets
{
public:
    virtual ~MenuTargets() = default;
    // What the menu last requested at position is about, while it is still current.
    virtual std::optional<MenuTarget> menuTarget(const QPoint &position) const = 0;
};

} // namespace Vantry::Platform
