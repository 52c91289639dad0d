#include <VantryHTMLEditor/CompanionObjects.h>

#include "commands/companionlinks.h"
#include "commands/editortoolbar.h"
#include "platform/designsurface.h"

namespace Vantry {

namespace Commands {

namespace {

template <typename Link> Link *linkOf(const QObject *companion)
{
    return companion->findChild<Link *>(QString(), Qt::FindDirectChildrenOnly);
}

template <typename Link> Link *ensureLink(QObject *companion)
{
    Link *link = linkOf<Link>(companion);
    return link ? link : new Link(companion);
}

} // namespace

void ToolbarLink::attach(clsToolbar *companion, EditorToolbar *toolbar)
{
    if (companion)
        ensureLink<ToolbarLink>(companion)->m_toolbar = toolbar;
}

EditorToolbar *ToolbarLink::toolbar(const clsToolbar *companion)
{
    const ToolbarLink *link = linkOf<ToolbarLink>(companion);
    return link ? link->m_toolbar.data() : nullptr;
}

void StyleSheetLink::attach(clsStyle *companion, Platform::DesignSurface *surface)
{
    if (companion)
        ensureLink<StyleSheetLink>(companion)->m_surface = surface;
}

Platform::DesignSurface *StyleSheetLink::surface(const clsStyle *companion)
{
    const StyleSheetLink *link = linkOf<StyleSheetLink>(companion);
    return link ? link->m_surface.data() : nullptr;
}

} // namespace Commands

using Commands::EditorToolbar;
using Commands::ToolbarLink;

clsContextMenu::clsContextMenu(QObject *parent)
    : QObject(parent)
{ }

clsContextMenu::~clsContextMenu() = default;

namespace {

quint32 groupBit(clsContextMenu::em_ContextMenu group)
{
    const auto value = static_cast<qint32>(group);
    return value >= 1 && value <= 8 ? 1u << value : 0u;
}

} // namespace

void clsContextMenu::ShowBuiltinContextMenuItem(em_ContextMenu nMenuItem)
{
    m_hiddenGroups &= ~groupBit(nMenuItem);
}

void clsContextMenu::HideBuiltinContextMenuItem(em_ContextMenu nMenuItem)
{
    m_hiddenGroups |= groupBit(nMenuItem);
}

void clsContextMenu::ShowAllBuiltinContextMenuItems()
{
    m_hiddenGroups = 0;
}

void clsContextMenu::HideAllBuiltinContextMenuItems()
{
    for (qint32 group = cm_AbsolutePosMenus; group <= cm_ElementPropertiesMenus; ++group)
        m_hiddenGroups |= groupBit(static_cast<em_ContextMenu>(group));
}

void clsContextMenu::AddCustomContextMenuItem(
    const QString &sCustomMenuKey, const QString &sCustomMenuText)
{
    m_customItems.append({sCustomMenuKey, sCustomMenuText});
}

void clsContextMenu::RemoveCustomContextMenuItem(const QString &sCustomMenuKey)
{
    m_customItems.removeIf(
        [&sCustomMenuKey](const CustomItem &item) { return item.key == sCustomMenuKey; });
}

void clsContextMenu::RemoveAllCustomContextMenuItems()
{
    m_customItems.clear();
}

qint16 clsContextMenu::CountCustomContextMenuItems() const
{
    return static_cast<qint16>(qMin<qsizetype>(m_customItems.size(), 32767));
}

bool clsContextMenu::isBuiltinContextMenuItemShown(em_ContextMenu nMenuItem) const
{
    return (m_hiddenGroups & groupBit(nMenuItem)) == 0;
}

clsToolbar::clsToolbar(QObject *parent)
    : QObject(parent)
{ }

clsToolbar::~clsToolbar() = default;

clsToolbar::em_ToolbarOrder clsToolbar::ToolbarDisplayOrder(em_Toolbars Toolbar) const
{
    const EditorToolbar *toolbar = ToolbarLink::toolbar(this);
    if (!toolbar)
        return tbo_first;
    return static_cast<em_ToolbarOrder>(toolbar->toolbarDisplayOrder(Toolbar));
}

bool clsToolbar::setToolbarDisplayOrder(em_Toolbars Toolbar, em_ToolbarOrder order)
{
    EditorToolbar *toolbar = ToolbarLink::toolbar(this);
    return toolbar && toolbar->setToolbarDisplayOrder(Toolbar, order);
}

bool clsToolbar::ToolbarVisibleState(em_Toolbars Toolbar) const
{
    EditorToolbar *toolbar = ToolbarLink::toolbar(this);
    return toolbar && toolbar->toolbarVisibleState(Toolbar);
}

bool clsToolbar::setToolbarVisibleState(em_Toolbars Toolbar, bool state)
{
    EditorToolbar *toolbar = ToolbarLink::toolbar(this);
    return toolbar && toolbar->setToolbarVisibleState(Toolbar, state);
}

bool clsToolbar::ButtonEnabledState(em_ToolbarButtons ButtonKey) const
{
    EditorToolbar *toolbar = ToolbarLink::toolbar(this);
    return toolbar && toolbar->buttonEnabledState(ButtonKey);
}

bool clsToolbar::setButtonEnabledState(em_ToolbarButtons ButtonKey, bool state)
{
    EditorToolbar *toolbar = ToolbarLink::toolbar(this);
    return toolbar && toolbar->setButtonEnabledState(ButtonKey, state);
}

bool clsToolbar::ButtonVisibleState(em_ToolbarButtons ButtonKey) const
{
    EditorToolbar *toolbar = ToolbarLink::toolbar(this);
    return toolbar && toolbar->buttonVisibleState(ButtonKey);
}

bool clsToolbar::setButtonVisibleState(em_ToolbarButtons ButtonKey, bool state)
{
    EditorToolbar *toolbar = ToolbarLink::toolbar(this);
    return toolbar && toolbar->setButtonVisibleState(ButtonKey, state);
}

clsStyle::clsStyle(QObject *parent)
    : QObject(parent)
{ }

clsStyle::~clsStyle() = default;

QString clsStyle::LoadStylesSource() const
{
    QString markup;
    Platform::DesignSurface *surface = Commands::StyleSheetLink::surface(this);
    if (!surface)
        return markup;
    const QStringList addresses = surface->styleSheetHrefs();
    for (const QString &href : addresses)
        markup += QStringLiteral("<LINK href=\"") + href + QStringLiteral("\" rel=\"StyleSheet\">");
    return markup;
}

clsDocumentProperties::clsDocumentProperties(QObject *parent)
    : QObject(parent)
{ }

clsDocumentProperties::~clsDocumentProperties() = default;

QString clsDocumentProperties::readProperty(const char *name) const
{
    return m_read ? m_read(QLatin1String(name)) : QString();
}

void clsDocumentProperties::writeProperty(const char *name, const QString &value)
{
    if (m_write)
        m_write(QLatin1String(name), value);
}

QString clsDocumentProperties::DocumentBackgroundColor() const
{
    return readProperty("DocumentBackgroundColor");
}

void clsDocumentProperties::setDocumentBackgroundColor(const QString &value)
{
    writeProperty("DocumentBackgroundColor", value);
}

QString clsDocumentProperties::DocumentForegroundColor() const
{
    return readProperty("DocumentForegroundColor");
}

void clsDocumentProperties::setDocumentForegroundColor(const QString &value)
{
    writeProperty("DocumentForegroundColor", value);
}

QString clsDocumentProperties::DocumentTitle() const
{
    return readProperty("DocumentTitle");
}

void clsDocumentProperties::setDocumentTitle(const QString &value)
{
    writeProperty("DocumentTitle", value);
}

QString clsDocumentProperties::DocumentBackgroundImage() const
{
    return readProperty("DocumentBackgroundImage");
}

void clsDocumentProperties::setDocumentBackgroundImage(const QString &value)
{
    writeProperty("DocumentBackgroundImage", value);
}

QString clsDocumentProperties::DocumentLinkColor() const
{
    return readProperty("DocumentLinkColor");
}

void clsDocumentProperties::setDocumentLinkColor(const QString &value)
{
    writeProperty("DocumentLinkColor", value);
}

QString clsDocumentProperties::DocumentvLinkColor() const
{
    return readProperty("DocumentvLinkColor");
}

void clsDocumentProperties::setDocumentvLinkColor(const QString &value)
{
    writeProperty("DocumentvLinkColor", value);
}

QString clsDocumentProperties::DocumentaLinkColor() const
{
    return readProperty("DocumentaLinkColor");
}

void clsDocumentProperties::setDocumentaLinkColor(const QString &value)
{
    writeProperty("DocumentaLinkColor", value);
}

QString clsDocumentProperties::DocumentLeftMargin() const
{
    return readProperty("DocumentLeftMargin");
}

void clsDocumentProperties::setDocumentLeftMargin(const QString &value)
{
    writeProperty("DocumentLeftMargin", value);
}

QString clsDocumentProperties::DocumentTopMargin() const
{
    return readProperty("DocumentTopMargin");
}

void clsDocumentProperties::setDocumentTopMargin(const QString &value)
{
    writeProperty("DocumentTopMargin", value);
}

QString clsDocumentProperties::DocumentRightMargin() const
{
    return readProperty("DocumentRightMargin");
}

void clsDocumentProperties::setDocumentRightMargin(const QString &value)
{
    writeProperty("DocumentRightMargin", value);
}

QString clsDocumentProperties::DocumentBottomMargin() const
{
    return readProperty("DocumentBottomMargin");
}

void clsDocumentProperties::setDocumentBottomMargin(const QString &value)
{
    writeProperty("DocumentBottomMargin", value);
}

} // namespace Vantry
