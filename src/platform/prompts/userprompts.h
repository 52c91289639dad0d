#pragma once

#include "platform/prompts/fontchoice.h"

#include <QColor>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QPrinter;
class QWidget;

namespace Vantry::Platform {

// Every message box and picker the editor shows goes through here, so that the texts are
// fixed in one place and an embedding (or a test) can answer them itself.
class UserPrompts
{
public:
    enum class Answer
    {
        Yes,
        No,
        Ok,
        Cancel
    };

    enum class Choices
    {
        YesNoCancel,
        YesNo,
        OkCancel
    };

    // A wait shown to the user; it ends when the object is destroyed.
    class Progress
    {
    public:
        virtual ~Progress();
    };

    virtual ~UserPrompts();

    // A question; Cancel also stands for a box closed without an answer.
    virtual Answer question(const QString &text, Choices choices = Choices::YesNoCancel) = 0;
    // A failure the user has to acknowledge.
    virtual void critical(const QString &text) = 0;
    virtual void information(const QString &text) = 0;
    // A file to read or write, as an absolute path; empty when the user cancels. filter is
    // in QFileDialog's syntax ("HTML Files (*.htm *.html);;All Files (*)").
    virtual QString openFileName(
        const QString &title, const QString &filter, const QString &directory = QString())
        = 0;
    virtual QString saveFileName(
        const QString &title, const QString &filter, const QString &directory = QString())
        = 0;
    // A colour; nothing when the user cancels.
    virtual std::optional<QColor> color(const QColor &initial, const QString &title = QString())
        = 0;
    // The print dialog, setting up printer; false when the user cancels.
    virtual bool printSetup(QPrinter &printer) = 0;
    // The font dialog, starting from initial; nothing when the user cancels.
    virtual std::optional<FontChoice> font(const FontChoice &initial) = 0;
    // Shows text with a Cancel button, modal, while the editor waits for something slow
    // (a page from a server); cancel runs when the user gives up waiting.
    virtual std::unique_ptr<Progress> progress(const QString &text, std::function<void()> cancel)
        = 0;
};

// The prompts of a desktop session: QMessageBox, QFileDialog, QColorDialog and QPrintDialog, modal
// to the window of parent.
class WidgetPrompts : public UserPrompts
{
public:
    explicit WidgetPrompts(QWidget *parent);

    Answer question(const QString &text, Choices choices) override;
    void critical(const QString &text) override;
    void information(const QString &text) override;
    QString openFileName(
        const QString &title, const QString &filter, const QString &directory) override;
    QString saveFileName(
        const QString &title, const QString &filter, const QString &directory) override;
    std::optional<QColor> color(const QColor &initial, const QString &title) override;
    bool printSetup(QPrinter &printer) override;
    std::optional<FontChoice> font(const FontChoice &initial) override;
    std::unique_ptr<Progress> progress(const QString &text, std::function<void()> cancel) override;

private:
    QWidget *window() const;
    QString caption() const;

    QPointer<QWidget> m_parent;
};

} // namespace Vantry::Platform
