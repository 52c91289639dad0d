// The dialog conventions and the table dialogs without an engine: the pure conversion and
// markup rules, and each dialog filled, collected and cancelled without a modal loop.

#include "../common/datarows.h"
#include "../common/recordingprompts.h"

#include "dialogs/cellpropertiesdialog.h"
#include "dialogs/dialogrules.h"
#include "dialogs/inserttabledialog.h"
#include "dialogs/tablemarkup.h"
#include "dialogs/tablepropertiesdialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QTest>

using namespace Vantry;
using namespace Qt::StringLiterals;
using namespace Vantry::Dialogs;
using VantryTest::RecordingPrompts;

class tst_TableDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numberKeys_data()
    {
        columns<int, bool, bool>("key", "number", "hex");
        row("0", int('0'), true, true);
        row("7", int('7'), true, true);
        row("9", int('9'), true, true);
        row("/ below 0", int('/'), false, false);
        row(": above 9", int(':'), false, false);
        row("backspace", 8, false, false);
        row("a", int('a'), false, true);
        row("F", int('F'), false, true);
        row("g", int('g'), false, false);
        row("#", int('#'), false, true);
        row("minus", int('-'), false, false);
        row("point", int('.'), false, false);
        row("percent", int('%'), false, false);
    }

    void numberKeys()
    {
        auto [key, number, hex] = fetch<int, bool, bool>("key", "number", "hex");
        QCOMPARE(CheckEnterNumber(key), number);
        QCOMPARE(CheckEnterHex(key), hex);
    }

    void colorConversions()
    {
        QCOMPARE(ColorToHtml(255), QStringLiteral("#FF0000"));
        QCOMPARE(ColorToHtml(0), QStringLiteral("#000000"));
        QCOMPARE(ColorToHtml(0x0080FF), QStringLiteral("#FF8000"));
        QCOMPARE(ColorToHtml(0x80000005), QString()); // a system colour
        QCOMPARE(HtmlToColorHex(QStringLiteral("#0000FF")), QStringLiteral("&H00FF0000"));
        QCOMPARE(HtmlToColorHex(QStringLiteral("#FF8000")), QStringLiteral("&H000080FF"));
        QCOMPARE(ConvertBooleanToNumber(true), 1);
        QCOMPARE(ConvertBooleanToNumber(false), 0);
    }

    void folderOfPath_data()
    {
        columns<QString, QString>("path", "folder");
        row("file url, backslashes", "file://C:\\web\\img\\a.gif", "C:\\web\\img\\");
        row("slashes", "/srv/site/img/a.gif", "/srv/site/img/");
        row("backslash wins", "a/b\\c/d.gif", "a/b\\");
        row("bare name", "a.gif", "");
    }

    void folderOfPath()
    {
        auto [path, folder] = fetch<QString, QString>("path", "folder");
        QCOMPARE(GetFolderOfPath(path), folder);
    }

    void dimensions_data()
    {
        columns<QString, QString, bool>("value", "number", "percent");
        row("percent", "50%", "50", true);
        row("pixels", "50", "50", false);
        row("style pixels", "120px", "120", false);
        row("inner percent signs go", "5%0", "50", false);
        row("empty", "", "", false);
    }

    void dimensions()
    {
        auto [value, number, percent] = fetch<QString, QString, bool>("value", "number", "percent");
        const Dimension dimension = splitDimension(value);
        QCOMPARE(dimension.number, number);
        QCOMPARE(dimension.percent, percent);
        QCOMPARE(
            joinDimension(QStringLiteral("50"), QStringLiteral("percent")), QStringLiteral("50%"));
        QCOMPARE(
            joinDimension(QStringLiteral("50"), QStringLiteral("pixels")), QStringLiteral("50"));
        QCOMPARE(
            joinDimension(QStringLiteral("50"), QStringLiteral("Percent")), QStringLiteral("50"));
        QCOMPARE(joinDimension(QString(), QStringLiteral("percent")), QString());
        QVERIFY(dimensionRemoved(QStringLiteral("0")) && dimensionRemoved(QString()));
        QVERIFY(!dimensionRemoved(QStringLiteral("00")));
        QCOMPARE(cssLength(QStringLiteral("40")), QStringLiteral("40px"));
        QCOMPARE(cssLength(QStringLiteral("40%")), QStringLiteral("40%"));
    }

    void insertTableAttributes_data()
    {
        columns<QStringList, QString, QString, QString>("fields", "background", "table", "cells");
        // border, padding, spacing, width, height, align, bordercolor, bgcolor, and the same
        // three for cells.
        row("empty sizes are written, empty colours not",
            QStringList{
                u"1"_s, u"2"_s, u"0"_s, u"100%"_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s},
            "", "border=1 cellPadding=2 cellSpacing=0 width=100% height=", "");
        row("everything",
            QStringList{u"0"_s, u"1"_s, u"2"_s, u"300"_s, u"50%"_s, u"center"_s, u"#FF0000"_s,
                u"#00FF00"_s, u"right"_s, u"#0000FF"_s, u"#FFFFFF"_s},
            "/img/bg one.gif",
            "border=0 cellPadding=1 cellSpacing=2 width=300 height=50% align=center "
            "bordercolor=#FF0000 bgcolor=#00FF00 background=\"/img/bg one.gif\"",
            " align=right bordercolor=#0000FF bgcolor=#FFFFFF");
    }

    void insertTableAttributes()
    {
        auto [fields, background, table, cells] = fetch<QStringList, QString, QString, QString>(
            "fields", "background", "table", "cells");
        InsertTableValues values;
        QString *texts[] = {&values.BorderSize, &values.CellPadding, &values.CellSpacing,
            &values.Width, &values.Height, &values.Alignment, &values.BorderColor, &values.BGColor,
            &values.AlignmentCell, &values.BorderColorCell, &values.BGColorCell};
        for (int i = 0; i < fields.size(); ++i)
            *texts[i] = fields.at(i);
        QCOMPARE(Dialogs::insertTableAttributes(values, background), table);
        QCOMPARE(insertTableCellAttributes(values), cells);
    }

    void partCountsAndBackground()
    {
        QCOMPARE(tablePartCount(QStringLiteral("3"), 100), std::optional<int>(3));
        QCOMPARE(tablePartCount(QStringLiteral("100"), 100), std::optional<int>(100));
        for (const char *refused : {"", "0", "101", "-1", "2x", " 2"})
            QVERIFY2(!tablePartCount(QLatin1String(refused), 100), refused);
        QCOMPARE(backgroundImagePath(QStringLiteral("/img/"), QStringLiteral("a.gif")),
            QStringLiteral("/img/a.gif"));
        QCOMPARE(backgroundImagePath(QStringLiteral("/img/"), QStringLiteral("/else/a.gif")),
            QStringLiteral("/else/a.gif"));
        QCOMPARE(backgroundImagePath(QStringLiteral("/img/"), QString()), QString());
    }

    void numberBoxFiltersTypingAndSteps()
    {
        NumberBox box(1, 5);
        box.setText(QStringLiteral("3"));
        QTest::keyClicks(box.lineEdit(), QStringLiteral("a-.%7"));
        QCOMPARE(box.text(), QStringLiteral("37"));
        QTest::keyClick(box.lineEdit(), Qt::Key_Backspace);
        QCOMPARE(box.text(), QStringLiteral("37"));
        box.lineEdit()->setCursorPosition(0);
        QTest::keyClick(box.lineEdit(), Qt::Key_Delete);
        QCOMPARE(box.text(), QStringLiteral("7"));
        QTest::keyClick(box.lineEdit(), Qt::Key_Up);
        QCOMPARE(box.text(), QStringLiteral("5"));
        box.setText(QString());
        QTest::keyClick(box.lineEdit(), Qt::Key_Down);
        QCOMPARE(box.text(), QStringLiteral("1"));
    }

    void colorButtonReplacesTheText()
    {
        ColorField field(prompts());
        field.setText(QStringLiteral("#123456"));
        const qsizetype before = m_prompts.shown.size();
        m_prompts.colors.enqueue(QColor(255, 128, 0));
        field.pickColor();
        QCOMPARE(field.text(), QStringLiteral("#FF8000"));
        m_prompts.colors.enqueue(std::nullopt);
        field.pickColor();
        QCOMPARE(field.text(), QString());
        m_prompts.colors.enqueue(std::nullopt);
        field.pickColor();
        // The picker opens on the colour shown, black when there is none.
        QCOMPARE(m_prompts.shown.size(), before + 3);
        QCOMPARE(m_prompts.shown[before].directory, QStringLiteral("#123456"));
        QCOMPARE(m_prompts.shown[before + 1].directory, QStringLiteral("#FF8000"));
        QCOMPARE(m_prompts.shown[before + 2].directory, QStringLiteral("#000000"));
    }

    void insertDialogCollectsUnitsAndRefusesEmptyCounts()
    {
        InsertTableDialog dialog(prompts());
        QCOMPARE(dialog.widthUnit()->currentText(), QStringLiteral("percent"));
        QCOMPARE(dialog.widthUnit()->itemText(1), QStringLiteral("pixels"));
        InsertTableValues values;
        values.Rows = QStringLiteral("3");
        values.Columns = QStringLiteral("4");
        values.Width = QStringLiteral("50");
        values.BGImage = QStringLiteral("bg.gif");
        dialog.setValues(values);
        dialog.height()->setText(QStringLiteral("20"));
        dialog.heightUnit()->setCurrentText(QStringLiteral("percent"));
        const InsertTableValues collected = dialog.values();
        QCOMPARE(collected.Rows, QStringLiteral("3"));
        QCOMPARE(collected.Width, QStringLiteral("50"));
        QCOMPARE(collected.Height, QStringLiteral("20%"));
        QCOMPARE(collected.BGImage, QStringLiteral("bg.gif"));
        QVERIFY(!collected.Cancel);

        dialog.show();
        dialog.columns()->setText(QString());
        dialog.accept();
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        dialog.columns()->setText(QStringLiteral("2"));
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
    }

    void propertyDialogsGiveBackWhatTheyWereGiven()
    {
        TablePropertiesValues table;
        for (QString *text : tablePropertyTexts(table))
            *text = QStringLiteral("#00000%1").arg(tablePropertyTexts(table).indexOf(text));
        table.Width = QStringLiteral("75%");
        table.Height = QStringLiteral("120");
        table.Alignment = QStringLiteral("absmiddle");
        TablePropertiesDialog tableDialog(prompts());
        tableDialog.setValues(table);
        QCOMPARE(tableDialog.width()->text(), QStringLiteral("75"));
        QCOMPARE(tableDialog.widthUnit()->currentText(), QStringLiteral("percent"));
        QCOMPARE(tableDialog.borderHighlight()->text(), table.BorderHighlight);
        TablePropertiesValues tableBack = tableDialog.values();
        for (qsizetype i = 0; i < 11; ++i)
            QCOMPARE(*tablePropertyTexts(tableBack).at(i), *tablePropertyTexts(table).at(i));

        CellPropertiesValues cell;
        for (QString *text : cellPropertyTexts(cell))
            *text = QStringLiteral("9");
        cell.Width = QStringLiteral("30%");
        cell.NoWrap = true;
        CellPropertiesDialog cellDialog(prompts());
        cellDialog.setValues(cell);
        QVERIFY(cellDialog.wrapText()->isChecked());
        CellPropertiesValues cellBack = cellDialog.values();
        for (qsizetype i = 0; i < 10; ++i)
            QCOMPARE(*cellPropertyTexts(cellBack).at(i), *cellPropertyTexts(cell).at(i));
        QVERIFY(cellBack.NoWrap);
        cellBack.ClearValues();
        QVERIFY(cellBack.Width.isEmpty() && cellBack.BorderShadow.isEmpty() && !cellBack.NoWrap);
    }

    void closingTheWindowIsCancel()
    {
        CellPropertiesDialog dialog(prompts());
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        dialog.close();
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
    }

private:
    RecordingPrompts m_prompts;
    PromptsAccess prompts()
    {
        return [this]() -> UserPrompts & { return m_prompts; };
    }
};

QTEST_MAIN(tst_TableDialogs)
#include "tst_tabledialogs.moc"
