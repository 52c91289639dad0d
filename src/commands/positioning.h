#pragma once

#include <QString>

#include <optional>

namespace Vantry::Platform {
class DesignSurface;
}

namespace Vantry::Commands {

// Switches the selected element between absolute and flow positioning and returns the
// "Absolute" button's new tooltip; nothing when the surface could not do it.
std::optional<QString> toggleAbsolutePosition(Platform::DesignSurface &surface);

// Whether the selected element can be positioned, and whether it already is.
struct PositionState
{
    bool available = false;
    bool absolute = false;
};
PositionState positionState(Platform::DesignSurface &surface);

} // namespace Vantry::Commands
