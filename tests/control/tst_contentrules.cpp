#include "../common/datarows.h"

#include "control/contentrules.h"

#include <QTest>

#include <functional>

using namespace Vantry::Control::ContentRules;
using namespace Qt::StringLiterals;

namespace {

using Rule = std::function<QString(const QString &)>;

const QString siteUrl = u"file:///C:/site/"_s;
const QString siteBase = u"<BASE HREF=\"file:///C:/site/\">"_s;
const QString sheetLinks = u"<LINK rel=\"stylesheet\" href=\"site.css\">"_s;
const QString defaultDiv = u"<div style=\"FONT-FAMILY:arial;COLOR:#000000;FONT-SIZE:10pt\">"_s;

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
            return wrapInDefaultFont(text, u"arial"_s, u"#000000"_s, u"10pt"_s);
        };
        row("wrap: text", wrap, "Hello", defaultDiv + u"Hello</div>"_s);
        row("wrap: empty", wrap, QString(), defaultDiv + u"&nbsp;</div>"_s);

        const Rule insert = [](const QString &text) { return insertBase(text, siteUrl); };
        row("insert: wrapped document", insert, defaultDiv + u"<html><body>x</body></html></div>"_s,
            defaultDiv + siteBase + u"<HTML><body>x</body></html></div>"_s);
        row("insert: fragment gets none", insert, "<p>x</p>", "<p>x</p>");
        row("insert: empty text", insert, QString(), siteBase);
        row("insert: old base replaced", insert, "<base href=\"http://old/\"><Html>x</html>",
            siteBase + u"<HTML>x</html>"_s);

        const Rule remove = [](const QString &text) { return removeBase(text, siteUrl); };
        row("remove: in front of HTML", remove, u"<div>"_s + siteBase + u"<HTML>x</html></div>"_s,
            "<div><HTML>x</html></div>");
        row("remove: same piece twice", remove, siteBase + u"<HTML>a"_s + siteBase + u"<html>b"_s,
            "<HTML>a<HTML>b");
        row("remove: HTML before BASE", remove, u"<HTML><HEAD>"_s + siteBase + u"</HEAD>"_s,
            u"<HTML><HEAD>"_s + siteBase + u"</HEAD>"_s);
        // Upper-casing ß gives SS; positions must still be those of the text itself.
        row("remove: text that grows when upper-cased", remove, u"ßß"_s + siteBase + u"<HTML>x"_s,
            "ßß<HTML>x");
        row("remove: no base URL",
            Rule([](const QString &text) { return removeBase(text, QString()); }),
            siteBase + u"<HTML>"_s, siteBase + u"<HTML>"_s);

        const Rule links
            = [](const QString &text) { return normaliseStyleSheetLinks(text, sheetLinks); };
        row("links: two in the body", links,
            "<html><head></head><body><link rel=\"stylesheet\" href=\"a.css\">x"
            "<link href=\"b.css\" rel=stylesheet>y</body></html>",
            u"<html><head>"_s + sheetLinks + u"</HEAD><body>xy</body></html>"_s);
        row("links: line break in front goes, lone feed stays", links,
            "<HEAD>\r\n<LINK REL=STYLESHEET HREF=a.css>\n"
            "<link rel=\"icon\" href=\"i.png\"></Head>",
            u"<HEAD>\n<link rel=\"icon\" href=\"i.png\">"_s + sheetLinks + u"</HEAD>"_s);
        row("links: repeated tag", links,
            "<link rel=stylesheet href=a.css>a\r\n"
            "<link rel=stylesheet href=a.css>b<link rel=stylesheet href=a.css>",
            "ab");
        row("links: pair joined by an earlier removal", links,
            "a\r<link rel=stylesheet>\n<link rel=stylesheet href=b>b", "ab");
        row("links: unclosed", links, "<head></head><link rel=stylesheet",
            u"<head>"_s + sheetLinks + u"</HEAD><link rel=stylesheet"_s);

        row("root path: backslashes, plain and doubled",
            Rule([](const QString &text) { return removeRootPath(text, u"C:\\site\\"_s); }),
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
            body += u"<P>Line\r\n<IMG src=\"C:\\site\\img\\"_s + QString::number(i)
                + u".gif\">\r\n<link rel=stylesheet href=s"_s + QString::number(i) + u".css></P>"_s;
        }
        const QString document = u"<html><head></head><body>"_s + body + u"</body></html>"_s;
        QVERIFY(document.size() > 4'000'000);

        const QString relative = removeRootPath(document, u"c:\\SITE\\"_s);
        QCOMPARE(relative.count(u"src=\"img\\"_s), paragraphs);

        const QString flat = removeLineBreaks(relative);
        QCOMPARE(flat.count(u'\r'), 0);

        const QString normalised = normaliseStyleSheetLinks(flat, sheetLinks);
        QCOMPARE(normalised.count(u"<link"_s, Qt::CaseInsensitive), 1);

        const QString replaced = ReplaceNoCase(normalised, u"<p>"_s, u"<p class=\"x\">"_s);
        QCOMPARE(replaced.count(u"<p class=\"x\">"_s), paragraphs);

        const QString withBase = insertBase(replaced, siteUrl);
        QVERIFY(withBase.startsWith(siteBase));
        QCOMPARE(removeBase(withBase, siteUrl).size(), replaced.size());
    }
};

QTEST_GUILESS_MAIN(TestContentRules)

#include "tst_contentrules.moc"
