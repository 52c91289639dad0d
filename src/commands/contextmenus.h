#pragma once

#include "commands/command.h"
#include "commands/positioning.h"
#include "platform/commandstate.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QPoint;
class QWidget;

namespace Vantry {
class clsContextMenu;
}

namespace Vantry::Platform {
class DesignSurface;
class MenuTargets;
} // namespace Vantry::Platform

namespace Vantry::Commands {

class SelectionAccess;

// What lies around the selection, as far as the menu cares.
struct MenuContext
{
    bool image = false;
    // An OBJECT (a Flash movie) is an image to the menu, with its own properties entry.
    bool object = false;
    bool body = false;
    bool hyperlink = false;
    bool table = false;
    bool cell = false;
    PositionState position;
};

struct ContextMenuEntry
{
    enum class Kind
    {
        Command,
        ElementProperties,
        FlashProperties,
        Custom,
        Separator
    };
    Kind kind = Kind::Separator;
    QString caption;
    Command command{};
    QString customKey;

    bool operator==(const ContextMenuEntry &) const = default;
};

// The context of an element given as the tag names of its path up to the root, with the
// state of its positioning command.
MenuContext menuContextOf(const QStringList &path, Platform::CommandState positioning);

// The entries for a context: the built-in groups that apply and that the host allows, in
// their fixed order with separators between groups, then the host's own entries.
QList<ContextMenuEntry> contextMenuEntries(
    const MenuContext &context, const clsContextMenu &settings);

// The design view's context menu.
class ContextMenus
{
public:
    struct Hooks
    {
        std::function<bool()> designViewActive;
        std::function<bool()> disabled;
        std::function<clsContextMenu &()> settings;
        std::function<void(Command command)> execute;
        std::function<void()> elementProperties;
        std::function<void(const QString &key)> customClicked;
        // The misspelt word at a point of the view and its suggestions, which head the menu;
        // nothing when the word there is fine. Choosing one hands it to replaceMisspelt.
        std::function<std::optional<QStringList>(const QPoint &position)> spellingSuggestions;
        std::function<void(const QString &replacement)> replaceMisspelt;
        std::function<void()> flashProperties;
    };

    ContextMenus(Platform::DesignSurface &surface, SelectionAccess &selection, Hooks hooks);

    MenuContext contextOfSelection();
    // The entries for the element under the selection; none while the menu may not show.
    QList<ContextMenuEntry> entriesForSelection();
    void choose(const ContextMenuEntry &entry);
    // Shows the menu at a point of the view and carries out the choice.
    void popup(QWidget *view, const QPoint &position);

private:
    QList<ContextMenuEntry> entriesFor(const MenuContext &context);

    Platform::DesignSurface &m_surface;
    // Where the surface sends the menu's target with the request, showing it asks nothing.
    const Platform::MenuTargets *m_targets;
    SelectionAccess &m_selection;
    Hooks m_hooks;
};

} // namespace Vantry::Commands
