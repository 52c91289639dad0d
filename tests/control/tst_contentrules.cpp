#include "../common/datarows.h"

#include "control/contentrules.h"

#include <QTest>

#include <functional>

using namespace Vantry::Control::ContentRules;

namespace {

using Rule = std::function<QString(const QString &)>;

const QString siteUrl = QStringLiteral("file:///C:/site/");
const QString siteBase = QStringLiteral("<BASE HREF=\"file:///C:/site/\">");
const QString sheetLinks = QStringLiteral("<LINK rel=\"stylesheet\" href=\"site.css\">");
const QString defaultDiv
    = QStringLiteral("<div style=\"FONT-FAMILY:arial;COLOR:#000000;FONT-SIZE:10pt\">");

} // namespace

class TestContentRules : public QObject
{
    Q_OBJECT

private slots:

    void replaceNoCase_data()
    {
        columns<QString, QString, QString, QString>("text", "find", "replacement", "expected");

        row("mixed case, rest kept", "<P>one</p><p>Two</P>", "<p>", "<div>",
            "<div>one</p><div>Two</P>");
        row("replacement holds the find text", "aAa", "a", "aa", "aaaaaa");
        row("no overlapping hits", "aaaaa", "aa", "b", "bba");
        row("beyond ASCII", "Ärger ärger", "ÄRGER", "x", "x x");
        row("empty find", "abc", QString(), "e", "abc");
    }

    void replaceNoCase()
    {
        auto [text, find, replacement, expected]
            = fetch<QString, QString, QString, QString>("text", "find", "replacement", "expected");

        QCOMPARE(ReplaceNoCase(text, find, replacement), expected);
    }

    void rules_data()
    {
        columns<Rule, QString, QString>("rule", "text", "expected");

        const Rule lineBreaks = [](const QString &text) { return removeLineBreaks(text); };
        row("line breaks: pair", lineBreaks, "a\r\nb", "ab");
        row("line breaks: lone ones kept", lineBreaks, "a\nb\rc\n\r", "a\nb\rc\n\r");
        // Removing the inner pair joins a new one, which stays.
        row("line breaks: one pass", lineBreaks, "a\r\r\n\nb", "a\r\nb");

        const Rule wrap = [](const QString &text) {
            return wrapInDefaultFont(
                text, QStringLiteral("arial"), QStringLiteral("#000000"), QStringLiteral("10pt"));
        };
        row("wrap: text", wrap, "Hello", defaultDiv + QStringLiteral("Hello</div>"));
        row("wrap: empty", wrap, QString(), defaultDiv + QStringLiteral("&nbsp;</div>"));

        const Rule insert = [](const QString &text) { return insertBase(text, siteUrl); };
        row("insert: wrapped document", insert,
            defaultDiv + QStringLiteral("<html><body>x</body></html></div>"),
            defaultDiv + siteBase + QStringLiteral("<HTML><body>x</body></html></div>"));
        row("insert: fragment gets none", insert, "<p>x</p>", "<p>x</p>");
        row("insert: empty text", insert, QString(), siteBase);
        row("insert: old base replaced", insert, "<base href=\"http://old/\"><Html>x</html>",
            siteBase + QStringLiteral("<HTML>x</html>"));

        const Rule remove = [](const QString &text) { return removeBase(text, siteUrl); };
        row("remove: in front of HTML", remove,
            QStringLiteral("<div>") + siteBase + QStringLiteral("<HTML>x</html></div>"),
            "<div><HTML>x</html></div>");
        row("remove: same piece twice", remove,
            siteBase + QStringLiteral("<HTML>a") + siteBase + QStringLiteral("<html>b"),
            "<HTML>a<HTML>b");
        row("remove: HTML before BASE", remove,
            QStringLiteral("<HTML><HEAD>") + siteBase + QStringLiteral("</HEAD>"),
            QStringLiteral("<HTML><HEAD>") + siteBase + QStringLiteral("</HEAD>"));
        // Upper-casing ß gives SS; positions must still be those of the text itself.
        row("remove: text that grows when upper-cased", remove,
            QStringLiteral("ßß") + siteBase + QStringLiteral("<HTML>x"), "ßß<HTML>x");
        row("remove: no base URL",
            Rule([](const QString &text) { return removeBase(text, QString()); }),
            siteBase + QStringLiteral("<HTML>"), siteBase + QStringLiteral("<HTML>"));

        const Rule links
            = [](const QString &text) { return normaliseStyleSheetLinks(text, sheetLinks); };
        row("links: two in the body", links,
            "<html><head></head><body><link rel=\"stylesheet\" href=\"a.css\">x"
            "<link href=\"b.css\" rel=stylesheet>y</body></html>",
            QStringLiteral("<html><head>") + sheetLinks
                + QStringLiteral("</HEAD><body>xy</body></html>"));
        row("links: line break in front goes, lone feed stays", links,
            "<HEAD>\r\n<LINK REL=STYLESHEET HREF=a.css>\n"
            "<link rel=\"icon\" href=\"i.png\"></Head>",
            QStringLiteral("<HEAD>\n<link rel=\"icon\" href=\"i.png\">") + sheetLinks
                + QStringLiteral("</HEAD>"));
        row("links: repeated tag", links,
            "<link rel=stylesheet href=a.css>a\r\n"
            "<link rel=stylesheet href=a.css>b<link rel=stylesheet href=a.css>",
            "ab");
        row("links: pair joined by an earlier removal", links,
            "a\r<link rel=stylesheet>\n<link rel=stylesheet href=b>b", "ab");
        row("links: unclosed", links, "<head></head><link rel=stylesheet",
            QStringLiteral("<head>") + sheetLinks + QStringLiteral("</HEAD><link rel=stylesheet"));

        row("root path: backslashes, plain and doubled", Rule([](const QString &text) {
            return removeRootPath(text, QStringLiteral("C:\\site\\"));
        }),
            "<img src=\"C:\\Site\\a.gif\"><script>s='c:\\\\site\\\\b.gif'</script>",
            "<img src=\"a.gif\"><script>s='b.gif'</script>");
    }

    void rules()
    {
        auto [rule, text, expected] = fetch<Rule, QString, QString>("rule", "text", "expected");

        QCOMPARE(rule(text), expected);
    }

    // Several megabytes with tens of thousands of hits: an implementation that moves the rest
    // of the text once per hit does not finish within the test time-out.
    void largeDocument()
    {
        constexpr int paragraphs = 50000;
        QString body;
        body.reserve(paragraphs * 120);
        for (int i = 0; i < paragraphs; ++i) {
            body += QStringLiteral("<P>Line\r\n<IMG src=\"C:\\site\\img\\") + QString::number(i)
                + QStringLiteral(".gif\">\r\n<link rel=stylesheet href=s") + QString::number(i)
                + QStringLiteral(".css></P>");
        }
        const QString document
            = QStringLiteral("<html><head></head><body>") + body + QStringLiteral("</body></html>");
        QVERIFY(document.size() > 4'000'000);

        const QString relative = removeRootPath(document, QStringLiteral("c:\\SITE\\"));
        QCOMPARE(relative.count(QStringLiteral("src=\"img\\")), paragraphs);

        const QString flat = removeLineBreaks(relative);
        QCOMPARE(flat.count(u'\r'), 0);

        const QString normalised = normaliseStyleSheetLinks(flat, sheetLinks);
        QCOMPARE(normalised.count(QStringLiteral("<link"), Qt::CaseInsensitive), 1);

        const QString replaced
            = ReplaceNoCase(normalised, QStringLiteral("<p>"), QStringLiteral("<p class=\"x\">"));
        QCOMPARE(replaced.count(QStringLiteral("<p class=\"x\">")), paragraphs);

        const QString withBase = insertBase(replaced, siteUrl);
        QVERIFY(withBase.startsWith(siteBase));
        QCOMPARE(removeBase(withBase, siteUrl).size(), replaced.size());
    }
};

QTEST_GUILESS_MAIN(TestContentRules)

#include "tst_contentrules.moc"
