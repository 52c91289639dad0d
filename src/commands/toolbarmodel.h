#pragma once

#include <QHash>
#include <QLatin1String>
#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace Vantry::Commands {

// Converts twips, the unit the toolbar's geometry is given in, to device-independent
// pixels at the given logical dpi.
int twipsToPixels(int twips, qreal logicalDpi);

// The toolbar's rules without its widgets: the key of every configurable button, the rows
// the three toolbars occupy, and the two dictionaries the host's configuration and the
// selection refresh share. Keys are looked up ignoring letter case, because the host's
// button table and the toolbar spell two keys differently ("UploadImage" and
// "uploadimage", "InsertTABLE" and "InsertTable").
class ToolbarModel
{
public:
    static constexpr int toolbarCount = 3;
    static constexpr int firstButton = 1;
    static constexpr int lastButton = 39;
    // Top edge of each row, in twips, first row first.
    static constexpr std::array<int, toolbarCount> rowTops{0, 420, 840};

    // A button whose state the selection refresh tracks, and the design command whose
    // status drives it (0: none; the dictionaries alone decide).
    struct StateEntry
    {
        QLatin1String key;
        int statusCommand;
    };
    static constexpr int stateEntryCount = 38;

    ToolbarModel();

    // The key of a button member (1 to 39); empty for any other value.
    static QString buttonKey(int member);
    static bool isButtonMember(int member) { return member >= firstButton && member <= lastButton; }
    static bool isToolbar(int toolbar) { return toolbar >= 0 && toolbar < toolbarCount; }

    static const std::array<StateEntry, stateEntryCount> &stateEntries();
    // Every status command of the state entries once, in entry order.
    static QList<int> statusCommands();

    // The row (0 to 2) whose top edge the toolbar sits on; 0 when it sits on none.
    int displayOrder(int toolbar) const;
    // Moves the toolbar to the row; the toolbar that sat there takes the row it left.
    // Returns false, changing nothing, for a toolbar or row out of range.
    bool setDisplayOrder(int toolbar, int order);
    int toolbarTop(int toolbar) const;
    // The toolbars from the top row down.
    std::array<int, toolbarCount> toolbarsTopToBottom() const;

    // Puts every tracked key into both dictionaries with true, as they start.
    void resetStates();

    // The host's permission for a button; nullopt for a key never stored.
    std::optional<bool> permission(const QString &key) const;
    bool isAllowed(const QString &key) const { return permission(key).value_or(false); }
    void setPermission(const QString &key, bool allowed);

    // The button's last pressed state, which is also where the host's visibility request
    // is stored: whichever was written last is what reads back.
    std::optional<bool> latched(const QString &key) const;
    void setLatched(const QString &key, bool latched);

private:
    std::array<int, toolbarCount> m_tops = rowTops;
    QHash<QString, bool> m_enabled;
    QHash<QString, bool> m_latched;
};

} // namespace Vantry::Commands
