#pragma once

#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>
#include <optional>

class QPrinter;
class QWidget;

namespace Vantry {

// What the font dialog shows and returns. Empty or invalid members stand for "not one
// value": the selection mixes faces, sizes or colours, or the user left them alone.
struct FontChoice
{
    QString family;
    // The HTML font size, 1 to 7; 0 when unknown.
    int htmlSize = 0;
    QColor color;
    bool bold = false;
    bool italic = false;
    bool underline = false;

    bool operator==(const FontChoice &other) const = default;
};

// A wait shown to the user; it ends when the object is destroyed. The implementation
// emits canceled() when the user gives up waiting, from the event loop once the object
// has been handed out.
class VANTRYHTMLEDITOR_EXPORT PromptProgress : public QObject
{
    Q_OBJECT

public:
    PromptProgress() = default;
    ~PromptProgress() override;

Q_SIGNALS:
    void canceled();
};

// Every message box and picker the editor shows goes through here. A host that wants its
// own (styled boxes, a remote file browser, answers from a script) implements this, or
// derives from WidgetPrompts to replace only some, and hands it to
// HTMLEditorComponent::setUserPrompts. The texts passed in are the editor's fixed texts.
//
// The editor calls these on the GUI thread while the user waits for the answer; an
// implementation may run a modal loop but must return.
class VANTRYHTMLEDITOR_EXPORT UserPrompts
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

    using Progress = PromptProgress;

    UserPrompts() = default;
    virtual ~UserPrompts();
    Q_DISABLE_COPY_MOVE(UserPrompts)

    // A question; answer one of the offered choices. Cancel also stands for a box closed
    // without an answer (No for YesNo).
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
    // The print dialog: set up printer (Qt PrintSupport) and return true to print, false
    // when the user cancels.
    virtual bool printSetup(QPrinter &printer) = 0;
    // The font dialog, starting from initial; nothing when the user cancels.
    virtual std::optional<FontChoice> font(const FontChoice &initial) = 0;
    // Shows text with a Cancel button while the editor waits for something slow (a page
    // from a server). The returned object emits canceled() when the user gives up waiting;
    // the wait ends when it is destroyed.
    virtual std::unique_ptr<Progress> progress(const QString &text) = 0;
};

// The prompts of a desktop session and the editor's default: QMessageBox, QFileDialog,
// QColorDialog, QPrintDialog and the editor's font dialog, modal to the window of parent
// and captioned with the application's display name.
class VANTRYHTMLEDITOR_EXPORT WidgetPrompts : public UserPrompts
{
public:
    explicit WidgetPrompts(QWidget *parent);

    Answer question(const QString &text, Choices choices = Choices::YesNoCancel) override;
    void critical(const QString &text) override;
    void information(const QString &text) override;
    QString openFileName(
        const QString &title, const QString &filter, const QString &directory = QString()) override;
    QString saveFileName(
        const QString &title, const QString &filter, const QString &directory = QString()) override;
    std::optional<QColor> color(const QColor &initial, const QString &title = QString()) override;
    bool printSetup(QPrinter &printer) override;
    std::optional<FontChoice> font(const FontChoice &initial) override;
    std::unique_ptr<Progress> progress(const QString &text) override;

protected:
    // The window the boxes are modal to; none once parent is gone.
    QWidget *window() const;

private:
    QString caption() const;

    QPointer<QWidget> m_parent;
};

} // namespace Vantry
