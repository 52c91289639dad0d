// The design surface's contracts on the real engine: documents are inert, the editor's
// BASE tag resolves relative images but never leaks into what is handed out, whole
// documents keep their head and what stands in front of their root, a load is complete
// when it is reported whatever the network does, big documents load whole, and nothing is
// fetched that drawing the document does not need.

#include "../common/datarows.h"
#include "../common/enginetest.h"
#include "../common/tinyhttpserver.h"

#include "commands/commandtables.h"
#include "commands/selectionstate.h"
#include "platform/scintilla/sourceeditor.h"
#include "platform/webengine/adapteroperations.h"
#include "platform/webengine/scriptsource.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QImage>
#include <QLoggingCategory>
#include <QNetworkProxy>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>
#include <QUrl>
#include <QWebEnginePage>
#include <QWebEngineScript>

using namespace Vantry;
using namespace Qt::StringLiterals;
using VantryTest::adapterValue;
using VantryTest::fontDivision;
using VantryTest::surfaceOf;

namespace {

// Hints that would fetch as images, sheets or fonts do, written as the serialiser writes them.
const QStringList hintLinks{
    u"<link rel=\"preload\" as=\"image\" href=\"hint.png\">"_s,
    u"<link rel=\"preload\" as=\"style\" href=\"hint.css\">"_s,
    u"<link rel=\"preload\" as=\"font\" href=\"hint.woff2\" crossorigin=\"\">"_s,
    u"<link as=\"fetch\" href=\"hint.json\" rel=\"Preload  &amp;\">"_s,
    u"<link rel=\"prerender\" href=\"hint.html\">"_s,
    u"<link rel=\"icon\" href=\"hint.ico\">"_s,
};

QString pngIn(const QTemporaryDir &dir)
{
    QImage image(12, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QString path = dir.filePath(u"pic.png"_s);
    return image.save(path) ? path : QString();
}

} // namespace

class tst_DesignSurface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_editor = std::make_unique<HTMLEditorComponent>();
        m_editor->resize(800, 600);
        m_editor->show();
        QVERIFY(VantryTest::waitUntilReady(*m_editor));
    }

    void init()
    {
        m_editor->InitProperties();
        m_editor->setBaseURL(QString());
    }

    // Nothing in a document runs, nor does a click on a link go anywhere; JavaScript is off in
    // the main world, so the adapter cannot be seen there. The scripts stay, inert, not lost.
    void documentsAreInert()
    {
        load(u"<html><head><title>inert</title><script>document.title = 'ran';</script></head>"
             "<body onload=\"document.body.setAttribute('data-onload', '1')\">"
             "<p><a href=\"https://example.org/elsewhere\">a long link text to click on</a></p>"
             "<script>document.body.setAttribute('data-inline', '1');</script>"
             "<img src=\"missing-image.png\" "
             "onerror=\"document.body.setAttribute('data-error', '1')\">"
             "<iframe srcdoc=\"<script>parent.document.title='frame'</script>\"></iframe>"
             "</body></html>"_s);
        auto *surface = surfaceOf(*m_editor);
        const QUrl before = surface->page()->url();
        const QRectF link = surface->boundingRect(surface->elementsByTagName(u"A"_s).value(0));
        QVERIFY(link.width() > 0);
        QWidget *target = VantryTest::inputOf(*surface);
        const QPoint at = link.center().toPoint();
        QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseClick(target, Qt::LeftButton, Qt::ControlModifier, at);
        QTest::mouseClick(target, Qt::MiddleButton, Qt::NoModifier, at);
        // Anything that would run has the chance to do so, and ends the wait when it does.
        const Platform::Element body = surface->body();
        const auto ran = [&] {
            for (const char *name : {"data-onload", "data-inline", "data-error"}) {
                if (!surface->attribute(body, QLatin1String(name)).isEmpty())
                    return true;
            }
            return m_editor->PageTitle() != QLatin1String("inert")
                || surface->page()->url() != before;
        };
        QVERIFY(!QTest::qWaitFor(ran, 500));

        QVariant mainWorld = u"unset"_s;
        bool answered = false;
        surface->page()->runJavaScript(
            u"typeof window.__vantry"_s, QWebEngineScript::MainWorld, [&](const QVariant &value) {
                mainWorld = value;
                answered = true;
            });
        QTRY_VERIFY(answered);
        QVERIFY(mainWorld.toString() != QLatin1String("object"));

        m_editor->setReturnFullDocument(true);
        const QString html = m_editor->GetHtmlSource();
        QVERIFY(html.contains(u"document.title = 'ran';"_s));
        QVERIFY(html.contains(u"link text to click on"_s));
    }

    void baseUrlResolvesImagesButNeverLeaks_data()
    {
        columns<bool, bool>("fullDocument", "wholeDocumentText");
        row("body out, whole document in", false, true);
        row("full out, fragment in", true, false);
    }

    void baseUrlResolvesImagesButNeverLeaks()
    {
        auto [fullDocument, wholeDocumentText]
            = fetch<bool, bool>("fullDocument", "wholeDocumentText");

        QTemporaryDir dir;
        QVERIFY(!pngIn(dir).isEmpty());

        const QString base = QUrl::fromLocalFile(dir.path() + QLatin1Char('/')).toString();
        m_editor->setBaseURL(base);
        m_editor->setReturnFullDocument(fullDocument);
        const QString body = u"<p>picture <img src=\"pic.png\" alt=\"pic\"></p>"_s;
        load(wholeDocumentText
                ? u"<html><head><title>t</title></head><body>"_s + body + u"</body></html>"_s
                : body);

        QTRY_VERIFY_WITH_TIMEOUT(
            [&] {
                const QVariantList images = adapterValue(*m_editor, u"images"_s).toList();
                return images.size() == 1 && images.first().toMap().value(u"loaded"_s).toBool();
            }(),
            10000);

        const QString html = m_editor->GetHtmlSource();
        QVERIFY2(!html.contains(u"<base"_s, Qt::CaseInsensitive), qPrintable(html));
        QVERIFY2(!html.contains(u"data-vantry"_s), qPrintable(html));
        QVERIFY(html.contains(u"src=\"pic.png\""_s));

        // Changing the address follows at once, and clearing it removes the editor's tag.
        m_editor->setBaseURL(QString());
        QCOMPARE(adapterValue(*m_editor, u"editorBaseUrl"_s).toString(), QString());
    }

    void wholeDocumentsReadBackWhole_data()
    {
        // base: the editor's BaseURL; front: what the whole read starts with; head: what stands
        // before its end.
        columns<QString, QString, QString, QString, QStringList>(
            "base", "document", "body", "front", "head");
        const QString rest = u"<head><title>T</title></head><body><p>body text</p></body></html>"_s;
        const QString body = u"<p>body text</p>"_s;
        const QStringList title{u"<title>T</title>"_s};
        const QString rich = u"<h1 class=\"title\" id=\"top\">Heading &amp; more</h1>"
                             "<p style=\"color: red;\" data-x=\"1\">Some <b>bold</b> and "
                             "<i>italic</i> text&nbsp;here.</p><table border=\"1\"><tbody><tr>"
                             "<td colspan=\"2\">cell</td></tr></tbody></table>"
                             "<!-- a comment --><ul><li>one</li><li>two</li></ul>"_s;
        const QStringList head{u"<title>T</title>"_s,
            u"<meta name=\"description\" content=\"about\">"_s,
            u"<link rel=\"icon\" href=\"favicon.ico\">"_s, u"href=\"main.css\""_s,
            u"<style>p { margin: 0; }</style>"_s};
        row("head and body", QString(),
            u"<html><head><title>T</title><meta name=\"description\" content=\"about\">"
            "<link rel=\"icon\" href=\"favicon.ico\"><link rel=\"stylesheet\" href=\"main.css\">"
            "<style>p { margin: 0; }</style></head><body>"_s
                + rich + u"</body></html>"_s,
            rich, "<html><head>", head);
        // What the editor hands the surface: its BASE tag in front of the HTML start tag.
        row("editor's base in front", "file:///site/", u"<html>"_s + rest, body,
            "<HTML><head><title>T</title>", title);
        row("xml declaration", QString(),
            u"<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<html>"_s + rest, body,
            "<?xml version=\"1.0\" encoding=\"utf-8\"?><html>", title);
        row("comment", QString(), u"<!-- saved by hand --><html lang=\"en\">"_s + rest, body,
            "<!-- saved by hand --><html lang=\"en\">", title);
        row("conditional comments", QString(),
            u"<!DOCTYPE html>\n<!--[if lt IE 7]> <html class=\"no-js ie6 oldie\"> "
            "<![endif]-->\n<!--[if gt IE 8]><!--> <html class=\"no-js\"> <!--<![endif]-->"_s
                + rest,
            body,
            "<!DOCTYPE html><!--[if lt IE 7]> <html class=\"no-js ie6 oldie\"> <![endif]-->"
            "<!--[if gt IE 8]><!--><html class=\"no-js\"><!--<![endif]--><head>",
            title);
    }

    void wholeDocumentsReadBackWhole()
    {
        auto [base, document, body, front, head]
            = fetch<QString, QString, QString, QString, QStringList>(
                "base", "document", "body", "front", "head");
        m_editor->setBaseURL(base);
        load(document);
        if (!base.isEmpty()) {
            QVERIFY(m_editor->SetHtmlSource().startsWith(
                fontDivision + u"<BASE HREF=\"%1\"><HTML>"_s.arg(base)));
        }
        QCOMPARE(m_editor->GetHtmlSource(), fontDivision + body + u"</div>"_s);
        QCOMPARE(m_editor->PageTitle(), u"T"_s);

        m_editor->setReturnFullDocument(true);
        const QString html = m_editor->GetHtmlSource();
        QVERIFY2(html.startsWith(front), qPrintable(html));
        const qsizetype headEnd = html.indexOf(u"</head>"_s, 0, Qt::CaseInsensitive);
        for (const QString &part : std::as_const(head))
            QVERIFY2(html.left(headEnd).contains(part), qPrintable(html));
        QVERIFY2(html.mid(headEnd).startsWith(
                     u"</HEAD><body>"_s + fontDivision + body + u"</div></body></html>"_s),
            qPrintable(html));
    }

    void documentsOwnBaseEndsWithIt()
    {
        // Settings reset without side effects leave BaseURL empty: the old address is no
        // longer the editor's.
        m_editor->setBaseURL(u"file:///old/"_s);
        m_editor->InitProperties();
        m_editor->setReturnFullDocument(true);
        load(u"<html><head><title>T</title></head><body><p>x</p></body></html>"_s);
        QVERIFY2(!m_editor->GetHtmlSource().contains(u"file:///old/"_s),
            qPrintable(m_editor->GetHtmlSource()));

        // A page saved with the editor's BASE in front of its root, opened while BaseURL is
        // empty: the address is the page's own, and the next page must not inherit it.
        QTemporaryDir dir;
        QVERIFY(!pngIn(dir).isEmpty());
        const QString own = QUrl::fromLocalFile(dir.path() + QLatin1Char('/')).toString();
        load(u"<BASE HREF=\""_s + own
            + QStringLiteral("\"><HTML><head><title>A</title></head>"
                             "<body><p><img src=\"pic.png\"></p></body></HTML>"));
        QCOMPARE(imageUrl(), own + u"pic.png"_s);

        load(QStringLiteral("<html><head><title>B</title></head>"
                            "<body><p><img src=\"pic.png\"></p></body></html>"));
        QVERIFY2(!imageUrl().startsWith(own), qPrintable(imageUrl()));
        const QString html = m_editor->GetHtmlSource();
        QVERIFY2(!html.contains(u"<base"_s, Qt::CaseInsensitive), qPrintable(html));
        QCOMPARE(adapterValue(*m_editor, u"editorBaseUrl"_s).toString(), QString());
    }

    void loadIsCompleteWhileASheetHangs_data()
    {
        columns<bool, QString, QString>("fullDocument", "text", "expected");
        const QString link = u"<link rel=\"stylesheet\" href=\"%1\">"_s;
        const QString body = u"<p>after the link</p>"_s;
        // The exchange moves style-sheet links to the end of the head.
        const QString headEnd = u"<LINK href=\"%1\" rel=\"StyleSheet\"></HEAD><body>"_s;
        row("fragment", false, link + body, QString(fontDivision + body + u"</div>"_s));
        row("document, link in head", true,
            QString(u"<html><head>"_s + link + u"</head><body>"_s + body + u"</body></html>"_s),
            QString(headEnd + fontDivision + body + u"</div></body>"_s));
        row("document, link in body", true,
            QString(u"<html><head></head><body>"_s + link + body + u"</body></html>"_s),
            QString(headEnd + fontDivision + body + u"</div></body>"_s));
    }

    void loadIsCompleteWhileASheetHangs()
    {
        auto [fullDocument, text, expected]
            = fetch<bool, QString, QString>("fullDocument", "text", "expected");

        // Accepts the request for the sheet and never answers it.
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        int requests = 0;
        connect(&server, &QTcpServer::newConnection, this, [&] {
            while (server.hasPendingConnections()) {
                server.nextPendingConnection();
                ++requests;
            }
        });
        const QString sheet = u"http://127.0.0.1:%1/slow.css"_s.arg(server.serverPort());
        text = text.arg(sheet);
        expected.replace(u"%1"_s, sheet);

        m_editor->setReturnFullDocument(fullDocument);
        QString html, plain;
        const auto connection
            = connect(m_editor.get(), &HTMLEditorComponent::DocumentLoaded, this, [&] {
                  html = m_editor->GetHtmlSource();
                  plain = m_editor->GetPlainText();
              });
        load(text);
        disconnect(connection);
        QVERIFY2(html.contains(expected), qPrintable(html));
        QVERIFY2(plain.contains(u"after the link"_s), qPrintable(plain));
        // The sheet was asked for: the load went past it without waiting.
        QTRY_VERIFY(requests > 0);
    }

    void twentyMegabyteDocumentRoundTrips()
    {
        QString body;
        body.reserve(21 * 1024 * 1024);
        int paragraphs = 0;
        while (body.size() < 20 * 1024 * 1024) {
            body += QStringLiteral("<p id=\"p%1\">Paragraph %1 with some <b>bold</b> words and "
                                   "enough text to fill a line of the page.</p>")
                        .arg(paragraphs);
            ++paragraphs;
        }
        m_editor->setPreserveWhiteSpace(true);
        load(body);
        const QString html = m_editor->GetHtmlSource();
        QVERIFY(html.contains(body));
        QVERIFY(html.endsWith(u"</p></div>"_s));
    }

    void failedCallsLeaveATrace_data()
    {
        columns<QString, int, int, QString>("operation", "timeout", "level", "trace");
        row("refused by the adapter", "noSuchOperation", 10000, int(QtDebugMsg),
            "^noSuchOperation failed: ");
        row("no answer in time", "busy", 50, int(QtWarningMsg), "^busy timed out");
    }

    void failedCallsLeaveATrace()
    {
        auto [operation, timeout, level, trace]
            = fetch<QString, int, int, QString>("operation", "timeout", "level", "trace");

        load(u"<p>text</p>"_s);
        QLoggingCategory::setFilterRules(u"vantry.bridge.debug=true"_s);
        const auto restore
            = qScopeGuard([] { QLoggingCategory::setFilterRules(u"vantry.*.debug=false"_s); });
        QTest::ignoreMessage(QtMsgType(level), QRegularExpression(trace));
        QVERIFY(!surfaceOf(*m_editor)->call(operation, {}, std::chrono::milliseconds(timeout)).ok);
    }

    void onlyWhatRenderingNeedsIsFetched()
    {
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        VantryTest::TinyHttpServer site;
        VantryTest::TinyHttpServer elsewhere;
        QVERIFY(site.start());
        QVERIFY(elsewhere.start());
        site.serve(u"/style.css"_s, {"text/css", "p { color: red }"});
        const QString other = elsewhere.url(QString());
        m_editor->setBaseURL(site.url(u"/"_s));
        m_editor->setReturnFullDocument(true);
        load(QStringLiteral("<html><head>"
                            "<link rel=\"stylesheet\" href=\"style.css\">"
                            "%2"
                            "<link rel=\"prefetch\" href=\"next.html\">"
                            "<link rel=\"preload\" as=\"script\" href=\"app.js\">"
                            "<link rel=\"modulepreload\" href=\"module.js\">"
                            "<link rel=\"dns-prefetch\" href=\"%1\">"
                            "<link rel=\"preconnect\" href=\"%1\">"
                            "<script src=\"inert.js\"></script>"
                            "</head><body><p>text</p><img src=\"shown.png\"></body></html>")
                 .arg(other, hintLinks.join(QString())));

        QTRY_VERIFY_WITH_TIMEOUT(
            site.requests.contains(u"/style.css"_s) && site.requests.contains(u"/shown.png"_s),
            10000);
        // Whatever else was coming has the time to arrive.
        QVERIFY(!QTest::qWaitFor(
            [&] { return site.requests.size() > 2 || elsewhere.connections > 0; }, 500));
        QStringList requests = site.requests;
        requests.sort();
        QCOMPARE(requests, (QStringList{u"/shown.png"_s, u"/style.css"_s}));
        QCOMPARE(elsewhere.connections, 0);
        QCOMPARE(elsewhere.requests, QStringList());

        // The hints are kept as written, on every way out.
        auto *surface = surfaceOf(*m_editor);
        const QString head = surface->innerHTML(surface->head());
        const QString html = m_editor->GetHtmlSource();
        for (const QString &link : hintLinks) {
            QVERIFY2(html.contains(link), qPrintable(html));
            QVERIFY2(head.contains(link), qPrintable(head));
        }
        const Platform::Element hint = surface->elementsByTagName(u"link"_s).value(1);
        QCOMPARE(surface->outerHTML(hint), hintLinks.first());
        QCOMPARE(surface->attribute(hint, u"rel"_s), u"preload"_s);
    }

    void hintsAddedLaterFetchNothing_data()
    {
        QTest::addColumn<QString>("way");
        row("InsertHTML", "insert");
        row("inner HTML by handle", "inner");
        row("attributes by handle", "attributes");
        row("source view", "source");
    }

    // Markup added by editing is held to what rendering needs as a loaded document is; the image
    // beside the hint shows when the hint would have gone out.
    void hintsAddedLaterFetchNothing()
    {
        const QString way = std::get<0>(fetch<QString>("way"));
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        VantryTest::TinyHttpServer site;
        QVERIFY(site.start());
        m_editor->setBaseURL(site.url(u"/"_s));
        load(u"<p>one XX two</p>"_s);
        auto *surface = surfaceOf(*m_editor);
        const QString link = u"<link as=\"image\" rel=\"preload\" href=\"late.png\">"_s;
        const QString added = u"<b>added</b>"_s + link + u"<img src=\"shown.png\">"_s;

        if (way == QLatin1String("source")) {
            m_editor->ToggleDesignSourceView(u"source"_s);
            auto *source = m_editor->findChild<Platform::SourceEditor *>();
            QVERIFY(source);
            source->setText(source->text().replace(u"XX"_s, added));
            m_editor->ToggleDesignSourceView(u"design"_s);
        } else if (way == QLatin1String("attributes")) {
            const Platform::Element p = surface->elementsByTagName(u"p"_s).value(0);
            const Platform::Element late = surface->createElement(u"link"_s);
            surface->setAttribute(late, u"as"_s, u"image"_s);
            surface->setAttribute(late, u"rel"_s, u"preload"_s);
            surface->setAttribute(late, u"href"_s, u"late.png"_s);
            const Platform::Element image = surface->createElement(u"img"_s);
            surface->setAttribute(image, u"src"_s, u"shown.png"_s);
            QVERIFY(surface->appendChild(p, late) && surface->appendChild(p, image));
        } else if (way == QLatin1String("inner")) {
            const Platform::Element p = surface->elementsByTagName(u"p"_s).value(0);
            QVERIFY(surface->setInnerHTML(p, u"one "_s + added + u" two"_s));
        } else {
            QVERIFY(adapterValue(*m_editor, u"selectBetween"_s, {u"XX"_s, u"XX"_s}).toBool());
            m_editor->InsertHTML(added);
        }

        QTRY_VERIFY_WITH_TIMEOUT(site.requests.contains(u"/shown.png"_s), 10000);
        QVERIFY(!QTest::qWaitFor([&] { return site.requests.size() > 1; }, 300));
        QCOMPARE(site.requests, QStringList{u"/shown.png"_s});
        const QString html = m_editor->GetHtmlSource();
        QVERIFY2(html.contains(link), qPrintable(html));
    }

    // While the channel delivers a notification the engine cannot answer, a call made then
    // fails at once. On a real display the engine may hold its answers back while a local loop
    // waits for one, right after the document takes the focus: a refresh that waited froze the
    // window for the whole bound. The toolbar follows the selection without any loop waiting,
    // and a host that reads the document from the state signal gets its answer at once.
    void nothingWaitsForTheEngineOnANotification()
    {
        load(u"<p>lorem <b>ipsum</b></p>"_s);
        auto *surface = surfaceOf(*m_editor);
        auto *notifier = surface->findChild<Platform::SurfaceNotifier *>();
        QVERIFY(notifier);
        qint64 callTook = -1;
        const auto delivery = connect(
            notifier, &Platform::SurfaceNotifier::notified, this,
            [&](const QString &kind) {
                if (kind != QLatin1String("displayChanged") || callTook >= 0)
                    return;
                QElapsedTimer clock;
                clock.start();
                QVERIFY(!surface->call(u"title"_s).ok);
                callTook = clock.elapsed();
            },
            Qt::DirectConnection);
        bool boldPressed = false;
        bool reading = false;
        qint64 readTook = -1;
        connect(m_editor.get(), &HTMLEditorComponent::CurrentSelectionStateChange, this,
            [&](QString &key, bool &, bool &pressed) {
                if (key != QLatin1String("Bold"))
                    return;
                boldPressed = pressed;
                if (readTook >= 0)
                    return;
                QElapsedTimer clock;
                clock.start();
                reading = true;
                QVERIFY(m_editor->GetHtmlSource().contains(QLatin1String("ipsum")));
                reading = false;
                readTook = clock.elapsed();
            });
        QVERIFY(adapterValue(*m_editor, u"selectBetween"_s, {u"ipsum"_s, u"ipsum"_s}).toBool());

        int deepestWait = 0;
        // The host's own read waits, as every read does; nothing else may.
        const auto watch = connect(QAbstractEventDispatcher::instance(),
            &QAbstractEventDispatcher::aboutToBlock, this, [&deepestWait, &reading] {
                if (!reading)
                    deepestWait = std::max(deepestWait, QThread::currentThread()->loopLevel());
            });
        QTRY_VERIFY_WITH_TIMEOUT(boldPressed && callTook >= 0, 15000);
        disconnect(watch);
        disconnect(delivery);
        disconnect(m_editor.get(), nullptr, this, nullptr);
        QCOMPARE(deepestWait, 0);
        // Far below the bridge's bound: a freeze detector, not a measurement.
        QVERIFY2(callTook < 2000, qPrintable(u"the call waited %1 ms"_s.arg(callTook)));
        QVERIFY2(readTook >= 0 && readTook < 2000, qPrintable(QString::number(readTook)));
    }

    // Every operation name and command id the C++ side sends is one the loaded adapter offers.
    void adapterOffersWhatTheSurfaceCalls()
    {
        const QStringList operations = adapterValue(*m_editor, u"operationNames"_s).toStringList();
        for (const QLatin1StringView name : Platform::AdapterOperation::all)
            QVERIFY2(operations.contains(name), name.data());

        const QVariantList commands = adapterValue(*m_editor, u"commandIds"_s).toList();
        QList<int> used = Commands::SelectionState::queriedCommands();
        for (int number = 1; number <= 56; ++number) {
            // Commands that prompt open our own dialogs instead.
            const Commands::CommandEntry entry = Commands::commandEntry(Commands::Command(number));
            if (entry.option != Platform::DesignSurface::OptionPromptUser)
                used.append(entry.platformCommand);
        }
        for (const int id : std::as_const(used))
            QVERIFY2(id == 0 || commands.contains(id), qPrintable(QString::number(id)));
    }

    void compactScript_data()
    {
        VantryTest::columns<QString, QString>("source", "expected");
        VantryTest::row("comment lines and blanks go",
            "  // why\n    let a = 1;\n\n  f(a); // kept\n", "let a = 1;\nf(a); // kept\n");
        VantryTest::row("slashes in strings stay", "    s = 'http://x';\n", "s = 'http://x';\n");
        const char *literal = "let css = `\n  // not a comment\n    a { }\n`;\n";
        VantryTest::row("template literal keeps its lines", literal, literal);
        const char *continued = "let s = 'a \\\n    b';\n";
        VantryTest::row("continued string keeps its blanks", continued, continued);
    }

    void compactScript()
    {
        const auto [source, expected] = VantryTest::fetch<QString, QString>("source", "expected");
        QCOMPARE(Platform::compactScript(source), expected);
    }

private:
    void load(const QString &html)
    {
        m_editor->setSetHtmlSource(html);
        QVERIFY(!surfaceOf(*m_editor)->lastCallFailed());
    }

    QString imageUrl()
    {
        const QVariantList images = adapterValue(*m_editor, u"images"_s).toList();
        return images.size() == 1 ? images.first().toMap().value(u"url"_s).toString() : QString();
    }

    std::unique_ptr<HTMLEditorComponent> m_editor;
};

QTEST_MAIN(tst_DesignSurface)
#include "tst_designsurface.moc"
