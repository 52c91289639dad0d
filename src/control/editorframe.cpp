#include "control/editorframe.h"

#include "control/settings.h"

#include <QTabBar>
#include <QToolBar>

namespace Vantry::Control {

namespace {

// Height of a toolbar row, in twips; the toolbar model keeps where each row sits.
constexpr int rowHeightInTwips = 420;

bool isNone(const QString &display)
{
    return display.compare(QLatin1String("none"), Qt::CaseInsensitive) == 0;
}

} // namespace

EditorFrame::EditorFrame(QWidget *editor)
    : m_editor(editor)
{
    m_rowHeight = twipsToPixels(rowHeightInTwips, editor->logicalDpiY());
    const char *rowNames[] = {"StandardToolbar", "FormattingToolbar", "TableEditingToolbar"};
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        m_rows[i] = new QToolBar(editor);
        m_rows[i]->setObjectName(QLatin1String(rowNames[i]));
        m_rows[i]->setMovable(false);
        m_rows[i]->setFloatable(false);
        m_rows[i]->setFixedHeight(m_rowHeight);
    }

    m_tabPanel = new QWidget(editor);
    m_tabPanel->setObjectName(QStringLiteral("picTabs"));
    m_tabs = new QTabBar(m_tabPanel);
    m_tabs->setObjectName(QStringLiteral("TabStrip1"));
    m_tabs->addTab(QStringLiteral("Design"));
    m_tabs->addTab(QStringLiteral("Source"));
    m_tabs->setDrawBase(false);
    m_tabs->setExpanding(false);

    m_editPanel = new QWidget(editor);
    m_editPanel->setObjectName(QStringLiteral("picDHTMLEdit"));
}

LayoutResult EditorFrame::layout(
    const Settings &settings, const std::array<QToolBar *, 3> &topToBottom)
{
    LayoutInput input;
    input.size = m_editor->size();
    // The host may reorder the rows and hide single ones.
    for (std::size_t i = 0; i < topToBottom.size(); ++i)
        input.rowHeights[i] = topToBottom[i]->isHidden() ? 0 : m_rowHeight;
    input.toolbarsVisible = !isNone(settings.ToolbarDisplay);
    input.tabStripVisible = !isNone(settings.TabStripDisplay);
    input.tabStripHeight = m_tabs->sizeHint().height();
    input.displayWidth = settings.SetDisplayWidth;
    input.displayHeight = settings.SetDisplayHeight;

    const LayoutResult result = computeLayout(input);
    for (std::size_t i = 0; i < topToBottom.size(); ++i)
        topToBottom[i]->setGeometry(result.rows[i]);
    m_tabPanel->setGeometry(result.tabStrip);
    m_tabs->setGeometry(0, 0, result.tabStrip.width(), result.tabStrip.height());
    m_editPanel->setGeometry(result.editingPanel);
    return result;
}

void EditorFrame::applyToolbarDisplay(const Settings &settings)
{
    const bool hide = isNone(settings.ToolbarDisplay);
    for (int i : {1, 2, 0})
        m_rows[i]->setVisible(!hide);
}

void EditorFrame::applyTabStripDisplay(const Settings &settings)
{
    const bool hide = isNone(settings.TabStripDisplay);
    m_tabPanel->setVisible(!hide);
    m_tabs->setVisible(!hide);
}

void EditorFrame::setToolbarsEnabled(bool enabled)
{
    for (QToolBar *row : m_rows)
        row->setEnabled(enabled);
}

} // namespace Vantry::Control
