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
        row("9", int('9'), true, true);
        row("/ below 0", int('/'), false, false);
        row(": above 9", int(':'), false, false);
        row("backspace", 8, false, false);
        row("a", int('a'), false, true);
        row("F", int('F'), false, true);
        row("g", int('g'), false, false);
        row("#", int('#'), false, true);
    }

    void numberKeys()
    {
        auto [key, number, hex] = fetch<int, bool, bool>("key", "number", "hex");
        QCOMPARE(CheckEnterNumber(key), number);
        QCOMPARE(CheckEnterHex(key), hex);
    }

    void conversionsAndCounts()
    {
        QCOMPARE(ColorToHtml(255), u"#FF0000"_s);
        QCOMPARE(ColorToHtml(0), u"#000000"_s);
        QCOMPARE(ColorToHtml(0x0080FF), u"#FF8000"_s);
        QCOMPARE(ColorToHtml(0x80000005), QString()); // a system colour
        QCOMPARE(HtmlToColorHex(u"#0000FF"_s), u"&H00FF0000"_s);
        QCOMPARE(HtmlToColorHex(u"#FF8000"_s), u"&H000080FF"_s);
        QCOMPARE(tablePartCount(u"3"_s, 100), std::optional<int>(3));
        QCOMPARE(tablePartCount(u"100"_s, 100), std::optional<int>(100));
        for (const char *refused : {"", "0", "101", "-1", "2x", " 2"})
            QVERIFY2(!tablePartCount(QLatin1String(refused), 100), refused);
        QCOMPARE(backgroundImagePath(u"/img/"_s, u"a.gif"_s), u"/img/a.gif"_s);
        QCOMPARE(backgroundImagePath(u"/img/"_s, u"/else/a.gif"_s), u"/else/a.gif"_s);
        QCOMPARE(backgroundImagePath(u"/img/"_s, QString()), QString());
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
        QCOMPARE(joinDimension(u"50"_s, u"percent"_s), u"50%"_s);
        QCOMPARE(joinDimension(u"50"_s, u"pixels"_s), u"50"_s);
        QCOMPARE(joinDimension(u"50"_s, u"Percent"_s), u"50"_s);
        QCOMPARE(joinDimension(QString(), u"percent"_s), QString());
        QVERIFY(dimensionRemoved(u"0"_s) && dimensionRemoved(QString()));
        QVERIFY(!dimensionRemoved(u"00"_s));
        QCOMPARE(cssLength(u"40"_s), u"40px"_s);
        QCOMPARE(cssLength(u"40%"_s), u"40%"_s);
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

    void numberBoxFiltersTypingAndSteps()
    {
        NumberBox box(1, 5);
        box.setText(u"3"_s);
        QTest::keyClicks(box.lineEdit(), u"a-.%7"_s);
        QCOMPARE(box.text(), u"37"_s);
        QTest::keyClick(box.lineEdit(), Qt::Key_Backspace);
        QCOMPARE(box.text(), u"37"_s);
        box.lineEdit()->setCursorPosition(0);
        QTest::keyClick(box.lineEdit(), Qt::Key_Delete);
        QCOMPARE(box.text(), u"7"_s);
        QTest::keyClick(box.lineEdit(), Qt::Key_Up);
        QCOMPARE(box.text(), u"5"_s);
        box.setText(QString());
        QTest::keyClick(box.lineEdit(), Qt::Key_Down);
        QCOMPARE(box.text(), u"1"_s);
    }

    void colorButtonReplacesTheText()
    {
        ColorField field(prompts());
        field.setText(u"#123456"_s);
        const qsizetype before = m_prompts.shown.size();
        m_prompts.colors.enqueue(QColor(255, 128, 0));
        field.pickColor();
        QCOMPARE(field.text(), u"#FF8000"_s);
        m_prompts.colors.enqueue(std::nullopt);
        field.pickColor();
        QCOMPARE(field.text(), QString());
        m_prompts.colors.enqueue(std::nullopt);
        field.pickColor();
        // The picker opens on the colour shown, black when there is none.
        QCOMPARE(m_prompts.shown.size(), before + 3);
        QCOMPARE(m_prompts.shown[before].directory, u"#123456"_s);
        QCOMPARE(m_prompts.shown[before + 1].directory, u"#FF8000"_s);
        QCOMPARE(m_prompts.shown[before + 2].directory, u"#000000"_s);
    }

    void insertDialogCollectsUnitsAndRefusesEmptyCounts()
    {
        InsertTableDialog dialog(prompts());
        QCOMPARE(dialog.widthUnit()->currentText(), u"percent"_s);
        QCOMPARE(dialog.widthUnit()->itemText(1), u"pixels"_s);
        InsertTableValues values;
        values.Rows = u"3"_s;
        values.Columns = u"4"_s;
        values.Width = u"50"_s;
        values.BGImage = u"bg.gif"_s;
        dialog.setValues(values);
        dialog.height()->setText(u"20"_s);
        dialog.heightUnit()->setCurrentText(u"percent"_s);
        const InsertTableValues collected = dialog.values();
        QCOMPARE(collected.Rows, u"3"_s);
        QCOMPARE(collected.Width, u"50"_s);
        QCOMPARE(collected.Height, u"20%"_s);
        QCOMPARE(collected.BGImage, u"bg.gif"_s);
        QVERIFY(!collected.Cancel);

        dialog.show();
        dialog.columns()->setText(QString());
        dialog.accept();
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        dialog.columns()->setText(u"2"_s);
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
    }

    void propertyDialogsGiveBackWhatTheyWereGiven()
    {
        TablePropertiesValues table;
        for (QString *text : tablePropertyTexts(table))
            *text = u"#00000%1"_s.arg(tablePropertyTexts(table).indexOf(text));
        table.Width = u"75%"_s;
        table.Height = u"120"_s;
        table.Alignment = u"absmiddle"_s;
        TablePropertiesDialog tableDialog(prompts());
        tableDialog.setValues(table);
        QCOMPARE(tableDialog.width()->text(), u"75"_s);
        QCOMPARE(tableDialog.widthUnit()->currentText(), u"percent"_s);
        QCOMPARE(tableDialog.borderHighlight()->text(), table.BorderHighlight);
        TablePropertiesValues tableBack = tableDialog.values();
        for (qsizetype i = 0; i < 11; ++i)
            QCOMPARE(*tablePropertyTexts(tableBack).at(i), *tablePropertyTexts(table).at(i));

        CellPropertiesValues cell;
        for (QString *text : cellPropertyTexts(cell))
            *text = u"9"_s;
        cell.Width = u"30%"_s;
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

private:
    RecordingPrompts m_prompts;
    PromptsAccess prompts()
    {
        return [this]() -> UserPrompts & { return m_prompts; };
    }
};

QTEST_MAIN(tst_TableDialogs)
#include "tst_tabledialogs.moc"
