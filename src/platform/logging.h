#pragma once

#include <QLoggingCategory>

namespace Vantry::Platform {

// Failed and refused design surface operations ("vantry.surface") and bridge calls that
// fail or time out ("vantry.bridge"). Timeouts and refusals are warnings; failures the
// editor expects in normal use (a handle from an earlier document, a surface not ready
// yet) are debug messages, off unless QT_LOGGING_RULES="vantry.*.debug=true".
Q_DECLARE_LOGGING_CATEGORY(lcSurface)
Q_DECLARE_LOGGING_CATEGORY(lcBridge)

} // namespace Vantry::Platform
