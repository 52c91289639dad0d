#pragma once

#include "control/focustracker.h"

#include <QMetaObject>

#include <functional>

class QWidget;

namespace Vantry {
class HTMLEditorComponent;
}

namespace Vantry::Platform {
class DesignSurface;
class SourceEditor;
} // namespace Vantry::Platform

namespace Vantry::Commands {
class ContextMenus;
class EditorToolbar;
} // namespace Vantry::Commands

namespace Vantry::Control {

struct Settings;

// Turns what the views and the toolbar report into the editor's events: typing, edits,
// mouse, focus entry and exit, selection state, loaded documents and the context menu. It
// also decides which keys pressed in the design view belong to the application.
class EventRelay
{
public:
    struct Hooks
    {
        // Runs when the surface finishes a document, before DocumentLoaded is raised.
        std::function<void()> documentComplete;
    };

    EventRelay(HTMLEditorComponent &editor, const Settings &settings,
        Platform::DesignSurface &surface, Platform::SourceEditor &sourceEditor,
        Commands::EditorToolbar &toolbar, Commands::ContextMenus &menus, Hooks hooks);
    // The editor's widgets outlive the relay by a moment (QWidget's destructor deletes them
    // and moves the focus); nothing may reach the editor through it meanwhile.
    ~EventRelay();

    EventRelay(const EventRelay &) = delete;
    EventRelay &operator=(const EventRelay &) = delete;

private:
    void focusChanged(QWidget *now);
    void documentEdited();

    HTMLEditorComponent &m_editor;
    const Settings &m_settings;
    Platform::DesignSurface &m_surface;
    FocusTracker m_focus;
    QMetaObject::Connection m_focusConnection;
};

} // namespace Vantry::Control
