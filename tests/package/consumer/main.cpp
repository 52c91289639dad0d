// A host built against the installed package: it must compile, link and run with only the
// public headers, and answer the editor's prompts with its own.
#include <VantryHTMLEditor/HTMLEditorComponent.h>
#include <VantryHTMLEditor/PropertyBag.h>
#include <VantryHTMLEditor/UserPrompts.h>

#include <QApplication>
#include <QStringList>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace {

// Answers from the host's own script and keeps a log of what the editor asked.
class HostPrompts : public Vantry::UserPrompts
{
public:
    explicit HostPrompts(QStringList &log)
        : m_log(log)
    { }

    Answer question(const QString &text, Choices) override
    {
        note("question", text);
        return Answer::No;
    }
    void critical(const QString &text) override { note("critical", text); }
    void information(const QString &text) override { note("information", text); }
    QString openFileName(const QString &title, const QString &, const QString &) override
    {
        note("open", title);
        return QStringLiteral("/nonexistent/host-picked.html");
    }
    QString saveFileName(const QString &title, const QString &, const QString &) override
    {
        note("save", title);
        return {};
    }
    std::optional<QColor> color(const QColor &, const QString &) override { return std::nullopt; }
    bool printSetup(QPrinter &) override { return false; }
    std::optional<Vantry::FontChoice> font(const Vantry::FontChoice &) override
    {
        return std::nullopt;
    }
    std::unique_ptr<Progress> progress(const QString &text) override
    {
        note("progress", text);
        return std::make_unique<Progress>();
    }

private:
    void note(const char *kind, const QString &text)
    {
        m_log.append(QLatin1String(kind) + QStringLiteral(": ") + text);
    }

    QStringList &m_log;
};

int fail(const QString &why, const QStringList &log)
{
    std::fprintf(stderr, "%s\nPrompts shown:\n%s\n", qPrintable(why),
        qPrintable(log.join(QLatin1Char('\n'))));
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    Vantry::HTMLEditorComponent editor;

    // The order the README gives: the bag first, the host's own settings after it.
    Vantry::MemoryPropertyBag stored;
    stored.setValue(QStringLiteral("DefaultFontName"), QStringLiteral("tahoma"));
    editor.ReadProperties(stored);
    editor.setBaseURL(QStringLiteral("file:///srv/site/"));
    if (editor.DefaultFontName() != QStringLiteral("tahoma")
        || editor.BaseURL() != QStringLiteral("file:///srv/site/"))
        return fail(QStringLiteral("The stored or the host's settings were lost."), {});

    // The page reads back once DocumentLoaded has come.
    QString loaded;
    QObject::connect(&editor, &Vantry::HTMLEditorComponent::DocumentLoaded, &app, [&] {
        loaded = editor.GetHtmlSource();
        if (loaded.contains(QStringLiteral("Hello")))
            app.quit();
    });
    QTimer::singleShot(120000, &app, [&app] { app.exit(2); });
    editor.setSetHtmlSource(QStringLiteral("<p>Hello</p>"));
    if (app.exec() != 0)
        return fail(QStringLiteral("No DocumentLoaded with the page: ") + loaded, {});

    QStringList log;
    editor.setUserPrompts(std::make_unique<HostPrompts>(log));

    // A changed document asks first; the host's file is then missing, which the editor
    // reports through the same prompts.
    editor.setisDirty(true);
    editor.FileOpen();
    const QStringList kinds{
        QStringLiteral("question: "), QStringLiteral("open: "), QStringLiteral("critical: ")};
    for (qsizetype i = 0; i < kinds.size(); ++i) {
        if (log.size() != kinds.size() || !log.at(i).startsWith(kinds.at(i)))
            return fail(
                QStringLiteral("The editor did not ask the host's prompts as expected."), log);
    }
    return 0;
}
