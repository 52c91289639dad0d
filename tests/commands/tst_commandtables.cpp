// The executor's key and dispatch tables, the markup of the commands that insert from
// arguments, and the context menu's entries: rules that need no document.

#include "commands/commandtables.h"
#include "commands/contextmenus.h"
#include "commands/tablecommands.h"
#include "dialogs/fontchoice.h"
#include "platform/designsurface.h"

#include <VantryHTMLEditor/CompanionObjects.h>

#include <QTest>

using namespace Vantry;
using namespace Vantry::Commands;
using Entry = ContextMenuEntry;

Q_DECLARE_METATYPE(Vantry::Commands::CommandAction)
Q_DECLARE_METATYPE(Vantry::Commands::MenuContext)
Q_DECLARE_METATYPE(Vantry::Commands::TableArguments)
Q_DECLARE_METATYPE(Vantry::Commands::ImageArguments)
Q_DECLARE_METATYPE(Vantry::Platform::TableParts)

class tst_CommandTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void toolbarKeys_data();
    void toolbarKeys();
    void everyKeyReachesALiveOrDeliberatelyInertCommand();
    void commandEntries_data();
    void commandEntries();
    void absolutePositionToolTip_data();
    void absolutePositionToolTip();
    void deletionKeepsTablePart_data();
    void deletionKeepsTablePart();
    void tableMarkup_data();
    void tableMarkup();
    void tableArgumentsByName_data();
    void tableArgumentsByName();
    void imageMarkup_data();
    void imageMarkup();
    void fontDialogSizesAndColours();
    void contextMenuEntries_data();
    void contextMenuEntries();
    void menuContextOfPath_data();
    void menuContextOfPath();
    void customItemsFollowTheBuiltInOnesAndGoByKey();
};

void tst_CommandTables::toolbarKeys_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("number");
    QTest::newRow("Bold") << QStringLiteral("Bold") << 1;
    QTest::newRow("Outdent after the colours") << QStringLiteral("Outdent") << 6;
    QTest::newRow("uploadimage in lower case") << QStringLiteral("uploadimage") << 14;
    QTest::newRow("UploadImage is no key") << QStringLiteral("UploadImage") << 0;
    QTest::newRow("bold is no key") << QStringLiteral("bold") << 0;
    QTest::newRow("UnDo") << QStringLiteral("UnDo") << 19;
    QTest::newRow("Undo is no key") << QStringLiteral("Undo") << 0;
    QTest::newRow("ZOrder") << QStringLiteral("ZOrder") << 25;
    QTest::newRow("SpellCheck") << QStringLiteral("SpellCheck") << 46;
    QTest::newRow("PageProperties") << QStringLiteral("PageProperties") << 50;
    QTest::newRow("InsertFlash") << QStringLiteral("InsertFlash") << 53;
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("method name, no key") << QStringLiteral("BringToFront") << 0;
}

void tst_CommandTables::toolbarKeys()
{
    QFETCH(QString, key);
    QFETCH(int, number);
    QCOMPARE(int(toolbarKeyCommand(key).value_or(Command{})), number);
}

void tst_CommandTables::everyKeyReachesALiveOrDeliberatelyInertCommand()
{
    const QList<QString> keys = Commands::toolbarKeys();
    QCOMPARE(keys.size(), 38);
    for (const QString &key : keys) {
        const Command command = toolbarKeyCommand(key).value_or(Command{});
        const bool inert = commandEntry(command).action == CommandAction::Inert;
        QVERIFY2(inert == (key == QLatin1String("ZOrder") || key == QLatin1String("InsertFlash")),
            qPrintable(key));
    }
}

void tst_CommandTables::commandEntries_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<CommandAction>("action");
    QTest::addColumn<int>("platformCommand");
    QTest::addColumn<int>("option");
    QTest::newRow("bold") << 1 << CommandAction::Plain << 5000 << 2;
    QTest::newRow("fore colour") << 11 << CommandAction::ColorPick << 5046 << 2;
    QTest::newRow("hyperlink") << 13 << CommandAction::Hyperlink << 5016 << 2;
    QTest::newRow("paste by default") << 18 << CommandAction::Plain << 5032 << 0;
    QTest::newRow("borders") << 21 << CommandAction::ToggleBorders << 0 << 0;
    QTest::newRow("absolute") << 23 << CommandAction::AbsolutePosition << 5028 << 0;
    QTest::newRow("snap") << 26 << CommandAction::ToggleSnapToGrid << 0 << 0;
    QTest::newRow("insert table") << 27 << CommandAction::InsertTableDialog << 5022 << 2;
    QTest::newRow("delete row") << 29 << CommandAction::GuardedDelete << 5007 << 0;
    QTest::newRow("font dialog") << 36 << CommandAction::Plain << 5009 << 1;
    QTest::newRow("find dialog") << 38 << CommandAction::Plain << 5008 << 1;
    QTest::newRow("spelling") << 46 << CommandAction::SpellCheck << 0 << 0;
    QTest::newRow("image from arguments") << 47 << CommandAction::ImageFromArguments << 0 << 0;
    QTest::newRow("table from arguments") << 48 << CommandAction::TableFromArguments << 0 << 0;
    QTest::newRow("table to body") << 54 << CommandAction::TableFromArgumentsToBody << 0 << 0;
    QTest::newRow("cell properties") << 56 << CommandAction::CellProperties << 0 << 0;
    QTest::newRow("0") << 0 << CommandAction::Inert << 0 << 0;
    QTest::newRow("57") << 57 << CommandAction::Inert << 0 << 0;
    QTest::newRow("negative") << -1 << CommandAction::Inert << 0 << 0;
    QTest::newRow("huge") << std::numeric_limits<int>::max() << CommandAction::Inert << 0 << 0;
}

void tst_CommandTables::commandEntries()
{
    QFETCH(int, number);
    QFETCH(CommandAction, action);
    QFETCH(int, platformCommand);
    QFETCH(int, option);
    const CommandEntry entry = commandEntry(Command(number));
    QCOMPARE(entry.action, action);
    QCOMPARE(entry.platformCommand, platformCommand);
    QCOMPARE(entry.option, option);
}

void tst_CommandTables::absolutePositionToolTip_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("toolTip");
    const QString relative = QStringLiteral("Set Position Attribute To Relitive");
    const QString absolute = QStringLiteral("Set Position Attribute To Absolute");
    QTest::newRow("latched") << 7 << relative;
    QTest::newRow("enabled") << 3 << absolute;
    QTest::newRow("ninched") << 11 << absolute;
    QTest::newRow("disabled") << 1 << absolute;
    QTest::newRow("not supported") << 0 << absolute;
}

void tst_CommandTables::absolutePositionToolTip()
{
    QFETCH(int, status);
    QFETCH(QString, toolTip);
    QCOMPARE(Commands::absolutePositionToolTip(Commands::CommandState(status)), toolTip);
}

void tst_CommandTables::deletionKeepsTablePart_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<Platform::TableParts>("parts");
    QTest::addColumn<bool>("keeps");
    // rows, columns, cells, then what the selection covers of each
    const Platform::TableParts twoByTwo{2, 2, 4, 1, 1, 1};
    QTest::newRow("row of two") << 29 << twoByTwo << true;
    QTest::newRow("both rows") << 29 << Platform::TableParts{2, 2, 4, 2, 1, 2} << false;
    QTest::newRow("column of two") << 31 << twoByTwo << true;
    QTest::newRow("the only column of two rows")
        << 31 << Platform::TableParts{2, 1, 2, 1, 1, 1} << false;
    QTest::newRow("cell of four") << 33 << twoByTwo << true;
    QTest::newRow("every cell") << 33 << Platform::TableParts{2, 2, 4, 2, 2, 4} << false;
    QTest::newRow("only cell") << 33 << Platform::TableParts{1, 1, 1, 1, 1, 1} << false;
    QTest::newRow("not a deletion") << 28 << twoByTwo << false;
}

void tst_CommandTables::deletionKeepsTablePart()
{
    QFETCH(int, number);
    QFETCH(Platform::TableParts, parts);
    QFETCH(bool, keeps);
    QCOMPARE(Commands::deletionKeepsTablePart(Command(number), parts), keeps);
}

namespace {

QString cells(int rows, int columns)
{
    QString row = QStringLiteral("<TR>");
    for (int i = 0; i < columns; ++i)
        row += QStringLiteral("<TD ><div></div></TD>");
    row += QStringLiteral("</TR>");
    return row.repeated(rows);
}

} // namespace

void tst_CommandTables::tableMarkup_data()
{
    QTest::addColumn<TableArguments>("table");
    QTest::addColumn<QString>("markup");

    QTest::newRow("empty rows and columns: one row of three")
        << TableArguments{}
        << QStringLiteral("<TABLE >") + cells(1, 3) + QStringLiteral("</TABLE>");
    TableArguments letters;
    letters.rows = QStringLiteral("x");
    letters.columns = QStringLiteral("2");
    QTest::newRow("rows not numeric")
        << letters << QStringLiteral("<TABLE >") + cells(1, 2) + QStringLiteral("</TABLE>");
    TableArguments badColumns;
    badColumns.rows = QStringLiteral("2");
    badColumns.columns = QStringLiteral("many");
    QTest::newRow("columns not numeric")
        << badColumns << QStringLiteral("<TABLE >") + cells(2, 1) + QStringLiteral("</TABLE>");
    TableArguments all{QStringLiteral("100%"), QStringLiteral("50"), QStringLiteral("2"),
        QStringLiteral("2"), QStringLiteral("center"), QStringLiteral("top"),
        QStringLiteral("bg.gif"), QStringLiteral("#FF0000"), QStringLiteral("1"),
        QStringLiteral("3"), QStringLiteral("4"), QStringLiteral("#00FF00"),
        QStringLiteral("color:red"), QStringLiteral("grid")};
    QTest::newRow("every attribute in order")
        << all
        << QStringLiteral(
               "<TABLE Class=\"grid\" style=\"color:red\" border=\"1\"  cellPadding=\"4\"  "
               "cellSpacing=\"3\"  width=\"100%\"  height=\"50\"  bordercolor=\"#00FF00\"  "
               "bgcolor=\"#FF0000\"  background=\"bg.gif\"  align=\"center\"  "
               "valign=\"top\" >")
            + cells(2, 2) + QStringLiteral("</TABLE>");
    TableArguments some;
    some.width = QStringLiteral("200");
    some.rows = QStringLiteral("1");
    some.columns = QStringLiteral("1");
    QTest::newRow("empty arguments leave no attribute")
        << some
        << QStringLiteral("<TABLE  width=\"200\" >") + cells(1, 1) + QStringLiteral("</TABLE>");
}

void tst_CommandTables::tableMarkup()
{
    QFETCH(TableArguments, table);
    QFETCH(QString, markup);
    QCOMPARE(Commands::tableMarkup(table), markup);
}

void tst_CommandTables::tableArgumentsByName_data()
{
    QTest::addColumn<QVariantMap>("arguments");
    QTest::addColumn<bool>("withClass");
    // The markup of the arguments taken, or empty when they are refused.
    QTest::addColumn<QString>("markup");
    QTest::addColumn<QString>("refusedKey");

    const QVariantMap all{{QStringLiteral("Width"), QStringLiteral("100%")},
        {QStringLiteral("HEIGHT"), 50}, {QStringLiteral("rows"), 2},
        {QStringLiteral("Columns"), QStringLiteral("2")},
        {QStringLiteral("Align"), QStringLiteral("center")},
        {QStringLiteral("VAlign"), QStringLiteral("top")},
        {QStringLiteral("BGImage"), QStringLiteral("bg.gif")},
        {QStringLiteral("BgColor"), QStringLiteral("#FF0000")}, {QStringLiteral("Border"), 1},
        {QStringLiteral("CellSpacing"), 3}, {QStringLiteral("cellpadding"), 4},
        {QStringLiteral("BorderColor"), QStringLiteral("#00FF00")},
        {QStringLiteral("Style"), QStringLiteral("color:red")},
        {QStringLiteral("Class"), QStringLiteral("grid")}};
    TableArguments expected{QStringLiteral("100%"), QStringLiteral("50"), QStringLiteral("2"),
        QStringLiteral("2"), QStringLiteral("center"), QStringLiteral("top"),
        QStringLiteral("bg.gif"), QStringLiteral("#FF0000"), QStringLiteral("1"),
        QStringLiteral("3"), QStringLiteral("4"), QStringLiteral("#00FF00"),
        QStringLiteral("color:red"), QStringLiteral("grid")};
    QTest::newRow("every argument, any case, numbers as text")
        << all << true << Commands::tableMarkup(expected) << QString();
    QTest::newRow("none: the defaults")
        << QVariantMap{} << false << Commands::tableMarkup(TableArguments{}) << QString();
    QTest::newRow("class only for the second form")
        << all << false << QString() << QStringLiteral("Class");
    QTest::newRow("a key that is no argument") << QVariantMap{{QStringLiteral("Rows"), 2},
        {QStringLiteral("Colour"), QStringLiteral("red")}}
                                               << true << QString() << QStringLiteral("Colour");
}

void tst_CommandTables::tableArgumentsByName()
{
    QFETCH(QVariantMap, arguments);
    QFETCH(bool, withClass);
    QFETCH(QString, markup);
    QFETCH(QString, refusedKey);
    QString error;
    const std::optional<TableArguments> table = tableArgumentsFromMap(arguments, withClass, &error);
    QCOMPARE(table.has_value(), refusedKey.isEmpty());
    if (table)
        QCOMPARE(Commands::tableMarkup(*table), markup);
    else
        QVERIFY2(
            error.contains(QLatin1Char('"') + refusedKey + QLatin1Char('"')), qPrintable(error));
}

void tst_CommandTables::imageMarkup_data()
{
    QTest::addColumn<ImageArguments>("image");
    QTest::addColumn<QString>("markup");

    ImageArguments srcAndWidth;
    srcAndWidth.src = QStringLiteral("a.gif");
    srcAndWidth.width = QStringLiteral("100");
    QTest::newRow("source and width")
        << srcAndWidth << QStringLiteral("<IMG Width=\"100\" STYLE=\"WIDTH:100;\" SRC=\"a.gif\" >");
    const ImageArguments all{QStringLiteral("10"), QStringLiteral("20"), QStringLiteral("1"),
        QStringLiteral("2"), QStringLiteral("left"), QStringLiteral("0"), QStringLiteral("Alt"),
        QStringLiteral("b.png"), QStringLiteral("float:left")};
    QTest::newRow("every argument, hspace its own")
        << all
        << QStringLiteral("<IMG Width=\"10\" Height=\"20\" VSPACE=\"1\" "
                          "STYLE=\"WIDTH:10;HEIGHT:20;float:left\" HSPACE=\"2\" ALIGN=\"left\" "
                          "SRC=\"b.png\" BORDER=\"0\" ALT=\"Alt\" >");
    QTest::newRow("nothing but the style")
        << ImageArguments{} << QStringLiteral("<IMG STYLE=\"\" >");
}

void tst_CommandTables::imageMarkup()
{
    QFETCH(ImageArguments, image);
    QFETCH(QString, markup);
    QCOMPARE(Commands::imageMarkup(image), markup);
}

namespace {

const QStringList standard{QStringLiteral("Cut"), QStringLiteral("Copy"), QStringLiteral("Paste"),
    QStringLiteral("Select All"), QStringLiteral("Font...")};

QStringList captions(const QList<Entry> &entries)
{
    QStringList result;
    for (const Entry &entry : entries)
        result.append(entry.kind == Entry::Kind::Separator ? QStringLiteral("-") : entry.caption);
    return result;
}

QStringList join(std::initializer_list<QStringList> parts)
{
    QStringList result;
    for (const QStringList &part : parts) {
        if (!result.isEmpty())
            result.append(QStringLiteral("-"));
        result.append(part);
    }
    return result;
}

} // namespace

void tst_CommandTables::fontDialogSizesAndColours()
{
    using namespace Vantry::Dialogs;
    // Every HTML size survives the trip through the dialog's point sizes; points in
    // between go to the nearest size.
    for (int size = 1; size <= 7; ++size)
        QCOMPARE(htmlSizeForPointSize(pointSizeForHtmlSize(size)), size);
    QCOMPARE(pointSizeForHtmlSize(0), 0);
    QCOMPARE(pointSizeForHtmlSize(8), 0);
    QCOMPARE(htmlSizeForPointSize(0), 0);
    QCOMPARE(htmlSizeForPointSize(11), 2);
    QCOMPARE(htmlSizeForPointSize(72), 7);
    QCOMPARE(htmlSizeForPointSize(6), 1);

    QCOMPARE(colorFromCss(QStringLiteral("rgb(0, 128, 255)")), QColor(0, 128, 255));
    QCOMPARE(colorFromCss(QStringLiteral(" rgba(1,2,3,0.5) ")).alpha(), 128);
    QCOMPARE(colorFromCss(QStringLiteral("#0f0")), QColor(0, 255, 0));
    QCOMPARE(colorFromCss(QStringLiteral("navy")), QColor(0, 0, 128));
    QVERIFY(!colorFromCss(QString()).isValid());
    QVERIFY(!colorFromCss(QStringLiteral("rgb(1, 2)")).isValid());
}

void tst_CommandTables::contextMenuEntries_data()
{
    QTest::addColumn<MenuContext>("context");
    QTest::addColumn<QList<int>>("hidden");
    QTest::addColumn<QStringList>("expected");

    const QStringList element{QStringLiteral("Element Properties")};
    const QStringList page{QStringLiteral("Page Properties")};
    const QStringList cell{QStringLiteral("Insert Row"), QStringLiteral("Insert Column"),
        QStringLiteral("Delete Row"), QStringLiteral("Delete Column"),
        QStringLiteral("Table Cell Properties")};
    const QStringList table{QStringLiteral("Table Properties")};

    MenuContext text;
    text.body = true;
    QTest::newRow("text in the body") << text << QList<int>{} << join({standard, page, element});

    MenuContext inCell = text;
    inCell.table = inCell.cell = true;
    QTest::newRow("table cell") << inCell << QList<int>{}
                                << join({standard, cell, table, page, element});
    QTest::newRow("table menus hidden") << inCell << QList<int>{clsContextMenu::cm_TableMenus}
                                        << join({standard, cell, page, element});

    MenuContext imageInCell = inCell;
    imageInCell.image = true;
    QTest::newRow("image in a table cell")
        << imageInCell << QList<int>{}
        << join({standard, {QStringLiteral("Image Properties")}, page, element});

    MenuContext positioned = text;
    positioned.position = {true, true};
    QTest::newRow("positioned element")
        << positioned << QList<int>{}
        << join({standard, {QStringLiteral("Make 1D")}, page, element});
    positioned.position = {true, false};
    QTest::newRow("element that can be positioned")
        << positioned << QList<int>{}
        << join({standard, {QStringLiteral("Make 2D")}, page, element});

    MenuContext link = positioned;
    link.hyperlink = true;
    QTest::newRow("link: no positioning")
        << link << QList<int>{}
        << join({standard, {QStringLiteral("Link Properties")}, page, element});

    QTest::newRow("standard and element hidden")
        << text
        << QList<int>{clsContextMenu::cm_StandardMenus, clsContextMenu::cm_ElementPropertiesMenus}
        << page;
}

void tst_CommandTables::contextMenuEntries()
{
    QFETCH(MenuContext, context);
    QFETCH(QList<int>, hidden);
    QFETCH(QStringList, expected);
    clsContextMenu settings;
    for (int group : hidden)
        settings.HideBuiltinContextMenuItem(static_cast<em_ContextMenu>(group));
    QCOMPARE(captions(Commands::contextMenuEntries(context, settings)), expected);
}

void tst_CommandTables::menuContextOfPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("positioning");
    // image, body, hyperlink, table, cell, positionable, absolute
    QTest::addColumn<QString>("expected");
    QTest::newRow("image in a cell") << QStringLiteral("IMG TD TR TBODY TABLE BODY HTML")
                                     << int(Platform::Enabled) << QStringLiteral("ib.tcp.");
    QTest::newRow("lower-case tags, nothing above the root") << QStringLiteral(
        "th table html body") << int(Platform::Latched) << QStringLiteral("...tcpa");
    QTest::newRow("a link is never positioned")
        << QStringLiteral("SPAN A DIV BODY") << int(Platform::Latched) << QStringLiteral(".bh....");
    QTest::newRow("positioning not available")
        << QStringLiteral("P BODY") << int(Platform::Disabled) << QStringLiteral(".b.....");
}

void tst_CommandTables::menuContextOfPath()
{
    QFETCH(QString, path);
    QFETCH(int, positioning);
    QFETCH(QString, expected);
    const MenuContext c = Commands::menuContextOf(
        path.split(u' '), static_cast<Platform::CommandState>(positioning));
    QString flags;
    const bool values[] = {
        c.image, c.body, c.hyperlink, c.table, c.cell, c.position.available, c.position.absolute};
    for (qsizetype i = 0; i < 7; ++i)
        flags += values[i] ? QStringLiteral("ibhtcpa").at(i) : QLatin1Char('.');
    QCOMPARE(flags, expected);
}

void tst_CommandTables::customItemsFollowTheBuiltInOnesAndGoByKey()
{
    clsContextMenu settings;
    settings.AddCustomContextMenuItem(QStringLiteral("k1"), QStringLiteral("First"));
    settings.AddCustomContextMenuItem(QStringLiteral("Spacer"), QStringLiteral("ignored"));
    settings.AddCustomContextMenuItem(QStringLiteral("k2"), QStringLiteral("Second"));
    QCOMPARE(settings.CountCustomContextMenuItems(), 3);

    MenuContext text;
    const QList<Entry> entries = Commands::contextMenuEntries(text, settings);
    QCOMPARE(captions(entries),
        join({standard, {QStringLiteral("Element Properties")},
            {QStringLiteral("First"), QStringLiteral("-"), QStringLiteral("Second")}}));
    QCOMPARE(entries.constLast().kind, Entry::Kind::Custom);
    QCOMPARE(entries.constLast().customKey, QStringLiteral("k2"));
    QCOMPARE(entries.first().command, Command::Cut);

    settings.HideAllBuiltinContextMenuItems();
    QCOMPARE(captions(Commands::contextMenuEntries(text, settings)),
        (QStringList{QStringLiteral("First"), QStringLiteral("-"), QStringLiteral("Second")}));
    settings.ShowAllBuiltinContextMenuItems();
    QCOMPARE(Commands::contextMenuEntries(text, settings), entries);

    // Removed by key, not by caption.
    settings.RemoveCustomContextMenuItem(QStringLiteral("First"));
    QCOMPARE(settings.CountCustomContextMenuItems(), 3);
    settings.RemoveCustomContextMenuItem(QStringLiteral("k1"));
    QCOMPARE(settings.CountCustomContextMenuItems(), 2);
    QCOMPARE(settings.customContextMenuItems().first().text, QStringLiteral("ignored"));
    settings.RemoveAllCustomContextMenuItems();
    QCOMPARE(settings.CountCustomContextMenuItems(), 0);
}

QTEST_GUILESS_MAIN(tst_CommandTables)
#include "tst_commandtables.moc"
