#include "control/eventrelay.h"

#include "commands/contextmenus.h"
#include "commands/editortoolbar.h"
#include "control/settings.h"
#include "control/shortcuts.h"
#include "platform/designsurface.h"
#include "platform/scintilla/sourceeditor.h"

#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include <QApplication>

namespace Vantry::Control {

using Platform::DesignSurface;

namespace {

using MouseSignal = void (HTMLEditorComponent::*)(qint16 &, qint16 &, float &, float &);

// The mouse events pass their arguments by reference, as hosts know them.
auto mouseRelay(HTMLEditorComponent &editor, MouseSignal signal)
{
    return [&editor, signal](int button, int shift, double x, double y) {
        qint16 b = static_cast<qint16>(button);
        qint16 s = static_cast<qint16>(shift);
        float fx = static_cast<float>(x);
        float fy = static_cast<float>(y);
        Q_EMIT(editor.*signal)(b, s, fx, fy);
    };
}

} // namespace

EventRelay::EventRelay(HTMLEditorComponent &editor, const Settings &settings,
    DesignSurface &surface, Platform::SourceEditor &sourceEditor, Commands::EditorToolbar &toolbar,
    Commands::ContextMenus &menus, Hooks hooks)
    : m_editor(editor)
    , m_settings(settings)
    , m_surface(surface)
{
    HTMLEditorComponent *q = &editor;
    surface.setShortcutClaim([q, &toolbar](const QKeySequence &keys) {
        return shortcutClaim(q->window(), keys,
            [&toolbar](const QAction *action) { return toolbar.enginesKeysDoTheSame(action); });
    });

    QObject::connect(&toolbar, &Commands::EditorToolbar::selectionStateChanged, q,
        [q](const QString &key, bool enabled, bool selected) {
            QString sCommandName = key;
            Q_EMIT q->CurrentSelectionStateChange(sCommandName, enabled, selected);
        });
    QObject::connect(&toolbar, &Commands::EditorToolbar::selectionTextChanged, q,
        [q](const QString &key, const QString &value) {
            QString sCommandName = key;
            QString sValue = value;
            Q_EMIT q->CurrentSelectionStateChangeText(sCommandName, sValue);
        });

    QObject::connect(
        &surface, &DesignSurface::displayChanged, q, [&toolbar] { toolbar.requestRefresh(); });
    QObject::connect(&surface, &DesignSurface::documentComplete, q,
        [q, documentComplete = std::move(hooks.documentComplete)] {
            documentComplete();
            Q_EMIT q->DocumentLoaded();
        });
    QObject::connect(&surface, &DesignSurface::keyDown, q, [this] {
        Q_EMIT m_editor.HTMLChanged();
        if (!m_focus.hasFocus())
            m_surface.focusDocument();
    });
    // Content changes, not key presses (a caret move is no edit), make the document dirty.
    QObject::connect(&surface, &DesignSurface::contentChanged, q, [this] { documentEdited(); });
    QObject::connect(
        &sourceEditor, &Platform::SourceEditor::edited, q, [this] { documentEdited(); });
    QObject::connect(&surface, &DesignSurface::mouseDown, q,
        mouseRelay(editor, &HTMLEditorComponent::MouseDown));
    QObject::connect(&surface, &DesignSurface::mouseMove, q,
        mouseRelay(editor, &HTMLEditorComponent::MouseMove));
    QObject::connect(
        &surface, &DesignSurface::mouseUp, q, mouseRelay(editor, &HTMLEditorComponent::MouseUp));
    QObject::connect(&surface, &DesignSurface::contextMenuRequested, q,
        [this, &menus](const QPoint &position) { menus.popup(m_surface.widget(), position); });
    QObject::connect(&surface, &DesignSurface::clicked, q, [this] {
        if (m_focus.hasFocus())
            m_surface.focusDocument();
    });
    m_focusConnection = QObject::connect(qApp, &QApplication::focusChanged, q,
        [this](QWidget *, QWidget *now) { focusChanged(now); });
}

EventRelay::~EventRelay()
{
    QObject::disconnect(m_focusConnection);
    QObject::disconnect(&m_surface, nullptr, &m_editor, nullptr);
}

void EventRelay::focusChanged(QWidget *now)
{
    const bool inside = now && (now == &m_editor || m_editor.isAncestorOf(now));
    if (inside && m_focus.enter())
        Q_EMIT m_editor.EnterFocus();
    else if (!inside && m_focus.leave())
        Q_EMIT m_editor.ExitFocus();
}

void EventRelay::documentEdited()
{
    Q_EMIT m_editor.HTMLChanged();
    if (!m_settings.isDirty)
        m_editor.setisDirty(true);
}

} // namespace Vantry::Control
