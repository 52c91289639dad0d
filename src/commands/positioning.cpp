#include "commands/positioning.h"

#include "commands/commandtables.h"
#include "platform/designsurface.h"

namespace Vantry::Commands {

using Platform::DesignSurface;

std::optional<QString> toggleAbsolutePosition(DesignSurface &surface)
{
    if (!surface.execCommand(DesignCommand::MakeAbsolute, DesignSurface::OptionDoDefault))
        return std::nullopt;
    const CommandState status = surface.commandStatus(DesignCommand::MakeAbsolute);
    if (surface.lastCallFailed())
        return std::nullopt;
    return absolutePositionToolTip(status);
}

PositionState positionState(DesignSurface &surface)
{
    const CommandState status = surface.commandStatus(DesignCommand::MakeAbsolute);
    if (surface.lastCallFailed())
        return {};
    PositionState state;
    state.available = status >= Enabled;
    state.absolute = status == Latched;
    return state;
}

} // namespace Vantry::Commands
