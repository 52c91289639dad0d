// The link and page dialogs without an engine: the host's XML lists, targets and
// references, the page-property orders, and the link dialog's lists, messages and answer.

#include "../common/datarows.h"
#include "../common/recordingprompts.h"

#include "dialogs/linklists.h"
#include "dialogs/linkpropertiesdialog.h"
#include "dialogs/pagerules.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTest>

using namespace Vantry;
using namespace Vantry::Dialogs;
using VantryTest::RecordingPrompts;
using namespace Qt::StringLiterals;

namespace {

const QString sites
    = QStringLiteral("<Sites><Site ArticleSiteID=\"3\" ArticleSiteName=\"Main\"/>"
                     "<Site ArticleSiteID=\"70000\" ArticleSiteName=\"Archive\"/></Sites>");
const QString pages = QStringLiteral(
    "<Pages><P ArticleSiteID=\"3\" ArticleSectionID=\"11\" ArticleSectionName=\"News\" "
    "PageURL=\"/news.html\"/><P ArticleSiteID=\"4\" ArticleSectionID=\"12\" "
    "ArticleSectionName=\"Other\" PageURL=\"/other.html\"/><P ArticleSiteID=\"3\" "
    "ArticleSectionID=\"13\" ArticleSectionName=\"Jobs\" PageURL=\"/jobs.html\"/></Pages>");
const QString portal
    = QStringLiteral("<Page PortalPageID=\"5\" PortalPageName=\"Home\" PageURL=\"/home\"/>"
                     "<Page PortalPageID=\"7\" PortalPageName=\"Shop\" PageURL=\"/shop\"/>");

} // namespace

class tst_LinkPageDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void xmlLists_data()
    {
        columns<int, QString, QString, QStringList, QStringList, int, QString>(
            "kind", "xml", "currentId", "entries", "addresses", "current", "error");
        const int s = int(LinkListKind::Sites);
        const int p = int(LinkListKind::Pages);
        const int o = int(LinkListKind::PortalPages);
        row("sites, 32-bit current", s, sites, u"70000"_s,
            QStringList{u"Select a Site -->"_s, u"Main"_s, u"Archive"_s}, QStringList(3, QString()),
            2, "");
        row("pages of site 3", p, pages, u"13"_s,
            QStringList{u"Select a page -->"_s, u"News"_s, u"Jobs"_s},
            QStringList{u""_s, u"/news.html"_s, u"/jobs.html"_s}, 2, "");
        row("portal, bare siblings", o, portal, u"7"_s,
            QStringList{u"Select a portal page -->"_s, u"Home"_s, u"Shop"_s},
            QStringList{u""_s, u"/home"_s, u"/shop"_s}, 2, "");
        row("no current", o, portal, "x", QStringList{}, QStringList{}, 0, "");
        row("pages, bare siblings", p, "<P ArticleSiteID=\"3\"/><P ArticleSiteID=\"3\"/>", "",
            QStringList{}, QStringList{}, 0,
            u"Could not read the content pages (line 1, column 44): Extra content at end of "
            u"document."_s);
        row("section 40000", p,
            "<Pages>\n<P ArticleSiteID=\"3\" ArticleSectionID=\"40000\"/></Pages>", "",
            QStringList{}, QStringList{}, 0,
            u"Could not read the content pages (line 2, column 47): ArticleSectionID \"40000\" is "
            u"not an identifier this list can hold."_s);
        row("site 40000 of a page", p,
            "<Pages><P ArticleSiteID=\"40000\" "
            "ArticleSectionID=\"1\"/></Pages>",
            "", QStringList{}, QStringList{}, 0,
            u"Could not read the content pages (line 1, column 54): ArticleSiteID \"40000\" is "
            u"not an identifier this list can hold."_s);
        row("unclosed site", s, "<Sites><Site ArticleSiteID=\"1\">", "", QStringList{},
            QStringList{}, 0,
            u"Could not read the content sites (line 1, column 31): Premature end of "
            u"document."_s);
    }

    void xmlLists()
    {
        auto [kind, xml, currentId, entries, addresses, current, error]
            = fetch<int, QString, QString, QStringList, QStringList, int, QString>(
                "kind", "xml", "currentId", "entries", "addresses", "current", "error");
        const auto listKind = LinkListKind(kind);
        const LinkListLoad load = loadLinkList(listKind, xml, currentId, 3);
        if (!error.isEmpty()) {
            QVERIFY(!load.list);
            QCOMPARE(load.error.message(listKind), error);
            return;
        }
        QVERIFY(load.list);
        if (!entries.isEmpty()) {
            QCOMPARE(load.list->names, entries);
            QCOMPARE(load.list->addresses, addresses);
        }
        QCOMPARE(load.list->current, current);
    }

    void targets_data()
    {
        columns<QString, QStringList>("host", "targets");
        const QStringList standard{u"_blank"_s, u"_parent"_s, u"_self"_s, u"_top"_s};
        row("none", u""_s, standard);
        row("separated", u" main; side,\nfooter "_s,
            QStringList{u"main"_s, u"side"_s, u"footer"_s});
        row("elements", u"<T Target=\"main\"/><T Name=\"side\"/><T>footer</T>"_s,
            QStringList{u"main"_s, u"side"_s, u"footer"_s});
        row("malformed elements", u"<T Target=\"main\">"_s, standard);
    }

    void targets()
    {
        auto [host, targets] = fetch<QString, QStringList>("host", "targets");
        QCOMPARE(linkTargets(host), targets);
    }

    void linkReferences()
    {
        LinkPropertiesValues values;
        readLinkReference(u"cms:3:13"_s, values);
        QCOMPARE(values.LinkOption, int(LinkPropertiesValues::LinkContentPage));
        readLinkReference(u"portal:7"_s, values);
        QCOMPARE(values.PortalPageID, u"7"_s);
        QCOMPARE(linkReference(values), u"portal:7"_s);
        readLinkReference(u"page:7"_s, values);
        QCOMPARE(linkReference(values), QString());
    }

    void pageOrders()
    {
        QCOMPARE(pageReadAttributes(),
            (QStringList{u"background"_s, u"bgColor"_s, u"Text"_s, u"link"_s, u"vLink"_s,
                u"aLink"_s, u"leftMargin"_s, u"topMargin"_s, u"bottomMargin"_s, u"rightMargin"_s}));
        PagePropertiesValues values;
        QList<std::optional<QString>> read;
        for (int i = 0; i < 10; ++i)
            read.append(i == 2 ? std::nullopt : std::optional(QString::number(i)));
        fillPageValues(values, read, u"T"_s);
        QCOMPARE((QStringList{values.BackgroundImage, values.Title, values.TextColor,
                     values.LinkColor, values.BottomMargin, values.RightMargin}),
            (QStringList{u"0"_s, u"T"_s, QString(), u"3"_s, u"8"_s, u"9"_s}));

        QStringList written;
        for (const PageEdit &edit : pageEdits(values))
            written.append(edit.attribute + QLatin1Char('=') + edit.value.value_or(u"-"_s));
        QCOMPARE(written,
            (QStringList{u"bgColor=1"_s, u"Text=-"_s, u"link=3"_s, u"vLink=4"_s, u"aLink=5"_s,
                u"leftMargin=6"_s, u"topMargin=7"_s, u"bottomMargin=8"_s, u"rightMargin=9"_s,
                u"background=0"_s}));

        QCOMPARE(documentPropertyAttribute(u"DocumentvLinkColor"_s), u"vLink"_s);
        QCOMPARE(documentPropertyAttribute(u"DocumentForegroundColor"_s), u"Text"_s);
        QCOMPARE(documentPropertyAttribute(u"DocumentVLinkColor"_s), QString());
    }

    void linkDialogOpensOnTheLinkedPageAndValidates_data()
    {
        columns<int, QString, QString>("kind", "message", "url");
        row("portal at its prompt", 2, "Please select a Portal Page.", "");
        row("no site", 1, "Please select a CMS Site.", "");
        row("site, no page", -1, "Please select a CMS Page.", "");
        row("page", 1, "", "/jobs.html");
    }

    // The dialog opens on the linked page (site 3, page 13); each row then undoes part of the
    // choice and presses OK.
    void linkDialogOpensOnTheLinkedPageAndValidates()
    {
        auto [kind, message, url] = fetch<int, QString, QString>("kind", "message", "url");
        m_prompts.shown.clear();
        LinkPropertiesDialog dialog([this]() -> UserPrompts & { return m_prompts; });
        LinkPropertiesValues values;
        values.ContentSites = sites;
        values.ContentPages = pages;
        values.PortalPages = portal;
        values.Targets = linkTargets(QString());
        readLinkReference(u"cms:3:13"_s, values);
        values.URL = u"/jobs.html"_s;
        values.Target = u"main"_s;
        dialog.setValues(values);
        QCOMPARE(dialog.sites()->currentText(), u"Main"_s);
        QCOMPARE(dialog.pages()->currentText(), u"Jobs"_s);
        QCOMPARE(dialog.portalPages()->count(), 3);

        if (kind == 1 && !message.isEmpty())
            dialog.sites()->setCurrentIndex(0);
        if (kind == -1)
            dialog.pages()->setCurrentIndex(0);
        dialog.setLinkOption(qAbs(kind));
        dialog.accept();
        QCOMPARE(m_prompts.texts(RecordingPrompts::Kind::Information),
            message.isEmpty() ? QStringList{} : QStringList{message});
        QCOMPARE(
            dialog.result(), message.isEmpty() ? int(QDialog::Accepted) : int(QDialog::Rejected));
        if (message.isEmpty()) {
            const LinkPropertiesValues answer = dialog.values();
            QCOMPARE(answer.URL, url);
            QCOMPARE(linkReference(answer), u"cms:3:13"_s);
            QCOMPARE(answer.Target, u"main"_s);
        }
    }

    void malformedListKeepsTheListAndSaysWhy()
    {
        m_prompts.shown.clear();
        LinkPropertiesDialog dialog([this]() -> UserPrompts & { return m_prompts; });
        LinkPropertiesValues values;
        values.PortalPages = u"<Page PortalPageID=\"5\">"_s;
        values.ContentSites = sites;
        values.URL = u"HTTP://example.org/"_s;
        dialog.setValues(values);
        QCOMPARE(m_prompts.texts(RecordingPrompts::Kind::Information),
            QStringList{
                u"Could not read the portal pages (line 1, column 29): Opening and ending tag "
                u"mismatch."_s});
        QCOMPARE(dialog.portalPages()->count(), 1);
        QCOMPARE(dialog.sites()->count(), 3);
        QCOMPARE(dialog.prefix()->currentIndex(), 0);
        QCOMPARE(dialog.address()->text(), u"example.org/"_s);
        QCOMPARE(dialog.values().URL, u"http://example.org/"_s);
    }

private:
    RecordingPrompts m_prompts;
};

QTEST_MAIN(tst_LinkPageDialogs)
#include "tst_linkpagedialogs.moc"
