#pragma once

#include "control/settings.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

class QAction;
class QLabel;
class QMenu;
class QPoint;
class QSize;
class QTabBar;
class QVariant;
class QWidget;

namespace Vantry::Platform {
class DesignSurface;
class SourceEditor;
} // namespace Vantry::Platform

namespace Vantry::Dialogs {
class FindReplaceDialog;
class GoToLineDialog;
} // namespace Vantry::Dialogs

namespace Vantry::Control {

// The two views of the document: the design surface and the source editor, chosen with
// the tab strip (tab 0 design, tab 1 source) or by the host. Switching carries the text
// over: the body, or the whole document with ReturnFullDocument. While the source shows,
// the document lives in the editor only, the visual editing commands are off, and the
// design surface, covered but not hidden, takes neither focus nor input.
class SourceView : public QObject
{
    Q_OBJECT

public:
    enum class View
    {
        Design = 1,
        Source = 2
    };

    struct Hooks
    {
        // True once the design surface has loaded its first document.
        std::function<bool()> isDocumentReady;
        // The control's enabled flag: whether visual editing commands run.
        std::function<void(bool)> setEnabledFlag;
        // The LINK markup of the document's style sheets.
        std::function<QString()> styleSheetLinks;
        // Brings the toolbar's button states up to date before the design view hides.
        std::function<void()> refreshToolbarStates;
        // Makes the widget showing the document the one the control's focus goes to.
        std::function<void(QWidget *)> setFocusTarget;
    };

    // The source editor is created on editingPanel beside the surface's widget, the
    // position display on the tab strip's panel.
    SourceView(const Settings &settings, Platform::DesignSurface &surface, QWidget *editingPanel,
        QTabBar *tabs, Hooks hooks);
    ~SourceView() override;

    Platform::SourceEditor *editor() const { return m_editor; }
    QLabel *positionDisplay() const { return m_position; }

    // Display settings, member list and language file from the application directory.
    void setUp(const QString &applicationDirectoryPath);

    // The view named by text ("design" or "source", any case); nullopt for anything else.
    static std::optional<View> viewFromText(const QString &text);
    // ToggleDesignSourceView: switches to the named view; other values do nothing.
    void toggle(const QVariant &view);
    // Switches when the document is ready and view is not the one showing. Returns whether
    // it switched; a failure of the surface leaves everything as it was.
    bool switchTo(View view);
    // Makes the design view current so that the document can be read from the surface.
    void switchBackToDesign();
    // Gives the focus to the view that shows: the design surface's document or the source
    // editor.
    void focusDocument();

    View currentView() const { return m_current; }
    bool isDesignViewActive() const { return m_current == View::Design; }

    void setEditorEnabled(bool enabled);
    void updatePositionDisplay();
    // The source editor takes the editing panel; the position display stands at the right
    // end of the tab panel.
    void layout(const QSize &editingPanel, const QSize &tabPanel);

    // The source editor's context menu: editing commands, find, replace and go to line.
    QMenu *contextMenu() const { return m_menu; }
    // Brings captions and enabled states of the menu up to date.
    void updateContextMenu();
    // The dialogs are modeless and stay with the editor once created.
    Dialogs::FindReplaceDialog *showFindDialog();
    Dialogs::FindReplaceDialog *showReplaceDialog();
    Dialogs::GoToLineDialog *showGoToLineDialog();

Q_SIGNALS:
    // The other view shows now.
    void viewChanged(View view);

private:
    bool showDesign();
    bool showSource();
    void handOver(QWidget *from, QWidget *to);
    void syncTabs();
    void createContextMenu();
    QAction *addMenuAction(
        const char *objectName, const QString &caption, void (Platform::SourceEditor::*command)());
    void showContextMenu(const QPoint &globalPos);
    Dialogs::FindReplaceDialog *findReplaceDialog();

    const Settings &m_settings;
    Platform::DesignSurface &m_surface;
    QTabBar *m_tabs;
    Platform::SourceEditor *m_editor;
    QLabel *m_position;
    Hooks m_hooks;
    View m_current = View::Design;
    QMenu *m_menu = nullptr;
    QAction *m_whitespaceAction = nullptr;
    QPointer<Dialogs::FindReplaceDialog> m_findDialog;
    QPointer<Dialogs::GoToLineDialog> m_goToDialog;
};

} // namespace Vantry::Control
