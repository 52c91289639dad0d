#include <VantryHTMLEditor/EditorDialogs.h>

#include "dialogs/spellingdialog.h"

#include <QWidget>

namespace Vantry {

EditorDialogs::~EditorDialogs() = default;

WidgetDialogs::WidgetDialogs(QWidget *parent)
    : m_parent(parent)
{ }

WidgetDialogs::~WidgetDialogs()
{
    delete m_spelling;
}

QWidget *WidgetDialogs::window() const
{
    return m_parent ? m_parent->window() : nullptr;
}

EditorDialogs::SpellingAnswer WidgetDialogs::spellingWord(const SpellingQuestion &question)
{
    if (!m_spelling)
        m_spelling = new Dialogs::SpellingDialog(window());
    return m_spelling->ask(question);
}

void WidgetDialogs::spellingDone()
{
    if (m_spelling)
        m_spelling->deleteLater();
}

} // namespace Vantry
