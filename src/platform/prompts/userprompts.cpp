#include "platform/prompts/userprompts.h"

#include "dialogs/fontdialog.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QProgressDialog>

namespace Vantry {

PromptProgress::~PromptProgress() = default;

UserPrompts::~UserPrompts() = default;

namespace {

class DialogProgress : public UserPrompts::Progress
{
public:
    DialogProgress(QWidget *window, const QString &caption, const QString &text)
        // Owned by the window too, which may go first.
        : m_dialog(new QProgressDialog(text, QStringLiteral("Cancel"), 0, 0, window))
    {
        m_dialog->setWindowTitle(caption);
        // Application-modal, as the message boxes are: the editor is waiting and takes no
        // input meanwhile, but the window repaints and Cancel can be pressed.
        m_dialog->setWindowModality(Qt::ApplicationModal);
        m_dialog->setMinimumDuration(0);
        m_dialog->setAutoReset(false);
        m_dialog->setAutoClose(false);
        connect(m_dialog.data(), &QProgressDialog::canceled, this, &PromptProgress::canceled);
        m_dialog->show();
    }

    ~DialogProgress() override { delete m_dialog.data(); }

private:
    QPointer<QProgressDialog> m_dialog;
};

} // namespace

WidgetPrompts::WidgetPrompts(QWidget *parent)
    : m_parent(parent)
{ }

QWidget *WidgetPrompts::window() const
{
    return m_parent ? m_parent->window() : nullptr;
}

QString WidgetPrompts::caption() const
{
    return QGuiApplication::applicationDisplayName();
}

UserPrompts::Answer WidgetPrompts::question(const QString &text, Choices choices)
{
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton escape = QMessageBox::Cancel;
    switch (choices) {
    case Choices::YesNoCancel:
        buttons = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        break;
    case Choices::YesNo:
        buttons = QMessageBox::Yes | QMessageBox::No;
        escape = QMessageBox::No;
        break;
    case Choices::OkCancel:
        buttons = QMessageBox::Ok | QMessageBox::Cancel;
        break;
    }
    QMessageBox box(QMessageBox::Question, caption(), text, buttons, window());
    box.setEscapeButton(escape);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Ok:
        return Answer::Ok;
    default:
        return choices == Choices::YesNo ? Answer::No : Answer::Cancel;
    }
}

void WidgetPrompts::critical(const QString &text)
{
    QMessageBox::critical(window(), caption(), text);
}

void WidgetPrompts::information(const QString &text)
{
    QMessageBox::information(window(), caption(), text);
}

QString WidgetPrompts::openFileName(
    const QString &title, const QString &filter, const QString &directory)
{
    return QFileDialog::getOpenFileName(window(), title, directory, filter);
}

QString WidgetPrompts::saveFileName(
    const QString &title, const QString &filter, const QString &directory)
{
    return QFileDialog::getSaveFileName(window(), title, directory, filter);
}

std::optional<QColor> WidgetPrompts::color(const QColor &initial, const QString &title)
{
    const QColor chosen = QColorDialog::getColor(initial, window(), title);
    if (!chosen.isValid())
        return std::nullopt;
    return chosen;
}

bool WidgetPrompts::printSetup(QPrinter &printer)
{
    QPrintDialog dialog(&printer, window());
    return dialog.exec() == QDialog::Accepted;
}

std::unique_ptr<UserPrompts::Progress> WidgetPrompts::progress(const QString &text)
{
    return std::make_unique<DialogProgress>(window(), caption(), text);
}

std::optional<FontChoice> WidgetPrompts::font(const FontChoice &initial)
{
    Dialogs::FontDialog dialog(initial, window());
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.choice();
}

} // namespace Vantry
