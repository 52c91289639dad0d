// The editor's document files on the real engine: the save-changes prompt, opening from
// files and addresses (an HTTP server on 127.0.0.1 started here), load errors, saving
// with and without asking, atomic saves that fail cleanly, and encodings that survive
// open and save. Prompts are answered by the recording double.

#include "../common/datarows.h"
#include "../common/enginetest.h"
#include "../common/files.h"
#include "../common/recordingprompts.h"
#include "../common/tinyhttpserver.h"
#include "../common/unprivileged.h"
#include "control/documentreader.h"
#include "control/fileoperations.h"

#include "platform/scintilla/sourceeditor.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QNetworkProxy>
#include <QTemporaryDir>
#include <QUrl>

#include <unistd.h>

using namespace Vantry;
using namespace Qt::StringLiterals;
using Platform::UserPrompts;
using VantryTest::adapterValue;
using VantryTest::readBytes;
using VantryTest::RecordingPrompts;
using VantryTest::surfaceOf;
using VantryTest::TinyHttpServer;

namespace {

const QString saveChangesQuestion
    = u"The current document has changed.\r\n\r\nDo you want to save changes?"_s;

QString loadError(const char *message)
{
    return u"Error occurred while loading document: "_s + QLatin1String(message) + QLatin1Char('.');
}

QByteArray utf16LE(const QString &text)
{
    QByteArray bytes("\xFF\xFE", 2);
    for (const QChar c : text) {
        bytes.append(char(c.unicode() & 0xFF));
        bytes.append(char(c.unicode() >> 8));
    }
    return bytes;
}

} // namespace

class tst_FileOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // The server is local; no proxy may stand in between.
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        QVERIFY(m_http.start());
        m_http.serve(u"/beta.html"_s, {"text/html", "<p>beta</p>"});
        m_http.serve(u"/cafe.html"_s, {"text/html; charset=windows-1252", "<p>caf\xE9 \x80 5</p>"});
        m_http.serve(u"/frames.html"_s,
            {"text/html",
                "<html><frameset cols=\"50%,50%\"><frame src=\"a.html\">"
                "<frame src=\"b.html\"></frameset></html>"});

        m_window = std::make_unique<QWidget>();
        m_editor = new HTMLEditorComponent(m_window.get());
        m_window->resize(800, 600);
        m_editor->resize(800, 600);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        QVERIFY(VantryTest::waitUntilReady(*m_editor));
    }

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        m_editor->InitProperties();
        m_editor->setBaseURL(QString());
        auto prompts = std::make_unique<RecordingPrompts>();
        m_prompts = prompts.get();
        m_editor->setUserPrompts(std::move(prompts));
        // A known state: a clean document from a file, not from an address.
        m_editor->FileOpen(writeFile(u"start.html"_s, "<p>start</p>"));
        QVERIFY(m_prompts->shown.isEmpty());
    }

    void cleanup()
    {
        QVERIFY2(m_prompts->unexpected.isEmpty(), qPrintable(m_prompts->unexpected.join(u'|')));
    }

    void saveChangesPromptAnswers_data()
    {
        // answer -1: no question; saveDialog "": not shown, "cancel" or "chosen"; savedTo "",
        // "opened" or "chosen".
        columns<QString, bool, bool, int, QString, bool, QString>(
            "operation", "untitled", "edited", "answer", "saveDialog", "replaced", "savedTo");

        const int yes = int(UserPrompts::Answer::Yes);
        const int no = int(UserPrompts::Answer::No);
        const int cancel = int(UserPrompts::Answer::Cancel);
        row("clean document: no question", "open", false, false, -1, "", true, "");
        row("open, yes saves to the file", "open", false, true, yes, "", true, "opened");
        row("open, no discards", "open", false, true, no, "", true, "");
        row("open, cancel keeps all", "open", false, true, cancel, "", false, "");
        row("new, yes asks for a name", "new", true, true, yes, "chosen", true, "chosen");
        row("new, yes but no name keeps all", "new", true, true, yes, "cancel", false, "");
        row("url, cancel keeps all", "url", false, true, cancel, "", false, "");
    }

    void saveChangesPromptAnswers()
    {
        auto [operation, untitled, edited, answer, saveDialog, replaced, savedTo]
            = fetch<QString, bool, bool, int, QString, bool, QString>(
                "operation", "untitled", "edited", "answer", "saveDialog", "replaced", "savedTo");

        const QString opened = writeFile(u"alpha.html"_s, "<p>alpha</p>");
        const QString next = writeFile(u"beta.html"_s, "<p>beta</p>");
        const QString chosen = path(u"chosen.html"_s);
        if (untitled) {
            m_editor->FileNew();
            m_editor->setSetHtmlSource(u"<p>alpha</p>"_s);
        } else {
            m_editor->FileOpen(opened);
        }
        QSignalSpy changed(m_editor, &HTMLEditorComponent::PropertyChanged);
        if (edited)
            QVERIFY(edit(u"edited "_s));
        QCOMPARE(changed.contains(QVariantList{u"isDirty"_s}), edited);

        if (answer >= 0)
            m_prompts->answers.enqueue(UserPrompts::Answer(answer));
        if (saveDialog == QLatin1String("cancel"))
            m_prompts->fileNames.enqueue(QString());
        else if (saveDialog == QLatin1String("chosen"))
            m_prompts->fileNames.enqueue(chosen);
        m_prompts->shown.clear();

        if (operation == QLatin1String("open"))
            m_editor->FileOpen(next);
        else if (operation == QLatin1String("new"))
            m_editor->FileNew();
        else
            m_editor->URLOpen(m_http.url(u"/beta.html"_s));

        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Question),
            answer >= 0 ? QStringList{saveChangesQuestion} : QStringList{});
        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::SaveFile),
            saveDialog.isEmpty() ? QStringList{} : QStringList{u"Save HTML File"_s});
        QVERIFY(m_prompts->texts(RecordingPrompts::Kind::Critical).isEmpty());

        const QString body = bodyText();
        if (replaced) {
            QVERIFY2(!body.contains(u"edited"_s), qPrintable(body));
            QCOMPARE(body, operation == QLatin1String("new") ? QString() : u"beta"_s);
            // The replacing document does not turn dirty on its own a moment later.
            QVERIFY(!QTest::qWaitFor([this] { return m_editor->isDirty(); }, 50));
        } else {
            QVERIFY2(body.contains(u"edited alpha"_s), qPrintable(body));
            QVERIFY(m_editor->isDirty());
        }
        if (!untitled)
            QCOMPARE(
                readBytes(opened).contains("edited alpha"), savedTo == QLatin1String("opened"));
        QCOMPARE(readBytes(chosen).contains("edited alpha"), savedTo == QLatin1String("chosen"));
    }

    void fileOpenWithoutPathAsks()
    {
        const QString file = writeFile(u"picked.html"_s, "<p>picked</p>");
        m_prompts->fileNames.enqueue(QString());
        m_editor->FileOpen();
        QCOMPARE(bodyText(), u"start"_s);

        m_prompts->fileNames.enqueue(file);
        m_editor->FileOpen();
        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::OpenFile),
            QStringList(2, u"Open HTML File"_s));
        QVERIFY(m_prompts->shown.last().filter.contains(u"*.html"_s));
        QCOMPARE(bodyText(), u"picked"_s);
        QCOMPARE(m_editor->FileSave(), file);
    }

    void fileOpenReportsLoadErrors_data()
    {
        // content: written to name unless empty.
        columns<QString, QByteArray, QString>("name", "content", "message");

        row("missing file", "missing.html", QByteArray(), loadError("File not found"));
        row("missing folder", "nowhere/page.html", QByteArray(), loadError("Path not found"));
        row("frameset", "frames.html",
            QByteArray("<html><frameset rows=\"*,*\"><frame src=\"a.html\">"
                       "<frame src=\"b.html\"></frameset></html>"),
            loadError("Document contains a frameset"));
        row("server script", "page.asp",
            QByteArray("<html><body><% Response.Write(\"hi\") %>"
                       "</body></html>"),
            loadError("Document is primarily server side script"));
        row("a folder", "", QByteArray(), loadError("Invalid argument"));
        row("unreadable file", "locked.html", QByteArray("<p>locked</p>"),
            loadError("Access denied"));
        row("an image", "picture.png", QByteArray("\x89PNG\r\n\x1A\n\0\0\0\rIHDR<p>x</p>", 24),
            loadError("Document is a binary file, not text"));
    }

    void fileOpenReportsLoadErrors()
    {
        auto [name, content, message]
            = fetch<QString, QByteArray, QString>("name", "content", "message");

        const bool locked = QByteArray(QTest::currentDataTag()) == "unreadable file";
        if (locked && rerunUnprivileged())
            return;
        const QString file = content.isEmpty() ? path(name) : writeFile(name, content);
        if (locked)
            QVERIFY(QFile::setPermissions(file, QFile::WriteOwner));
        m_editor->FileOpen(file);
        if (locked)
            QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Critical), QStringList{message});
        QCOMPARE(surfaceOf(*m_editor)->bodyInnerHTML(), QString());
        QVERIFY(!m_editor->isDirty());
        // The empty document belongs to no file, so nothing can overwrite the one that failed.
        m_prompts->fileNames.enqueue(QString());
        QCOMPARE(m_editor->FileSave(), QString());
        if (!content.isEmpty())
            QCOMPARE(readBytes(file), content);
    }

    void urlOpenLoadsOrReportsWhy_data()
    {
        // {dir} stands for the case's own folder, made after this table; message empty: the
        // page loads with the body text.
        columns<QString, QString, QString>("address", "message", "text");
        row("http page", m_http.url(u"/beta.html"_s), QString(), "beta");
        // The charset of the response decodes the page.
        row("charset of the response", m_http.url(u"/cafe.html"_s), QString(),
            "caf\u00E9 \u20AC 5");
        row("missing file", "file://{dir}/missing.html", loadError("File not found"), QString());
        row("missing page", m_http.url(u"/missing.html"_s), loadError("File not found"), QString());
        row("frameset", m_http.url(u"/frames.html"_s), loadError("Document contains a frameset"),
            QString());
        row("unsupported scheme", "ftp://127.0.0.1/page.html", loadError("Unknown error"),
            QString());
    }

    void urlOpenLoadsOrReportsWhy()
    {
        auto [address, message, text]
            = fetch<QString, QString, QString>("address", "message", "text");
        m_editor->URLOpen(QVariant(QString(address).replace(u"{dir}"_s, m_dir->path())));
        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Critical),
            message.isEmpty() ? QStringList() : QStringList{message});
        QCOMPARE(bodyText(), text);
        if (!message.isEmpty())
            QCOMPARE(surfaceOf(*m_editor)->bodyInnerHTML(), QString());
        QVERIFY(!m_editor->isDirty());
    }

    void urlOpenOfAServerThatNeverAnswers()
    {
        m_http.hang(u"/silent.html"_s);
        const QString address = m_http.url(u"/silent.html"_s);
        const QString before = surfaceOf(*m_editor)->bodyInnerHTML();
        const QString file = m_editor->FileSave();

        // The user gives up: nothing changes, nothing to report.
        m_prompts->cancelProgress = true;
        m_editor->URLOpen(address);
        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Progress),
            QStringList{u"Loading %1 ..."_s.arg(address)});
        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Critical), QStringList());
        QCOMPARE(surfaceOf(*m_editor)->bodyInnerHTML(), before);
        QCOMPARE(m_editor->FileSave(), file);

        // Nobody cancels: the wait has a bound.
        const Control::DocumentBytes read
            = Control::readAddress(address, std::chrono::milliseconds(300));
        QCOMPARE(
            Control::loadErrorText(read.error), loadError("The server did not answer in time"));
    }

    void relativeAddressesResolveWhereTheDocumentCameFrom()
    {
        const QByteArray page = "<html><head><link rel=\"stylesheet\" href=\"look.css\"></head>"
                                "<body><p>x</p><img src=\"img/a.png\"></body></html>";
        m_http.serve(u"/site/page.html"_s, {"text/html", page});
        m_editor->setReturnFullDocument(true);
        m_editor->URLOpen(m_http.url(u"/site/page.html"_s));
        QVERIFY(m_prompts->shown.isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(m_http.requests.contains(u"/site/look.css"_s)
                && m_http.requests.contains(u"/site/img/a.png"_s),
            10000);
        QVERIFY2(!m_editor->GetHtmlSource().contains(u"<base"_s, Qt::CaseInsensitive),
            qPrintable(m_editor->GetHtmlSource()));
        const QString copy = path(u"copy.html"_s);
        m_prompts->fileNames.enqueue(copy);
        QCOMPARE(m_editor->FileSave(), copy);
        QVERIFY2(!readBytes(copy).toLower().contains("<base"), readBytes(copy).constData());

        // A file's relative images resolve in its folder.
        const QString file = writeFile(u"pages/local.html"_s, page);
        m_editor->FileOpen(file);
        const QVariantList images = adapterValue(*m_editor, u"images"_s).toList();
        QCOMPARE(images.value(0).toMap().value(u"url"_s).toString(),
            QUrl::fromLocalFile(path(u"pages/img/a.png"_s)).toString());
        QVERIFY(!m_editor->GetHtmlSource().contains(u"<base"_s, Qt::CaseInsensitive));
    }

    void fileSaveAfterUrlOpenAsksForAName()
    {
        m_editor->URLOpen(m_http.url(u"/cafe.html"_s));
        const QString chosen = path(u"saved/cafe.html"_s);
        QDir().mkpath(path(u"saved"_s));
        m_prompts->fileNames.enqueue(chosen);
        QCOMPARE(m_editor->FileSave(), chosen);
        QCOMPARE(
            m_prompts->texts(RecordingPrompts::Kind::SaveFile), QStringList{u"Save HTML File"_s});
        // Saved in the encoding the page came in.
        QCOMPARE(readBytes(chosen), QByteArray("<p>caf\xE9 \x80 5</p>"));

        // Still from an address: even a given path makes it ask.
        const QString given = path(u"given.html"_s);
        m_prompts->fileNames.enqueue(QString());
        QCOMPARE(m_editor->FileSave(given), chosen);
        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::SaveFile).size(), 2);
        QVERIFY(!QFile::exists(given));
    }

    void fileSaveAndSaveAsWithPathSaveWithoutAsking()
    {
        const QString original = writeFile(u"original.html"_s, "<p>text</p>");
        m_editor->FileOpen(original);
        QVERIFY(edit(u"my "_s));
        QCOMPARE(m_editor->FileSave(), original);
        QCOMPARE(readBytes(original), QByteArray("<p>my text</p>"));
        QVERIFY(!m_editor->isDirty());

        // The folders on the way are created.
        const QString copy = path(u"new/deeper/copy.html"_s);
        QCOMPARE(m_editor->FileSaveAs(copy), copy);
        QVERIFY(m_prompts->shown.isEmpty());
        QCOMPARE(readBytes(copy), QByteArray("<p>my text</p>"));

        // The copy is the document's file now.
        QVERIFY(edit(u"more "_s));
        QCOMPARE(m_editor->FileSave(), copy);
        QCOMPARE(readBytes(copy), QByteArray("<p>more my text</p>"));
        QCOMPARE(readBytes(original), QByteArray("<p>my text</p>"));
    }

    // Saving changes nothing the user sees: the selection, the scroll position, the undo
    // history, and the next key goes where the selection is.
    void saveKeepsThePlaceInTheDesignView()
    {
        const QString file = writeFile(u"long.html"_s,
            "<p>page</p>" + QByteArray("<p>line</p>").repeated(150) + "<p>last words</p>");
        m_editor->FileOpen(file);
        QVERIFY(edit(u"my "_s));
        Platform::DesignSurface *surface = surfaceOf(*m_editor);
        const Platform::TextRange words = surface->bodyRange();
        QVERIFY(surface->findText(words, u"words"_s));
        QVERIFY(surface->selectRange(words));
        QVERIFY(surface->setScrollTop(400));
        const QPoint scrolled = surface->scrollPosition();
        QVERIFY(scrolled.y() > 0);
        const QVariant history = adapterValue(*m_editor, u"undoDepth"_s);

        QCOMPARE(m_editor->FileSave(), file);

        QVERIFY(readBytes(file).startsWith("<p>my page</p>"));
        QVERIFY(m_editor->DesignViewActive());
        QCOMPARE(surface->rangeText(surface->selectionRange()), u"words"_s);
        QCOMPARE(surface->scrollPosition(), scrolled);
        QCOMPARE(adapterValue(*m_editor, u"undoDepth"_s), history);
        QWidget *input = VantryTest::giveFocus(surface->widget());
        QVERIFY(input);
        QTest::keyClicks(input, u"Z"_s);
        QTRY_VERIFY(bodyText().endsWith(u"last Z"_s));
        QTRY_VERIFY(m_editor->isDirty());
        m_editor->setisDirty(false);
    }

    void saveFromTheSourceViewStaysThere()
    {
        const QString file = writeFile(u"source.html"_s, "<p>page</p>");
        m_editor->FileOpen(file);
        m_editor->ToggleDesignSourceView(u"source"_s);
        auto *source = m_editor->findChild<Platform::SourceEditor *>(u"HTMLSource"_s);
        QVERIFY(source);
        const QString before = source->text();
        source->setCaretPosition(1, 4);
        QWidget *input = VantryTest::giveFocus(source);
        QVERIFY(input);
        QTest::keyClicks(input, u"x "_s);
        const QString typed = source->text();
        QVERIFY(typed != before);

        QCOMPARE(m_editor->FileSave(), file);

        QCOMPARE(readBytes(file), QByteArray("<p>x page</p>"));
        QVERIFY(!m_editor->DesignViewActive());
        QCOMPARE(source->text(), typed);
        QCOMPARE(source->caretColumn(), 6);
        QCOMPARE(QApplication::focusWidget(), input);
        source->undo();
        QCOMPARE(source->text(), before);
        m_editor->ToggleDesignSourceView(u"design"_s);
    }

    void saveAsProposesTheDocumentAndAddsAnExtension_data()
    {
        columns<QString, QString>("typed", "written");
        row("no extension", "copy", "copy.html");
        row("an extension of its own", "copy.htm", "copy.htm");
    }

    void saveAsProposesTheDocumentAndAddsAnExtension()
    {
        auto [typed, written] = fetch<QString, QString>("typed", "written");
        const QString file = writeFile(u"named.html"_s, "<p>named</p>");
        m_editor->FileOpen(file);
        m_prompts->fileNames.enqueue(path(typed));

        QCOMPARE(m_editor->FileSaveAs(), path(written));

        QCOMPARE(m_prompts->shown.size(), 1);
        QCOMPARE(m_prompts->shown.first().directory, file);
        QCOMPARE(readBytes(path(written)), QByteArray("<p>named</p>"));
    }

    void savedFilesCarryNoBaseTag_data()
    {
        QTest::addColumn<bool>("fullDocument");
        row("body", false);
        row("whole document", true);
    }

    void savedFilesCarryNoBaseTag()
    {
        QFETCH(bool, fullDocument);
        const QString base = QUrl::fromLocalFile(m_dir->path() + QLatin1Char('/')).toString();
        m_editor->setBaseURL(base);
        m_editor->setReturnFullDocument(fullDocument);
        const QString file = writeFile(u"based.html"_s,
            "<HTML><head><title>T</title></HEAD><body><p>x</p></body>"
            "</HTML>");
        m_editor->FileOpen(file);
        const QString baseTag = u"<BASE HREF=\""_s + base + u"\">"_s;
        QVERIFY(surfaceOf(*m_editor)->documentHTML().contains(baseTag));

        const QString copy = path(u"copy.html"_s);
        QCOMPARE(m_editor->FileSaveAs(copy), copy);
        QVERIFY(edit(u"y"_s));
        QCOMPARE(m_editor->FileSave(), copy);
        const QByteArray saved = readBytes(copy);
        QVERIFY2(!saved.toLower().contains("<base"), saved.constData());
        QCOMPARE(saved.contains("<title>T</title>"), fullDocument);
        QVERIFY(saved.contains("<p>yx</p>"));
        // Loaded back with its BASE, so that relative links keep resolving.
        QVERIFY(surfaceOf(*m_editor)->documentHTML().contains(baseTag));
    }

    void failedSaveKeepsTheOldFile_data()
    {
        // target empty: the document's own file.
        columns<QString, QString>("target", "reason");
        row("the target is a folder", "folder", "It is a folder.");
        row("a file stands where a folder must", "old.html/sub/page.html", "could not be created.");
        row("read-only folder", "", "Permission denied.");
    }

    void failedSaveKeepsTheOldFile()
    {
        auto [target, reason] = fetch<QString, QString>("target", "reason");

        const bool readOnly = QByteArray(QTest::currentDataTag()) == "read-only folder";
        if (readOnly && rerunUnprivileged())
            return;
        QDir().mkpath(path(u"folder"_s));
        const QByteArray original("<p>old</p>");
        const QString old = writeFile(u"old.html"_s, original);
        m_editor->FileOpen(old);
        QVERIFY(edit(u"new "_s));
        if (readOnly)
            QVERIFY(QFile::setPermissions(m_dir->path(), QFile::ReadOwner | QFile::ExeOwner));

        const QString result
            = target.isEmpty() ? m_editor->FileSave() : m_editor->FileSaveAs(path(target));
        if (readOnly)
            QFile::setPermissions(
                m_dir->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

        QCOMPARE(result, old);
        QVERIFY(m_editor->isDirty());
        QCOMPARE(readBytes(old), original);
        const QStringList messages = m_prompts->texts(RecordingPrompts::Kind::Critical);
        QCOMPARE(messages.size(), 1);
        QVERIFY2(messages.first().startsWith(u"The document could not be saved to "_s),
            qPrintable(messages.first()));
        QVERIFY2(messages.first().contains(reason), qPrintable(messages.first()));
        // The edit is still there to be saved elsewhere.
        QVERIFY(bodyText().startsWith(u"new"_s));
    }

    void encodingsSurviveOpenAndSave_data()
    {
        columns<QByteArray, QString>("bytes", "text");

        // Documents as the engine writes them back, so that an unchanged one must come back
        // byte for byte.
        auto document = [](const char *meta, const char *body) -> QByteArray {
            return QByteArray("<!DOCTYPE html><html><head>") + meta
                + "<title>T</title></HEAD><body>\n<p>" + body + "</p>\n</body></html>";
        };
        const QString accents = u"Caf\u00E9 \u201Cquoted\u201D \u2013 5 \u20AC"_s;
        row("UTF-8 without declaration", document("", "Emoji \xF0\x9F\x98\x80"),
            "Emoji \U0001F600");
        row("UTF-8 with BOM",
            QByteArray("\xEF\xBB\xBF") + document("", accents.toUtf8().constData()), accents);
        const QString utf16Text
            = QString::fromUtf8(document("<meta charset=\"utf-16\">", ""))
                  .replace(u"<p></p>"_s, u"<p>"_s + accents + u" \U0001F600</p>"_s);
        row("UTF-16 LE with BOM", utf16LE(utf16Text), accents + u" \U0001F600"_s);
        row("windows-1252 declared",
            document("<meta charset=\"windows-1252\">", "Caf\xE9 \x93quoted\x94 \x96 5 \x80"),
            accents);
    }

    void encodingsSurviveOpenAndSave()
    {
        auto [bytes, text] = fetch<QByteArray, QString>("bytes", "text");

        m_editor->setReturnFullDocument(true);
        const QString file = writeFile(u"encoded.html"_s, bytes);
        m_editor->FileOpen(file);
        QVERIFY(m_prompts->shown.isEmpty());
        QCOMPARE(bodyText(), text);

        const QString copy = path(u"copy.html"_s);
        QCOMPARE(m_editor->FileSaveAs(copy), copy);
        QCOMPARE(readBytes(copy), bytes);
    }

    void editedFilesKeepTheirEncoding_data()
    {
        columns<QByteArray, QString, QString, QByteArray>("bytes", "text", "typed", "saved");
        row("UTF-16 without BOM",
            utf16LE(u"<html><body><p>\u03A9 caf\u00E9</p></body></html>"_s).mid(2),
            "\u03A9 caf\u00E9", "x", utf16LE(u"<p>x\u03A9 caf\u00E9</p>"_s));
        row("character the charset lacks",
            QByteArray("<html><head><meta charset=\"windows-1252\"></head><body><p>caf\xE9</p>"
                       "</body></html>"),
            "caf\u00E9", "\u03A9 ", QByteArray("<p>&#937; caf\xE9</p>"));
    }

    // Saved, opened and saved again: the file reads as it was written each time.
    void editedFilesKeepTheirEncoding()
    {
        auto [bytes, text, typed, saved]
            = fetch<QByteArray, QString, QString, QByteArray>("bytes", "text", "typed", "saved");
        const QString file = writeFile(u"edited.html"_s, bytes);
        m_editor->FileOpen(file);
        QCOMPARE(bodyText(), text);
        QVERIFY(edit(typed));
        QCOMPARE(m_editor->FileSave(), file);
        QVERIFY(!m_editor->isDirty());
        QCOMPARE(readBytes(file), saved);
        m_editor->FileOpen(file);
        QCOMPARE(bodyText(), QString(typed + text).trimmed());
        QCOMPARE(m_editor->FileSave(), file);
        QCOMPARE(readBytes(file), saved);
        QVERIFY(m_prompts->shown.isEmpty());
    }

private:
    QString path(const QString &name) const { return m_dir->filePath(name); }

    // Root reads and writes past permissions: such a case runs again as a user who cannot.
    static bool rerunUnprivileged()
    {
        if (geteuid() != 0)
            return false;
        const QString failure = VantryTest::failureAsUnprivilegedUser(
            QTest::currentTestFunction(), QTest::currentDataTag());
        if (!failure.isEmpty())
            QTest::qFail(qPrintable(failure), __FILE__, __LINE__);
        return true;
    }

    QString writeFile(const QString &name, const QByteArray &bytes) const
    {
        const QString file = path(name);
        if (!VantryTest::writeFile(file, bytes))
            qWarning("Could not write %s", qPrintable(file));
        return file;
    }

    // Types text at the start of the first paragraph, as a user would edit.
    bool edit(const QString &text)
    {
        m_editor->setFocus();
        if (!adapterValue(*m_editor, u"placeCaret"_s, {u"P"_s, 0, 0}).toBool())
            return false;
        adapterValue(*m_editor, u"execCommand"_s, {u"insertText"_s, false, text});
        return QTest::qWaitFor([this] { return m_editor->isDirty(); }, 5000);
    }

    // The body's text content; rendered text (innerText) would depend on painting.
    QString bodyText() const
    {
        return adapterValue(*m_editor, u"elementText"_s, {u"BODY"_s, 0}).toString().trimmed();
    }

    std::unique_ptr<QWidget> m_window;
    HTMLEditorComponent *m_editor = nullptr;
    RecordingPrompts *m_prompts = nullptr; // owned by the editor
    std::unique_ptr<QTemporaryDir> m_dir;
    TinyHttpServer m_http;
};

QTEST_MAIN(tst_FileOperations)
#include "tst_fileoperations.moc"
