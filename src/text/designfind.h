#pragma once

#include <QPointer>

#include <functional>
#include <memory>

class QWidget;

namespace Vantry::Platform {
class DesignSurface;
} // namespace Vantry::Platform

namespace Vantry::Dialogs {
class FindReplaceDialog;
} // namespace Vantry::Dialogs

namespace Vantry::Text {

class DesignSearch;

// The design view's find dialog and the Ctrl+F that asks for it; the source editor has its
// own. The shortcut goes through onShortcut, so it obeys the rules of the Find command.
class DesignFind
{
public:
    DesignFind(
        Platform::DesignSurface &surface, QWidget *dialogParent, std::function<void()> onShortcut);
    ~DesignFind();

    // The dialog is modeless and kept once made; it starts from the selected text when
    // there is a short one.
    void showDialog();

private:
    Platform::DesignSurface &m_surface;
    QWidget *m_dialogParent;
    std::unique_ptr<DesignSearch> m_search;
    QPointer<Dialogs::FindReplaceDialog> m_dialog;
};

} // namespace Vantry::Text
