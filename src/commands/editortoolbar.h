#pragma once

#include "commands/toolbarmodel.h"

#include <QObject>
#include <QString>
#include <QVariant>

#include <array>
#include <functional>
#include <memory>

class QAction;
class QToolBar;
class QWidget;

namespace Vantry {
class clsToolbar;
}

namespace Vantry::Commands {

class CommandSink;
class CommandStatusSource;
class FontControls;
class SelectionState;
class ToolbarButtons;

// The editor's toolbar as one piece: it builds the buttons and font boxes on the three
// rows, keeps the toolbar model, refreshes the buttons from the selection, and carries
// out what the host asks through clsToolbar and the editor's toolbar-state methods.
class EditorToolbar : public QObject
{
    Q_OBJECT

public:
    struct Hooks
    {
        std::function<bool()> isDocumentReady;
        std::function<bool()> designViewActive;
        // Gives the focus back to the document (after a choice in a font box).
        std::function<void()> focusDocument;
    };

    // The rows belong to the caller; shortcuts work while the focus is inside
    // shortcutScope.
    EditorToolbar(const std::array<QToolBar *, 3> &rows, QWidget *shortcutScope, Hooks hooks,
        QObject *parent = nullptr);
    ~EditorToolbar() override;

    ToolbarModel &model() { return m_model; }
    const ToolbarModel &model() const { return m_model; }
    ToolbarButtons &buttons() const { return *m_buttons; }
    FontControls &fonts() const { return *m_fonts; }
    SelectionState &selection() const { return *m_selection; }

    void setStatusSource(CommandStatusSource *source);
    void setCommandSink(CommandSink *sink);

    // Lets a clsToolbar configure this toolbar.
    void attach(clsToolbar *toolbar);

    // The rows from the top down, as the model places them.
    std::array<QToolBar *, 3> rowsTopToBottom() const;

    // By button key, ignoring letter case.
    void setButtonState(const QString &key, bool state);
    void setButtonVisibleState(const QString &key, bool state);
    QVariant buttonEnabledState(const QString &key) const;
    QVariant buttonLatchedState(const QString &key) const;

    // By em_Toolbars, em_ToolbarOrder and em_ToolbarButtons value. The setters return
    // false, changing nothing, for a value out of range.
    int toolbarDisplayOrder(int toolbar) const;
    bool setToolbarDisplayOrder(int toolbar, int order);
    bool toolbarVisibleState(int toolbar) const;
    bool setToolbarVisibleState(int toolbar, bool visible);
    bool buttonEnabledState(int member) const;
    bool setButtonEnabledState(int member, bool state);
    bool buttonVisibleState(int member) const;
    bool setButtonVisibleState(int member, bool state);

    void setToolbarEnabled(bool enabled);
    // The design commands do nothing while the source view shows, and look it; back in
    // the design view the document's state and the host's permissions decide again.
    void followView(bool designView);
    // Brings the buttons up to date now.
    void refresh();
    // The design surface's display changed: the buttons follow once the surface answers.
    void requestRefresh();

    // Whether action is a button the host allows whose keys the engine's own bindings run
    // just as the button would: the clipboard buttons, and undo and redo, whose keys the
    // adapter takes into its own history.
    bool enginesKeysDoTheSame(const QAction *action) const;

Q_SIGNALS:
    void buttonClicked(const QString &key);
    // A row moved or was shown or hidden; the editor lays out again.
    void rowsChanged();
    void selectionStateChanged(const QString &commandName, bool enabled, bool selected);
    void selectionTextChanged(const QString &commandName, const QString &value);

private:
    ToolbarModel m_model;
    std::array<QToolBar *, 3> m_rows;
    std::unique_ptr<FontControls> m_fonts;
    std::unique_ptr<ToolbarButtons> m_buttons;
    std::unique_ptr<SelectionState> m_selection;
};

} // namespace Vantry::Commands
