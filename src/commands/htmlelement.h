#pragma once

#include <VantryHTMLEditor/HTMLElement.h>

#include "platform/designsurface.h"

namespace Vantry::Commands {

// Makes the public element object from a surface's element handle.
class HTMLElementAccess : public HTMLElement
{
public:
    static HTMLElement make(Platform::DesignSurface *surface, const Platform::Element &element);

private:
    using HTMLElement::HTMLElement;
};

} // namespace Vantry::Commands
