#include "dialogs/gotolinedialog.h"

#include "platform/scintilla/sourceeditor.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

namespace Vantry::Dialogs {

GoToLineDialog::GoToLineDialog(SourceEditor *editor)
    : QDialog(editor)
    , m_editor(editor)
{
    setWindowTitle(QStringLiteral("Go To Line"));
    m_label = new QLabel(this);
    m_line = new QSpinBox(this);
    m_line->setObjectName(QStringLiteral("spnLine"));
    m_label->setBuddy(m_line);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_label);
    layout->addWidget(m_line);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &GoToLineDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &GoToLineDialog::reject);
}

void GoToLineDialog::prepare(int lineCount, int current)
{
    const int last = std::max(1, lineCount);
    m_label->setText(
        QStringLiteral("Line number (1 - ") + QString::number(last) + QStringLiteral("):"));
    m_line->setRange(1, last);
    m_line->setValue(current);
    m_line->selectAll();
    m_line->setFocus();
}

void GoToLineDialog::setLine(int line)
{
    m_line->setValue(line);
}

int GoToLineDialog::line() const
{
    return m_line->value();
}

void GoToLineDialog::accept()
{
    m_editor->goToLine(m_line->value());
    QDialog::accept();
}

} // namespace Vantry::Dialogs
