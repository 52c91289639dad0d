// The editing commands of the design surface on the real engine: states computed from the
// selection, tables edited on their grid, positioning and layering, the display switches,
// and one undo history for typing, formatting and the adapter's own edits.

#include "../common/datarows.h"
#include "../common/surfacefixture.h"

#include "commands/commandsink.h"

#include <QRegularExpression>

using namespace Vantry;
using Platform::CommandState;
using Platform::DesignSurface;
using Platform::Element;
using VantryTest::columns;
using VantryTest::row;

namespace {

using namespace Vantry::Commands::DesignCommand;
constexpr int SetBlockFmt = 5043;

// A list from words separated by blanks.
QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

class tst_CommandSet : public VantryTest::SurfaceFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(start()); }

    void textStates_data()
    {
        columns<QString, QString, bool, int, int>("body", "selected", "caret", "command", "state");

        const QString mixed = QStringLiteral("<p>plain <b>strong</b> <i>slanted</i> "
                                             "<u>lined</u> <span style=\"font-weight:700\">"
                                             "heavy</span> end</p>");
        row("bold selected", mixed, "strong", false, int(Bold), 7);
        row("caret in bold", mixed, "ron", true, int(Bold), 7);
        row("bold by style", mixed, "heavy", false, int(Bold), 7);
        row("bold and plain", mixed, "in strong", false, int(Bold), 11);
        row("plain", mixed, "plain", false, int(Bold), 3);
        row("italic", mixed, "slanted", false, int(Italic), 7);
        row("italic and plain", mixed, "slanted lin", false, int(Italic), 11);
        row("underline", mixed, "lined", false, int(Underline), 7);
        row("underline in bold", "<p><u>a <b>deep</b> b</u></p>", "deep", false, int(Underline), 7);
    }

    void textStates()
    {
        QFETCH(QString, body);
        QFETCH(QString, selected);
        QFETCH(bool, caret);
        QFETCH(int, command);
        QFETCH(int, state);
        load(body);
        if (caret)
            caretAt(selected);
        else
            select(selected);
        QCOMPARE(m_surface->commandStatus(command), state);
    }

    void statusComesForAllCommandsAtOnce()
    {
        load(QStringLiteral("<p>outside</p><table><tr><td>cell</td></tr></table>"));
        caretAt(QStringLiteral("outside"));
        const QList<int> ids{Bold, InsertRow, DeleteRows, MakeAbsolute, 4999, 5001};
        const QHash<int, CommandState> status = m_surface->queryStatus(ids);
        QCOMPARE(status.size(), ids.size());
        QCOMPARE(status.value(Bold), 3);
        QCOMPARE(status.value(InsertRow), 1);
        QCOMPARE(status.value(4999), 0);
        QCOMPARE(status.value(5001), 0);

        caretAt(QStringLiteral("cell"));
        const QHash<int, CommandState> inCell = m_surface->queryStatus(ids);
        QCOMPARE(inCell.value(InsertRow), 3);
        QCOMPARE(inCell.value(DeleteRows), 3);

        // The font values come in the same answer, and only for commands that have one.
        load(QStringLiteral("<p><font face=\"Courier New\" size=\"5\">mono</font> plain</p>"));
        caretAt(QStringLiteral("mono"));
        QHash<int, QVariant> values;
        const QHash<int, CommandState> withFont
            = m_surface->queryStatus({Bold, GetFontName, GetFontSize}, &values);
        QCOMPARE(withFont.value(GetFontName), 3);
        QCOMPARE(values.value(GetFontName).toString(), QStringLiteral("Courier New"));
        QCOMPARE(values.value(GetFontSize).toInt(), 5);
        QVERIFY(!values.contains(Bold));

        values.clear();
        QVERIFY(
            js(QStringLiteral("selectBetween"), {QStringLiteral("mono"), QStringLiteral("plain")})
                .toBool());
        const QHash<int, CommandState> mixed = m_surface->queryStatus({GetFontName}, &values);
        QCOMPARE(mixed.value(GetFontName), 11);
        QVERIFY(values.isEmpty());
    }

    void boldTogglesTheSelection()
    {
        load(QStringLiteral("<p>one two three</p>"));
        m_surface->useElementFormatting();
        select(QStringLiteral("two"));
        QVERIFY(m_surface->execCommand(Bold, DesignSurface::OptionDontPromptUser));
        QCOMPARE(m_surface->bodyInnerHTML(), QStringLiteral("<p>one <b>two</b> three</p>"));
        QCOMPARE(m_surface->commandStatus(Bold), 7);
        QVERIFY(m_surface->execCommand(Bold, DesignSurface::OptionDontPromptUser));
        QCOMPARE(m_surface->bodyInnerHTML(), QStringLiteral("<p>one two three</p>"));
        QCOMPARE(m_surface->commandStatus(Bold), 3);
    }

    // A run inside one text node is formatted by the adapter, the rest by the engine; both
    // must leave what the engine would, pressed, and one undo step. The same command again
    // removes the format.
    void inlineFormats_data()
    {
        columns<QString, QString, int, QString, QString>(
            "body", "selected", "command", "formatted", "toggled");

        const QString plain = QStringLiteral("<p>one two three</p>");
        row("bold", plain, "two", int(Bold), "<p>one <b>two</b> three</p>", plain);
        row("italic", plain, "two", int(Italic), "<p>one <i>two</i> three</p>", plain);
        row("underline", plain, "two", int(Underline), "<p>one <u>two</u> three</p>", plain);
        row("whole paragraph", plain, "one two three", int(Bold), "<p><b>one two three</b></p>",
            plain);
        row("run touching bold", "<p><b>one</b>two three</p>", "two", int(Bold),
            "<p><b>onetwo</b> three</p>", "<p><b>one</b>two three</p>");
        row("inside a light span", "<p><span style=\"font-weight: 300;\">one two</span></p>", "two",
            int(Bold), "<p><span style=\"font-weight: 300;\">one </span><b>two</b></p>",
            "<p><span style=\"font-weight: 300;\">one </span>two</p>");
    }

    void inlineFormats()
    {
        QFETCH(QString, body);
        QFETCH(QString, selected);
        QFETCH(int, command);
        QFETCH(QString, formatted);
        QFETCH(QString, toggled);
        load(body);
        m_surface->useElementFormatting();
        const QString loaded = m_surface->bodyInnerHTML();
        select(selected);
        QVERIFY2(m_surface->execCommand(command), qPrintable(m_surface->lastError()));
        QCOMPARE(m_surface->bodyInnerHTML(), formatted);
        QCOMPARE(m_surface->commandStatus(command), 7);
        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(m_surface->bodyInnerHTML(), loaded);
        QVERIFY(m_surface->execCommand(Redo));
        QCOMPARE(m_surface->bodyInnerHTML(), formatted);
        select(selected);
        QVERIFY(m_surface->execCommand(command));
        QCOMPARE(m_surface->bodyInnerHTML(), toggled);
        QCOMPARE(m_surface->commandStatus(command), 3);
    }

    void fontStates_data()
    {
        columns<QString, int, int, QVariant>("selected", "command", "state", "value");

        row("one face", "serif text", int(GetFontName), 3, QVariant(QStringLiteral("Courier")));
        row("two faces", "text sans", int(GetFontName), 11, QVariant(QString()));
        row("html size", "big", int(GetFontSize), 3, QVariant(5));
        row("two sizes", "big small", int(GetFontSize), 11, QVariant(0));
    }

    void fontStates()
    {
        QFETCH(QString, selected);
        QFETCH(int, command);
        QFETCH(int, state);
        QFETCH(QVariant, value);
        load(QStringLiteral("<p><font face=\"Courier\">serif text</font> "
                            "<font face=\"Arial\">sans</font></p>"
                            "<p><font size=\"5\">big</font> <font size=\"1\">small</font></p>"));
        select(selected);
        QCOMPARE(m_surface->commandStatus(command), state);
        QVariant result;
        QVERIFY(m_surface->execCommand(command, DesignSurface::OptionDontPromptUser, {}, &result));
        QCOMPARE(result.toString(), value.toString());
    }

    void blockFormats()
    {
        load(QStringLiteral("<p>para</p>"));
        caretAt(QStringLiteral("para"));
        QVariant names;
        QVERIFY(m_surface->execCommand(
            GetBlockFormatNames, DesignSurface::OptionDontPromptUser, {}, &names));
        const QStringList list = names.toStringList();
        QVERIFY(list.contains(QStringLiteral("Normal")));
        QVERIFY(list.contains(QStringLiteral("Heading 1")));
        QCOMPARE(list.count(QStringLiteral("Normal")), 1);

        QVERIFY(m_surface->execCommand(
            SetBlockFmt, DesignSurface::OptionDontPromptUser, QStringLiteral("Heading 2")));
        QCOMPARE(m_surface->bodyInnerHTML(), QStringLiteral("<h2>para</h2>"));
        QVariant current;
        QVERIFY(m_surface->execCommand(5011, DesignSurface::OptionDontPromptUser, {}, &current));
        QCOMPARE(current.toString(), QStringLiteral("Heading 2"));
    }

    void tableCommands_data()
    {
        columns<QString, QString, int, int, int, QStringList>(
            "caret", "extendTo", "command", "rows", "width", "gone");

        row("row above a spanned row", "d", "", InsertRow, 4, 4, words(""));
        row("row above the last", "g", "", InsertRow, 4, 4, words(""));
        row("column through a colspan", "i", "", InsertCol, 3, 5, words(""));
        row("column left of a rowspan", "a", "", InsertCol, 3, 5, words(""));
        row("cell", "g", "", InsertCell, 3, 5, words(""));
        row("delete row under a rowspan", "d", "", DeleteRows, 2, 4, words("d e"));
        row("delete row of a rowspan", "b", "", DeleteRows, 2, 4, words("b c x"));
        row("delete column in a colspan", "i", "", DeleteCols, 3, 3, words("x i"));
        row("delete two columns", "f", "g", DeleteCols, 3, 2, words("a b d f g"));
        row("delete cell", "g", "", DeleteCells, 3, 4, words("g"));
        row("merge across", "g", "h", MergeCells, 3, 4, words(""));
        row("merge with the right", "b", "", MergeCells, 3, 4, words(""));
        row("merge a block", "b", "e", MergeCells, 3, 4, words(""));
        row("split a colspan", "e", "", SplitCell, 3, 4, words(""));
        row("split a rowspan", "a", "", SplitCell, 3, 4, words(""));
        row("split a single cell", "g", "", SplitCell, 3, 5, words(""));
    }

    void tableCommands()
    {
        QFETCH(QString, caret);
        QFETCH(QString, extendTo);
        QFETCH(int, command);
        QFETCH(int, rows);
        QFETCH(int, width);
        QFETCH(QStringList, gone);
        // a b c x        a spans two rows, e two columns
        // a d e e
        // f g h i
        load(QStringLiteral(
            "<table><tbody><tr><td rowspan=\"2\">a</td><td>b</td><td>c</td><td>x</td></tr>"
            "<tr><td>d</td><td colspan=\"2\">e</td></tr>"
            "<tr><td>f</td><td>g</td><td>h</td><td>i</td></tr></tbody></table>"));
        const QStringList before = m_surface->bodyInnerText().split(
            QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
        if (extendTo.isEmpty()) {
            caretAt(caret);
        } else {
            QVERIFY(js(QStringLiteral("selectBetween"), {caret, extendTo}).toBool());
        }
        QVERIFY2(m_surface->execCommand(command), qPrintable(m_surface->lastError()));

        const Element tableElement = m_surface->elementsByTagName(QStringLiteral("table")).first();
        const QVariantList widths
            = js(QStringLiteral("tableRowWidths"), {tableElement.toVariant()}).toList();
        QCOMPARE(widths.size(), rows);
        for (const QVariant &w : widths)
            QCOMPARE(w.toInt(), width);
        const QString text = m_surface->bodyInnerText();
        for (const QString &word : before) {
            const bool present = text.contains(word);
            QVERIFY2(present != gone.contains(word), qPrintable(word + QLatin1String(": ") + text));
        }
    }

    void mergeKeepsContentWithoutText_data()
    {
        columns<QString, bool>("content", "kept");
        row("empty anchor", "<a name=\"here\"></a>", true);
        row("embed", "<embed src=\"clip.swf\">", true);
        row("rule", "<hr>", true);
        row("drop-down", "<select><option></option></select>", true);
        row("classed span", "<span class=\"mark\"></span>", true);
        row("comment", "<!-- keep -->", true);
        row("empty division", "<div></div>", false);
        row("line break", " <br> ", false);
    }

    void mergeKeepsContentWithoutText()
    {
        QFETCH(QString, content);
        QFETCH(bool, kept);
        load(QStringLiteral("<table><tbody><tr><td>a</td><td>%1</td></tr></tbody></table>")
                 .arg(content));
        caretAt(QStringLiteral("a"));
        QVERIFY2(m_surface->execCommand(MergeCells), qPrintable(m_surface->lastError()));
        QCOMPARE(m_surface->bodyInnerHTML(),
            QStringLiteral("<table><tbody><tr><td colspan=\"2\">a%1</td></tr></tbody></table>")
                .arg(kept ? QStringLiteral("<br>") + content : QString()));
    }

    void lastRowColumnAndCellStay_data()
    {
        columns<int, QString>("command", "message");
        row("row", int(DeleteRows), "last row");
        row("column", int(DeleteCols), "last column");
        row("cell", int(DeleteCells), "last cell");
    }

    void lastRowColumnAndCellStay()
    {
        QFETCH(int, command);
        QFETCH(QString, message);
        const QString table
            = QStringLiteral("<table><tbody><tr><td>only</td></tr></tbody></table>");
        load(table);
        caretAt(QStringLiteral("only"));
        QVERIFY(!m_surface->execCommand(command));
        QVERIFY2(m_surface->lastError().contains(message), qPrintable(m_surface->lastError()));
        QCOMPARE(m_surface->bodyInnerHTML(), table);
    }

    void absoluteKeepsThePlaceOnScreen()
    {
        load(QStringLiteral("<p>first line</p><div style=\"margin-left: 30px\">the block</div>"
                            "<p>after</p>"));
        const Element div = m_surface->elementsByTagName(QStringLiteral("div")).first();
        const QRectF before = m_surface->boundingRect(div);
        QVERIFY(m_surface->selectElement(div));
        QCOMPARE(m_surface->commandStatus(MakeAbsolute), 3);
        QVERIFY(m_surface->execCommand(MakeAbsolute));
        QCOMPARE(
            m_surface->styleProperty(div, QStringLiteral("position")), QStringLiteral("absolute"));
        const QRectF after = m_surface->boundingRect(div);
        QVERIFY2(qAbs(after.left() - before.left()) <= 1 && qAbs(after.top() - before.top()) <= 1
                && qAbs(after.width() - before.width()) <= 1,
            qPrintable(QStringLiteral("%1,%2 %3 -> %4,%5 %6")
                           .arg(before.left())
                           .arg(before.top())
                           .arg(before.width())
                           .arg(after.left())
                           .arg(after.top())
                           .arg(after.width())));
        QVERIFY(m_surface->selectElement(div));
        QCOMPARE(m_surface->commandStatus(MakeAbsolute), 7);

        QVERIFY(m_surface->execCommand(MakeAbsolute));
        QCOMPARE(m_surface->outerHTML(div),
            QStringLiteral("<div style=\"margin-left: 30px\">the "
                           "block</div>"));
        QVERIFY(m_surface->selectElement(div));
        QCOMPARE(m_surface->commandStatus(MakeAbsolute), 3);
    }

    void lockIsNotSaved()
    {
        load(QStringLiteral("<div style=\"position: absolute; left: 10px; top: 10px\">box</div>"));
        const Element div = m_surface->elementsByTagName(QStringLiteral("div")).first();
        const QString markup = m_surface->documentHTML();
        QVERIFY(m_surface->selectElement(div));
        QCOMPARE(m_surface->commandStatus(LockElement), 3);
        QVERIFY(m_surface->execCommand(LockElement));
        QVERIFY(m_surface->selectElement(div));
        QCOMPARE(m_surface->commandStatus(LockElement), 7);
        QCOMPARE(m_surface->documentHTML(), markup);
        QVERIFY(m_surface->execCommand(LockElement));
        QVERIFY(m_surface->selectElement(div));
        QCOMPARE(m_surface->commandStatus(LockElement), 3);
    }

    void layering_data()
    {
        columns<QString, int, QString>("selected", "command", "order");

        // Painted as: text a b r c. r is positioned in the flow, not lifted, and layered all
        // the same.
        row("bring to front", "a", int(BringToFront), "text b r c a");
        row("send to back", "c", int(SendToBack), "text c a b r");
        row("bring forward", "a", int(BringForward), "text b a r c");
        row("bring forward past a tie", "b", int(BringForward), "text a r b c");
        row("send backward", "c", int(SendBackward), "text a b c r");
        row("send below text", "b", int(SendBelowText), "b text a r c");
        row("bring above text", "b", 5039, "text a r c b");
        row("front already", "c", int(BringToFront), "text a b r c");
    }

    void layering()
    {
        QFETCH(QString, selected);
        QFETCH(int, command);
        QFETCH(QString, order);
        load(QStringLiteral(
            "<div style=\"position: absolute; left: 0px; top: 0px; z-index: 1\">a</div>"
            "<div style=\"position: absolute; left: 20px; top: 0px; z-index: 2\">b</div>"
            "<div style=\"position: absolute; left: 40px; top: 0px; z-index: 3\">c</div>"
            "<div style=\"position: relative; z-index: 2\">r</div>"));
        QCOMPARE(paintingOrder(), QStringLiteral("text a b r c"));
        const QList<Element> divs = m_surface->elementsByTagName(QStringLiteral("div"));
        const Element element = divs.at(QStringLiteral("abcr").indexOf(selected));
        QVERIFY(m_surface->selectElement(element));
        QCOMPARE(m_surface->commandStatus(command), 3);
        QVERIFY(m_surface->execCommand(command));
        QCOMPARE(paintingOrder(), order);
    }

    void displaySwitchesLeaveMarkupAlone()
    {
        load(QStringLiteral("<table><tbody><tr><td>cell</td></tr></tbody></table>"
                            "<a name=\"here\"></a><p>text<!-- note --> more<br>next</p>"));
        const QString markup = m_surface->documentHTML();
        const Element cell = m_surface->elementsByTagName(QStringLiteral("td")).first();
        QVERIFY(!m_surface->showBorders());
        QVERIFY(m_surface->setShowBorders(true));
        QVERIFY(m_surface->setShowDetails(true));
        QVERIFY(m_surface->setSnapToGrid(true));
        QVERIFY(m_surface->showBorders());
        QVERIFY(m_surface->showDetails());
        QVERIFY(m_surface->snapToGrid());
        QCOMPARE(js(QStringLiteral("computedStyle"),
                     {cell.toVariant(), QStringLiteral("outline-style"), QString()})
                     .toString(),
            QStringLiteral("dashed"));
        const Element anchor = m_surface->elementsByTagName(QStringLiteral("a")).first();
        QVERIFY(js(QStringLiteral("computedStyle"),
            {anchor.toVariant(), QStringLiteral("content"), QStringLiteral("::before")})
                    .toString()
                    .contains(QChar(0x2693)));
        // Comments and line breaks get marks where they stand: the comment after "text", the
        // break at the end of the first line, above the second.
        const auto marks = [this] { return js(QStringLiteral("detailMarks"), {}).toList(); };
        const QVariantList shown = marks();
        QCOMPARE(shown.size(), 2);
        const QVariantMap comment = shown.at(0).toMap();
        const QVariantMap lineBreak = shown.at(1).toMap();
        QCOMPARE(comment.value(QStringLiteral("kind")).toString(), QStringLiteral("comment"));
        QCOMPARE(lineBreak.value(QStringLiteral("kind")).toString(), QStringLiteral("break"));
        QVERIFY(comment.value(QStringLiteral("x")).toInt() > 0);
        QVERIFY(lineBreak.value(QStringLiteral("x")).toInt()
            > comment.value(QStringLiteral("x")).toInt());
        QCOMPARE(lineBreak.value(QStringLiteral("y")).toInt(),
            comment.value(QStringLiteral("y")).toInt());
        QCOMPARE(m_surface->documentHTML(), markup);
        QCOMPARE(js(QStringLiteral("undoDepth"), {}).toList().value(0).toInt(), 0);

        // Marks follow edits within a frame, and undo.
        const auto kinds = [&marks] {
            QStringList out;
            for (const QVariant &mark : marks())
                out << mark.toMap().value(QStringLiteral("kind")).toString();
            return out.join(QLatin1Char(' '));
        };
        QVERIFY(m_surface->setInnerHTML(m_surface->elementsByTagName(QStringLiteral("p")).first(),
            QStringLiteral("a<br>b<br>c")));
        QTRY_COMPARE(kinds(), QStringLiteral("break break"));
        QVERIFY(m_surface->execCommand(Undo));
        QTRY_COMPARE(kinds(), QStringLiteral("comment break"));
        QCOMPARE(m_surface->documentHTML(), markup);

        QVERIFY(m_surface->setShowBorders(false));
        QVERIFY(m_surface->setShowDetails(false));
        QVERIFY(m_surface->setSnapToGrid(false));
        QVERIFY(marks().isEmpty());
        QVERIFY(!m_surface->documentHTML().contains(QLatin1String("vantry-marks")));
        QCOMPARE(js(QStringLiteral("computedStyle"),
                     {cell.toVariant(), QStringLiteral("outline-style"), QString()})
                     .toString(),
            QStringLiteral("none"));
    }

    void draggingMovesPositionedElements_data()
    {
        columns<bool, bool, QPoint>("snap", "lock", "topLeft");

        row("free", false, false, QPoint(123, 117));
        row("snapped to the grid", true, false, QPoint(120, 120));
        row("locked", false, true, QPoint(100, 100));
    }

    void draggingMovesPositionedElements()
    {
        QFETCH(bool, snap);
        QFETCH(bool, lock);
        QFETCH(QPoint, topLeft);
        load(QStringLiteral("<p>text</p><div style=\"position: absolute; left: 100px; top: 100px; "
                            "width: 100px; height: 50px\">box</div>"));
        const QString loaded = m_surface->bodyInnerHTML();
        QVERIFY(m_surface->setSnapToGrid(snap));
        const Element div = m_surface->elementsByTagName(QStringLiteral("div")).first();
        if (lock) {
            QVERIFY(m_surface->selectElement(div));
            QVERIFY(m_surface->execCommand(LockElement));
        }
        waitForFrame();

        QWidget *mouse = VantryTest::inputOf(*m_surface);
        // On the left edge, where a click takes the element whole.
        const QPoint grip(102, 125);
        QTest::mousePress(mouse, Qt::LeftButton, Qt::NoModifier, grip);
        QTest::mouseMove(mouse, grip + QPoint(10, 10));
        QTest::mouseMove(mouse, grip + QPoint(23, 17));
        QTest::mouseRelease(mouse, Qt::LeftButton, Qt::NoModifier, grip + QPoint(23, 17));
        const QString left = QString::number(topLeft.x()) + QLatin1String("px");
        const QString top = QString::number(topLeft.y()) + QLatin1String("px");
        QTRY_COMPARE(m_surface->styleProperty(div, QStringLiteral("left")), left);
        QCOMPARE(m_surface->styleProperty(div, QStringLiteral("top")), top);
        QVERIFY(m_surface->setSnapToGrid(false));
        if (lock)
            return;
        // The drag is one step once the button is up.
        QTRY_COMPARE(m_surface->commandStatus(Undo), 3);
        QVERIFY2(m_surface->execCommand(Undo), qPrintable(m_surface->lastError()));
        QCOMPARE(m_surface->bodyInnerHTML(), loaded);
    }

    void undoAndRedoFollowOneHistory()
    {
        load(QStringLiteral("<table><tbody><tr><td>cell</td></tr></tbody></table><p>word</p>"));
        m_surface->useElementFormatting();
        const QString loaded = m_surface->bodyInnerHTML();
        QWidget *keys = input();

        // Typing, then a table command, then formatting.
        caretAt(QStringLiteral("word"), true);
        QTest::keyClicks(keys, QStringLiteral("xy"));
        QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("wordxy")));
        const QString typed = m_surface->bodyInnerHTML();

        caretAt(QStringLiteral("cell"));
        QVERIFY(m_surface->execCommand(InsertRow));
        const QString withRow = m_surface->bodyInnerHTML();
        QCOMPARE(withRow.count(QLatin1String("<tr>")), 2);

        select(QStringLiteral("wordxy"));
        QVERIFY(m_surface->execCommand(Bold));
        const QString bold = m_surface->bodyInnerHTML();
        QVERIFY(bold.contains(QLatin1String("<b>wordxy</b>")));

        const QStringList states{loaded, typed, withRow, bold};
        for (int i = states.size() - 2; i >= 0; --i) {
            QCOMPARE(m_surface->commandStatus(Undo), 3);
            QVERIFY(m_surface->execCommand(Undo));
            QCOMPARE(m_surface->bodyInnerHTML(), states.at(i));
        }
        QCOMPARE(m_surface->commandStatus(Undo), 1);
        for (int i = 1; i < states.size(); ++i) {
            QVERIFY(m_surface->execCommand(Redo));
            QCOMPARE(m_surface->bodyInnerHTML(), states.at(i));
        }
        QCOMPARE(m_surface->commandStatus(Redo), 1);
    }

    // The engine ends its typing step when the selection is set, even to where the caret
    // was; the history's one typing step still goes back, and comes again, whole.
    void typingGoesBackWholeWhereTheEngineSplitIt()
    {
        load(QStringLiteral("<p>first</p><p>word</p>"));
        const QString loaded = m_surface->bodyInnerHTML();
        QWidget *keys = input();
        caretAt(QStringLiteral("word"), true);
        QTest::keyClicks(keys, QStringLiteral("xy"));
        QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("wordxy")));
        caretAt(QStringLiteral("wordxy"), true);
        QTest::keyClicks(keys, QStringLiteral("z"));
        QTest::keyClick(keys, Qt::Key_Backspace);
        QTest::keyClicks(keys, QStringLiteral("Z"));
        QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("wordxyZ")));
        const QString typed = m_surface->bodyInnerHTML();

        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(m_surface->bodyInnerHTML(), loaded);
        QCOMPARE(m_surface->commandStatus(Undo), 1);
        QVERIFY(m_surface->execCommand(Redo));
        QCOMPARE(m_surface->bodyInnerHTML(), typed);
    }

    void enterDoesNotCopyIds()
    {
        load(QStringLiteral("<p id=\"intro\">first</p>"));
        QWidget *keys = input();
        caretAt(QStringLiteral("first"), true);
        QTest::keyClick(keys, Qt::Key_Return);
        QTRY_COMPARE(m_surface->elementsByTagName(QStringLiteral("p")).size(), 2);
        QTest::keyClicks(keys, QStringLiteral("next"));
        QTRY_VERIFY2(m_surface->bodyInnerText().contains(QLatin1String("next")),
            qPrintable(m_surface->bodyInnerHTML()));
        const QString html = m_surface->bodyInnerHTML();
        QCOMPARE(html.count(QLatin1String("id=\"intro\"")), 1);
        QVERIFY2(html.startsWith(QLatin1String("<p id=\"intro\">first</p>")), qPrintable(html));
    }

    // The key removes the element selected whole, and nothing else, as one undo step.
    void deletingAnElementCanBeUndone()
    {
        load(QStringLiteral("<p>before <img src=\"data:image/gif;base64,R0lGODlhAQABAIAAAP///"
                            "wAAACH5BAEAAAAALAAAAAABAAEAAAICRAEAOw==\" width=\"20\"> after</p>"));
        const QString loaded = m_surface->bodyInnerHTML();
        QWidget *keys = input();
        QVERIFY(m_surface->selectElement(m_surface->images().first()));
        QSignalSpy changed(m_surface, &Platform::DesignSurface::contentChanged);
        QTest::keyClick(keys, Qt::Key_Delete);
        QTRY_VERIFY(m_surface->images().isEmpty());
        QVERIFY(m_surface->bodyInnerHTML().contains(QStringLiteral("before  after")));
        QTRY_VERIFY(!changed.isEmpty());
        QCOMPARE(m_surface->selectionType(), Platform::SelectionType::None);
        QTRY_COMPARE(m_surface->commandStatus(Undo), 3);
        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(m_surface->bodyInnerHTML(), loaded);
        QVERIFY(m_surface->execCommand(Redo));
        QVERIFY(m_surface->images().isEmpty());
    }

    void keyboardUndoTakesTheSameSteps()
    {
        load(QStringLiteral("<table><tbody><tr><td>cell</td></tr></tbody></table><p>word</p>"));
        QWidget *keys = input();
        caretAt(QStringLiteral("word"), true);
        QTest::keyClicks(keys, QStringLiteral("s"));
        QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("words")));
        const QString typed = m_surface->bodyInnerHTML();
        caretAt(QStringLiteral("cell"));
        QVERIFY(m_surface->execCommand(InsertCol));

        QTest::keyClick(keys, Qt::Key_Z, Qt::ControlModifier);
        QTRY_COMPARE(m_surface->bodyInnerHTML(), typed);
        QTest::keyClick(keys, Qt::Key_Z, Qt::ControlModifier);
        QTRY_VERIFY(!m_surface->bodyInnerText().contains(QLatin1String("words")));
    }

    // In a long document the block being typed into is laid out on its own: the markup and the
    // undo history never show it, and a block the typing makes taller shows all its text.
    void typingInALongDocumentLeavesNoTrace()
    {
        QString body;
        for (int i = 0; i < 800; ++i)
            body += QStringLiteral("<p>paragraph %1 text</p>").arg(i);
        m_editor->setSetHtmlSource(body);
        QTRY_VERIFY(m_editor->isDocumentReady());
        const QString loaded = m_surface->bodyInnerHTML();
        const QString source = m_editor->GetHtmlSource();
        QWidget *keys = input();
        caretAt(QStringLiteral("paragraph 400 text"), true);

        QTest::keyClicks(keys, QStringLiteral("ab"));
        QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("paragraph 400 textab")));
        QCOMPARE(js(QStringLiteral("typingBlock")).toMap().value(QStringLiteral("text")),
            QStringLiteral("paragraph 400 textab"));

        // Enough for several more lines.
        const QString words = QStringLiteral(" more words to wrap").repeated(12);
        QTest::keyClicks(keys, words);
        const QString typed = QStringLiteral("paragraph 400 textab") + words;
        QTRY_VERIFY(m_surface->bodyInnerText().contains(typed));
        const QVariantMap block = js(QStringLiteral("typingBlock")).toMap();
        QCOMPARE(block.value(QStringLiteral("text")).toString(), typed);
        QCOMPARE(block.value(QStringLiteral("clipped")), false);

        QString expected = loaded;
        expected.replace(QStringLiteral("paragraph 400 text</p>"), typed + QStringLiteral("</p>"));
        QCOMPARE(m_surface->bodyInnerHTML(), expected);
        QString expectedSource = source;
        expectedSource.replace(
            QStringLiteral("paragraph 400 text</p>"), typed + QStringLiteral("</p>"));
        QCOMPARE(m_editor->GetHtmlSource(), expectedSource);

        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(m_surface->bodyInnerHTML(), loaded);
        QVERIFY(!js(QStringLiteral("typingBlock")).isValid());
    }

    // Far from the view and the caret, blocks skip their rendering outright; a search and a
    // caret put there by a call still find them rendered.
    void farBlocksComeBackWhenReached()
    {
        QString body;
        for (int i = 0; i < 3000; ++i)
            body += QStringLiteral("<p>paragraph %1 text</p>").arg(i);
        m_editor->setSetHtmlSource(body);
        QTRY_VERIFY(m_editor->isDocumentReady());
        waitForFrame();

        QVERIFY(m_surface->findNext(QStringLiteral("paragraph 2900 text"), {}));
        QCOMPARE(js(QStringLiteral("engineSelectionText")), QStringLiteral("paragraph 2900 text"));

        QWidget *keys = input();
        caretAt(QStringLiteral("paragraph 1500 text"), true);
        QTest::keyClicks(keys, QStringLiteral("ab"));
        QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("paragraph 1500 textab")));
    }

private:
    // The divs named by their text, bottom to top as they are painted, with "text" where the
    // page's text lies between the layers below it and those above it.
    QString paintingOrder()
    {
        struct Layer
        {
            int z;
            int index;
            QString name;
        };
        QList<Layer> layers;
        const QList<Element> divs = m_surface->elementsByTagName(QStringLiteral("div"));
        for (const Element &div : divs) {
            layers.append({m_surface->styleProperty(div, QStringLiteral("z-index")).toInt(),
                int(layers.size()), m_surface->innerHTML(div)});
        }
        std::sort(layers.begin(), layers.end(), [](const Layer &a, const Layer &b) {
            return std::tie(a.z, a.index) < std::tie(b.z, b.index);
        });
        QStringList names;
        bool text = false;
        for (const Layer &layer : std::as_const(layers)) {
            if (!text && layer.z >= 0) {
                names.append(QStringLiteral("text"));
                text = true;
            }
            names.append(layer.name);
        }
        if (!text)
            names.append(QStringLiteral("text"));
        return names.join(QLatin1Char(' '));
    }
};

QTEST_MAIN(tst_CommandSet)
#include "tst_commandset.moc"
