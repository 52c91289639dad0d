// The editing commands of the design surface on the real engine: states computed from the
// selection, tables edited on their grid, positioning and layering, the display switches,
// and one undo history for typing, formatting and the adapter's own edits.

#include "../common/enginetest.h"

#include <QRegularExpression>

using namespace Vantry;
using Platform::CommandState;
using Platform::DesignSurface;
using Platform::Element;
using Platform::TextRange;

namespace {

enum Command
{
    Bold = 5000,
    DeleteCells = 5005,
    DeleteCols = 5006,
    DeleteRows = 5007,
    GetBlockFmtNames = 5012,
    GetFontName = 5013,
    GetFontSize = 5014,
    InsertCell = 5019,
    InsertCol = 5020,
    InsertRow = 5021,
    Italic = 5023,
    LockElement = 5027,
    MakeAbsolute = 5028,
    MergeCells = 5029,
    SendBackward = 5036,
    BringForward = 5037,
    SendBelowText = 5038,
    SendToBack = 5040,
    BringToFront = 5041,
    SetBlockFmt = 5043,
    SplitCell = 5047,
    Underline = 5048,
    Undo = 5049,
    Redo = 5033,
};

// A list from words separated by blanks.
QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

class tst_CommandSet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void textStates_data();
    void textStates();
    void statusComesForAllCommandsAtOnce();
    void boldTogglesTheSelection();
    void fontStates_data();
    void fontStates();
    void blockFormats();
    void tableCommands_data();
    void tableCommands();
    void mergeKeepsContentWithoutText_data();
    void mergeKeepsContentWithoutText();
    void lastRowColumnAndCellStay_data();
    void lastRowColumnAndCellStay();
    void absoluteKeepsThePlaceOnScreen();
    void lockIsNotSaved();
    void layering_data();
    void layering();
    void displaySwitchesLeaveMarkupAlone();
    void draggingMovesPositionedElements_data();
    void draggingMovesPositionedElements();
    void undoAndRedoFollowOneHistory();
    void enterDoesNotCopyIds();
    void deletingAnElementCanBeUndone();
    void keyboardUndoTakesTheSameSteps();
    void typingInALongDocumentLeavesNoTrace();

private:
    void load(const QString &body);
    TextRange found(const QString &needle);
    void select(const QString &needle);
    void caretAt(const QString &needle, bool atEnd = false);
    // The widget that takes the keys, with the document focused.
    QWidget *input();
    QVariant js(const QString &operation, const QVariantList &args = {});
    QString paintingOrder();

    std::unique_ptr<HTMLEditorComponent> m_editor;
    Platform::WebEngineDesignSurface *m_surface = nullptr;
};

void tst_CommandSet::initTestCase()
{
    QVERIFY(VantryTest::startEditor(m_editor, m_surface));
}

void tst_CommandSet::load(const QString &body)
{
    QVERIFY(m_surface->setBodyInnerHTML(body));
}

TextRange tst_CommandSet::found(const QString &needle)
{
    const TextRange range = m_surface->bodyRange();
    if (!m_surface->findText(range, needle))
        return {};
    return range;
}

void tst_CommandSet::select(const QString &needle)
{
    const TextRange range = found(needle);
    QVERIFY2(!range.isNull(), qPrintable(needle));
    QVERIFY(m_surface->selectRange(range));
}

void tst_CommandSet::caretAt(const QString &needle, bool atEnd)
{
    const TextRange range = found(needle);
    QVERIFY2(!range.isNull(), qPrintable(needle));
    QVERIFY(m_surface->collapseRange(range, !atEnd));
    QVERIFY(m_surface->selectRange(range));
}

QWidget *tst_CommandSet::input()
{
    m_surface->focusDocument();
    return VantryTest::inputOf(*m_surface);
}

QVariant tst_CommandSet::js(const QString &operation, const QVariantList &args)
{
    return VantryTest::adapterValue(*m_editor, operation, args);
}

void tst_CommandSet::textStates_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<bool>("caret");
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("state");

    const QString mixed = QStringLiteral("<p>plain <b>strong</b> <i>slanted</i> "
                                         "<u>lined</u> <span style=\"font-weight:700\">"
                                         "heavy</span> end</p>");
    QTest::newRow("bold selected") << mixed << "strong" << false << int(Bold) << 7;
    QTest::newRow("caret in bold") << mixed << "ron" << true << int(Bold) << 7;
    QTest::newRow("bold by style") << mixed << "heavy" << false << int(Bold) << 7;
    QTest::newRow("bold and plain") << mixed << "in strong" << false << int(Bold) << 11;
    QTest::newRow("plain") << mixed << "plain" << false << int(Bold) << 3;
    QTest::newRow("italic") << mixed << "slanted" << false << int(Italic) << 7;
    QTest::newRow("italic and plain") << mixed << "slanted lin" << false << int(Italic) << 11;
    QTest::newRow("underline") << mixed << "lined" << false << int(Underline) << 7;
    QTest::newRow("underline in bold") << QStringLiteral("<p><u>a <b>deep</b> b</u></p>") << "deep"
                                       << false << int(Underline) << 7;
}

void tst_CommandSet::textStates()
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

void tst_CommandSet::statusComesForAllCommandsAtOnce()
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
    QVERIFY(js(QStringLiteral("selectBetween"), {QStringLiteral("mono"), QStringLiteral("plain")})
                .toBool());
    const QHash<int, CommandState> mixed = m_surface->queryStatus({GetFontName}, &values);
    QCOMPARE(mixed.value(GetFontName), 11);
    QVERIFY(values.isEmpty());
}

void tst_CommandSet::boldTogglesTheSelection()
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

void tst_CommandSet::fontStates_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("state");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("one face") << "serif text" << int(GetFontName) << 3
                              << QVariant(QStringLiteral("Courier"));
    QTest::newRow("two faces") << "text sans" << int(GetFontName) << 11 << QVariant(QString());
    QTest::newRow("html size") << "big" << int(GetFontSize) << 3 << QVariant(5);
    QTest::newRow("two sizes") << "big small" << int(GetFontSize) << 11 << QVariant(0);
}

void tst_CommandSet::fontStates()
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

void tst_CommandSet::blockFormats()
{
    load(QStringLiteral("<p>para</p>"));
    caretAt(QStringLiteral("para"));
    QVariant names;
    QVERIFY(
        m_surface->execCommand(GetBlockFmtNames, DesignSurface::OptionDontPromptUser, {}, &names));
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

void tst_CommandSet::tableCommands_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("caret");
    QTest::addColumn<QString>("extendTo");
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("width");
    QTest::addColumn<QStringList>("gone");

    // a b c          a spans two rows, e two columns
    // a d e e
    // f g h i
    const QString spans = QStringLiteral(
        "<table><tbody><tr><td rowspan=\"2\">a</td><td>b</td><td>c</td><td>x</td></tr>"
        "<tr><td>d</td><td colspan=\"2\">e</td></tr>"
        "<tr><td>f</td><td>g</td><td>h</td><td>i</td></tr></tbody></table>");
    const QStringList none;
    QTest::newRow("row above a spanned row") << spans << "d"
                                             << "" << int(InsertRow) << 4 << 4 << none;
    QTest::newRow("row above the last") << spans << "g"
                                        << "" << int(InsertRow) << 4 << 4 << none;
    QTest::newRow("column through a colspan") << spans << "i"
                                              << "" << int(InsertCol) << 3 << 5 << none;
    QTest::newRow("column left of a rowspan") << spans << "a"
                                              << "" << int(InsertCol) << 3 << 5 << none;
    QTest::newRow("cell") << spans << "g"
                          << "" << int(InsertCell) << 3 << 5 << none;
    QTest::newRow("delete row under a rowspan") << spans << "d"
                                                << "" << int(DeleteRows) << 2 << 4 << words("d e");
    QTest::newRow("delete row of a rowspan") << spans << "b"
                                             << "" << int(DeleteRows) << 2 << 4 << words("b c x");
    QTest::newRow("delete column in a colspan") << spans << "i"
                                                << "" << int(DeleteCols) << 3 << 3 << words("x i");
    QTest::newRow("delete two columns") << spans << "f"
                                        << "g" << int(DeleteCols) << 3 << 2 << words("a b d f g");
    QTest::newRow("delete cell") << spans << "g"
                                 << "" << int(DeleteCells) << 3 << 4 << words("g");
    QTest::newRow("merge across") << spans << "g"
                                  << "h" << int(MergeCells) << 3 << 4 << none;
    QTest::newRow("merge with the right") << spans << "b"
                                          << "" << int(MergeCells) << 3 << 4 << none;
    QTest::newRow("merge a block") << spans << "b"
                                   << "e" << int(MergeCells) << 3 << 4 << none;
    QTest::newRow("split a colspan") << spans << "e"
                                     << "" << int(SplitCell) << 3 << 4 << none;
    QTest::newRow("split a rowspan") << spans << "a"
                                     << "" << int(SplitCell) << 3 << 4 << none;
    QTest::newRow("split a single cell") << spans << "g"
                                         << "" << int(SplitCell) << 3 << 5 << none;
}

void tst_CommandSet::tableCommands()
{
    QFETCH(QString, table);
    QFETCH(QString, caret);
    QFETCH(QString, extendTo);
    QFETCH(int, command);
    QFETCH(int, rows);
    QFETCH(int, width);
    QFETCH(QStringList, gone);
    load(table);
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

void tst_CommandSet::mergeKeepsContentWithoutText_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<bool>("kept");
    QTest::newRow("empty anchor") << "<a name=\"here\"></a>" << true;
    QTest::newRow("embed") << "<embed src=\"clip.swf\">" << true;
    QTest::newRow("rule") << "<hr>" << true;
    QTest::newRow("drop-down") << "<select><option></option></select>" << true;
    QTest::newRow("classed span") << "<span class=\"mark\"></span>" << true;
    QTest::newRow("comment") << "<!-- keep -->" << true;
    QTest::newRow("empty division") << "<div></div>" << false;
    QTest::newRow("line break") << " <br> " << false;
}

void tst_CommandSet::mergeKeepsContentWithoutText()
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

void tst_CommandSet::lastRowColumnAndCellStay_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<QString>("message");
    QTest::newRow("row") << int(DeleteRows) << "last row";
    QTest::newRow("column") << int(DeleteCols) << "last column";
    QTest::newRow("cell") << int(DeleteCells) << "last cell";
}

void tst_CommandSet::lastRowColumnAndCellStay()
{
    QFETCH(int, command);
    QFETCH(QString, message);
    const QString table = QStringLiteral("<table><tbody><tr><td>only</td></tr></tbody></table>");
    load(table);
    caretAt(QStringLiteral("only"));
    QVERIFY(!m_surface->execCommand(command));
    QVERIFY2(m_surface->lastError().contains(message), qPrintable(m_surface->lastError()));
    QCOMPARE(m_surface->bodyInnerHTML(), table);
}

void tst_CommandSet::absoluteKeepsThePlaceOnScreen()
{
    load(QStringLiteral("<p>first line</p><div style=\"margin-left: 30px\">the block</div>"
                        "<p>after</p>"));
    const Element div = m_surface->elementsByTagName(QStringLiteral("div")).first();
    const QRectF before = m_surface->boundingRect(div);
    QVERIFY(m_surface->selectElement(div));
    QCOMPARE(m_surface->commandStatus(MakeAbsolute), 3);
    QVERIFY(m_surface->execCommand(MakeAbsolute));
    QCOMPARE(m_surface->styleProperty(div, QStringLiteral("position")), QStringLiteral("absolute"));
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

void tst_CommandSet::lockIsNotSaved()
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

// The divs named by their text, bottom to top as they are painted, with "text" where the
// page's text lies between the layers below it and those above it.
QString tst_CommandSet::paintingOrder()
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

void tst_CommandSet::layering_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<int>("command");
    QTest::addColumn<QString>("order");

    // Painted as: text a b r c. r is positioned in the flow, not lifted, and layered all
    // the same.
    QTest::newRow("bring to front") << "a" << int(BringToFront) << "text b r c a";
    QTest::newRow("send to back") << "c" << int(SendToBack) << "text c a b r";
    QTest::newRow("bring forward") << "a" << int(BringForward) << "text b a r c";
    QTest::newRow("bring forward past a tie") << "b" << int(BringForward) << "text a r b c";
    QTest::newRow("send backward") << "c" << int(SendBackward) << "text a b c r";
    QTest::newRow("send below text") << "b" << int(SendBelowText) << "b text a r c";
    QTest::newRow("bring above text") << "b" << 5039 << "text a r c b";
    QTest::newRow("front already") << "c" << int(BringToFront) << "text a b r c";
}

void tst_CommandSet::layering()
{
    QFETCH(QString, selected);
    QFETCH(int, command);
    QFETCH(QString, order);
    load(
        QStringLiteral("<div style=\"position: absolute; left: 0px; top: 0px; z-index: 1\">a</div>"
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

void tst_CommandSet::displaySwitchesLeaveMarkupAlone()
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
    QVERIFY(
        lineBreak.value(QStringLiteral("x")).toInt() > comment.value(QStringLiteral("x")).toInt());
    QCOMPARE(
        lineBreak.value(QStringLiteral("y")).toInt(), comment.value(QStringLiteral("y")).toInt());
    QCOMPARE(m_surface->documentHTML(), markup);
    QCOMPARE(js(QStringLiteral("undoDepth"), {}).toList().value(0).toInt(), 0);

    // Marks follow edits within a frame, and undo.
    const auto kinds = [&marks] {
        QStringList out;
        for (const QVariant &mark : marks())
            out << mark.toMap().value(QStringLiteral("kind")).toString();
        return out.join(QLatin1Char(' '));
    };
    QVERIFY(m_surface->setInnerHTML(
        m_surface->elementsByTagName(QStringLiteral("p")).first(), QStringLiteral("a<br>b<br>c")));
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

void tst_CommandSet::draggingMovesPositionedElements_data()
{
    QTest::addColumn<bool>("snap");
    QTest::addColumn<bool>("lock");
    QTest::addColumn<QPoint>("topLeft");

    QTest::newRow("free") << false << false << QPoint(123, 117);
    QTest::newRow("snapped to the grid") << true << false << QPoint(120, 120);
    QTest::newRow("locked") << false << true << QPoint(100, 100);
}

void tst_CommandSet::draggingMovesPositionedElements()
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
    const QVariant ticket = js(QStringLiteral("frameTicket"));
    QTRY_VERIFY(js(QStringLiteral("frameRendered"), {ticket}).toBool());

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

void tst_CommandSet::undoAndRedoFollowOneHistory()
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

void tst_CommandSet::enterDoesNotCopyIds()
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
void tst_CommandSet::deletingAnElementCanBeUndone()
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

void tst_CommandSet::keyboardUndoTakesTheSameSteps()
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
void tst_CommandSet::typingInALongDocumentLeavesNoTrace()
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

QTEST_MAIN(tst_CommandSet)
#include "tst_commandset.moc"
