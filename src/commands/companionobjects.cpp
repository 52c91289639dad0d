#include <VantryHTMLEditor/CompanionObjects.h>

#include "commands/companionlinks.h"
#include "commands/documentpage.h"
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

void StyleSheetLink::attach(clsStyle *companion, Platform::DesignSurface *surface,
    std::function<bool()> documentReady, std::function<void()> linked)
{
    if (!companion)
        return;
    StyleSheetLink *link = ensureLink<StyleSheetLink>(companion);
    link->m_surface = surface;
    link->m_documentReady = std::move(documentReady);
    link->m_linked = std::move(linked);
}

Platform::DesignSurface *StyleSheetLink::surface(const clsStyle *companion)
{
    const StyleSheetLink *link = linkOf<StyleSheetLink>(companion);
    return link ? link->m_surface.data() : nullptr;
}

void DocumentPropertiesLink::attach(clsDocumentProperties *companion, DocumentPage *page)
{
    if (companion)
        ensureLink<DocumentPropertiesLink>(companion)->m_page = page;
}

DocumentPage *DocumentPropertiesLink::page(const clsDocumentProperties *companion)
{
    const DocumentPropertiesLink *link = linkOf<DocumentPropertiesLink>(companion);
    return link ? link->m_page.data() : nullptr;
}

const StyleSheetLink *StyleSheetLink::readyLink(const clsStyle *companion)
{
    const StyleSheetLink *link = linkOf<StyleSheetLink>(companion);
    if (!link || !link->m_surface || (link->m_documentReady && !link->m_documentReady()))
        return nullptr;
    return link;
}

QList<StyleSheetInfo> StyleSheetLink::sheets(const clsStyle *companion)
{
    const StyleSheetLink *link = readyLink(companion);
    return link ? link->m_surface->styleSheets() : QList<StyleSheetInfo>();
}

bool StyleSheetLink::addSheet(const clsStyle *companion, const QString &href)
{
    const StyleSheetLink *link = readyLink(companion);
    if (!link || !link->m_surface->addStyleSheet(href))
        return false;
    if (link->m_linked)
        link->m_linked();
    return true;
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

bool clsStyle::SetStyleSheet(const QString &sStyleSheetURL)
{
    return !sStyleSheetURL.trimmed().isEmpty()
        && Commands::StyleSheetLink::addSheet(this, sStyleSheetURL);
}

QStringList clsStyle::GetAllStyleSheets() const
{
    QStringList hrefs;
    for (const StyleSheetInfo &sheet : Commands::StyleSheetLink::sheets(this))
        hrefs.append(sheet.href);
    return hrefs.isEmpty() ? QStringList{QString()} : hrefs;
}

StyleSheetInfo clsStyle::GetStyleSheet(const QString &sStyleSheetName) const
{
    for (const StyleSheetInfo &sheet : Commands::StyleSheetLink::sheets(this)) {
        if (sheet.href.contains(sStyleSheetName, Qt::CaseInsensitive))
            return sheet;
    }
    return {};
}

QVariant clsStyle::GetStyleSheetRule(
    const StyleSheetInfo &oStyleSheet, const QString &sRuleName) const
{
    for (const StyleSheetRule &rule : oStyleSheet.rules) {
        if (rule.selectorText == sRuleName)
            return QVariant::fromValue(rule);
    }
    return {};
}

QVariantList clsStyle::GetAllStyleSheetRules() const
{
    QVariantList selectors;
    for (const StyleSheetInfo &sheet : Commands::StyleSheetLink::sheets(this))
        selectors.append(GetStyleSheetRules(sheet));
    return selectors;
}

QVariantList clsStyle::GetStyleSheetRules(const StyleSheetInfo &oStyleSheet) const
{
    QVariantList selectors;
    for (const StyleSheetRule &rule : oStyleSheet.rules)
        selectors.append(rule.selectorText);
    return selectors;
}

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

namespace {

QString readProperty(const clsDocumentProperties *companion, const char *name)
{
    const Commands::DocumentPage *page = Commands::DocumentPropertiesLink::page(companion);
    return page ? page->read(QLatin1String(name)) : QString();
}

void writeProperty(clsDocumentProperties *companion, const char *name, const QString &value)
{
    if (Commands::DocumentPage *page = Commands::DocumentPropertiesLink::page(companion))
        page->write(QLatin1String(name), value);
}

} // namespace

QString clsDocumentProperties::DocumentBackgroundColor() const
{
    return readProperty(this, "DocumentBackgroundColor");
}

void clsDocumentProperties::setDocumentBackgroundColor(const QString &value)
{
    writeProperty(this, "DocumentBackgroundColor", value);
}

QString clsDocumentProperties::DocumentForegroundColor() const
{
    return readProperty(this, "DocumentForegroundColor");
}

void clsDocumentProperties::setDocumentForegroundColor(const QString &value)
{
    writeProperty(this, "DocumentForegroundColor", value);
}

QString clsDocumentProperties::DocumentTitle() const
{
    return readProperty(this, "DocumentTitle");
}

void clsDocumentProperties::setDocumentTitle(const QString &value)
{
    writeProperty(this, "DocumentTitle", value);
}

QString clsDocumentProperties::DocumentBackgroundImage() const
{
    return readProperty(this, "DocumentBackgroundImage");
}

void clsDocumentProperties::setDocumentBackgroundImage(const QString &value)
{
    writeProperty(this, "DocumentBackgroundImage", value);
}

QString clsDocumentProperties::DocumentLinkColor() const
{
    return readProperty(this, "DocumentLinkColor");
}

void clsDocumentProperties::setDocumentLinkColor(const QString &value)
{
    writeProperty(this, "DocumentLinkColor", value);
}

QString clsDocumentProperties::DocumentvLinkColor() const
{
    return readProperty(this, "DocumentvLinkColor");
}

void clsDocumentProperties::setDocumentvLinkColor(const QString &value)
{
    writeProperty(this, "DocumentvLinkColor", value);
}

QString clsDocumentProperties::DocumentaLinkColor() const
{
    return readProperty(this, "DocumentaLinkColor");
}

void clsDocumentProperties::setDocumentaLinkColor(const QString &value)
{
    writeProperty(this, "DocumentaLinkColor", value);
}

QString clsDocumentProperties::DocumentLeftMargin() const
{
    return readProperty(this, "DocumentLeftMargin");
}

void clsDocumentProperties::setDocumentLeftMargin(const QString &value)
{
    writeProperty(this, "DocumentLeftMargin", value);
}

QString clsDocumentProperties::DocumentTopMargin() const
{
    return readProperty(this, "DocumentTopMargin");
}

void clsDocumentProperties::setDocumentTopMargin(const QString &value)
{
    writeProperty(this, "DocumentTopMargin", value);
}

QString clsDocumentProperties::DocumentRightMargin() const
{
    return readProperty(this, "DocumentRightMargin");
}

void clsDocumentProperties::setDocumentRightMargin(const QString &value)
{
    writeProperty(this, "DocumentRightMargin", value);
}

QString clsDocumentProperties::DocumentBottomMargin() const
{
    return readProperty(this, "DocumentBottomMargin");
}

void clsDocumentProperties::setDocumentBottomMargin(const QString &value)
{
    writeProperty(this, "DocumentBottomMargin", value);
}

} // namespace Vantry
