#include "commands/contextmenus.h"

#include "commands/selectionaccess.h"
#include "platform/designsurface.h"
#include "platform/menutarget.h"

#include <VantryHTMLEditor/CompanionObjects.h>

#include <QMenu>
#include <QPoint>

namespace Vantry::Commands {

using Kind = ContextMenuEntry::Kind;
using Menu = clsContextMenu::em_ContextMenu;

namespace {

ContextMenuEntry command(const char *caption, Command which)
{
    return {Kind::Command, QLatin1String(caption), which, {}};
}

} // namespace

QList<ContextMenuEntry> contextMenuEntries(
    const MenuContext &context, const clsContextMenu &settings)
{
    const bool image = context.image;
    const bool positioning = !context.hyperlink && context.position.available;
    // A movie has properties of its own.
    const ContextMenuEntry imageEntry = context.object
        ? ContextMenuEntry{Kind::FlashProperties, QStringLiteral("Flash Movie Properties"), {}, {}}
        : command("Image Properties", Command::InsertImage);
    struct Group
    {
        Menu menu;
        bool applies;
        QList<ContextMenuEntry> entries;
    };
    const Group groups[] = {
        {Menu::cm_StandardMenus, true,
            {command("Cut", Command::Cut), command("Copy", Command::Copy),
                command("Paste", Command::Paste), command("Select All", Command::SelectAll),
                command("Font...", Command::Font)}},
        {Menu::cm_AbsolutePosMenus, positioning,
            {command(
                context.position.absolute ? "Make 1D" : "Make 2D", Command::AbsolutePosition)}},
        {Menu::cm_TableCellMenus, context.cell && !image,
            {command("Insert Row", Command::InsertRow),
                command("Insert Column", Command::InsertColumn),
                command("Delete Row", Command::DeleteRow),
                command("Delete Column", Command::DeleteColumn),
                command("Table Cell Properties", Command::CellProperties)}},
        {Menu::cm_TableMenus, context.table && !image,
            {command("Table Properties", Command::TableProperties)}},
        {Menu::cm_ImageMenus, image, {imageEntry}},
        {Menu::cm_HyperlinkMenus, context.hyperlink,
            {command("Link Properties", Command::Hyperlink)}},
        {Menu::cm_BodyMenus, context.body, {command("Page Properties", Command::PageProperties)}},
        {Menu::cm_ElementPropertiesMenus, true,
            {{Kind::ElementProperties, QStringLiteral("Element Properties"), {}, {}}}},
    };

    QList<ContextMenuEntry> entries;
    const auto separate = [&entries] {
        if (!entries.isEmpty() && entries.constLast().kind != Kind::Separator)
            entries.append({Kind::Separator, QStringLiteral("spacer"), {}, {}});
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
            entries.append({Kind::Separator, QStringLiteral("spacer"), {}, {}});
        else
            entries.append({Kind::Custom, item.text, {}, item.key});
    }
    return entries;
}

MenuContext menuContextOf(const QStringList &path, Platform::CommandState positioning)
{
    MenuContext context;
    for (const QString &step : path) {
        const QString tag = step.toUpper();
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
    // A link is never positioned from its menu.
    if (!context.hyperlink) {
        context.position.available = positioning >= Platform::Enabled;
        context.position.absolute = positioning == Platform::Latched;
    }
    return context;
}

ContextMenus::ContextMenus(
    Platform::DesignSurface &surface, SelectionAccess &selection, Hooks hooks)
    : m_surface(surface)
    , m_targets(dynamic_cast<const Platform::MenuTargets *>(&surface))
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
    QStringList tags;
    for (const auto &step : path)
        tags.append(step.tagName);
    context = menuContextOf(tags, Platform::NotSupported);
    if (!context.hyperlink)
        context.position = positionState(m_surface);
    return context;
}

QList<ContextMenuEntry> ContextMenus::entriesFor(const MenuContext &context)
{
    if (!m_hooks.designViewActive() || m_hooks.disabled())
        return {};
    return contextMenuEntries(context, m_hooks.settings());
}

QList<ContextMenuEntry> ContextMenus::entriesForSelection()
{
    if (!m_hooks.designViewActive() || m_hooks.disabled())
        return {};
    return entriesFor(contextOfSelection());
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
    const std::optional<Platform::MenuTarget> target
        = m_targets ? m_targets->menuTarget(position) : std::nullopt;
    const QList<ContextMenuEntry> entries = target
        ? entriesFor(menuContextOf(target->path, target->positioning))
        : entriesForSelection();
    std::optional<QStringList> suggestions;
    if (m_hooks.spellingSuggestions && m_hooks.designViewActive() && !m_hooks.disabled())
        suggestions = m_hooks.spellingSuggestions(position);
    if (entries.isEmpty() && !suggestions)
        return;
    QMenu menu(view);
    // Suggestions carry a negative index, entries their own.
    if (suggestions) {
        for (qsizetype i = 0; i < suggestions->size(); ++i)
            menu.addAction(suggestions->at(i))->setData(QVariant::fromValue(-1 - i));
        if (suggestions->isEmpty())
            menu.addAction(QStringLiteral("(no suggestions)"))->setEnabled(false);
        if (!entries.isEmpty())
            menu.addSeparator();
    }
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (entries[i].kind == Kind::Separator)
            menu.addSeparator();
        else
            menu.addAction(entries[i].caption)->setData(QVariant::fromValue(i));
    }
    const QAction *chosen = menu.exec(view ? view->mapToGlobal(position) : position);
    if (!chosen)
        return;
    const qsizetype index = chosen->data().value<qsizetype>();
    if (index < 0)
        m_hooks.replaceMisspelt(suggestions->value(-1 - index));
    else
        choose(entries.value(index));
}

} // namespace Vantry::Commands
