// The style, Flash and element-properties rules without an engine, and the attribute
// dialog's refusal of a name no attribute can have.

#include "../common/datarows.h"
#include "../common/recordingprompts.h"

#include "dialogs/elementpropertiesdialog.h"
#include "dialogs/stylerules.h"

#include <QTableWidget>
#include <QTest>

using namespace Vantry;
using namespace Qt::StringLiterals;
using namespace Vantry::Dialogs;
using VantryTest::RecordingPrompts;

using Edits = QList<std::pair<QString, std::optional<QString>>>;
Q_DECLARE_METATYPE(Edits)

class tst_StyleDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void flashObjectBlock()
    {
        FlashPropertiesValues values;
        values.ClearValues();
        values.MovieURL = u"img/intro.swf"_s;
        values.Quality = u"high"_s;
        values.WindowMode = u"opaque"_s;
        values.BGColor = u"#FF0000"_s;
        values.Play = values.Loop = values.ShowMenu = values.DeviceFont = values.EmbedMovie = 0;
        const QString expected = QStringLiteral(
            "<OBJECT id=ShockwaveFlash1 classid=clsid:D27CDB6E-AE6D-11CF-96B8-444553540000 "
            "VIEWASTEXT>"
            "    <PARAM NAME=\"_cx\" VALUE=\"5080\">    <PARAM NAME=\"_cy\" VALUE=\"5080\">"
            "    <PARAM NAME=\"FlashVars\" VALUE=\"\">    <PARAM NAME=\"Movie\" "
            "VALUE=\"img/intro.swf\">"
            "    <PARAM NAME=\"Src\" VALUE=\"img/intro.swf\">    <PARAM NAME=\"WMode\" "
            "VALUE=\"opaque\">"
            "    <PARAM NAME=\"Play\" VALUE=\"0\">    <PARAM NAME=\"Loop\" VALUE=\"0\">"
            "    <PARAM NAME=\"Quality\" VALUE=\"high\">    <PARAM NAME=\"SAlign\" VALUE=\"\">"
            "    <PARAM NAME=\"Menu\" VALUE=\"0\">    <PARAM NAME=\"AllowScriptAccess\" "
            "VALUE=\"always\">"
            "    <PARAM NAME=\"Scale\" VALUE=\"ShowAll\">    <PARAM NAME=\"DeviceFont\" "
            "VALUE=\"0\">"
            "    <PARAM NAME=\"EmbedMovie\" VALUE=\"0\">    <PARAM NAME=\"BGColor\" "
            "VALUE=\"#FF0000\">"
            "    <PARAM NAME=\"SWRemote\" VALUE=\"\">    <PARAM NAME=\"MovieData\" VALUE=\"\">"
            "    <PARAM NAME=\"SeamlessTabbing\" VALUE=\"1\"></OBJECT>");
        QCOMPARE(Dialogs::flashObjectBlock(values), expected);

        // Values go in as they are, and the flags follow the check boxes.
        values.MovieURL = u"a\"b.swf"_s;
        values.Play = values.EmbedMovie = 1;
        const QString block = Dialogs::flashObjectBlock(values);
        QCOMPARE(block.count(u"VALUE=\"a\"b.swf\""_s), 2);
        QVERIFY(block.contains(u"\"Play\" VALUE=\"1\""_s));
        QVERIFY(block.contains(u"\"EmbedMovie\" VALUE=\"1\""_s));
        QVERIFY(block.contains(u"\"Loop\" VALUE=\"0\""_s));
    }

    void flashParamsReadBack()
    {
        FlashPropertiesValues values;
        values.ClearValues();
        readFlashParams(
            {{u"movie"_s, u"m.swf"_s}, {u"PLAY"_s, u"0"_s}, {u"DeviceFont"_s, u"true"_s},
                {u"quality"_s, u"best"_s}, {u"Unknown"_s, u"x"_s}},
            values);
        QCOMPARE(std::tuple(
                     values.MovieURL, values.Play, values.Loop, values.DeviceFont, values.Quality),
            std::tuple(u"m.swf"_s, 0, 1, 1, u"best"_s));
        // What the dialog writes back: Src follows Movie.
        const auto params = flashParams(values);
        QVERIFY(params.contains(std::pair(u"Src"_s, u"m.swf"_s)));
        QVERIFY(params.contains(std::pair(u"Play"_s, u"0"_s)));
    }

    void filterAndStyleText_data()
    {
        columns<QString, QString, QString, QString>("style", "name", "value", "expected");

        const QString alpha = filterText(u"Alpha"_s, u"opacity=50"_s);
        row("filter appended", "color: red", "Filter", alpha,
            "color: red; filter: progid:DXImageTransform.Microsoft.Alpha(opacity=50)");
        row("empty filter property", QString(), "filter", filterText(u"Blur"_s, QString()),
            "filter: progid:DXImageTransform.Microsoft.Blur()");
        row("replaced in place, script name", "background-color: red; width: 5px",
            "backgroundColor", "blue", "background-color: blue; width: 5px");
        row("semicolon inside brackets kept", "filter: x(a;b); color: red", "color", "green",
            "filter: x(a;b); color: green");
        row("empty value removes", "color: red;  width: 5px;", "COLOR", QString(), "width: 5px");
    }

    void filterAndStyleText()
    {
        auto [style, name, value, expected]
            = fetch<QString, QString, QString, QString>("style", "name", "value", "expected");
        const QString written = withStyleDeclaration(style, name, value);
        QCOMPARE(written, expected);
        QCOMPARE(styleDeclaration(written, name), value);
    }

    void classesOfRules()
    {
        const QList<StyleClass> classes = styleClasses({{u"p.note, .warn"_s, u"color: red;"_s},
            {u"h1"_s, u"margin: 0px;"_s}, {u".note:hover"_s, u"color: blue;"_s}});
        QCOMPARE(classes,
            (QList<StyleClass>{{u"note"_s, u"color: red;"_s}, {u"warn"_s, u"color: red;"_s}}));
        QCOMPARE(withClass(u"a  b"_s, u"warn"_s), u"a b warn"_s);
        QCOMPARE(withClass(u"warn"_s, u"warn"_s), u"warn"_s);
    }

    void attributeEdits_data()
    {
        columns<QList<ElementAttribute>, Edits>("after", "edits");

        row("unchanged", QList<ElementAttribute>{{u"id"_s, u"a"_s}, {u"title"_s, u"t"_s}}, Edits{});
        row("changed, added, removed",
            QList<ElementAttribute>{{u"ID"_s, u"b"_s}, {u"onclick"_s, u"alert(1)"_s}},
            Edits{{u"title"_s, std::nullopt}, {u"id"_s, u"b"_s}, {u"onclick"_s, u"alert(1)"_s}});
        row("the last of two rows counts",
            QList<ElementAttribute>{{u"id"_s, u"a"_s}, {u"title"_s, u"x"_s}, {u"title"_s, u"y"_s}},
            Edits{{u"title"_s, u"y"_s}});
    }

    void attributeEdits()
    {
        auto [after, edits] = fetch<QList<ElementAttribute>, Edits>("after", "edits");
        QCOMPARE(Dialogs::attributeEdits({{u"id"_s, u"a"_s}, {u"title"_s, u"t"_s}}, after), edits);
    }

    void attributeDialogRefusesBadNames()
    {
        RecordingPrompts prompts;
        ElementPropertiesDialog dialog([&prompts]() -> UserPrompts & { return prompts; });
        ElementPropertiesValues values;
        values.TagName = u"P"_s;
        values.Attributes = {{u"id"_s, u"a"_s}};
        dialog.setValues(values);
        dialog.addAttribute();
        dialog.table()->item(1, 0)->setText(u"on click"_s);
        dialog.table()->item(1, 1)->setText(u"go()"_s);
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QCOMPARE(prompts.texts(RecordingPrompts::Kind::Information),
            QStringList{u"\"on click\" is not a valid attribute name."_s});
        // Nothing typed is lost: the row is still there to be put right.
        dialog.table()->item(1, 0)->setText(u"onclick"_s);
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.values().Attributes,
            (QList<ElementAttribute>{{u"id"_s, u"a"_s}, {u"onclick"_s, u"go()"_s}}));
    }
};

QTEST_MAIN(tst_StyleDialogs)
#include "tst_styledialogs.moc"
