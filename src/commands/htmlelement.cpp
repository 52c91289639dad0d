#include "commands/htmlelement.h"

namespace Vantry {

using Commands::HTMLElementAccess;

namespace Commands {

HTMLElement HTMLElementAccess::make(
    Platform::DesignSurface *surface, const Platform::Element &element)
{
    HTMLElement result;
    if (surface && !element.isNull()) {
        result.m_surface = surface;
        result.m_id = element.id;
        result.m_generation = element.generation;
    }
    return result;
}

Platform::DesignSurface *HTMLElementAccess::surface(const HTMLElement &element)
{
    return element.isNull() ? nullptr
                            : qobject_cast<Platform::DesignSurface *>(element.m_surface.data());
}

Platform::Element HTMLElementAccess::handle(const HTMLElement &element)
{
    return {element.m_id, element.m_generation};
}

} // namespace Commands

HTMLElement::HTMLElement() = default;

bool HTMLElement::isNull() const
{
    return m_id == 0 || !m_surface;
}

QString HTMLElement::tagName() const
{
    auto *surface = HTMLElementAccess::surface(*this);
    return surface ? surface->tagName(HTMLElementAccess::handle(*this)) : QString();
}

QString HTMLElement::outerHTML() const
{
    auto *surface = HTMLElementAccess::surface(*this);
    return surface ? surface->outerHTML(HTMLElementAccess::handle(*this)) : QString();
}

void HTMLElement::setOuterHTML(const QString &html)
{
    if (auto *surface = HTMLElementAccess::surface(*this))
        surface->setOuterHTML(HTMLElementAccess::handle(*this), html);
}

QString HTMLElement::innerHTML() const
{
    auto *surface = HTMLElementAccess::surface(*this);
    return surface ? surface->innerHTML(HTMLElementAccess::handle(*this)) : QString();
}

void HTMLElement::setInnerHTML(const QString &html)
{
    if (auto *surface = HTMLElementAccess::surface(*this))
        surface->setInnerHTML(HTMLElementAccess::handle(*this), html);
}

QString HTMLElement::getAttribute(const QString &name) const
{
    auto *surface = HTMLElementAccess::surface(*this);
    return surface ? surface->attribute(HTMLElementAccess::handle(*this), name) : QString();
}

void HTMLElement::setAttribute(const QString &name, const QString &value)
{
    if (auto *surface = HTMLElementAccess::surface(*this))
        surface->setAttribute(HTMLElementAccess::handle(*this), name, value);
}

void HTMLElement::removeAttribute(const QString &name)
{
    if (auto *surface = HTMLElementAccess::surface(*this))
        surface->removeAttribute(HTMLElementAccess::handle(*this), name);
}

HTMLElement HTMLElement::parentElement() const
{
    auto *surface = HTMLElementAccess::surface(*this);
    if (!surface)
        return {};
    return HTMLElementAccess::make(
        surface, surface->parentElement(HTMLElementAccess::handle(*this)));
}

bool HTMLElement::operator==(const HTMLElement &other) const
{
    return m_surface == other.m_surface && m_id == other.m_id && m_generation == other.m_generation;
}

} // namespace Vantry
