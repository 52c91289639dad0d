#include "text/printing.h"

#include <QPrinter>

namespace Vantry::Text {

Printing::Printing(
    Platform::DesignSurface &surface, std::function<Platform::UserPrompts &()> prompts)
    : m_surface(surface)
    , m_prompts(std::move(prompts))
{ }

bool Printing::printPage()
{
    if (!m_surface.isReady())
        return false;
    QPrinter printer(QPrinter::HighResolution);
    if (!m_prompts().printSetup(printer))
        return false;
    return m_surface.print(&printer);
}

} // namespace Vantry::Text
