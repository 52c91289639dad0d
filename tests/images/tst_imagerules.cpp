#include "../common/datarows.h"

#include "dialogs/imagemarkup.h"
#include "images/imagenames.h"

#include <QDir>
#include <QTest>

using namespace Vantry;
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

        const QString copy = QDir::toNativeSeparators(QStringLiteral("/srv/site/img/a b.png"));
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
        QCOMPARE(Images::insertedImageSource(
                     QStringLiteral("/srv/site/img/a b.png"), baseURL, vcDirectory),
            src);
    }

    void dialogMarkup_data()
    {
        columns<ImageDialogValues, QString>("values", "markup");

        ImageDialogValues plain;
        plain.Source = QStringLiteral("a.gif");
        plain.VSpace = QStringLiteral("5");
        plain.HSpace = QStringLiteral("10");
        row("HSPACE repeats VSPACE, no size", plain,
            R"(<IMG VSPACE="5" HSPACE="5" ALIGN="" SRC="a.gif" BORDER="" ALT="" >)");

        ImageDialogValues sized = plain;
        sized.Width = QStringLiteral("100");
        sized.Height = QStringLiteral("50");
        sized.Alt = QStringLiteral("say \"hi\"");
        sized.Hyperlink = QStringLiteral("http://x.org/");
        sized.Target = QStringLiteral("_blank");
        row("size, style and link", sized,
            R"(<a href="http://x.org/" target="_blank"><IMG VSPACE="5" HSPACE="5" ALIGN="" )"
            R"(SRC="a.gif" BORDER="" ALT="say &quot;hi&quot;" WIDTH="100" HEIGHT="50" )"
            R"(STYLE="WIDTH:100; HEIGHT:50; " ></a>)");

        ImageDialogValues images;
        images.Source = QStringLiteral("a.gif");
        images.MouseOverOption = RollOver::Image;
        images.SourceOver = QStringLiteral("C:\\img\\a.gif");
        images.SourceDown = QStringLiteral("d.gif");
        images.SourceOut = QStringLiteral("a.gif");
        row("roll-over images", images,
            R"(<IMG OnMouseOver="this.src='C:\\img\\a.gif'" srcOver="C:\img\a.gif" )"
            R"(OnMouseDown="this.src='d.gif'" srcDown="d.gif" OnMouseOut="this.src='a.gif'" )"
            R"(VSPACE="" HSPACE="" ALIGN="" SRC="a.gif" BORDER="" ALT="" >)");

        ImageDialogValues scripts = images;
        scripts.MouseOverOption = RollOver::Script;
        scripts.SourceOver = QStringLiteral("over()");
        scripts.SourceDown = QStringLiteral("down()");
        scripts.SourceOut = QStringLiteral("out()");
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
        QCOMPARE(Dialogs::joinLinkPrefix(prefix.isEmpty() ? QStringLiteral("ftp://") : prefix,
                     prefix.isEmpty() ? address : rest),
            prefix.isEmpty() ? QStringLiteral("ftp://") + address : prefix + rest);
        QCOMPARE(Dialogs::joinLinkPrefix(QStringLiteral("http://"), QStringLiteral("FTP://h/")),
            QStringLiteral("FTP://h/"));
        QCOMPARE(Dialogs::joinLinkPrefix(QStringLiteral("http://"), QString()), QString());
    }

    void rollOverReadBack()
    {
        // What the dialog wrote, read back the way the browser hands the attributes over.
        ImageDialogValues values;
        Dialogs::setRollOver(values,
            {QStringLiteral("this.src='o.gif'"), QStringLiteral("this.src='d.gif'"),
                QStringLiteral("this.src='C:\\\\img\\\\a.gif'"), QStringLiteral("o.gif"),
                QStringLiteral("d.gif")});
        QCOMPARE(values.MouseOverOption, RollOver::Image);
        QCOMPARE(values.SourceOut, QStringLiteral("C:\\img\\a.gif"));
        QCOMPARE(values.SourceDown, QStringLiteral("d.gif"));

        Dialogs::setRollOver(values, {QString(), QString(), QStringLiteral("out()"), {}, {}});
        QCOMPARE(values.MouseOverOption, RollOver::Script);
        QCOMPARE(values.SourceOut, QStringLiteral("out()"));

        Dialogs::setRollOver(values, {});
        QCOMPARE(values.MouseOverOption, RollOver::None);
        QCOMPARE(
            Dialogs::imageDimension(QString(), QStringLiteral("120px")), QStringLiteral("120"));
        QCOMPARE(Dialogs::imageDimension(QString(), QStringLiteral("50%")), QStringLiteral("50%"));
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
