#pragma once

#include "platform/prompts/userprompts.h"

#include <QList>
#include <QPrinter>
#include <QQueue>
#include <QString>
#include <QStringList>
#include <QTimer>

namespace VantryTest {

// Answers the editor's prompts from a script and records every one shown. A prompt with
// no scripted answer is recorded as unexpected and answered as if cancelled.
class RecordingPrompts : public Vantry::Platform::UserPrompts
{
public:
    enum class Kind
    {
        Question,
        Critical,
        Information,
        OpenFile,
        SaveFile,
        Color,
        Print,
        Font,
        Progress
    };

    struct Shown
    {
        Kind kind;
        // The message, or the picker's title.
        QString text;
        QString filter;
        // Where a file picker started, or the colour a colour picker opened on.
        QString directory;
    };

    QList<Shown> shown;
    QStringList unexpected;
    QQueue<Answer> answers;
    QQueue<QString> fileNames;
    QQueue<std::optional<QColor>> colors;
    // A print dialog answered with a path prints to that PDF file.
    QQueue<QString> printFiles;
    // Each font dialog's answer; what it was shown lands in fontsShown.
    QQueue<std::optional<Vantry::FontChoice>> fonts;
    QList<Vantry::FontChoice> fontsShown;
    // Whether a progress is cancelled as soon as it shows; otherwise it waits to the end.
    bool cancelProgress = false;

    // The texts of the prompts of one kind, in order.
    QStringList texts(Kind kind) const
    {
        QStringList result;
        for (const Shown &prompt : shown) {
            if (prompt.kind == kind)
                result.append(prompt.text);
        }
        return result;
    }

    Answer question(const QString &text, Choices) override
    {
        shown.append({Kind::Question, text, {}, {}});
        return scripted(answers, text) ? answers.dequeue() : Answer::Cancel;
    }

    void critical(const QString &text) override { shown.append({Kind::Critical, text, {}, {}}); }
    void information(const QString &text) override
    {
        shown.append({Kind::Information, text, {}, {}});
    }

    QString openFileName(
        const QString &title, const QString &filter, const QString &directory) override
    {
        return fileName(Kind::OpenFile, title, filter, directory);
    }

    QString saveFileName(
        const QString &title, const QString &filter, const QString &directory) override
    {
        return fileName(Kind::SaveFile, title, filter, directory);
    }

    std::optional<QColor> color(const QColor &initial, const QString &title) override
    {
        shown.append({Kind::Color, title, {}, initial.name(QColor::HexRgb).toUpper()});
        return scripted(colors, title) ? colors.dequeue() : std::nullopt;
    }

    bool printSetup(QPrinter &printer) override
    {
        shown.append({Kind::Print, {}, {}, {}});
        if (!scripted(printFiles, QStringLiteral("print")))
            return false;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(printFiles.dequeue());
        return true;
    }

    std::optional<Vantry::FontChoice> font(const Vantry::FontChoice &initial) override
    {
        shown.append({Kind::Font, {}, {}, {}});
        fontsShown.append(initial);
        return scripted(fonts, QStringLiteral("font")) ? fonts.dequeue() : std::nullopt;
    }

    std::unique_ptr<Progress> progress(const QString &text) override
    {
        shown.append({Kind::Progress, text, {}, {}});
        auto shownProgress = std::make_unique<Progress>();
        // Pressed once the editor waits, as a user would; never after the wait ended.
        if (cancelProgress)
            QTimer::singleShot(0, shownProgress.get(), &Progress::canceled);
        return shownProgress;
    }

private:
    QString fileName(
        Kind kind, const QString &title, const QString &filter, const QString &directory)
    {
        shown.append({kind, title, filter, directory});
        return scripted(fileNames, title) ? fileNames.dequeue() : QString();
    }

    // Whether an answer is scripted; a prompt without one is unexpected.
    template <typename T> bool scripted(const QQueue<T> &queue, const QString &prompt)
    {
        if (queue.isEmpty())
            unexpected.append(prompt);
        return !queue.isEmpty();
    }
};

} // namespace VantryTest
