#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>

#include <array>

class QAction;
class QComboBox;
class QToolBar;
class QWidget;

namespace Vantry::Commands {

// The buttons of the three toolbar rows. Each button is a QAction whose data is its key;
// the two font combo boxes sit on the formatting row as the buttons "Font" and
// "FontSize". Buttons with a shortcut are also added to the shortcut scope, so that
// their keys work wherever the focus is inside the editor.
class ToolbarButtons : public QObject
{
    Q_OBJECT

public:
    enum Row
    {
        Standard = 0,
        Formatting = 1,
        TableEditing = 2
    };

    ToolbarButtons(const std::array<QToolBar *, 3> &rows, QComboBox *fontCombo,
        QComboBox *fontSizeCombo, QWidget *shortcutScope, QObject *parent = nullptr);
    ~ToolbarButtons() override;

    QToolBar *row(int toolbar) const;
    // The button with the key, ignoring letter case, on the last row that holds it.
    QAction *button(const QString &key) const;
    // The row holding the key; -1 when no row does.
    int holdingRow(const QString &key) const;
    QList<QAction *> buttons() const { return m_buttons; }

    // The key a button stands for.
    static QString keyOf(const QAction *button);
    // The keys of one row, left to right.
    static QStringList rowKeys(int toolbar);

    // Every button and both font combo boxes at once, as the view switch needs it.
    void setToolbarEnabled(bool enabled);

Q_SIGNALS:
    // The user clicked a button; key is the button's key as the toolbar spells it.
    void buttonClicked(const QString &key);

private:
    void build(int toolbar, QComboBox *fontCombo, QComboBox *fontSizeCombo, QWidget *scope);
    void onTriggered(QAction *button, bool checked);

    std::array<QToolBar *, 3> m_rows;
    QList<QAction *> m_buttons;
    QHash<QString, QAction *> m_byKey;
    QHash<QString, int> m_rowOfKey;
};

} // namespace Vantry::Commands
