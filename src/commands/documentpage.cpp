#include "commands/documentpage.h"

#include "commands/selectionaccess.h"
#include "dialogs/pagerules.h"
#include "platform/designsurface.h"

namespace Vantry::Commands {

namespace {

bool isTitle(const QString &property)
{
    return property == QLatin1String("DocumentTitle");
}

} // namespace

DocumentPage::DocumentPage(Platform::DesignSurface &surface, SelectionAccess &selection,
    Platform::DocumentReferences &references, std::function<bool()> isReady)
    : m_surface(surface)
    , m_selection(selection)
    , m_references(references)
    , m_isReady(std::move(isReady))
{ }

QString DocumentPage::read(const QString &property) const
{
    if (!m_isReady())
        return QString();
    if (isTitle(property))
        return m_surface.title();
    const QString attribute = Dialogs::documentPropertyAttribute(property);
    if (attribute.isEmpty() || !m_selection.findSelectedElementByTag(QStringLiteral("BODY")))
        return QString();
    return m_surface.attribute(m_references.found, attribute);
}

void DocumentPage::write(const QString &property, const QString &value)
{
    if (!m_isReady())
        return;
    if (isTitle(property)) {
        m_surface.setTitle(value);
        return;
    }
    const QString attribute = Dialogs::documentPropertyAttribute(property);
    if (!attribute.isEmpty() && m_selection.findSelectedElementByTag(QStringLiteral("BODY")))
        m_surface.setAttribute(m_references.found, attribute, value);
}

} // namespace Vantry::Commands
