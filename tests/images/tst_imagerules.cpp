#include "../common/datarows.h"

#include "dialogs/imagemarkup.h"
#include "images/imagenames.h"

#include <QDir>
#include <QTest>

using namespace Vantry;
using namespace Qt::StringLiterals;
using RollOver = ImageDialogValues::RollOver;

class tst_ImageRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pathParts_data()
    {
        columns<QString, QString, QString>("path", "folder", "fileName");

        // The two rules look for the separators in opposite orders.
        row("mixed", "C:\\dir/sub\\x.gif", "C:\\dir/", "x.gif");
        row("file scheme, any case", "FILE://C:/site/a.gif", "C:/site/", "a.gif");
        row("backslashes", "C:\\pics\\a.gif", "C:\\pics\\", "a.gif");
        row("bare name", "a.gif", "", "a.gif");
    }

    void pathParts()
    {
        auto [path, folder, fileName]
            = fetch<QString, QString, QString>("path", "folder", "fileName");
        QCOMPARE(Images::GetFolderFromPath(path), folder);
        QCOMPARE(Images::GetImageFileName(path), fileName);
    }

    void incrementFileName_data()
    {
        columns<QString, int, QString>("fileName", "counter", "numbered");

        row("extension", "photo.jpg", 2, "photo_002.jpg");
        row("several dots", "my.photo.jpg", 1, "my.photo_001.jpg");
        row("no dot", "photo", 2, "photo_002");
        row("last of the range", "a.png", 999, "a_999.png");
        row("beyond keeps three digits", "a.png", 1000, "a_000.png");
    }

    void incrementFileName()
    {
        auto [fileName, counter, numbered]
            = fetch<QString, int, QString>("fileName", "counter", "numbered");
        QCOMPARE(Images::IncrementFileName(fileName, counter), numbered);
    }

    void insertedImageSource_data()
    {
        columns<QString, QString, QString>("baseURL", "vcDirectory", "src");

        const QString copy = QDir::toNativeSeparators(u"/srv/site/img/a b.png"_s);
        row("web folder of the images", "http://example.com/", "/images", "/images/a b.png");
        row("local base holding the copy", "file:///srv/site/index.html", "", "img/a b.png");
        row("local base elsewhere", "file:///srv/other/", "", copy);
        row("web base", "http://example.com/", "", "file:///srv/site/img/a%20b.png");
        row("no base", "", "", copy);
    }

    void insertedImageSource()
    {
        auto [baseURL, vcDirectory, src]
            = fetch<QString, QString, QString>("baseURL", "vcDirectory", "src");
        QCOMPARE(
            Images::insertedImageSource(u"/srv/site/img/a b.png"_s, baseURL, vcDirectory), src);
    }

    void dialogMarkup_data()
    {
        columns<ImageDialogValues, QString>("values", "markup");

        ImageDialogValues plain;
        plain.Source = u"a.gif"_s;
        plain.VSpace = u"5"_s;
        plain.HSpace = u"10"_s;
        row("HSPACE repeats VSPACE, no size", plain,
            R"(<IMG VSPACE="5" HSPACE="5" ALIGN="" SRC="a.gif" BORDER="" ALT="" >)");

        ImageDialogValues sized = plain;
        sized.Width = u"100"_s;
        sized.Height = u"50"_s;
        sized.Alt = u"say \"hi\""_s;
        sized.Hyperlink = u"http://x.org/"_s;
        sized.Target = u"_blank"_s;
        row("size, style and link", sized,
            R"(<a href="http://x.org/" target="_blank"><IMG VSPACE="5" HSPACE="5" ALIGN="" )"
            R"(SRC="a.gif" BORDER="" ALT="say &quot;hi&quot;" WIDTH="100" HEIGHT="50" )"
            R"(STYLE="WIDTH:100; HEIGHT:50; " ></a>)");

        ImageDialogValues images;
        images.Source = u"a.gif"_s;
        images.MouseOverOption = RollOver::Image;
        images.SourceOver = u"C:\\img\\a.gif"_s;
        images.SourceDown = u"d.gif"_s;
        images.SourceOut = u"a.gif"_s;
        row("roll-over images", images,
            R"(<IMG OnMouseOver="this.src='C:\\img\\a.gif'" srcOver="C:\img\a.gif" )"
            R"(OnMouseDown="this.src='d.gif'" srcDown="d.gif" OnMouseOut="this.src='a.gif'" )"
            R"(VSPACE="" HSPACE="" ALIGN="" SRC="a.gif" BORDER="" ALT="" >)");

        ImageDialogValues scripts = images;
        scripts.MouseOverOption = RollOver::Script;
        scripts.SourceOver = u"over()"_s;
        scripts.SourceDown = u"down()"_s;
        scripts.SourceOut = u"out()"_s;
        row("roll-over scripts", scripts,
            R"x(<IMG OnMouseOver="over()"OnMouseDown="down()"OnMouseOut="out()"VSPACE="" )x"
            R"(HSPACE="" ALIGN="" SRC="a.gif" BORDER="" ALT="" >)");
    }

    void dialogMarkup()
    {
        auto [values, markup] = fetch<ImageDialogValues, QString>("values", "markup");
        QCOMPARE(Dialogs::imageDialogMarkup(values), markup);
    }

    void linkPrefix_data()
    {
        columns<QString, QString, QString>("address", "prefix", "rest");

        row("typed in capitals", "HTTP://x.org/", "http://", "x.org/");
        row("mail", "mailto:a@b.c", "mailto:", "a@b.c");
        row("other scheme stays whole", "https://x.org/", "", "https://x.org/");
        row("relative", "page.html", "", "page.html");
    }

    void linkPrefix()
    {
        auto [address, prefix, rest]
            = fetch<QString, QString, QString>("address", "prefix", "rest");
        const Dialogs::SplitLink split = Dialogs::splitLinkPrefix(address);
        QCOMPARE(split.prefix, prefix);
        QCOMPARE(split.rest, rest);
        // Collected again under whatever the list shows, the address comes back.
        QCOMPARE(Dialogs::joinLinkPrefix(
                     prefix.isEmpty() ? u"ftp://"_s : prefix, prefix.isEmpty() ? address : rest),
            prefix.isEmpty() ? u"ftp://"_s + address : prefix + rest);
        QCOMPARE(Dialogs::joinLinkPrefix(u"http://"_s, u"FTP://h/"_s), u"FTP://h/"_s);
        QCOMPARE(Dialogs::joinLinkPrefix(u"http://"_s, QString()), QString());
    }

    void rollOverReadBack()
    {
        // What the dialog wrote, read back the way the browser hands the attributes over.
        ImageDialogValues values;
        Dialogs::setRollOver(values,
            {u"this.src='o.gif'"_s, u"this.src='d.gif'"_s, u"this.src='C:\\\\img\\\\a.gif'"_s,
                u"o.gif"_s, u"d.gif"_s});
        QCOMPARE(values.MouseOverOption, RollOver::Image);
        QCOMPARE(values.SourceOut, u"C:\\img\\a.gif"_s);
        QCOMPARE(values.SourceDown, u"d.gif"_s);

        Dialogs::setRollOver(values, {QString(), QString(), u"out()"_s, {}, {}});
        QCOMPARE(values.MouseOverOption, RollOver::Script);
        QCOMPARE(values.SourceOut, u"out()"_s);

        Dialogs::setRollOver(values, {});
        QCOMPARE(values.MouseOverOption, RollOver::None);
        QCOMPARE(Dialogs::imageDimension(QString(), u"120px"_s), u"120"_s);
        QCOMPARE(Dialogs::imageDimension(QString(), u"50%"_s), u"50%"_s);
    }

    void keptAspect()
    {
        QCOMPARE(Dialogs::keptAspect(100, 300, 200), std::optional<int>(67));
        QCOMPARE(Dialogs::keptAspect(150, 200, 300), std::optional<int>(225));
        QCOMPARE(Dialogs::keptAspect(100, 0, 200), std::nullopt);
    }
};

QTEST_APPLESS_MAIN(tst_ImageRules)
#include "tst_imagerules.moc"
