#include "control/sourceview.h"

#include "control/appdirectory.h"
#include "control/contentrules.h"
#include "dialogs/findreplacedialog.h"
#include "dialogs/gotolinedialog.h"
#include "platform/designsurface.h"
#include "platform/scintilla/sourceeditor.h"

#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QSignalBlocker>
#include <QTabBar>
#include <QVariant>

#include <algorithm>

namespace Vantry::Control {

namespace {

constexpr int designTab = 0;
constexpr int sourceTab = 1;

} // namespace

SourceView::SourceView(const Settings &settings, Platform::DesignSurface &surface,
    QWidget *editingPanel, QTabBar *tabs, Hooks hooks)
    : m_settings(settings)
    , m_surface(surface)
    , m_tabs(tabs)
    , m_hooks(std::move(hooks))
{
    m_editor = new Platform::SourceEditor(editingPanel);
    m_editor->setObjectName(QStringLiteral("HTMLSource"));
    m_editor->hide();

    m_position = new QLabel(tabs->parentWidget());
    m_position->setObjectName(QStringLiteral("lblLnCol"));
    m_position->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_position->hide();

    createContextMenu();

    connect(
        m_editor, &Platform::SourceEditor::caretMoved, this, &SourceView::updatePositionDisplay);
    connect(m_editor, &Platform::SourceEditor::contextMenuRequested, this,
        &SourceView::showContextMenu);
    connect(m_tabs, &QTabBar::currentChanged, this,
        [this](int index) { switchTo(index == sourceTab ? View::Source : View::Design); });
}

SourceView::~SourceView() = default;

void SourceView::setUp(const QString &applicationDirectoryPath)
{
    const QDir directory(applicationDirectory(applicationDirectoryPath));
    m_editor->configure();
    m_editor->loadMemberList(directory.filePath(QStringLiteral("memberlists/html tags.mbr")));
    m_editor->loadLanguage(directory.filePath(QStringLiteral("languages/html.lng")));
}

std::optional<SourceView::View> SourceView::viewFromText(const QString &text)
{
    const QString name = text.toLower();
    if (name == QLatin1String("design"))
        return View::Design;
    if (name == QLatin1String("source"))
        return View::Source;
    return std::nullopt;
}

void SourceView::toggle(const QVariant &view)
{
    if (const std::optional<View> target = viewFromText(view.toString()))
        switchTo(*target);
}

bool SourceView::switchTo(View view)
{
    const bool ready = m_hooks.isDocumentReady && m_hooks.isDocumentReady();
    const bool switched
        = ready && view != m_current && (view == View::Design ? showDesign() : showSource());
    // A tab chosen for a switch that did not happen goes back to the view that shows.
    syncTabs();
    if (switched)
        Q_EMIT viewChanged(m_current);
    return switched;
}

void SourceView::switchBackToDesign()
{
    if (m_current == View::Source)
        switchTo(View::Design);
}

bool SourceView::showDesign()
{
    const bool editable = m_surface.isEditable();
    const QString text = m_editor->text();
    const bool carried = m_settings.ReturnFullDocument ? m_surface.setDocumentHTML(text)
                                                       : m_surface.setBodyInnerHTML(text);
    if (!carried)
        return false;

    if (m_hooks.setEnabledFlag)
        m_hooks.setEnabledFlag(editable);
    m_current = View::Design;
    m_position->hide();
    m_surface.widget()->setEnabled(true);
    handOver(m_editor, m_surface.widget());
    m_editor->hide();
    return true;
}

bool SourceView::showSource()
{
    if (m_hooks.refreshToolbarStates)
        m_hooks.refreshToolbarStates();
    const QString html
        = m_settings.ReturnFullDocument ? m_surface.documentHTML() : m_surface.bodyInnerHTML();
    if (m_surface.lastCallFailed())
        return false;
    // The source shows the document's style-sheet links just before the end of the head.
    m_editor->setText(ContentRules::normaliseStyleSheetLinks(
        html, m_hooks.styleSheetLinks ? m_hooks.styleSheetLinks() : QString()));

    // The editor covers the surface rather than the surface being hidden: a hidden page
    // stops laying out, and for a while after it shows again its text reads empty.
    m_editor->show();
    m_editor->raise();
    m_position->show();
    m_position->raise();
    updatePositionDisplay();
    handOver(m_surface.widget(), m_editor);
    // Covered is not enough: a focus proxy, the tab chain or a prompt handing the focus back
    // would let keys edit the page unseen, and the next switch would throw that away.
    m_surface.widget()->setEnabled(false);
    if (m_hooks.setEnabledFlag)
        m_hooks.setEnabledFlag(false);
    m_current = View::Source;
    return true;
}

// The control's focus goes to the view that shows from now on. The focus itself follows
// the switch only when it was in the view going away: a host that switches views does not
// lose the focus to the editor. The window's focus counts even while the window is
// inactive, so that the focus comes back to the right view.
void SourceView::handOver(QWidget *from, QWidget *to)
{
    if (m_hooks.setFocusTarget)
        m_hooks.setFocusTarget(to);
    const QWidget *focused = from->window()->focusWidget();
    if (focused && (focused == from || from->isAncestorOf(focused) || focused == m_tabs))
        to->setFocus();
}

void SourceView::focusDocument()
{
    if (m_current == View::Source)
        m_editor->setFocus(Qt::OtherFocusReason);
    else
        m_surface.focusDocument();
}

void SourceView::syncTabs()
{
    const int tab = m_current == View::Source ? sourceTab : designTab;
    if (m_tabs->currentIndex() == tab)
        return;
    const QSignalBlocker blocker(m_tabs);
    m_tabs->setCurrentIndex(tab);
}

void SourceView::setEditorEnabled(bool enabled)
{
    m_editor->setEnabled(enabled);
}

void SourceView::updatePositionDisplay()
{
    m_position->setText(m_editor->positionText());
}

void SourceView::layout(const QSize &editingPanel, const QSize &tabPanel)
{
    m_editor->setGeometry(0, 0, editingPanel.width(), editingPanel.height());
    const int margin = m_position->fontMetrics().averageCharWidth();
    const int width
        = m_position->fontMetrics().horizontalAdvance(QStringLiteral("Ln 99999, Col 9999"))
        + margin;
    m_position->setGeometry(
        std::max(0, tabPanel.width() - width - margin), 0, width, tabPanel.height());
}

Dialogs::FindReplaceDialog *SourceView::findReplaceDialog()
{
    if (!m_findDialog)
        m_findDialog = new Dialogs::FindReplaceDialog(*m_editor, m_editor);
    if (m_editor->hasSelectedText() && !m_editor->selectedText().contains(QLatin1Char('\n')))
        m_findDialog->setFindText(m_editor->selectedText());
    return m_findDialog;
}

Dialogs::FindReplaceDialog *SourceView::showFindDialog()
{
    Dialogs::FindReplaceDialog *dialog = findReplaceDialog();
    dialog->setReplaceMode(false);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    return dialog;
}

Dialogs::FindReplaceDialog *SourceView::showReplaceDialog()
{
    Dialogs::FindReplaceDialog *dialog = findReplaceDialog();
    dialog->setReplaceMode(true);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    return dialog;
}

Dialogs::GoToLineDialog *SourceView::showGoToLineDialog()
{
    if (!m_goToDialog)
        m_goToDialog = new Dialogs::GoToLineDialog(m_editor);
    m_goToDialog->prepare(m_editor->lineCount(), m_editor->caretLine());
    m_goToDialog->open();
    return m_goToDialog;
}

QAction *SourceView::addMenuAction(
    const char *objectName, const QString &caption, void (Platform::SourceEditor::*command)())
{
    QAction *action = m_menu->addAction(caption);
    action->setObjectName(QLatin1String(objectName));
    connect(action, &QAction::triggered, m_editor, command);
    return action;
}

void SourceView::createContextMenu()
{
    using Platform::SourceEditor;
    m_menu = new QMenu(m_editor);
    m_menu->setObjectName(QStringLiteral("mnuSource"));
    addMenuAction("mnuCommentSelection", QStringLiteral("Comment Selection"),
        &SourceEditor::commentSelection);
    addMenuAction("mnuUncommentSelection", QStringLiteral("Uncomment Selection"),
        &SourceEditor::uncommentSelection);
    m_menu->addSeparator();
    addMenuAction("mnuCut", QStringLiteral("Cut"), &SourceEditor::cut);
    addMenuAction("mnuCopy", QStringLiteral("Copy"), &SourceEditor::copy);
    addMenuAction("mnuPaste", QStringLiteral("Paste"), &SourceEditor::paste);
    m_menu->addSeparator();
    addMenuAction("mnuUndo", QStringLiteral("Undo"), &SourceEditor::undo);
    addMenuAction("mnuRedo", QStringLiteral("Redo"), &SourceEditor::redo);
    m_menu->addSeparator();
    QAction *find = m_menu->addAction(QStringLiteral("Find..."));
    find->setObjectName(QStringLiteral("mnuFind"));
    connect(find, &QAction::triggered, this, &SourceView::showFindDialog);
    QAction *replace = m_menu->addAction(QStringLiteral("Replace..."));
    replace->setObjectName(QStringLiteral("mnuReplace"));
    connect(replace, &QAction::triggered, this, &SourceView::showReplaceDialog);
    QAction *goTo = m_menu->addAction(QStringLiteral("Go To Line..."));
    goTo->setObjectName(QStringLiteral("mnuGoTo"));
    connect(goTo, &QAction::triggered, this, &SourceView::showGoToLineDialog);
    m_menu->addSeparator();
    addMenuAction(
        "mnuMakeUpperCase", QStringLiteral("Make Uppercase"), &SourceEditor::makeUpperCase);
    addMenuAction(
        "mnuMakeLowerCase", QStringLiteral("Make Lowercase"), &SourceEditor::makeLowerCase);
    m_menu->addSeparator();
    m_whitespaceAction = addMenuAction(
        "mnuShowWhiteSpace", m_editor->whitespaceCaption(), &SourceEditor::toggleWhitespace);
    connect(m_menu, &QMenu::aboutToShow, this, &SourceView::updateContextMenu);
}

void SourceView::updateContextMenu()
{
    const bool selected = m_editor->hasSelectedText();
    const bool writable = !m_editor->isReadOnly();
    auto enable = [this](const char *name, bool enabled) {
        if (QAction *action = m_menu->findChild<QAction *>(QLatin1String(name)))
            action->setEnabled(enabled);
    };
    enable("mnuCut", selected && writable);
    enable("mnuCopy", selected);
    enable("mnuPaste", writable && m_editor->canPaste());
    enable("mnuUndo", m_editor->isUndoAvailable());
    enable("mnuRedo", m_editor->isRedoAvailable());
    enable("mnuMakeUpperCase", selected && writable);
    enable("mnuMakeLowerCase", selected && writable);
    m_whitespaceAction->setText(m_editor->whitespaceCaption());
}

void SourceView::showContextMenu(const QPoint &globalPos)
{
    m_menu->popup(globalPos);
}

} // namespace Vantry::Control
