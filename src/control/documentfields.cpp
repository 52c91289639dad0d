#include "control/documentfields.h"

#include "platform/designsurface.h"

namespace Vantry::Control::DocumentFields {

using Platform::Element;

QString pageTitle(Platform::DesignSurface &surface)
{
    return surface.title();
}

bool setPageTitle(Platform::DesignSurface &surface, const QString &title)
{
    return surface.setTitle(title);
}

namespace {

const QString keywordsName = QStringLiteral("keywords");
const QString contentAttribute = QStringLiteral("content");

Element keywordsElement(Platform::DesignSurface &surface)
{
    const QList<Element> named = surface.elementsByName(keywordsName);
    if (!named.isEmpty())
        return named.first();
    // A META whose name differs only in letter case is still the keywords tag.
    const QList<Element> metas = surface.elementsByTagName(QStringLiteral("META"));
    for (const Element &meta : metas) {
        if (surface.attribute(meta, QStringLiteral("name"))
                .compare(keywordsName, Qt::CaseInsensitive)
            == 0)
            return meta;
    }
    return {};
}

} // namespace

QString keyWords(Platform::DesignSurface &surface)
{
    const Element element = keywordsElement(surface);
    return element.isNull() ? QString() : surface.attribute(element, contentAttribute);
}

bool setKeyWords(Platform::DesignSurface &surface, const QString &keyWords)
{
    Element element = keywordsElement(surface);
    if (element.isNull()) {
        const Element head = surface.head();
        element = surface.createElement(QStringLiteral("META"));
        if (head.isNull() || element.isNull()
            || !surface.setAttribute(element, QStringLiteral("name"), keywordsName)
            || !surface.appendChild(head, element))
            return false;
    }
    return surface.setAttribute(element, contentAttribute, keyWords);
}

} // namespace Vantry::Control::DocumentFields
