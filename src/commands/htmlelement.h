#pragma once

#include <VantryHTMLEditor/HTMLElement.h>

#include "platform/designsurface.h"

namespace Vantry::Commands {

// Between the public element object and the surface's element handles.
struct HTMLElementAccess
{
    static HTMLElement make(Platform::DesignSurface *surface, const Platform::Element &element);
    static Platform::DesignSurface *surface(const HTMLElement &element);
    static Platform::Element handle(const HTMLElement &element);
};

} // namespace Vantry::Commands
