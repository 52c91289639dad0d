#include "commands/htmlelement.h"

namespace Vantry {

using Commands::HTMLElementAccess;

namespace Commands {

HTMLElement HTMLElementAccess::make(
    Platform::DesignSurface *surface, const Platform::Element &element)
{
    if (!surface || element.isNull())
        return {};
    return HTMLElementAccess(surface, element.id, element.generation);
}

} // namespace Commands

namespace {

Platform::DesignSurface *designSurface(const QPointer<QObject> &surface, int id)
{
    return id == 0 ? nullptr : qobject_cast<Platform::DesignSurface *>(surface.data());
}

} // namespace

HTMLElement::HTMLElement() = default;

HTMLElement::HTMLElement(QObject *surface, int id, int generation)
    : m_surface(surface)
    , m_id(id)
    , m_generation(generation)
{ }

bool HTMLElement::isNull() const
{
    return m_id == 0 || !m_surface;
}

QString HTMLElement::tagName() const
{
    auto *surface = designSurface(m_surface, m_id);
    return surface ? surface->tagName(Platform::Element{m_id, m_generation}) : QString();
}

QString HTMLElement::outerHTML() const
{
    auto *surface = designSurface(m_surface, m_id);
    return surface ? surface->outerHTML(Platform::Element{m_id, m_generation}) : QString();
}

void HTMLElement::setOuterHTML(const QString &html)
{
    if (auto *surface = designSurface(m_surface, m_id))
        surface->setOuterHTML(Platform::Element{m_id, m_generation}, html);
}

QString HTMLElement::innerHTML() const
{
    auto *surface = designSurface(m_surface, m_id);
    return surface ? surface->innerHTML(Platform::Element{m_id, m_generation}) : QString();
}

void HTMLElement::setInnerHTML(const QString &html)
{
    if (auto *surface = designSurface(m_surface, m_id))
        surface->setInnerHTML(Platform::Element{m_id, m_generation}, html);
}

QString HTMLElement::getAttribute(const QString &name) const
{
    auto *surface = designSurface(m_surface, m_id);
    return surface ? surface->attribute(Platform::Element{m_id, m_generation}, name) : QString();
}

void HTMLElement::setAttribute(const QString &name, const QString &value)
{
    if (auto *surface = designSurface(m_surface, m_id))
        surface->setAttribute(Platform::Element{m_id, m_generation}, name, value);
}

void HTMLElement::removeAttribute(const QString &name)
{
    if (auto *surface = designSurface(m_surface, m_id))
        surface->removeAttribute(Platform::Element{m_id, m_generation}, name);
}

HTMLElement HTMLElement::parentElement() const
{
    auto *surface = designSurface(m_surface, m_id);
    if (!surface)
        return {};
    return HTMLElementAccess::make(
        surface, surface->parentElement(Platform::Element{m_id, m_generation}));
}

bool HTMLElement::operator==(const HTMLElement &other) const
{
    return m_surface == other.m_surface && m_id == other.m_id && m_generation == other.m_generation;
}

} // namespace Vantry
