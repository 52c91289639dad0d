#pragma once

#include "commands/positioning.h"

#include <QList>
#include <QString>

#include <functional>

class QPoint;
class QWidget;

namespace Vantry {
class clsContextMenu;
}

namespace Vantry::Platform {
class DesignSurface;
}

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
    int command = 0;
    QString customKey;

    bool operator==(const ContextMenuEntry &) const = default;
};

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
        std::function<void(int number)> execute;
        std::function<void()> elementProperties;
        std::function<void(const QString &key)> customClicked;
        // The Flash movie dialog; unset leaves the entry without effect.
        std::function<void()> flashProperties = {};
    };

    ContextMenus(Platform::DesignSurface &surface, SelectionAccess &selection, Hooks hooks);

    MenuContext contextOfSelection();
    // The entries for the element under the selection; none while the menu may not show.
    QList<ContextMenuEntry> entriesForSelection();
    void choose(const ContextMenuEntry &entry);
    // Shows the menu at a point of the view and carries out the choice.
    void popup(QWidget *view, const QPoint &position);

private:
    Platform::DesignSurface &m_surface;
    SelectionAccess &m_selection;
    Hooks m_hooks;
};

} // namespace Vantry::Commands
