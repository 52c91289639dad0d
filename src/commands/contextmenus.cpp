#include "commands/contextmenus.h"

#include "commands/selectionaccess.h"
#include "platform/designsurface.h"

#include <VantryHTMLEditor/CompanionObjects.h>

#include <QMenu>
#include <QPoint>

namespace Vantry::Commands {

using Kind = ContextMenuEntry::Kind;
using Menu = clsContextMenu::em_ContextMenu;

namespace {

ContextMenuEntry command(const char *caption, int number)
{
    return {Kind::Command, QLatin1String(caption), number, {}};
}

} // namespace

QList<ContextMenuEntry> contextMenuEntries(
    const MenuContext &context, const clsContextMenu &settings)
{
    const bool image = context.image;
    const bool positioning = !context.hyperlink && context.position.available;
    // A movie has properties of its own.
    const ContextMenuEntry imageEntry = context.object
        ? ContextMenuEntry{Kind::FlashProperties, QStringLiteral("Flash Movie Properties"), 0, {}}
        : command("Image Properties", 15);
    struct Group
    {
        Menu menu;
        bool applies;
        QList<ContextMenuEntry> entries;
    };
    const Group groups[] = {
        {Menu::cm_StandardMenus, true,
            {command("Cut", 16), command("Copy", 17), command("Paste", 18),
                command("Select All", 37), command("Font...", 36)}},
        {Menu::cm_AbsolutePosMenus, positioning,
            {command(context.position.absolute ? "Make 1D" : "Make 2D", 23)}},
        {Menu::cm_TableCellMenus, context.cell && !image,
            {command("Insert Row", 28), command("Insert Column", 30), command("Delete Row", 29),
                command("Delete Column", 31), command("Table Cell Properties", 56)}},
        {Menu::cm_TableMenus, context.table && !image, {command("Table Properties", 55)}},
        {Menu::cm_ImageMenus, image, {imageEntry}},
        {Menu::cm_HyperlinkMenus, context.hyperlink, {command("Link Properties", 13)}},
        {Menu::cm_BodyMenus, context.body, {command("Page Properties", 50)}},
        {Menu::cm_ElementPropertiesMenus, true,
            {{Kind::ElementProperties, QStringLiteral("Element Properties"), 0, {}}}},
    };

    QList<ContextMenuEntry> entries;
    const auto separate = [&entries] {
        if (!entries.isEmpty() && entries.constLast().kind != Kind::Separator)
            entries.append({Kind::Separator, QStringLiteral("spacer"), 0, {}});
    };
    for (const Group &group : groups) {
        if (!group.applies || !settings.isBuiltinContextMenuItemShown(group.menu))
            continue;
        separate();
        entries.append(group.entries);
    }
    const QList<clsContextMenu::CustomItem> custom = settings.customContextMenuItems();
    if (!custom.isEmpty())
        separate();
    for (const clsContextMenu::CustomItem &item : custom) {
        // The host asks for a separator with the key "Spacer".
        if (item.key == QLatin1String("Spacer"))
            entries.append({Kind::Separator, QStringLiteral("spacer"), 0, {}});
        else
            entries.append({Kind::Custom, item.text, 0, item.key});
    }
    return entries;
}

ContextMenus::ContextMenus(
    Platform::DesignSurface &surface, SelectionAccess &selection, Hooks hooks)
    : m_surface(surface)
    , m_selection(selection)
    , m_hooks(std::move(hooks))
{ }

MenuContext ContextMenus::contextOfSelection()
{
    MenuContext context;
    const Platform::Element element = m_selection.selectedElement();
    if (element.isNull())
        return context;
    const QList<Platform::DesignSurface::PathStep> path = m_surface.elementPath(element);
    if (m_surface.lastCallFailed())
        return context;
    for (const auto &step : path) {
        const QString tag = step.tagName.toUpper();
        if (tag == QLatin1String("HTML"))
            break;
        if (tag == QLatin1String("IMG") || tag == QLatin1String("OBJECT")) {
            context.image = true;
            context.object = context.object || tag == QLatin1String("OBJECT");
        } else if (tag == QLatin1String("BODY"))
            context.body = true;
        else if (tag == QLatin1String("A"))
            context.hyperlink = true;
        else if (tag == QLatin1String("TABLE"))
            context.table = true;
        else if (tag == QLatin1String("TD") || tag == QLatin1String("TH"))
            context.cell = true;
    }
    if (!context.hyperlink)
        context.position = positionState(m_surface);
    return context;
}

QList<ContextMenuEntry> ContextMenus::entriesForSelection()
{
    if (!m_hooks.designViewActive() || m_hooks.disabled())
        return {};
    return contextMenuEntries(contextOfSelection(), m_hooks.settings());
}

void ContextMenus::choose(const ContextMenuEntry &entry)
{
    if (!m_hooks.designViewActive())
        return;
    switch (entry.kind) {
    case Kind::Command:
        m_hooks.execute(entry.command);
        break;
    case Kind::ElementProperties:
        m_hooks.elementProperties();
        break;
    case Kind::FlashProperties:
        if (m_hooks.flashProperties)
            m_hooks.flashProperties();
        break;
    case Kind::Custom:
        m_hooks.customClicked(entry.customKey);
        break;
    case Kind::Separator:
        break;
    }
}

void ContextMenus::popup(QWidget *view, const QPoint &position)
{
    const QList<ContextMenuEntry> entries = entriesForSelection();
    if (entries.isEmpty())
        return;
    QMenu menu(view);
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (entries[i].kind == Kind::Separator)
            menu.addSeparator();
        else
            menu.addAction(entries[i].caption)->setData(QVariant::fromValue(i));
    }
    const QAction *chosen = menu.exec(view ? view->mapToGlobal(position) : position);
    if (chosen)
        choose(entries.value(chosen->data().value<qsizetype>()));
}

} // namespace Vantry::Commands
