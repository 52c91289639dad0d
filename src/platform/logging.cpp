#include "platform/logging.h"

namespace Vantry::Platform {

Q_LOGGING_CATEGORY(lcSurface, "vantry.surface", QtInfoMsg)
Q_LOGGING_CATEGORY(lcBridge, "vantry.bridge", QtInfoMsg)

} // namespace Vantry::Platform
