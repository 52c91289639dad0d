#include "platform/logging.h"

namespace Vantry::Platform {

Q_LOGGING_CATEGORY(lcSurface, "vantry.surface")
Q_LOGGING_CATEGORY(lcBridge, "vantry.bridge")

} // namespace Vantry::Platform
