// The executor's key and dispatch tables, the markup of the commands that insert from
// arguments, the context menu's entries, and the toolbar's rules (button keys, rows, the
// permission and latched dictionaries) with the configuration a host does through
// clsToolbar, on real toolbar rows: rules that need no document.

#include "../common/datarows.h"

#include "commands/commandtables.h"
#include "commands/contextmenus.h"
#include "commands/editortoolbar.h"
#include "commands/fontcontrols.h"
#include "commands/tablecommands.h"
#include "commands/toolbarbuilder.h"
#include "commands/toolbarmodel.h"
#include "dialogs/fontchoice.h"
#include "platform/designsurface.h"

#include <VantryHTMLEditor/CompanionObjects.h>

#include <QAction>
#include <QComboBox>
#include <QLayout>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>
#include <QVBoxLayout>

#include <memory>

using namespace Vantry;
using namespace Qt::StringLiterals;
using namespace Vantry::Commands;
using Entry = ContextMenuEntry;

Q_DECLARE_METATYPE(Vantry::Commands::MenuContext)
Q_DECLARE_METATYPE(Vantry::Commands::TableArguments)
Q_DECLARE_METATYPE(Vantry::Commands::ImageArguments)
Q_DECLARE_METATYPE(Vantry::Platform::TableParts)

namespace {

QString cells(int rows, int columns)
{
    QString row = u"<TR>"_s;
    for (int i = 0; i < columns; ++i)
        row += u"<TD ><div></div></TD>"_s;
    row += u"</TR>"_s;
    return row.repeated(rows);
}

TableArguments sized(const char *rows, const char *columns = "", const char *width = "")
{
    TableArguments table;
    table.rows = QLatin1String(rows);
    table.columns = QLatin1String(columns);
    table.width = QLatin1String(width);
    return table;
}

const QStringList standard{u"Cut"_s, u"Copy"_s, u"Paste"_s, u"Select All"_s, u"Font..."_s};

QStringList captions(const QList<Entry> &entries)
{
    QStringList result;
    for (const Entry &entry : entries)
        result.append(entry.kind == Entry::Kind::Separator ? u"-"_s : entry.caption);
    return result;
}

QStringList join(std::initializer_list<QStringList> parts)
{
    QStringList result;
    for (const QStringList &part : parts) {
        if (!result.isEmpty())
            result.append(u"-"_s);
        result.append(part);
    }
    return result;
}

} // namespace

class tst_CommandTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host = std::make_unique<QWidget>();
        auto *layout = new QVBoxLayout(m_host.get());
        for (QToolBar *&row : m_rows) {
            row = new QToolBar(m_host.get());
            layout->addWidget(row);
        }
        m_toolbar = std::make_unique<EditorToolbar>(m_rows, m_host.get(), EditorToolbar::Hooks{});
        m_object = std::make_unique<clsToolbar>();
        m_toolbar->attach(m_object.get());
    }

    void cleanup()
    {
        m_object.reset();
        m_toolbar.reset();
        m_host.reset();
    }

    void buttonKeys_data()
    {
        columns<int, QString>("member", "key");

        row("lower-case member", int(clsToolbar::tbb_bold), "Bold");
        row("upload", int(clsToolbar::tbb_UploadImage), "UploadImage");
        row("table", int(clsToolbar::tbb_InsertTABLE), "InsertTABLE");
        row("zero", 0, QString());
        row("past the end", 40, QString());
        row("negative", -1, QString());
    }

    void buttonKeys()
    {
        auto [member, key] = fetch<int, QString>("member", "key");
        QCOMPARE(ToolbarModel::buttonKey(member), key);
    }

    void dictionariesStartAllowedAndIgnoreCase()
    {
        ToolbarModel model;
        for (const auto &entry : ToolbarModel::stateEntries()) {
            QCOMPARE(model.permission(QString(entry.key).toUpper()), std::optional<bool>(true));
            QCOMPARE(model.latched(QString(entry.key)), std::optional<bool>(true));
        }
        QVERIFY(!model.permission(u"Font"_s).has_value());
    }

    void displayOrder_data()
    {
        QTest::addColumn<QList<int>>("moves"); // pairs of toolbar, row
        columns<QList<int>, bool>("topToBottom", "accepted");

        row("as built", QList<int>{}, QList<int>{0, 1, 2}, true);
        row("first to third", QList<int>{0, 2}, QList<int>{2, 1, 0}, true);
        row("third to first", QList<int>{2, 0}, QList<int>{2, 1, 0}, true);
        row("own row", QList<int>{1, 1}, QList<int>{0, 1, 2}, true);
        row("two moves", QList<int>{0, 2, 0, 1}, QList<int>{2, 0, 1}, true);
        row("row out of range", QList<int>{0, 3}, QList<int>{0, 1, 2}, false);
        row("negative row", QList<int>{0, -1}, QList<int>{0, 1, 2}, false);
        row("toolbar out of range", QList<int>{3, 0}, QList<int>{0, 1, 2}, false);
    }

    void displayOrder()
    {
        auto [moves, topToBottom, accepted]
            = fetch<QList<int>, QList<int>, bool>("moves", "topToBottom", "accepted");

        ToolbarModel model;
        bool allAccepted = true;
        for (qsizetype i = 0; i + 1 < moves.size(); i += 2)
            allAccepted = model.setDisplayOrder(moves[i], moves[i + 1]) && allAccepted;
        QCOMPARE(allAccepted, accepted);

        const auto order = model.toolbarsTopToBottom();
        QCOMPARE((QList<int>{order.begin(), order.end()}), topToBottom);
        for (int row = 0; row < 3; ++row) {
            QCOMPARE(model.displayOrder(topToBottom[row]), row);
            QCOMPARE(model.toolbarTop(topToBottom[row]), ToolbarModel::rowTops[std::size_t(row)]);
        }
    }

    void everyKeyHasAButtonWithIconAndToolTip()
    {
        for (const auto &entry : ToolbarModel::stateEntries()) {
            QAction *action = button(QString(entry.key));
            QVERIFY2(action, entry.key.data());
            QCOMPARE(action->objectName(), QString(entry.key));
            QVERIFY2(!action->icon().pixmap(16, 16).isNull(), entry.key.data());
            QVERIFY2(!action->toolTip().isEmpty(), entry.key.data());
        }
        for (int member = ToolbarModel::firstButton; member <= ToolbarModel::lastButton; ++member)
            QVERIFY2(button(ToolbarModel::buttonKey(member)),
                qPrintable(ToolbarModel::buttonKey(member)));

        QCOMPARE(button(u"Font"_s)->parent(),
            static_cast<QObject *>(m_rows[ToolbarButtons::Formatting]));
        QCOMPARE(button(u"Absolute"_s)->toolTip(), u"Set Position Attribute To Absolute"_s);
    }

    void shortcuts_data()
    {
        columns<QString, QKeySequence>("key", "shortcut");

        row("bold", "Bold", QKeySequence(Qt::CTRL | Qt::Key_B));
        row("cut", "Cut", QKeySequence(Qt::CTRL | Qt::Key_X));
        row("copy", "Copy", QKeySequence(Qt::CTRL | Qt::Key_C));
        row("paste", "Paste", QKeySequence(Qt::CTRL | Qt::Key_V));
    }

    void shortcuts()
    {
        auto [key, shortcut] = fetch<QString, QKeySequence>("key", "shortcut");

        QAction *action = button(key);
        QCOMPARE(action->shortcut(), shortcut);
        QCOMPARE(action->shortcutContext(), Qt::WidgetWithChildrenShortcut);
        // Only the editor is an ancestor of the document that has the focus.
        QVERIFY(m_host->actions().contains(action));
        QVERIFY(action->toolTip().contains(shortcut.toString(QKeySequence::NativeText)));
    }

    void clickingAToggleReportsTheKeyWithoutFlippingIt()
    {
        QSignalSpy clicked(m_toolbar.get(), &EditorToolbar::buttonClicked);
        QAction *bold = button(u"bold"_s);
        QVERIFY(bold->isCheckable());

        bold->trigger();
        QVERIFY(!bold->isChecked());
        button(u"uploadimage"_s)->trigger();

        QCOMPARE(clicked.size(), 2);
        QCOMPARE(clicked[0][0].toString(), u"Bold"_s);
        QCOMPARE(clicked[1][0].toString(), u"uploadimage"_s);
    }

    void movingOrHidingARowAsksForLayout()
    {
        QSignalSpy changed(m_toolbar.get(), &EditorToolbar::rowsChanged);

        QVERIFY(
            m_object->setToolbarDisplayOrder(clsToolbar::tb_TableEditing, clsToolbar::tbo_first));
        QCOMPARE(m_object->ToolbarDisplayOrder(clsToolbar::tb_TableEditing), clsToolbar::tbo_first);
        const std::array<QToolBar *, 3> expected{m_rows[2], m_rows[1], m_rows[0]};
        QCOMPARE(m_toolbar->rowsTopToBottom(), expected);
        QCOMPARE(changed.size(), 1);

        // A toolbar moved to its own row stays, and nothing needs laying out.
        QVERIFY(
            m_object->setToolbarDisplayOrder(clsToolbar::tb_Formatting, clsToolbar::tbo_second));
        QCOMPARE(changed.size(), 1);
    }

    void hidingTheFontBoxMovesTheSizeBoxLeft()
    {
        m_host->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_host.get()));
        QComboBox *face = m_toolbar->fonts().fontCombo();
        QComboBox *size = m_toolbar->fonts().fontSizeCombo();
        QVERIFY(face->isVisible());
        const int shownLeft = size->x();
        QVERIFY(shownLeft >= face->x() + face->width());

        QVERIFY(m_object->setButtonVisibleState(clsToolbar::tbb_Font, false));
        m_rows[ToolbarButtons::Formatting]->layout()->activate();
        QVERIFY(!face->isVisible());
        QVERIFY(size->x() < shownLeft);
        QVERIFY(size->x() <= face->width() / 4);
        QVERIFY(!m_object->ButtonVisibleState(clsToolbar::tbb_Font));

        QVERIFY(m_object->setButtonVisibleState(clsToolbar::tbb_Font, true));
        m_rows[ToolbarButtons::Formatting]->layout()->activate();
        QVERIFY(face->isVisible());
        QCOMPARE(size->x(), shownLeft);
    }

    void visibleStateReachesDifferentlySpelledKeys_data()
    {
        columns<int, QString>("member", "toolbarKey");

        row("upload", int(clsToolbar::tbb_UploadImage), "uploadimage");
        row("table", int(clsToolbar::tbb_InsertTABLE), "InsertTable");
        row("font size", int(clsToolbar::tbb_FontSize), "FontSize");
    }

    void visibleStateReachesDifferentlySpelledKeys()
    {
        auto [member, toolbarKey] = fetch<int, QString>("member", "toolbarKey");

        const auto buttonMember = static_cast<clsToolbar::em_ToolbarButtons>(member);
        QVERIFY(m_object->setButtonVisibleState(buttonMember, false));
        QVERIFY(!button(toolbarKey)->isVisible());
        // The store is shared with the latched state, under the toolbar's key too.
        QCOMPARE(m_toolbar->buttonLatchedState(toolbarKey), QVariant(false));
        QVERIFY(m_object->setButtonEnabledState(buttonMember, false));
        QVERIFY(!button(toolbarKey)->isEnabled());
        QCOMPARE(m_toolbar->buttonEnabledState(toolbarKey), QVariant(false));
    }

    // Out-of-range values, and an object with no toolbar or whose toolbar is gone, change
    // nothing and say so.
    void refusedConfigurationChangesNothing()
    {
        const auto past = static_cast<clsToolbar::em_ToolbarButtons>(40);
        QVERIFY(!m_object->setButtonEnabledState(past, false));
        QVERIFY(!m_object->setButtonVisibleState(past, false));
        QVERIFY(!m_object->ButtonEnabledState(past));
        QVERIFY(!m_object->setToolbarDisplayOrder(
            clsToolbar::tb_Standard, static_cast<clsToolbar::em_ToolbarOrder>(3)));
        QVERIFY(!m_object->setToolbarVisibleState(static_cast<clsToolbar::em_Toolbars>(3), false));
        QCOMPARE(m_object->ToolbarDisplayOrder(clsToolbar::tb_Standard), clsToolbar::tbo_first);

        clsToolbar loose;
        QVERIFY(!loose.setButtonEnabledState(clsToolbar::tbb_bold, false));
        QVERIFY(!loose.ButtonEnabledState(clsToolbar::tbb_bold));
        QCOMPARE(loose.ToolbarDisplayOrder(clsToolbar::tb_TableEditing), clsToolbar::tbo_first);
        m_toolbar.reset();
        QVERIFY(!m_object->setButtonEnabledState(clsToolbar::tbb_bold, false));
    }

    void toolbarKeys_data()
    {
        columns<QString, int>("key", "number");
        row("Bold", "Bold", 1);
        row("uploadimage in lower case", "uploadimage", 14);
        row("UploadImage is no key", "UploadImage", 0);
        row("UnDo", "UnDo", 19);
        row("Undo is no key", "Undo", 0);
        row("empty", QString(), 0);
        row("method name, no key", "BringToFront", 0);
    }

    void toolbarKeys()
    {
        auto [key, number] = fetch<QString, int>("key", "number");
        QCOMPARE(int(toolbarKeyCommand(key).value_or(Command{})), number);
    }

    void everyKeyReachesALiveOrDeliberatelyInertCommand()
    {
        const QList<QString> keys = Commands::toolbarKeys();
        QCOMPARE(keys.size(), 38);
        for (const QString &key : keys) {
            const Command command = toolbarKeyCommand(key).value_or(Command{});
            const bool inert = commandEntry(command).action == CommandAction::Inert;
            QVERIFY2(
                inert == (key == QLatin1String("ZOrder") || key == QLatin1String("InsertFlash")),
                qPrintable(key));
        }
    }

    void deletionKeepsTablePart_data()
    {
        columns<int, Platform::TableParts, bool>("number", "parts", "keeps");
        // rows, columns, cells, then what the selection covers of each
        const Platform::TableParts twoByTwo{2, 2, 4, 1, 1, 1};
        row("row of two", 29, twoByTwo, true);
        row("both rows", 29, Platform::TableParts{2, 2, 4, 2, 1, 2}, false);
        row("column of two", 31, twoByTwo, true);
        row("the only column of two rows", 31, Platform::TableParts{2, 1, 2, 1, 1, 1}, false);
        row("cell of four", 33, twoByTwo, true);
        row("every cell", 33, Platform::TableParts{2, 2, 4, 2, 2, 4}, false);
        row("only cell", 33, Platform::TableParts{1, 1, 1, 1, 1, 1}, false);
        row("not a deletion", 28, twoByTwo, false);
    }

    void deletionKeepsTablePart()
    {
        auto [number, parts, keeps]
            = fetch<int, Platform::TableParts, bool>("number", "parts", "keeps");
        QCOMPARE(Commands::deletionKeepsTablePart(Command(number), parts), keeps);
    }

    void tableMarkup_data()
    {
        // Empty markup: the table is refused.
        columns<TableArguments, QString>("table", "markup");
        const auto table
            = [](int rows, int columns, const QString &open = u"<TABLE >"_s) -> QString {
            return open + cells(rows, columns) + u"</TABLE>"_s;
        };
        row("empty rows and columns: one row of three", TableArguments{}, table(1, 3));
        row("rows not numeric", sized("x", "2"), table(1, 2));
        row("columns not numeric", sized("2", "many"), table(2, 1));
        row("most rows", sized("1000", "1"), table(1000, 1));
        row("most columns", sized("1", "100"), table(1, 100));
        row("too many rows", sized("1001", "1"), QString());
        row("too many columns", sized("1", "101"), QString());
        row("no rows", sized("0"), QString());
        row("negative columns", sized("2", "-3"), QString());
        row("infinite rows", sized("inf"), QString());
        row("beyond int", sized("1e300", "1e300"), QString());
        TableArguments all{u"100%"_s, u"50"_s, u"2"_s, u"2"_s, u"center"_s, u"top"_s, u"bg.gif"_s,
            u"#FF0000"_s, u"1"_s, u"3"_s, u"4"_s, u"#00FF00"_s, u"color:red"_s, u"grid"_s};
        row("every attribute in order", all,
            table(2, 2,
                u"<TABLE Class=\"grid\" style=\"color:red\" border=\"1\"  cellPadding=\"4\"  "
                "cellSpacing=\"3\"  width=\"100%\"  height=\"50\"  bordercolor=\"#00FF00\"  "
                "bgcolor=\"#FF0000\"  background=\"bg.gif\"  align=\"center\"  "
                "valign=\"top\" >"_s));
        row("empty arguments leave no attribute", sized("1", "1", "200"),
            table(1, 1, u"<TABLE  width=\"200\" >"_s));
    }

    void tableMarkup()
    {
        auto [table, markup] = fetch<TableArguments, QString>("table", "markup");
        const QString problem = Commands::tableArgumentsProblem(table);
        QCOMPARE(problem.isEmpty(), !markup.isEmpty());
        if (problem.isEmpty())
            QCOMPARE(Commands::tableMarkup(table), markup);
        else
            QCOMPARE(problem, u"A table needs 1 to 1000 rows and 1 to 100 columns."_s);
    }

    void tableArgumentsByName_data()
    {
        columns<QVariantMap, bool>("arguments", "withClass");
        // The markup of the arguments taken, or empty when they are refused.
        columns<QString, QString>("markup", "refusedKey");

        const QVariantMap all{{u"Width"_s, u"100%"_s}, {u"HEIGHT"_s, 50}, {u"rows"_s, 2},
            {u"Columns"_s, u"2"_s}, {u"Align"_s, u"center"_s}, {u"VAlign"_s, u"top"_s},
            {u"BGImage"_s, u"bg.gif"_s}, {u"BgColor"_s, u"#FF0000"_s}, {u"Border"_s, 1},
            {u"CellSpacing"_s, 3}, {u"cellpadding"_s, 4}, {u"BorderColor"_s, u"#00FF00"_s},
            {u"Style"_s, u"color:red"_s}, {u"Class"_s, u"grid"_s}};
        TableArguments expected{u"100%"_s, u"50"_s, u"2"_s, u"2"_s, u"center"_s, u"top"_s,
            u"bg.gif"_s, u"#FF0000"_s, u"1"_s, u"3"_s, u"4"_s, u"#00FF00"_s, u"color:red"_s,
            u"grid"_s};
        row("every argument, any case, numbers as text", all, true, Commands::tableMarkup(expected),
            QString());
        row("none: the defaults", QVariantMap{}, false, Commands::tableMarkup(TableArguments{}),
            QString());
        row("class only for the second form", all, false, QString(), "Class");
        row("a key that is no argument", QVariantMap{{u"Rows"_s, 2}, {u"Colour"_s, u"red"_s}}, true,
            QString(), "Colour");
    }

    void tableArgumentsByName()
    {
        auto [arguments, withClass, markup, refusedKey]
            = fetch<QVariantMap, bool, QString, QString>(
                "arguments", "withClass", "markup", "refusedKey");
        QString error;
        const std::optional<TableArguments> table
            = tableArgumentsFromMap(arguments, withClass, &error);
        QCOMPARE(table.has_value(), refusedKey.isEmpty());
        if (table)
            QCOMPARE(Commands::tableMarkup(*table), markup);
        else
            QVERIFY2(error.contains(QLatin1Char('"') + refusedKey + QLatin1Char('"')),
                qPrintable(error));
    }

    void imageMarkup_data()
    {
        columns<ImageArguments, QString>("image", "markup");

        ImageArguments srcAndWidth;
        srcAndWidth.src = u"a.gif"_s;
        srcAndWidth.width = u"100"_s;
        row("source and width", srcAndWidth,
            "<IMG Width=\"100\" STYLE=\"WIDTH:100;\" SRC=\"a.gif\" >");
        const ImageArguments all{u"10"_s, u"20"_s, u"1"_s, u"2"_s, u"left"_s, u"0"_s, u"Alt"_s,
            u"b.png"_s, u"float:left"_s};
        row("every argument, hspace its own", all,
            "<IMG Width=\"10\" Height=\"20\" VSPACE=\"1\" "
            "STYLE=\"WIDTH:10;HEIGHT:20;float:left\" HSPACE=\"2\" ALIGN=\"left\" "
            "SRC=\"b.png\" BORDER=\"0\" ALT=\"Alt\" >");
        row("nothing but the style", ImageArguments{}, "<IMG STYLE=\"\" >");
    }

    void imageMarkup()
    {
        auto [image, markup] = fetch<ImageArguments, QString>("image", "markup");
        QCOMPARE(Commands::imageMarkup(image), markup);
    }

    void fontDialogSizesAndColours()
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

        QCOMPARE(colorFromCss(u"rgb(0, 128, 255)"_s), QColor(0, 128, 255));
        QCOMPARE(colorFromCss(u" rgba(1,2,3,0.5) "_s).alpha(), 128);
        QVERIFY(!colorFromCss(QString()).isValid());
        QVERIFY(!colorFromCss(u"rgb(1, 2)"_s).isValid());
    }

    void contextMenuEntries_data()
    {
        columns<MenuContext, QList<int>, QStringList>("context", "hidden", "expected");

        const QStringList element{u"Element Properties"_s};
        const QStringList page{u"Page Properties"_s};
        const QStringList cell{u"Insert Row"_s, u"Insert Column"_s, u"Delete Row"_s,
            u"Delete Column"_s, u"Table Cell Properties"_s};
        const QStringList table{u"Table Properties"_s};

        MenuContext text;
        text.body = true;
        row("text in the body", text, QList<int>{}, join({standard, page, element}));

        MenuContext inCell = text;
        inCell.table = inCell.cell = true;
        row("table cell", inCell, QList<int>{}, join({standard, cell, table, page, element}));
        row("table menus hidden", inCell, QList<int>{clsContextMenu::cm_TableMenus},
            join({standard, cell, page, element}));

        MenuContext imageInCell = inCell;
        imageInCell.image = true;
        row("image in a table cell", imageInCell, QList<int>{},
            join({standard, {u"Image Properties"_s}, page, element}));

        MenuContext positioned = text;
        positioned.position = {true, true};
        row("positioned element", positioned, QList<int>{},
            join({standard, {u"Make 1D"_s}, page, element}));
        positioned.position = {true, false};
        row("element that can be positioned", positioned, QList<int>{},
            join({standard, {u"Make 2D"_s}, page, element}));

        MenuContext link = positioned;
        link.hyperlink = true;
        row("link: no positioning", link, QList<int>{},
            join({standard, {u"Link Properties"_s}, page, element}));

        row("standard and element hidden", text,
            QList<int>{clsContextMenu::cm_StandardMenus, clsContextMenu::cm_ElementPropertiesMenus},
            page);
    }

    void contextMenuEntries()
    {
        auto [context, hidden, expected]
            = fetch<MenuContext, QList<int>, QStringList>("context", "hidden", "expected");
        clsContextMenu settings;
        for (int group : hidden)
            settings.HideBuiltinContextMenuItem(static_cast<em_ContextMenu>(group));
        QCOMPARE(captions(Commands::contextMenuEntries(context, settings)), expected);
    }

    void menuContextOfPath_data()
    {
        columns<QString, int>("path", "positioning");
        // image, body, hyperlink, table, cell, positionable, absolute, object
        QTest::addColumn<QString>("expected");
        row("image in a cell", "IMG TD TR TBODY TABLE BODY HTML", int(Platform::Enabled),
            "ib.tcp..");
        row("lower-case tags, nothing above the root", "th table html body", int(Platform::Latched),
            "...tcpa.");
        row("a link is never positioned", "SPAN A DIV BODY", int(Platform::Latched), ".bh.....");
        row("positioning not available", "P BODY", int(Platform::Disabled), ".b......");
        row("a movie", "EMBED OBJECT P BODY", int(Platform::Enabled), "ib...p.o");
    }

    void menuContextOfPath()
    {
        auto [path, positioning, expected]
            = fetch<QString, int, QString>("path", "positioning", "expected");
        const MenuContext c = Commands::menuContextOf(
            path.split(u' '), static_cast<Platform::CommandState>(positioning));
        QString flags;
        const bool values[] = {c.image, c.body, c.hyperlink, c.table, c.cell, c.position.available,
            c.position.absolute, c.object};
        for (qsizetype i = 0; i < 8; ++i)
            flags += values[i] ? u"ibhtcpao"_s.at(i) : QLatin1Char('.');
        QCOMPARE(flags, expected);
    }

    void customItemsFollowTheBuiltInOnesAndGoByKey()
    {
        clsContextMenu settings;
        settings.AddCustomContextMenuItem(u"k1"_s, u"First"_s);
        settings.AddCustomContextMenuItem(u"Spacer"_s, u"ignored"_s);
        settings.AddCustomContextMenuItem(u"k2"_s, u"Second"_s);
        QCOMPARE(settings.CountCustomContextMenuItems(), 3);

        MenuContext text;
        const QList<Entry> entries = Commands::contextMenuEntries(text, settings);
        QCOMPARE(captions(entries),
            join({standard, {u"Element Properties"_s}, {u"First"_s, u"-"_s, u"Second"_s}}));
        QCOMPARE(entries.constLast().kind, Entry::Kind::Custom);
        QCOMPARE(entries.constLast().customKey, u"k2"_s);

        settings.HideAllBuiltinContextMenuItems();
        QCOMPARE(captions(Commands::contextMenuEntries(text, settings)),
            (QStringList{u"First"_s, u"-"_s, u"Second"_s}));
        settings.ShowAllBuiltinContextMenuItems();
        QCOMPARE(Commands::contextMenuEntries(text, settings), entries);

        // Removed by key, not by caption.
        settings.RemoveCustomContextMenuItem(u"First"_s);
        QCOMPARE(settings.CountCustomContextMenuItems(), 3);
        settings.RemoveCustomContextMenuItem(u"k1"_s);
        QCOMPARE(settings.CountCustomContextMenuItems(), 2);
        QCOMPARE(settings.customContextMenuItems().first().text, u"ignored"_s);
    }

private:
    QAction *button(const QString &key) const { return m_toolbar->buttons().button(key); }

    std::unique_ptr<QWidget> m_host;
    std::array<QToolBar *, 3> m_rows{};
    std::unique_ptr<EditorToolbar> m_toolbar;
    std::unique_ptr<clsToolbar> m_object;
};

QTEST_MAIN(tst_CommandTables)
#include "tst_commandtables.moc"
