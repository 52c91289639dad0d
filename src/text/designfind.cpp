#include "text/designfind.h"

#include "platform/designsurface.h"
#include "dialogs/findreplacedialog.h"
#include "text/designsearch.h"

#include <QAction>

namespace Vantry::Text {

DesignFind::DesignFind(
    Platform::DesignSurface &surface, QWidget *dialogParent, std::function<void()> onShortcut)
    : m_surface(surface)
    , m_dialogParent(dialogParent)
    , m_search(std::make_unique<DesignSearch>(surface))
{
    auto *findAction = new QAction(QStringLiteral("Find..."), surface.widget());
    findAction->setShortcut(QKeySequence::Find);
    findAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    surface.widget()->addAction(findAction);
    QObject::connect(findAction, &QAction::triggered, dialogParent, std::move(onShortcut));
}

DesignFind::~DesignFind() = default;

void DesignFind::showDialog()
{
    if (!m_dialog)
        m_dialog = new Dialogs::FindReplaceDialog(*m_search, m_dialogParent);
    const QString selected = m_surface.rangeText(m_surface.selectionRange());
    if (!m_surface.lastCallFailed() && !selected.isEmpty() && selected.size() < 100
        && !selected.contains(QLatin1Char('\n')))
        m_dialog->setFindText(selected);
    m_dialog->setReplaceMode(false);
    m_dialog->show();
    m_dialog->raise();
    m_dialog->activateWindow();
}

} // namespace Vantry::Text
