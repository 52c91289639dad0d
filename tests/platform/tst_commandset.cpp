// The editing commands of the design surface on the real engine: states computed from the
// selection, tables edited on their grid, positioning and layering, the display switches,
// and one undo history for typing, formatting and the adapter's own edits.

#include "../common/datarows.h"
#include "../common/surfacefixture.h"

#include "commands/commandsink.h"
#include "commands/selectionstate.h"

#include <QRegularExpression>

using namespace Vantry;
using namespace Qt::StringLiterals;
using Platform::CommandState;
using Platform::DesignSurface;
using Platform::Element;

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

        const QString mixed = u"<p>plain <b>strong</b> <i>slanted</i> "
                              "<u>lined</u> <span style=\"font-weight:700\">"
                              "heavy</span> end</p>"_s;
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
        auto [body, selected, caret, command, state] = fetch<QString, QString, bool, int, int>(
            "body", "selected", "caret", "command", "state");
        load(body);
        if (caret)
            caretAt(selected);
        else
            select(selected);
        QCOMPARE(m_surface->commandStatus(command), state);
    }

    void statusComesForAllCommandsAtOnce()
    {
        load(u"<p>outside</p><table><tr><td>cell</td></tr></table>"_s);
        caretAt(u"outside"_s);
        const QList<int> ids{Bold, InsertRow, DeleteRows, MakeAbsolute, 4999, 5001};
        const QHash<int, CommandState> status = m_surface->queryStatus(ids);
        QCOMPARE(status.size(), ids.size());
        QCOMPARE(status.value(Bold), 3);
        QCOMPARE(status.value(InsertRow), 1);
        QCOMPARE(status.value(4999), 0);
        QCOMPARE(status.value(5001), 0);

        caretAt(u"cell"_s);
        const QHash<int, CommandState> inCell = m_surface->queryStatus(ids);
        QCOMPARE(inCell.value(InsertRow), 3);
        QCOMPARE(inCell.value(DeleteRows), 3);

        // The font values come in the same answer, and only for commands that have one.
        load(u"<p><font face=\"Courier New\" size=\"5\">mono</font> plain</p>"_s);
        caretAt(u"mono"_s);
        QHash<int, QVariant> values;
        const QHash<int, CommandState> withFont
            = m_surface->queryStatus({Bold, GetFontName, GetFontSize}, &values);
        QCOMPARE(withFont.value(GetFontName), 3);
        QCOMPARE(values.value(GetFontName).toString(), u"Courier New"_s);
        QCOMPARE(values.value(GetFontSize).toInt(), 5);
        QVERIFY(!values.contains(Bold));

        values.clear();
        QVERIFY(js(u"selectBetween"_s, {u"mono"_s, u"plain"_s}).toBool());
        const QHash<int, CommandState> mixed = m_surface->queryStatus({GetFontName}, &values);
        QCOMPARE(mixed.value(GetFontName), 11);
        QVERIFY(values.isEmpty());
    }

    // A run inside one text node is formatted by the adapter, the rest by the engine; both
    // must leave what the engine would, pressed, and one undo step. The same command again
    // removes the format.
    void inlineFormats_data()
    {
        columns<QString, QString, int, QString, QString>(
            "body", "selected", "command", "formatted", "toggled");

        const QString plain = u"<p>one two three</p>"_s;
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
        auto [body, selected, command, formatted, toggled]
            = fetch<QString, QString, int, QString, QString>(
                "body", "selected", "command", "formatted", "toggled");
        load(body);
        m_surface->useElementFormatting();
        const QString loaded = m_surface->bodyInnerHTML();
        select(selected);
        QVERIFY2(m_surface->execCommand(command, DesignSurface::OptionDontPromptUser),
            qPrintable(m_surface->lastError()));
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

    // A command answers with the toolbar's states when the toolbar follows them; after an
    // inline format they must be what the document shows once the selection is back.
    void statesSentWithAFormat_data()
    {
        columns<QString, QString, int>("body", "selected", "command");
        row("bold", "<ol><li style=\"text-align: center\"><i>one two</i></li></ol>", "two",
            int(Bold));
        row("bold the sheet keeps light",
            "<style>b { font-weight: normal; font-style: italic }</style><p>one two</p>", "two",
            int(Bold));
        row("unbold", "<p>one <b>two</b></p>", "two", int(Bold));
        row("underline in a link", "<p><a href=\"x\">one two</a></p>", "one", int(Underline));
        row("engine's bold", "<p><b>one</b>two three</p>", "two", int(Bold));
    }

    void statesSentWithAFormat()
    {
        auto [body, selected, command]
            = fetch<QString, QString, int>("body", "selected", "command");
        load(body);
        m_surface->useElementFormatting();
        const QList<int> ids = Commands::SelectionState::queriedCommands();
        bool followed = false;
        m_surface->requestStatus(
            ids, [&followed](bool, const auto &, const auto &) { followed = true; });
        QTRY_VERIFY(followed);
        select(selected);
        QVERIFY2(m_surface->execCommand(command), qPrintable(m_surface->lastError()));
        QHash<int, QVariant> values;
        const QHash<int, CommandState> sent = m_surface->queryStatus(ids, &values);

        QVariantList idList;
        for (int id : ids)
            idList.append(id);
        const QVariantMap fresh
            = m_surface->call(u"commandStatus"_s, {QVariant(idList), true}).value.toMap();
        const QVariantList states = fresh.value(u"states"_s).toList();
        QCOMPARE(states.size(), ids.size());
        for (qsizetype i = 0; i < ids.size(); ++i)
            QVERIFY2(int(sent.value(ids.at(i))) == states.at(i).toInt(),
                qPrintable(QString::number(ids.at(i))));
        const QVariantMap freshValues = fresh.value(u"values"_s).toMap();
        QCOMPARE(values.size(), freshValues.size());
        for (auto it = freshValues.cbegin(); it != freshValues.cend(); ++it)
            QCOMPARE(values.value(it.key().toInt()), it.value());
        QCOMPARE(selectedText(), selected);
    }

    void fontStates_data()
    {
        columns<QString, int, int, QVariant>("selected", "command", "state", "value");

        row("one face", "serif text", int(GetFontName), 3, QVariant(u"Courier"_s));
        row("two faces", "text sans", int(GetFontName), 11, QVariant(QString()));
        row("html size", "big", int(GetFontSize), 3, QVariant(5));
        row("two sizes", "big small", int(GetFontSize), 11, QVariant(0));
    }

    void fontStates()
    {
        auto [selected, command, state, value]
            = fetch<QString, int, int, QVariant>("selected", "command", "state", "value");
        load(u"<p><font face=\"Courier\">serif text</font> "
             "<font face=\"Arial\">sans</font></p>"
             "<p><font size=\"5\">big</font> <font size=\"1\">small</font></p>"_s);
        select(selected);
        QCOMPARE(m_surface->commandStatus(command), state);
        QVariant result;
        QVERIFY(m_surface->execCommand(command, DesignSurface::OptionDontPromptUser, {}, &result));
        QCOMPARE(result.toString(), value.toString());
    }

    void blockFormats()
    {
        load(u"<p>para</p>"_s);
        caretAt(u"para"_s);
        QVariant names;
        QVERIFY(m_surface->execCommand(
            GetBlockFormatNames, DesignSurface::OptionDontPromptUser, {}, &names));
        const QStringList list = names.toStringList();
        QVERIFY(list.contains(u"Normal"_s));
        QVERIFY(list.contains(u"Heading 1"_s));
        QCOMPARE(list.count(u"Normal"_s), 1);

        QVERIFY(m_surface->execCommand(
            SetBlockFmt, DesignSurface::OptionDontPromptUser, u"Heading 2"_s));
        QCOMPARE(m_surface->bodyInnerHTML(), u"<h2>para</h2>"_s);
        QVariant current;
        QVERIFY(m_surface->execCommand(5011, DesignSurface::OptionDontPromptUser, {}, &current));
        QCOMPARE(current.toString(), u"Heading 2"_s);
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
        auto [caret, extendTo, command, rows, width, gone]
            = fetch<QString, QString, int, int, int, QStringList>(
                "caret", "extendTo", "command", "rows", "width", "gone");
        // a b c x        a spans two rows, e two columns
        // a d e e
        // f g h i
        load(u"<table><tbody><tr><td rowspan=\"2\">a</td><td>b</td><td>c</td><td>x</td></tr>"
             "<tr><td>d</td><td colspan=\"2\">e</td></tr>"
             "<tr><td>f</td><td>g</td><td>h</td><td>i</td></tr></tbody></table>"_s);
        const QStringList before
            = m_surface->bodyInnerText().split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts);
        if (extendTo.isEmpty()) {
            caretAt(caret);
        } else {
            QVERIFY(js(u"selectBetween"_s, {caret, extendTo}).toBool());
        }
        QVERIFY2(m_surface->execCommand(command), qPrintable(m_surface->lastError()));

        const Element tableElement = m_surface->elementsByTagName(u"table"_s).first();
        const QVariantList widths = js(u"tableRowWidths"_s, {tableElement.toVariant()}).toList();
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
        auto [content, kept] = fetch<QString, bool>("content", "kept");
        load(u"<table><tbody><tr><td>a</td><td>%1</td></tr></tbody></table>"_s.arg(content));
        caretAt(u"a"_s);
        QVERIFY2(m_surface->execCommand(MergeCells), qPrintable(m_surface->lastError()));
        QCOMPARE(m_surface->bodyInnerHTML(),
            u"<table><tbody><tr><td colspan=\"2\">a%1</td></tr></tbody></table>"_s.arg(
                kept ? u"<br>"_s + content : QString()));
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
        auto [command, message] = fetch<int, QString>("command", "message");
        const QString table = u"<table><tbody><tr><td>only</td></tr></tbody></table>"_s;
        load(table);
        caretAt(u"only"_s);
        QVERIFY(!m_surface->execCommand(command));
        QVERIFY2(m_surface->lastError().contains(message), qPrintable(m_surface->lastError()));
        QCOMPARE(m_surface->bodyInnerHTML(), table);
    }

    void positionToggles_data()
    {
        columns<int, QString>("command", "body");
        row("absolute", int(MakeAbsolute),
            "<p>first line</p><div style=\"margin-left: 30px\">the block</div><p>after</p>");
        row("lock", int(LockElement),
            "<div style=\"position: absolute; left: 10px; top: 10px\">box</div>");
    }

    // On and off again, the markup as loaded: the lock is the editor's own and never saved, and
    // made absolute, a block stays where it was on screen.
    void positionToggles()
    {
        auto [command, body] = fetch<int, QString>("command", "body");
        load(body);
        const Element div = m_surface->elementsByTagName(u"div"_s).first();
        const QString markup = m_surface->documentHTML();
        const QRectF before = m_surface->boundingRect(div);
        QVERIFY(m_surface->selectElement(div));
        QCOMPARE(m_surface->commandStatus(command), 3);
        QVERIFY(m_surface->execCommand(command));
        if (command == MakeAbsolute) {
            QCOMPARE(m_surface->styleProperty(div, u"position"_s), u"absolute"_s);
            const QRectF after = m_surface->boundingRect(div);
            QVERIFY2(qAbs(after.left() - before.left()) <= 1
                    && qAbs(after.top() - before.top()) <= 1
                    && qAbs(after.width() - before.width()) <= 1,
                qPrintable(QDebug::toString(before) + u" -> "_s + QDebug::toString(after)));
        } else {
            QCOMPARE(m_surface->documentHTML(), markup);
        }
        QVERIFY(m_surface->selectElement(div));
        QCOMPARE(m_surface->commandStatus(command), 7);
        QVERIFY(m_surface->execCommand(command));
        QCOMPARE(m_surface->documentHTML(), markup);
        QVERIFY(m_surface->selectElement(div));
        QCOMPARE(m_surface->commandStatus(command), 3);
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
        auto [selected, command, order]
            = fetch<QString, int, QString>("selected", "command", "order");
        load(u"<div style=\"position: absolute; left: 0px; top: 0px; z-index: 1\">a</div>"
             "<div style=\"position: absolute; left: 20px; top: 0px; z-index: 2\">b</div>"
             "<div style=\"position: absolute; left: 40px; top: 0px; z-index: 3\">c</div>"
             "<div style=\"position: relative; z-index: 2\">r</div>"_s);
        QCOMPARE(paintingOrder(), u"text a b r c"_s);
        const QList<Element> divs = m_surface->elementsByTagName(u"div"_s);
        const Element element = divs.at(u"abcr"_s.indexOf(selected));
        QVERIFY(m_surface->selectElement(element));
        QCOMPARE(m_surface->commandStatus(command), 3);
        QVERIFY(m_surface->execCommand(command));
        QCOMPARE(paintingOrder(), order);
    }

    void displaySwitchesLeaveMarkupAlone()
    {
        load(u"<table><tbody><tr><td>cell</td></tr></tbody></table>"
             "<a name=\"here\"></a><p>text<!-- note --> more<br>next</p>"_s);
        const QString markup = m_surface->documentHTML();
        const Element cell = m_surface->elementsByTagName(u"td"_s).first();
        const auto switchAll = [this](bool on) {
            return m_surface->setShowBorders(on) && m_surface->setShowDetails(on)
                && m_surface->setSnapToGrid(on) && m_surface->showBorders() == on
                && m_surface->showDetails() == on && m_surface->snapToGrid() == on;
        };
        QVERIFY(!m_surface->showBorders());
        QVERIFY(switchAll(true));
        QCOMPARE(
            js(u"computedStyle"_s, {cell.toVariant(), u"outline-style"_s, QString()}).toString(),
            u"dashed"_s);
        const Element anchor = m_surface->elementsByTagName(u"a"_s).first();
        QVERIFY(js(u"computedStyle"_s, {anchor.toVariant(), u"content"_s, u"::before"_s})
                    .toString()
                    .contains(QChar(0x2693)));
        // Comments and line breaks get marks where they stand: the comment after "text", the
        // break at the end of the first line, above the second.
        const auto marks = [this] { return js(u"detailMarks"_s, {}).toList(); };
        const QVariantList shown = marks();
        QCOMPARE(shown.size(), 2);
        const QVariantMap comment = shown.at(0).toMap();
        const QVariantMap lineBreak = shown.at(1).toMap();
        QCOMPARE(comment.value(u"kind"_s).toString(), u"comment"_s);
        QCOMPARE(lineBreak.value(u"kind"_s).toString(), u"break"_s);
        QVERIFY(comment.value(u"x"_s).toInt() > 0);
        QVERIFY(lineBreak.value(u"x"_s).toInt() > comment.value(u"x"_s).toInt());
        QCOMPARE(lineBreak.value(u"y"_s).toInt(), comment.value(u"y"_s).toInt());
        QCOMPARE(m_surface->documentHTML(), markup);
        QCOMPARE(js(u"undoDepth"_s, {}).toList().value(0).toInt(), 0);

        // Marks follow edits within a frame, and undo.
        const auto kinds = [&marks] {
            QStringList out;
            for (const QVariant &mark : marks())
                out << mark.toMap().value(u"kind"_s).toString();
            return out.join(QLatin1Char(' '));
        };
        QVERIFY(m_surface->setInnerHTML(
            m_surface->elementsByTagName(u"p"_s).first(), u"a<br>b<br>c"_s));
        QTRY_COMPARE(kinds(), u"break break"_s);
        QVERIFY(m_surface->execCommand(Undo));
        QTRY_COMPARE(kinds(), u"comment break"_s);
        QCOMPARE(m_surface->documentHTML(), markup);

        QVERIFY(switchAll(false));
        QVERIFY(marks().isEmpty());
        QVERIFY(!m_surface->documentHTML().contains(QLatin1String("vantry-marks")));
        QCOMPARE(
            js(u"computedStyle"_s, {cell.toVariant(), u"outline-style"_s, QString()}).toString(),
            u"none"_s);
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
        auto [snap, lock, topLeft] = fetch<bool, bool, QPoint>("snap", "lock", "topLeft");
        load(u"<p>text</p><div style=\"position: absolute; left: 100px; top: 100px; "
             "width: 100px; height: 50px\">box</div>"_s);
        const QString loaded = m_surface->bodyInnerHTML();
        QVERIFY(m_surface->setSnapToGrid(snap));
        const Element div = m_surface->elementsByTagName(u"div"_s).first();
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
        QTRY_COMPARE(m_surface->styleProperty(div, u"left"_s), u"%1px"_s.arg(topLeft.x()));
        QCOMPARE(m_surface->styleProperty(div, u"top"_s), u"%1px"_s.arg(topLeft.y()));
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
        load(u"<table><tbody><tr><td>cell</td></tr></tbody></table><p>word</p>"_s);
        m_surface->useElementFormatting();
        const QString loaded = m_surface->bodyInnerHTML();
        QWidget *keys = input();

        // Typing, then a table command, then formatting.
        caretAt(u"word"_s, true);
        QTest::keyClicks(keys, u"xy"_s);
        QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("wordxy")));
        const QString typed = m_surface->bodyInnerHTML();

        caretAt(u"cell"_s);
        QVERIFY(m_surface->execCommand(InsertRow));
        const QString withRow = m_surface->bodyInnerHTML();
        QCOMPARE(withRow.count(QLatin1String("<tr>")), 2);

        select(u"wordxy"_s);
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
        // The keyboard takes the same steps back.
        for (int i = states.size() - 2; i >= 0; --i) {
            QTest::keyClick(keys, Qt::Key_Z, Qt::ControlModifier);
            QTRY_COMPARE(m_surface->bodyInnerHTML(), states.at(i));
        }
    }

    // The engine ends its typing step when the selection is set, even to where the caret
    // was; the history's one typing step still goes back, and comes again, whole.
    void typingGoesBackWholeWhereTheEngineSplitIt()
    {
        load(u"<p>first</p><p>word</p>"_s);
        const QString loaded = m_surface->bodyInnerHTML();
        QWidget *keys = input();
        caretAt(u"word"_s, true);
        QTest::keyClicks(keys, u"xy"_s);
        QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("wordxy")));
        caretAt(u"wordxy"_s, true);
        QTest::keyClicks(keys, u"z"_s);
        QTest::keyClick(keys, Qt::Key_Backspace);
        QTest::keyClicks(keys, u"Z"_s);
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
        load(u"<p id=\"intro\">first</p>"_s);
        QWidget *keys = input();
        caretAt(u"first"_s, true);
        QTest::keyClick(keys, Qt::Key_Return);
        QTRY_COMPARE(m_surface->elementsByTagName(u"p"_s).size(), 2);
        QTest::keyClicks(keys, u"next"_s);
        QTRY_VERIFY2(m_surface->bodyInnerText().contains(QLatin1String("next")),
            qPrintable(m_surface->bodyInnerHTML()));
        const QString html = m_surface->bodyInnerHTML();
        QCOMPARE(html.count(QLatin1String("id=\"intro\"")), 1);
        QVERIFY2(html.startsWith(QLatin1String("<p id=\"intro\">first</p>")), qPrintable(html));
    }

    // The key removes the element selected whole, and nothing else, as one undo step.
    void deletingAnElementCanBeUndone()
    {
        load(u"<p>before <img src=\"data:image/gif;base64,R0lGODlhAQABAIAAAP///"
             "wAAACH5BAEAAAAALAAAAAABAAEAAAICRAEAOw==\" width=\"20\"> after</p>"_s);
        const QString loaded = m_surface->bodyInnerHTML();
        QWidget *keys = input();
        QVERIFY(m_surface->selectElement(m_surface->images().first()));
        QSignalSpy changed(m_surface, &Platform::DesignSurface::contentChanged);
        QTest::keyClick(keys, Qt::Key_Delete);
        QTRY_VERIFY(m_surface->images().isEmpty());
        QVERIFY(m_surface->bodyInnerHTML().contains(u"before  after"_s));
        QTRY_VERIFY(!changed.isEmpty());
        QCOMPARE(m_surface->selectionType(), Platform::SelectionType::None);
        QTRY_COMPARE(m_surface->commandStatus(Undo), 3);
        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(m_surface->bodyInnerHTML(), loaded);
        QVERIFY(m_surface->execCommand(Redo));
        QVERIFY(m_surface->images().isEmpty());
    }

    // In a long document the block being typed into is laid out on its own: the markup and the
    // undo history never show it, and a block the typing makes taller shows all its text.
    void typingInALongDocumentLeavesNoTrace()
    {
        loadParagraphs(800);
        const QString loaded = m_surface->bodyInnerHTML();
        const QString source = m_editor->GetHtmlSource();
        QWidget *keys = input();
        caretAt(u"paragraph 400 text"_s, true);

        QTest::keyClicks(keys, u"ab"_s);
        QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("paragraph 400 textab")));
        QCOMPARE(js(u"typingBlock"_s).toMap().value(u"text"_s), u"paragraph 400 textab"_s);

        // Enough for several more lines.
        const QString words = u" more words to wrap"_s.repeated(12);
        QTest::keyClicks(keys, words);
        const QString typed = u"paragraph 400 textab"_s + words;
        QTRY_VERIFY(m_surface->bodyInnerText().contains(typed));
        const QVariantMap block = js(u"typingBlock"_s).toMap();
        QCOMPARE(block.value(u"text"_s).toString(), typed);
        QCOMPARE(block.value(u"clipped"_s), false);

        QString expected = loaded;
        expected.replace(u"paragraph 400 text</p>"_s, typed + u"</p>"_s);
        QCOMPARE(m_surface->bodyInnerHTML(), expected);
        QString expectedSource = source;
        expectedSource.replace(u"paragraph 400 text</p>"_s, typed + u"</p>"_s);
        QCOMPARE(m_editor->GetHtmlSource(), expectedSource);

        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(m_surface->bodyInnerHTML(), loaded);
        QVERIFY(!js(u"typingBlock"_s).isValid());
    }

    // Far from the view and the caret, blocks skip their rendering outright; a search and a
    // caret put there by a call still find them rendered.
    void farBlocksComeBackWhenReached()
    {
        loadParagraphs(3000);
        waitForFrame();

        QVERIFY(m_surface->findNext(u"paragraph 2900 text"_s, {}));
        QCOMPARE(js(u"engineSelectionText"_s), u"paragraph 2900 text"_s);

        QWidget *keys = input();
        caretAt(u"paragraph 1500 text"_s, true);
        QTest::keyClicks(keys, u"ab"_s);
        QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("paragraph 1500 textab")));

        // The document's ends, which the engine finds by layout.
        QTest::keyClick(keys, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClicks(keys, u"Z"_s);
        QTRY_VERIFY2(m_surface->bodyInnerHTML().contains(u"paragraph 2999 textZ</p>"_s),
            qPrintable(m_surface->bodyInnerHTML().right(60)));
        QTest::keyClick(keys, Qt::Key_Home, Qt::ControlModifier);
        QTest::keyClicks(keys, u"A"_s);
        QTRY_VERIFY2(m_surface->bodyInnerHTML().contains(u"<p>Aparagraph 0 text</p>"_s),
            qPrintable(m_surface->bodyInnerHTML().left(60)));
    }

    // While plain text is typed into a block of a long page, that block alone is editable;
    // any other key puts the whole page back, with the selection and the history intact.
    void typingInALongPageEditsOneBlock()
    {
        loadParagraphs(3000);
        const QString loaded = m_surface->bodyInnerHTML();
        QWidget *keys = input();
        caretAt(u"paragraph 1500 text"_s, true);
        QTest::keyClicks(keys, u"ab"_s);
        QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("paragraph 1500 textab")));
        QCOMPARE(js(u"typingHost"_s).toStringList(),
            QStringList({u"paragraph 1500 textab"_s, u"off"_s, u"none"_s}));
        QString typed = loaded;
        typed.replace(u"paragraph 1500 text</p>"_s, u"paragraph 1500 textab</p>"_s);
        QCOMPARE(m_surface->bodyInnerHTML(), typed);
        QVERIFY(m_surface->isEditable());
        QTest::keyClick(keys, Qt::Key_Backspace);
        QTest::keyClicks(keys, u"b"_s);
        QTRY_COMPARE(m_surface->bodyInnerHTML(), typed);

        QTest::keyClick(keys, Qt::Key_Z, Qt::ControlModifier);
        QTRY_COMPARE(m_surface->bodyInnerHTML(), loaded);
        QCOMPARE(js(u"typingHost"_s).toList().value(1), u"on"_s);
        QTest::keyClick(keys, Qt::Key_Y, Qt::ControlModifier);
        QTRY_COMPARE(m_surface->bodyInnerHTML(), typed);

        // A selection reaches across blocks as in the rest of the page.
        caretAt(u"paragraph 1500 textab"_s, true);
        QTest::keyClicks(keys, u"c"_s);
        QTRY_VERIFY(js(u"typingHost"_s).toList().value(0).isValid());
        QTest::keyClick(keys, Qt::Key_Up, Qt::ShiftModifier);
        QTRY_COMPARE(js(u"engineSelectionText"_s).toString(), u"\nparagraph 1500 textabc"_s);
        QTest::keyClick(keys, Qt::Key_Right);
        QTest::keyClick(keys, Qt::Key_Return);
        QTest::keyClicks(keys, u"new"_s);
        QTRY_VERIFY(m_surface->bodyInnerHTML().contains(u"textabc</p><p>new</p>"_s));
    }

private:
    // A long page of numbered paragraphs, typed into as any long page however short its
    // markup.
    void loadParagraphs(int count)
    {
        QString body;
        for (int i = 0; i < count; ++i)
            body += u"<p>paragraph %1 text</p>"_s.arg(i);
        m_editor->setSetHtmlSource(body);
        QTRY_VERIFY(m_editor->isDocumentReady());
        js(u"typingHostFrom"_s, {0});
    }

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
        const QList<Element> divs = m_surface->elementsByTagName(u"div"_s);
        for (const Element &div : divs) {
            layers.append({m_surface->styleProperty(div, u"z-index"_s).toInt(), int(layers.size()),
                m_surface->innerHTML(div)});
        }
        std::sort(layers.begin(), layers.end(), [](const Layer &a, const Layer &b) {
            return std::tie(a.z, a.index) < std::tie(b.z, b.index);
        });
        QStringList names;
        bool text = false;
        for (const Layer &layer : std::as_const(layers)) {
            if (!text && layer.z >= 0) {
                names.append(u"text"_s);
                text = true;
            }
            names.append(layer.name);
        }
        if (!text)
            names.append(u"text"_s);
        return names.join(QLatin1Char(' '));
    }
};

QTEST_MAIN(tst_CommandSet)
#include "tst_commandset.moc"
