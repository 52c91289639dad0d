#include <VantryHTMLEditor/CompanionObjects.h>

#include "commands/editortoolbar.h"

namespace Vantry {

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
    if (!m_toolbar)
        return tbo_first;
    return static_cast<em_ToolbarOrder>(m_toolbar->toolbarDisplayOrder(Toolbar));
}

bool clsToolbar::setToolbarDisplayOrder(em_Toolbars Toolbar, em_ToolbarOrder order)
{
    return m_toolbar && m_toolbar->setToolbarDisplayOrder(Toolbar, order);
}

bool clsToolbar::ToolbarVisibleState(em_Toolbars Toolbar) const
{
    return m_toolbar && m_toolbar->toolbarVisibleState(Toolbar);
}

bool clsToolbar::setToolbarVisibleState(em_Toolbars Toolbar, bool state)
{
    return m_toolbar && m_toolbar->setToolbarVisibleState(Toolbar, state);
}

bool clsToolbar::ButtonEnabledState(em_ToolbarButtons ButtonKey) const
{
    return m_toolbar && m_toolbar->buttonEnabledState(ButtonKey);
}

bool clsToolbar::setButtonEnabledState(em_ToolbarButtons ButtonKey, bool state)
{
    return m_toolbar && m_toolbar->setButtonEnabledState(ButtonKey, state);
}

bool clsToolbar::ButtonVisibleState(em_ToolbarButtons ButtonKey) const
{
    return m_toolbar && m_toolbar->buttonVisibleState(ButtonKey);
}

bool clsToolbar::setButtonVisibleState(em_ToolbarButtons ButtonKey, bool state)
{
    return m_toolbar && m_toolbar->setButtonVisibleState(ButtonKey, state);
}

clsStyle::clsStyle(QObject *parent)
    : QObject(parent)
{ }

clsStyle::~clsStyle() = default;

QList<StyleSheetInfo> clsStyle::sheets() const
{
    return m_sheets ? m_sheets() : QList<StyleSheetInfo>();
}

bool clsStyle::SetStyleSheet(const QString &sStyleSheetURL)
{
    return m_addSheet && !sStyleSheetURL.trimmed().isEmpty() && m_addSheet(sStyleSheetURL);
}

QStringList clsStyle::GetAllStyleSheets() const
{
    QStringList hrefs;
    for (const StyleSheetInfo &sheet : sheets())
        hrefs.append(sheet.href);
    return hrefs.isEmpty() ? QStringList{QString()} : hrefs;
}

StyleSheetInfo clsStyle::GetStyleSheet(const QString &sStyleSheetName) const
{
    for (const StyleSheetInfo &sheet : sheets()) {
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
    for (const StyleSheetInfo &sheet : sheets())
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
    if (!m_sheetAddresses)
        return markup;
    const QStringList addresses = m_sheetAddresses();
    for (const QString &href : addresses)
        markup += QStringLiteral("<LINK href=\"") + href + QStringLiteral("\" rel=\"StyleSheet\">");
    return markup;
}

clsDocumentProperties::clsDocumentProperties(QObject *parent)
    : QObject(parent)
{ }

clsDocumentProperties::~clsDocumentProperties() = default;

} // namespace Vantry
