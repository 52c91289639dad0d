#pragma once

#include "control/editorlayout.h"

#include <array>

class QTabBar;
class QToolBar;
class QWidget;

namespace Vantry::Control {

struct Settings;

// The editor's own widgets around the views: three toolbar rows, the tab strip that
// switches between design and source, and the panel both views sit in. It shows, hides and
// places them as the display properties say.
class EditorFrame
{
public:
    // The widgets become children of editor.
    explicit EditorFrame(QWidget *editor);

    const std::array<QToolBar *, 3> &rows() const { return m_rows; }
    QTabBar *tabs() const { return m_tabs; }
    QWidget *editPanel() const { return m_editPanel; }

    // Places the rows (in the given top-to-bottom order), the tab strip and the panel;
    // the caller places what is inside the panel.
    LayoutResult layout(const Settings &settings, const std::array<QToolBar *, 3> &topToBottom);
    void applyToolbarDisplay(const Settings &settings);
    void applyTabStripDisplay(const Settings &settings);
    void setToolbarsEnabled(bool enabled);

private:
    QWidget *m_editor;
    std::array<QToolBar *, 3> m_rows{};
    // Kept here: a hidden row is given no height, and on some platforms the toolbar's own
    // layout drops the minimum that setFixedHeight set, so its height would stay 0.
    int m_rowHeight = 0;
    QWidget *m_tabPanel = nullptr;
    QTabBar *m_tabs = nullptr;
    QWidget *m_editPanel = nullptr;
};

} // namespace Vantry::Control
