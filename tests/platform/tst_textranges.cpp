// Text ranges, the selection and control selections on the real engine: positions count
// what a reader sees, ranges follow edits, and the control frame never reaches the markup.

#include "../common/enginetest.h"

using namespace Vantry;
using Platform::Element;
using Platform::SelectionType;
using Platform::TextRange;
using Platform::TextUnit;
using VantryTest::surfaceOf;

class tst_TextRanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void readerText_data();
    void readerText();
    void characterMoves_data();
    void characterMoves();
    void wordMoves_data();
    void wordMoves();
    void backwardMoves();
    void forwardAndBackwardMovesAgree_data();
    void forwardAndBackwardMovesAgree();
    void findText_data();
    void findText();
    void findTextStaysInsideANonEmptyRange();
    void bookmarkReturnsToThePlace();
    void inRangeAndDuplicate();
    void editingThroughRanges();
    void rangesFollowEditsElsewhere();
    void parentElement_data();
    void parentElement();
    void staleHandlesFailCleanly();
    void selectionFollowsSelectedRange();
    void controlSelectionLeavesNoTraceInMarkup();
    void clickingChoosesElementsWhole_data();
    void clickingChoosesElementsWhole();
    void elementAccess();

private:
    void load(const QString &body);
    TextRange found(const QString &needle);
    void waitForFrame();
    void click(const QPointF &at);

    std::unique_ptr<HTMLEditorComponent> m_editor;
    Platform::WebEngineDesignSurface *m_surface = nullptr;
};

void tst_TextRanges::initTestCase()
{
    QVERIFY(VantryTest::startEditor(m_editor, m_surface));
}

void tst_TextRanges::load(const QString &body)
{
    QVERIFY(m_surface->setBodyInnerHTML(body));
}

// A range over the first hit of needle in the body.
TextRange tst_TextRanges::found(const QString &needle)
{
    const TextRange range = m_surface->bodyRange();
    if (!m_surface->findText(range, needle))
        return {};
    return range;
}

void tst_TextRanges::readerText_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("text");
    QTest::newRow("entities and nbsp")
        << QStringLiteral("<p>a&amp;b&nbsp;c&lt;</p>") << QStringLiteral("a&b c<");
    QTest::newRow("white space collapses")
        << QStringLiteral("<p>  lorem \n\t ipsum  </p>") << QStringLiteral("lorem ipsum");
    QTest::newRow("white space across tags")
        << QStringLiteral("<p>lorem <b> ipsum</b> <i> </i>dolor</p>")
        << QStringLiteral("lorem ipsum dolor");
    QTest::newRow("blocks break once")
        << QStringLiteral("<p>one</p>\n<p>two</p><div><p>three</p></div>")
        << QStringLiteral("one\r\ntwo\r\nthree");
    QTest::newRow("empty blocks add nothing")
        << QStringLiteral("<p>a</p><p></p><div> </div><p>b</p>") << QStringLiteral("a\r\nb");
    QTest::newRow("line breaks") << QStringLiteral("one<br>two<br><br>three")
                                 << QStringLiteral("one\r\ntwo\r\n\r\nthree");
    QTest::newRow("break closing a block")
        << QStringLiteral("<p>a<br></p><p>b</p>") << QStringLiteral("a\r\nb");
    QTest::newRow("preformatted") << QStringLiteral("<pre>a  b\nc</pre>")
                                  << QStringLiteral("a  b\r\nc");
    QTest::newRow("scripts and styles unseen")
        << QStringLiteral("<p>a<script>x()</script><style>p{}</style>b</p>")
        << QStringLiteral("ab");
    QTest::newRow("objects read as nothing")
        << QStringLiteral("<p>a <img src=\"x.png\"> b<input></p>") << QStringLiteral("a  b");
    QTest::newRow("table cells") << QStringLiteral("<table><tr><td>a</td><td>b</td></tr></table>")
                                 << QStringLiteral("a\r\nb");
}

void tst_TextRanges::readerText()
{
    QFETCH(QString, body);
    QFETCH(QString, text);
    load(body);
    QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), text);
}

void tst_TextRanges::characterMoves_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("moved");
    QTest::addColumn<QString>("text");
    QTest::newRow("entity is one")
        << QStringLiteral("<p>&lt;&amp;x</p>") << 1 << 2 << 2 << QStringLiteral("&");
    QTest::newRow("nbsp is one") << QStringLiteral("<p>a&nbsp;&nbsp;b</p>") << 1 << 3 << 3
                                 << QStringLiteral("  ");
    QTest::newRow("white space run is one")
        << QStringLiteral("<p>a \n\t b</p>") << 0 << 3 << 3 << QStringLiteral("a b");
    QTest::newRow("block boundary is one")
        << QStringLiteral("<p>ab</p>\n\n<p>cd</p>") << 1 << 4 << 4 << QStringLiteral("b\r\nc");
    QTest::newRow("line break is one")
        << QStringLiteral("<p>ab<br>cd</p>") << 2 << 3 << 3 << QStringLiteral("\r\n");
    QTest::newRow("object is one")
        << QStringLiteral("<p>a<img src=\"x.png\">b</p>") << 0 << 3 << 3 << QStringLiteral("ab");
    QTest::newRow("tags are nothing") << QStringLiteral("<p>l<b>o</b><i><u>r</u></i>em</p>") << 1
                                      << 4 << 4 << QStringLiteral("ore");
    QTest::newRow("end stops the move")
        << QStringLiteral("<p>abc</p>") << 1 << 100 << 3 << QStringLiteral("bc");
}

void tst_TextRanges::characterMoves()
{
    QFETCH(QString, body);
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(int, moved);
    QFETCH(QString, text);
    load(body);
    const TextRange range = m_surface->bodyRange();
    QVERIFY(m_surface->collapseRange(range, true));
    QCOMPARE(m_surface->moveRangeEnd(range, TextUnit::Character, end), moved);
    QCOMPARE(m_surface->moveRangeStart(range, TextUnit::Character, start), start);
    QCOMPARE(m_surface->rangeText(range), text);
}

void tst_TextRanges::wordMoves_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<int>("words");
    QTest::addColumn<QString>("word");
    QTest::newRow("next word") << QStringLiteral("<p>lorem ipsum dolor</p>") << 1
                               << QStringLiteral("ipsum ");
    QTest::newRow("two words") << QStringLiteral("<p>lorem ipsum dolor</p>") << 2
                               << QStringLiteral("dolor");
    QTest::newRow("word across tags")
        << QStringLiteral("<p>lo<b>re</b>m ip<i>sum</i></p>") << 1 << QStringLiteral("ipsum");
    QTest::newRow("word after a block")
        << QStringLiteral("<p>lorem</p><p>ipsum dolor</p>") << 1 << QStringLiteral("ipsum ");
    QTest::newRow("punctuation is a word")
        << QStringLiteral("<p>lorem, ipsum</p>") << 1 << QStringLiteral(", ");
    QTest::newRow("after punctuation")
        << QStringLiteral("<p>lorem, ipsum</p>") << 2 << QStringLiteral("ipsum");
    QTest::newRow("nbsp separates")
        << QStringLiteral("<p>a&nbsp;b</p>") << 1 << QStringLiteral("b");
    QTest::newRow("object is a word")
        << QStringLiteral("<p>a <img src=\"x.png\">b</p>") << 2 << QStringLiteral("b");
}

void tst_TextRanges::wordMoves()
{
    QFETCH(QString, body);
    QFETCH(int, words);
    QFETCH(QString, word);
    load(body);
    const TextRange range = m_surface->bodyRange();
    QCOMPARE(m_surface->moveRange(range, TextUnit::Word, words), words);
    m_surface->moveRangeEnd(range, TextUnit::Word, 1);
    QCOMPARE(m_surface->rangeText(range), word);
}

void tst_TextRanges::backwardMoves()
{
    load(QStringLiteral("<p>lorem ipsum</p><p>dolor sit</p>"));
    const TextRange range = m_surface->bodyRange();
    m_surface->collapseRange(range, false);
    QCOMPARE(m_surface->moveRangeStart(range, TextUnit::Word, -1), -1);
    QCOMPARE(m_surface->rangeText(range), QStringLiteral("sit"));
    QCOMPARE(m_surface->moveRangeStart(range, TextUnit::Word, -2), -2);
    QCOMPARE(m_surface->rangeText(range), QStringLiteral("ipsum\r\ndolor sit"));
    QCOMPARE(m_surface->moveRangeStart(range, TextUnit::Character, -3), -3);
    QCOMPARE(m_surface->rangeText(range), QStringLiteral("em ipsum\r\ndolor sit"));
    QCOMPARE(m_surface->moveRangeStart(range, TextUnit::Word, -5), -1);
    QCOMPARE(m_surface->moveRangeEnd(range, TextUnit::TextEdit, -1), -1);
    QCOMPARE(m_surface->rangeText(range), QString());
}

void tst_TextRanges::forwardAndBackwardMovesAgree_data()
{
    QTest::addColumn<QString>("body");
    QTest::newRow("white space and tags") << QStringLiteral(
        "\n  <p> a  <b> b </b>\n<i></i> c&nbsp; </p>\n<div> <span> </span>d</div> ");
    QTest::newRow("breaks and objects")
        << QStringLiteral("<p>a<br><br> <img src=\"x.png\"> b<br></p><hr><p>c<input>d</p>");
    QTest::newRow("tables, lists and hidden") << QStringLiteral(
        "<table><tr><td> a </td><td></td><td>b<script>x</script></td></tr></table>"
        "<ul><li>c<style>p{}</style></li><li> </li><li>d</li></ul>");
    QTest::newRow("preformatted") << QStringLiteral("<p>a</p><pre> b \n\n c</pre><p> d</p>");
}

// Every place reached going forward is reached again going back, and the other way round.
void tst_TextRanges::forwardAndBackwardMovesAgree()
{
    QFETCH(QString, body);
    load(body);
    const TextRange start = m_surface->bodyRange();
    m_surface->collapseRange(start, true);
    const TextRange end = m_surface->bodyRange();
    m_surface->collapseRange(end, false);

    const TextRange probe = m_surface->duplicateRange(start);
    const int count = m_surface->moveRange(probe, TextUnit::Character, 10000);
    QVERIFY(count > 0);
    QVERIFY(m_surface->rangesEqual(probe, end));
    QCOMPARE(m_surface->moveRange(probe, TextUnit::Character, -10000), -count);
    QVERIFY(m_surface->rangesEqual(probe, start));

    const QString text = m_surface->rangeText(m_surface->bodyRange());
    for (int k = 0; k <= count; ++k) {
        const TextRange ahead = m_surface->duplicateRange(start);
        QCOMPARE(m_surface->moveRange(ahead, TextUnit::Character, k), k);
        const TextRange back = m_surface->duplicateRange(end);
        QCOMPARE(m_surface->moveRange(back, TextUnit::Character, k - count), k - count);
        QVERIFY2(m_surface->rangesEqual(ahead, back), qPrintable(QString::number(k)));

        // The text before a place and the text after it make the whole text.
        const TextRange before = m_surface->duplicateRange(start);
        m_surface->moveRangeEnd(before, TextUnit::Character, k);
        const TextRange after = m_surface->duplicateRange(end);
        m_surface->moveRangeStart(after, TextUnit::Character, k - count);
        QCOMPARE(m_surface->rangeText(before) + m_surface->rangeText(after), text);
    }
}

void tst_TextRanges::findText_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("needle");
    QTest::addColumn<QString>("hit");
    QTest::newRow("ignores case") << QStringLiteral("<p>x Lorem</p>") << QStringLiteral("LOREM")
                                  << QStringLiteral("Lorem");
    QTest::newRow("inside a word")
        << QStringLiteral("<p>dolorem</p>") << QStringLiteral("rem") << QStringLiteral("rem");
    QTest::newRow("across tags") << QStringLiteral("<p>lo<b>re</b>m</p>") << QStringLiteral("lorem")
                                 << QStringLiteral("lorem");
    QTest::newRow("nbsp as space")
        << QStringLiteral("<p>a&nbsp;b</p>") << QStringLiteral("a b") << QStringLiteral("a b");
    QTest::newRow("collapsed white space")
        << QStringLiteral("<p>lorem \n   ipsum</p>") << QStringLiteral("lorem ipsum")
        << QStringLiteral("lorem ipsum");
    QTest::newRow("entity") << QStringLiteral("<p>fish&amp;chips</p>") << QStringLiteral("&")
                            << QStringLiteral("&");
    QTest::newRow("line break") << QStringLiteral("<p>a</p><p>b</p>") << QStringLiteral("a\r\nb")
                                << QStringLiteral("a\r\nb");
    QTest::newRow("not across blocks as a space")
        << QStringLiteral("<p>a</p><p>b</p>") << QStringLiteral("a b") << QString();
    QTest::newRow("not in scripts") << QStringLiteral("<p>x</p><script>secret</script>")
                                    << QStringLiteral("secret") << QString();
    QTest::newRow("not in attributes")
        << QStringLiteral("<p title=\"secret\">x</p>") << QStringLiteral("secret") << QString();
}

void tst_TextRanges::findText()
{
    QFETCH(QString, body);
    QFETCH(QString, needle);
    QFETCH(QString, hit);
    load(body);
    const TextRange range = m_surface->bodyRange();
    QCOMPARE(m_surface->findText(range, needle), !hit.isNull());
    QVERIFY(!m_surface->lastCallFailed());
    if (!hit.isNull())
        QCOMPARE(m_surface->rangeText(range), hit);
}

void tst_TextRanges::findTextStaysInsideANonEmptyRange()
{
    load(QStringLiteral("<p>lorem one two lorem</p>"));
    const TextRange range = found(QStringLiteral("one two"));
    QVERIFY(!range.isNull());
    QVERIFY(!m_surface->findText(range, QStringLiteral("lorem")));
    QCOMPARE(m_surface->rangeText(range), QStringLiteral("one two"));
    // Collapsed, the search goes on to the end of the body.
    m_surface->collapseRange(range, true);
    QVERIFY(m_surface->findText(range, QStringLiteral("lorem")));
    m_surface->moveRangeStart(range, TextUnit::Character, -4);
    QCOMPARE(m_surface->rangeText(range), QStringLiteral("two lorem"));
}

void tst_TextRanges::bookmarkReturnsToThePlace()
{
    load(QStringLiteral("<div><p>lorem <b>ipsum</b></p><p>dolor</p></div>"));
    const TextRange range = found(QStringLiteral("sum\r\ndol"));
    const QString bookmark = m_surface->rangeBookmark(range);
    QVERIFY(!bookmark.isEmpty());
    m_surface->moveRange(range, TextUnit::TextEdit, -1);
    QCOMPARE(m_surface->rangeText(range), QString());
    QVERIFY(m_surface->moveRangeToBookmark(range, bookmark));
    QCOMPARE(m_surface->rangeText(range), QStringLiteral("sum\r\ndol"));
    QVERIFY(!m_surface->moveRangeToBookmark(range, QStringLiteral("nonsense")));
    QVERIFY(!m_surface->moveRangeToBookmark(range, QStringLiteral("VB1|9.9:0|9.9:0")));
}

void tst_TextRanges::inRangeAndDuplicate()
{
    load(QStringLiteral("<p>lorem</p><p> ipsum dolor</p>"));
    const TextRange body = m_surface->bodyRange();
    const TextRange hit = found(QStringLiteral("ipsum"));
    QVERIFY(m_surface->rangeInRange(body, hit));
    QVERIFY(!m_surface->rangeInRange(hit, body));
    QVERIFY(m_surface->rangeInRange(hit, hit));

    const TextRange copy = m_surface->duplicateRange(hit);
    QVERIFY(m_surface->rangesEqual(copy, hit));
    m_surface->moveRange(copy, TextUnit::Word, 1);
    QVERIFY(!m_surface->rangesEqual(copy, hit));
    QCOMPARE(m_surface->rangeText(hit), QStringLiteral("ipsum"));
    QVERIFY(m_surface->rangeInRange(body, copy));
    QVERIFY(!m_surface->rangeInRange(hit, copy));

    // Places a reader cannot tell apart count as equal: the end of one paragraph and the
    // start of the next one's text are one place, however the DOM points differ.
    const TextRange before = found(QStringLiteral("lorem"));
    m_surface->moveRangeEnd(before, TextUnit::Character, 1);
    m_surface->collapseRange(before, false);
    const TextRange after = found(QStringLiteral("ipsum"));
    m_surface->collapseRange(after, true);
    QVERIFY(m_surface->rangesEqual(before, after));
}

void tst_TextRanges::editingThroughRanges()
{
    load(QStringLiteral("<p>lo<b>rem</b> ipsum dolor</p>"));
    const TextRange partial = found(QStringLiteral("orem ip"));
    QCOMPARE(m_surface->rangeHtmlText(partial), QStringLiteral("o<b>rem</b> ip"));

    const TextRange word = found(QStringLiteral("ipsum"));
    QVERIFY(m_surface->setRangeText(word, QStringLiteral("IPSUM")));
    QCOMPARE(m_surface->rangeText(word), QString());
    QVERIFY(m_surface->pasteHTML(word, QStringLiteral("<i>x</i>")));
    QVERIFY(m_surface->pasteHTML(word, QStringLiteral("<u>y</u>")));
    QCOMPARE(m_surface->bodyInnerHTML(),
        QStringLiteral("<p>lo<b>rem</b> IPSUM<i>x</i><u>y</u> dolor</p>"));

    const TextRange caret = m_surface->bodyRange();
    m_surface->collapseRange(caret, true);
    QCOMPARE(m_surface->rangeHtmlText(caret), QString());
    QVERIFY(m_surface->setRangeText(found(QStringLiteral("dolor")), QStringLiteral("a\nb")));
    QCOMPARE(m_surface->bodyInnerHTML(),
        QStringLiteral("<p>lo<b>rem</b> IPSUM<i>x</i><u>y</u> a<br>b</p>"));
}

void tst_TextRanges::rangesFollowEditsElsewhere()
{
    load(QStringLiteral("<p>one two three</p>"));
    const TextRange three = found(QStringLiteral("three"));
    m_surface->setRangeText(found(QStringLiteral("one")), QStringLiteral("a much longer start"));
    m_surface->setRangeText(found(QStringLiteral("two")), QString());
    QCOMPARE(m_surface->rangeText(three), QStringLiteral("three"));
}

void tst_TextRanges::parentElement_data()
{
    QTest::addColumn<QString>("needle");
    QTest::addColumn<bool>("collapse");
    QTest::addColumn<QString>("tag");
    QTest::newRow("text in bold") << QStringLiteral("bold") << false << QStringLiteral("B");
    QTest::newRow("caret in bold") << QStringLiteral("old") << true << QStringLiteral("B");
    QTest::newRow("across elements") << QStringLiteral("plain bo") << false << QStringLiteral("P");
    QTest::newRow("across blocks")
        << QStringLiteral("bold\r\nnext") << false << QStringLiteral("DIV");
}

void tst_TextRanges::parentElement()
{
    QFETCH(QString, needle);
    QFETCH(bool, collapse);
    QFETCH(QString, tag);
    load(QStringLiteral("<div><p>plain <b>bold</b></p><p>next</p></div>"));
    const TextRange range = found(needle);
    QVERIFY(!range.isNull());
    if (collapse)
        m_surface->collapseRange(range, true);
    QCOMPARE(m_surface->tagName(m_surface->rangeParentElement(range)), tag);
}

// Ranges and element handles belong to their document: after a load they fail, and fresh
// ones work.
void tst_TextRanges::staleHandlesFailCleanly()
{
    load(QStringLiteral("<p>first</p>"));
    const TextRange range = m_surface->bodyRange();
    const Element body = m_surface->body();
    QVERIFY(!range.isNull() && !body.isNull());
    load(QStringLiteral("<p>second</p>"));
    QCOMPARE(m_surface->attribute(body, QStringLiteral("id")), QString());
    QVERIFY(m_surface->lastCallFailed());
    QVERIFY(!m_surface->body().isNull());
    QVERIFY(!m_surface->lastCallFailed());
    QCOMPARE(m_surface->rangeText(range), QString());
    QVERIFY(m_surface->lastCallFailed());
    QVERIFY(!m_surface->findText(range, QStringLiteral("second")));
    QVERIFY(m_surface->lastCallFailed());
    QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), QStringLiteral("second"));
    QVERIFY(!m_surface->lastCallFailed());
}

void tst_TextRanges::selectionFollowsSelectedRange()
{
    load(QStringLiteral("<p>lorem ipsum</p>"));
    QVERIFY(m_surface->selectRange(found(QStringLiteral("ipsum"))));
    QCOMPARE(m_surface->selectionType(), SelectionType::Text);
    const TextRange selected = m_surface->selectionRange();
    QVERIFY(!m_surface->isControlRange(selected));
    QCOMPARE(m_surface->rangeText(selected), QStringLiteral("ipsum"));

    m_surface->collapseRange(selected, true);
    QVERIFY(m_surface->selectRange(selected));
    QCOMPARE(m_surface->selectionType(), SelectionType::None);

    QVERIFY(m_surface->selectRange(found(QStringLiteral("lorem "))));
    QVERIFY(m_surface->clearSelection());
    QCOMPARE(m_surface->bodyInnerHTML(), QStringLiteral("<p>ipsum</p>"));
}

void tst_TextRanges::controlSelectionLeavesNoTraceInMarkup()
{
    const QString markup = QStringLiteral("<p>a <img src=\"x.png\" alt=\"pic\"> b</p>"
                                          "<table border=\"1\"><tbody><tr><td>c</td></tr>"
                                          "</tbody></table>");
    load(markup);
    const QList<Element> images = m_surface->images();
    QCOMPARE(images.size(), 1);
    QVERIFY(m_surface->selectElement(images.first()));
    QCOMPARE(m_surface->selectionType(), SelectionType::Control);
    const TextRange controls = m_surface->selectionRange();
    QVERIFY(m_surface->isControlRange(controls));
    QCOMPARE(m_surface->controlCount(controls), 1);
    QCOMPARE(m_surface->tagName(m_surface->controlItem(controls, 0)), QStringLiteral("IMG"));
    QCOMPARE(m_surface->rangeText(controls), QString());
    QVERIFY(m_surface->lastCallFailed());
    QCOMPARE(m_surface->bodyInnerHTML(), markup);
    m_editor->setReturnFullDocument(true);
    QVERIFY(!m_editor->GetHtmlSource().contains(QStringLiteral("outline")));
    m_editor->setReturnFullDocument(false);

    // Selecting text ends the control selection and its frame.
    QVERIFY(m_surface->selectRange(found(QStringLiteral("c"))));
    QCOMPARE(m_surface->selectionType(), SelectionType::Text);

    QVERIFY(
        m_surface->selectElement(m_surface->elementsByTagName(QStringLiteral("TABLE")).first()));
    QVERIFY(m_surface->clearSelection());
    QCOMPARE(
        m_surface->bodyInnerHTML(), QStringLiteral("<p>a <img src=\"x.png\" alt=\"pic\"> b</p>"));
    QCOMPARE(m_surface->selectionType(), SelectionType::None);
}

void tst_TextRanges::waitForFrame()
{
    // The engine hit-tests what it has rendered.
    const QVariant ticket = VantryTest::adapterValue(*m_editor, QStringLiteral("frameTicket"));
    QTRY_VERIFY(
        VantryTest::adapterValue(*m_editor, QStringLiteral("frameRendered"), {ticket}).toBool());
}

void tst_TextRanges::click(const QPointF &at)
{
    QTest::mouseClick(
        VantryTest::inputOf(*m_surface), Qt::LeftButton, Qt::NoModifier, at.toPoint());
}

void tst_TextRanges::clickingChoosesElementsWhole_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QPointF>("offset");
    QTest::addColumn<bool>("whole");
    // Where to click, from the element's top left corner.
    QTest::newRow("image") << QStringLiteral("IMG") << QPointF(20, 15) << true;
    QTest::newRow("form control") << QStringLiteral("INPUT") << QPointF(10, 5) << true;
    QTest::newRow("table frame") << QStringLiteral("TABLE") << QPointF(4, 20) << true;
    QTest::newRow("table cell") << QStringLiteral("TD") << QPointF(10, 8) << false;
    QTest::newRow("positioned edge") << QStringLiteral("DIV") << QPointF(2, 50) << true;
    QTest::newRow("inside positioned") << QStringLiteral("DIV") << QPointF(40, 12) << false;
}

void tst_TextRanges::clickingChoosesElementsWhole()
{
    QFETCH(QString, tag);
    QFETCH(QPointF, offset);
    QFETCH(bool, whole);
    load(QStringLiteral("<p>text <img src=\"data:image/gif;base64,R0lGODlhAQABAIAAAP///wAAACH5"
                        "BAEAAAAALAAAAAABAAEAAAICRAEAOw==\" width=\"40\" height=\"30\"> "
                        "<input value=\"field\"></p>"
                        "<table border=\"1\" cellspacing=\"12\"><tbody><tr><td>a cell with "
                        "text</td></tr></tbody></table>"
                        "<div style=\"position: absolute; left: 300px; top: 150px; width: 200px; "
                        "height: 100px\">positioned text</div>"));
    const Element element = m_surface->elementsByTagName(tag).first();
    QTRY_VERIFY(m_surface->boundingRect(element).width() > 0);
    waitForFrame();
    m_surface->selectRange(found(QStringLiteral("text")));
    click(m_surface->boundingRect(element).topLeft() + offset);
    if (whole) {
        QTRY_COMPARE(m_surface->selectionType(), SelectionType::Control);
        QCOMPARE(m_surface->tagName(m_surface->controlItem(m_surface->selectionRange(), 0)), tag);
    } else {
        QTRY_COMPARE(m_surface->selectionType(), SelectionType::None);
    }
}

void tst_TextRanges::elementAccess()
{
    load(QStringLiteral("<p id=\"p\" style=\"color: red;\">text<script>1</script></p>"));
    const Element paragraph = m_surface->elementsByTagName(QStringLiteral("P")).first();
    QCOMPARE(m_surface->tagName(m_surface->parentElement(paragraph)), QStringLiteral("BODY"));
    QCOMPARE(m_surface->styleProperty(paragraph, QStringLiteral("color")), QStringLiteral("red"));
    QVERIFY(m_surface->setStyleProperty(paragraph, QStringLiteral("color"), QString()));
    QVERIFY(m_surface->removeAttribute(paragraph, QStringLiteral("id")));
    QCOMPARE(m_surface->scripts().size(), 1);
    QVERIFY(m_surface->setInnerHTML(paragraph, QStringLiteral("<b>new</b>")));
    QCOMPARE(m_surface->innerHTML(paragraph), QStringLiteral("<b>new</b>"));
    QCOMPARE(m_surface->scripts().size(), 0);
    QVERIFY(m_surface->setOuterHTML(paragraph, QStringLiteral("<h1>head</h1>")));
    QCOMPARE(m_surface->bodyInnerHTML(), QStringLiteral("<h1>head</h1>"));
    QVERIFY(m_surface->parentElement(paragraph).isNull());
    QVERIFY(!m_surface->setOuterHTML(paragraph, QStringLiteral("<p>again</p>")));
}

QTEST_MAIN(tst_TextRanges)
#include "tst_textranges.moc"
