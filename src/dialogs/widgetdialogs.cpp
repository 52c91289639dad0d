#include <VantryHTMLEditor/EditorDialogs.h>

#include <QWidget>

namespace Vantry {

EditorDialogs::~EditorDialogs() = default;

WidgetDialogs::WidgetDialogs(QWidget *parent)
    : m_parent(parent)
{ }

WidgetDialogs::~WidgetDialogs() = default;

QWidget *WidgetDialogs::window() const
{
    return m_parent ? m_parent->window() : nullptr;
}

} // namespace Vantry
