#pragma once

// The platform types that units elsewhere only pass along by reference.
namespace Vantry::Platform {
class DesignSurface;
struct DocumentReferences;
} // namespace Vantry::Platform
