#include "commands/positioning.h"

#include "commands/commandtables.h"
#include "platform/designsurface.h"

namespace Vantry::Commands {

using Platform::DesignSurface;

std::optional<QString> toggleAbsolutePosition(DesignSurface &surface)
{
    if (!surface.execCommand(DesignCommand::MakeAbsolute, DesignSurface::OptionDoDefault))
        return std::nullopt;
    const int status = surface.commandStatus(DesignCommand::MakeAbsolute);
    if (surface.lastCallFailed())
        return std::nullopt;
    return absolutePositionToolTip(status);
}

PositionState positionState(DesignSurface &surface)
{
    const int status = surface.commandStatus(DesignCommand::MakeAbsolute);
    if (surface.lastCallFailed())
        return {};
    const int enabled = DesignSurface::StatusSupported | DesignSurface::StatusEnabled;
    PositionState state;
    state.available = (status & enabled) == enabled;
    state.absolute = state.available && (status & DesignSurface::StatusLatched);
    return state;
}

} // namespace Vantry::Commands
