#include "commands/editortoolbar.h"

#include "commands/companionlinks.h"
#include "commands/fontcontrols.h"
#include "commands/selectionstate.h"
#include "commands/toolbarbuilder.h"

#include <VantryHTMLEditor/CompanionObjects.h>

#include <QAction>
#include <QToolBar>

namespace Vantry::Commands {

EditorToolbar::EditorToolbar(
    const std::array<QToolBar *, 3> &rows, QWidget *shortcutScope, Hooks hooks, QObject *parent)
    : QObject(parent)
    , m_rows(rows)
{
    m_fonts = std::make_unique<FontControls>(rows[ToolbarButtons::Formatting],
        FontControls::Hooks{hooks.isDocumentReady, hooks.designViewActive, hooks.focusDocument});
    m_buttons = std::make_unique<ToolbarButtons>(
        rows, m_fonts->fontCombo(), m_fonts->fontSizeCombo(), shortcutScope);
    m_selection = std::make_unique<SelectionState>(
        m_model, *m_buttons, *m_fonts, std::move(hooks.designViewActive));

    connect(m_buttons.get(), &ToolbarButtons::buttonClicked, this, &EditorToolbar::buttonClicked);
    connect(m_selection.get(), &SelectionState::stateChanged, this,
        &EditorToolbar::selectionStateChanged);
    connect(m_selection.get(), &SelectionState::textChanged, this,
        &EditorToolbar::selectionTextChanged);
}

EditorToolbar::~EditorToolbar() = default;

void EditorToolbar::setStatusSource(CommandStatusSource *source)
{
    m_fonts->setStatusSource(source);
    m_selection->setStatusSource(source);
}

void EditorToolbar::setCommandSink(CommandSink *sink)
{
    m_fonts->setCommandSink(sink);
}

void EditorToolbar::attach(clsToolbar *toolbar)
{
    ToolbarLink::attach(toolbar, this);
}

std::array<QToolBar *, 3> EditorToolbar::rowsTopToBottom() const
{
    std::array<QToolBar *, 3> rows{};
    const auto order = m_model.toolbarsTopToBottom();
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = m_rows[static_cast<std::size_t>(order[i])];
    return rows;
}

void EditorToolbar::setButtonState(const QString &key, bool state)
{
    m_model.setPermission(key, state);
    if (QAction *button = m_buttons->button(key))
        button->setEnabled(state);
}

void EditorToolbar::setButtonVisibleState(const QString &key, bool state)
{
    if (QAction *button = m_buttons->button(key))
        button->setVisible(state);
}

QVariant EditorToolbar::buttonEnabledState(const QString &key) const
{
    const std::optional<bool> allowed = m_model.permission(key);
    return allowed ? QVariant(*allowed) : QVariant();
}

QVariant EditorToolbar::buttonLatchedState(const QString &key) const
{
    const std::optional<bool> latched = m_model.latched(key);
    return latched ? QVariant(*latched) : QVariant();
}

int EditorToolbar::toolbarDisplayOrder(int toolbar) const
{
    return m_model.displayOrder(toolbar);
}

bool EditorToolbar::setToolbarDisplayOrder(int toolbar, int order)
{
    const int before = m_model.displayOrder(toolbar);
    if (!m_model.setDisplayOrder(toolbar, order))
        return false;
    if (before != order)
        Q_EMIT rowsChanged();
    return true;
}

bool EditorToolbar::toolbarVisibleState(int toolbar) const
{
    return ToolbarModel::isToolbar(toolbar)
        && !m_rows[static_cast<std::size_t>(toolbar)]->isHidden();
}

bool EditorToolbar::setToolbarVisibleState(int toolbar, bool visible)
{
    if (!ToolbarModel::isToolbar(toolbar))
        return false;
    m_rows[static_cast<std::size_t>(toolbar)]->setVisible(visible);
    Q_EMIT rowsChanged();
    return true;
}

bool EditorToolbar::buttonEnabledState(int member) const
{
    return m_model.isAllowed(ToolbarModel::buttonKey(member));
}

bool EditorToolbar::setButtonEnabledState(int member, bool state)
{
    if (!ToolbarModel::isButtonMember(member))
        return false;
    const QString key = ToolbarModel::buttonKey(member);
    m_model.setPermission(key, state);
    // Allowing does not enable: the next refresh does, if the document agrees.
    if (!state) {
        if (QAction *button = m_buttons->button(key))
            button->setEnabled(false);
    }
    return true;
}

bool EditorToolbar::buttonVisibleState(int member) const
{
    return m_model.latched(ToolbarModel::buttonKey(member)).value_or(false);
}

bool EditorToolbar::setButtonVisibleState(int member, bool state)
{
    if (!ToolbarModel::isButtonMember(member))
        return false;
    const QString key = ToolbarModel::buttonKey(member);
    m_model.setLatched(key, state);
    // The font boxes are the buttons "Font" and "FontSize": hiding the face box lets the
    // size box move to the row's left edge.
    if (QAction *button = m_buttons->button(key))
        button->setVisible(state);
    return true;
}

void EditorToolbar::setToolbarEnabled(bool enabled)
{
    m_buttons->setToolbarEnabled(enabled);
}

void EditorToolbar::followView(bool designView)
{
    if (!designView) {
        m_buttons->setToolbarEnabled(false);
        return;
    }
    // These have no command state to refresh them: the host's permission alone decides.
    for (const QString &key :
        {QStringLiteral("Font"), QStringLiteral("FontSize"), QStringLiteral("ZOrder")}) {
        if (QAction *button = m_buttons->button(key))
            button->setEnabled(m_model.permission(key).value_or(true));
    }
    refresh();
}

bool EditorToolbar::enginesKeysDoTheSame(const QAction *action) const
{
    const QString key = ToolbarButtons::keyOf(action);
    static const QStringList sameAsTheEngine{QStringLiteral("Cut"), QStringLiteral("Copy"),
        QStringLiteral("Paste"), QStringLiteral("UnDo"), QStringLiteral("ReDo")};
    return sameAsTheEngine.contains(key) && m_buttons->button(key) == action
        && m_model.isAllowed(key);
}

void EditorToolbar::refresh()
{
    m_selection->refresh();
}

void EditorToolbar::requestRefresh()
{
    m_selection->requestRefresh();
}

} // namespace Vantry::Commands
