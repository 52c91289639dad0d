// Text ranges, the selection and control selections on the real engine: positions count
// what a reader sees, ranges follow edits, and the control frame never reaches the markup;
// and find and replace through the editor's public methods: where each search starts and
// stops, what it selects, and what the replace-all loops return.

#include "../common/datarows.h"
#include "../common/surfacefixture.h"

using namespace Vantry;
using namespace Qt::StringLiterals;
using Platform::Element;
using Platform::SelectionType;
using Platform::TextRange;
using Platform::TextUnit;

class tst_TextRanges : public VantryTest::SurfaceFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(start()); }

    void readerText_data()
    {
        columns<QString, QString>("body", "text");
        row("entities and nbsp", "<p>a&amp;b&nbsp;c&lt;</p>", "a&b c<");
        row("white space collapses", "<p>  lorem \n\t ipsum  </p>", "lorem ipsum");
        row("white space across tags", "<p>lorem <b> ipsum</b> <i> </i>dolor</p>",
            "lorem ipsum dolor");
        row("blocks break once", "<p>one</p>\n<p>two</p><div><p>three</p></div>",
            "one\r\ntwo\r\nthree");
        row("empty blocks add nothing", "<p>a</p><p></p><div> </div><p>b</p>", "a\r\nb");
        row("line breaks", "one<br>two<br><br>three", "one\r\ntwo\r\n\r\nthree");
        row("break closing a block", "<p>a<br></p><p>b</p>", "a\r\nb");
        row("preformatted", "<pre>a  b\nc</pre>", "a  b\r\nc");
        row("scripts and styles unseen", "<p>a<script>x()</script><style>p{}</style>b</p>", "ab");
        row("objects read as nothing", "<p>a <img src=\"x.png\"> b<input></p>", "a  b");
        row("table cells", "<table><tr><td>a</td><td>b</td></tr></table>", "a\r\nb");
    }

    void readerText()
    {
        auto [body, text] = fetch<QString, QString>("body", "text");
        load(body);
        QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), text);
    }

    void characterMoves_data()
    {
        columns<QString, int, int, int, QString>("body", "start", "end", "moved", "text");
        row("entity is one", "<p>&lt;&amp;x</p>", 1, 2, 2, "&");
        row("nbsp is one", "<p>a&nbsp;&nbsp;b</p>", 1, 3, 3, "  ");
        row("white space run is one", "<p>a \n\t b</p>", 0, 3, 3, "a b");
        row("block boundary is one", "<p>ab</p>\n\n<p>cd</p>", 1, 4, 4, "b\r\nc");
        row("line break is one", "<p>ab<br>cd</p>", 2, 3, 3, "\r\n");
        row("object is one", "<p>a<img src=\"x.png\">b</p>", 0, 3, 3, "ab");
        row("tags are nothing", "<p>l<b>o</b><i><u>r</u></i>em</p>", 1, 4, 4, "ore");
        row("end stops the move", "<p>abc</p>", 1, 100, 3, "bc");
    }

    void characterMoves()
    {
        auto [body, start, end, moved, text]
            = fetch<QString, int, int, int, QString>("body", "start", "end", "moved", "text");
        load(body);
        const TextRange range = caret(true);
        QCOMPARE(m_surface->moveRangeEnd(range, TextUnit::Character, end), moved);
        QCOMPARE(m_surface->moveRangeStart(range, TextUnit::Character, start), start);
        QCOMPARE(m_surface->rangeText(range), text);
    }

    void wordMoves_data()
    {
        columns<QString, int, QString>("body", "words", "word");
        row("next word", "<p>lorem ipsum dolor</p>", 1, "ipsum ");
        row("word across tags", "<p>lo<b>re</b>m ip<i>sum</i></p>", 1, "ipsum");
        row("word after a block", "<p>lorem</p><p>ipsum dolor</p>", 1, "ipsum ");
        row("punctuation is a word", "<p>lorem, ipsum</p>", 1, ", ");
        row("after punctuation", "<p>lorem, ipsum</p>", 2, "ipsum");
        row("nbsp separates", "<p>a&nbsp;b</p>", 1, "b");
        row("object is a word", "<p>a <img src=\"x.png\">b</p>", 2, "b");
    }

    void wordMoves()
    {
        auto [body, words, word] = fetch<QString, int, QString>("body", "words", "word");
        load(body);
        const TextRange range = m_surface->bodyRange();
        QCOMPARE(m_surface->moveRange(range, TextUnit::Word, words), words);
        m_surface->moveRangeEnd(range, TextUnit::Word, 1);
        QCOMPARE(m_surface->rangeText(range), word);
    }

    void backwardMoves()
    {
        load(u"<p>lorem ipsum</p><p>dolor sit</p>"_s);
        const TextRange range = caret(false);
        QCOMPARE(m_surface->moveRangeStart(range, TextUnit::Word, -1), -1);
        QCOMPARE(m_surface->rangeText(range), u"sit"_s);
        QCOMPARE(m_surface->moveRangeStart(range, TextUnit::Word, -2), -2);
        QCOMPARE(m_surface->rangeText(range), u"ipsum\r\ndolor sit"_s);
        QCOMPARE(m_surface->moveRangeStart(range, TextUnit::Word, -5), -1);
        QCOMPARE(m_surface->moveRangeEnd(range, TextUnit::TextEdit, -1), -1);
        QCOMPARE(m_surface->rangeText(range), QString());
    }

    void forwardAndBackwardMovesAgree_data()
    {
        QTest::addColumn<QString>("body");
        row("white space and tags",
            "\n  <p> a  <b> b </b>\n<i></i> c&nbsp; </p>\n<div> <span> </span>d</div> ");
        row("breaks and objects", "<p>a<br><br> <img src=\"x.png\"> b<br></p><hr><p>c<input>d</p>");
        row("tables, lists and hidden",
            "<table><tr><td> a </td><td></td><td>b<script>x</script></td></tr></table>"
            "<ul><li>c<style>p{}</style></li><li> </li><li>d</li></ul>");
        row("preformatted", "<p>a</p><pre> b \n\n c</pre><p> d</p>");
    }

    // Every place reached going forward is reached again going back, and the other way round.
    void forwardAndBackwardMovesAgree()
    {
        QFETCH(QString, body);
        load(body);
        const TextRange start = caret(true);
        const TextRange end = caret(false);

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

    void findText_data()
    {
        columns<QString, QString, QString>("body", "needle", "hit");
        row("ignores case", "<p>x Lorem</p>", "LOREM", "Lorem");
        row("inside a word", "<p>dolorem</p>", "rem", "rem");
        row("across tags", "<p>lo<b>re</b>m</p>", "lorem", "lorem");
        row("nbsp as space", "<p>a&nbsp;b</p>", "a b", "a b");
        row("collapsed white space", "<p>lorem \n   ipsum</p>", "lorem ipsum", "lorem ipsum");
        row("entity", "<p>fish&amp;chips</p>", "&", "&");
        row("line break", "<p>a</p><p>b</p>", "a\r\nb", "a\r\nb");
        row("not across blocks as a space", "<p>a</p><p>b</p>", "a b", QString());
        row("not in scripts", "<p>x</p><script>secret</script>", "secret", QString());
        row("not in attributes", "<p title=\"secret\">x</p>", "secret", QString());
    }

    void findText()
    {
        auto [body, needle, hit] = fetch<QString, QString, QString>("body", "needle", "hit");
        load(body);
        const TextRange range = m_surface->bodyRange();
        QCOMPARE(m_surface->findText(range, needle), !hit.isNull());
        QVERIFY(!m_surface->lastCallFailed());
        if (!hit.isNull())
            QCOMPARE(m_surface->rangeText(range), hit);
    }

    void findTextStaysInsideANonEmptyRange()
    {
        load(u"<p>lorem one two lorem</p>"_s);
        const TextRange range = found(u"one two"_s);
        QVERIFY(!range.isNull());
        QVERIFY(!m_surface->findText(range, u"lorem"_s));
        QCOMPARE(m_surface->rangeText(range), u"one two"_s);
        // Collapsed, the search goes on to the end of the body.
        m_surface->collapseRange(range, true);
        QVERIFY(m_surface->findText(range, u"lorem"_s));
        m_surface->moveRangeStart(range, TextUnit::Character, -4);
        QCOMPARE(m_surface->rangeText(range), u"two lorem"_s);
    }

    void bookmarkReturnsToThePlace()
    {
        load(u"<div><p>lorem <b>ipsum</b></p><p>dolor</p></div>"_s);
        const TextRange range = found(u"sum\r\ndol"_s);
        const QString bookmark = m_surface->rangeBookmark(range);
        QVERIFY(!bookmark.isEmpty());
        m_surface->moveRange(range, TextUnit::TextEdit, -1);
        QCOMPARE(m_surface->rangeText(range), QString());
        QVERIFY(m_surface->moveRangeToBookmark(range, bookmark));
        QCOMPARE(m_surface->rangeText(range), u"sum\r\ndol"_s);
        QVERIFY(!m_surface->moveRangeToBookmark(range, u"nonsense"_s));
        QVERIFY(!m_surface->moveRangeToBookmark(range, u"VB1|9.9:0|9.9:0"_s));
    }

    void inRange()
    {
        load(u"<p>lorem</p><p> ipsum dolor</p>"_s);
        const TextRange body = m_surface->bodyRange();
        const TextRange hit = found(u"ipsum"_s);
        QVERIFY(m_surface->rangeInRange(body, hit));
        QVERIFY(!m_surface->rangeInRange(hit, body));
        QVERIFY(m_surface->rangeInRange(hit, hit));
        QVERIFY(!m_surface->rangeInRange(hit, found(u"dolor"_s)));
    }

    void editingThroughRanges()
    {
        load(u"<p>lo<b>rem</b> ipsum dolor</p>"_s);
        const TextRange dolor = found(u"dolor"_s);
        const TextRange partial = found(u"orem ip"_s);
        QCOMPARE(m_surface->rangeHtmlText(partial), u"o<b>rem</b> ip"_s);

        const TextRange word = found(u"ipsum"_s);
        QVERIFY(m_surface->setRangeText(word, u"IPSUM"_s));
        QCOMPARE(m_surface->rangeText(word), QString());
        QVERIFY(m_surface->pasteHTML(word, u"<i>x</i>"_s));
        QVERIFY(m_surface->pasteHTML(word, u"<u>y</u>"_s));
        QCOMPARE(m_surface->bodyInnerHTML(), u"<p>lo<b>rem</b> IPSUM<i>x</i><u>y</u> dolor</p>"_s);
        // A range follows edits made elsewhere.
        QCOMPARE(m_surface->rangeText(dolor), u"dolor"_s);

        QCOMPARE(m_surface->rangeHtmlText(caret(true)), QString());
        QVERIFY(m_surface->setRangeText(found(u"dolor"_s), u"a\nb"_s));
        QCOMPARE(m_surface->bodyInnerHTML(), u"<p>lo<b>rem</b> IPSUM<i>x</i><u>y</u> a<br>b</p>"_s);
    }

    void parentElement_data()
    {
        columns<QString, bool, QString>("needle", "collapse", "tag");
        row("text in bold", "bold", false, "B");
        row("caret in bold", "old", true, "B");
        row("across elements", "plain bo", false, "P");
        row("across blocks", "bold\r\nnext", false, "DIV");
    }

    void parentElement()
    {
        auto [needle, collapse, tag] = fetch<QString, bool, QString>("needle", "collapse", "tag");
        load(u"<div><p>plain <b>bold</b></p><p>next</p></div>"_s);
        const TextRange range = found(needle);
        QVERIFY(!range.isNull());
        if (collapse)
            m_surface->collapseRange(range, true);
        QCOMPARE(m_surface->tagName(m_surface->rangeParentElement(range)), tag);
    }

    // Ranges and element handles belong to their document: after a load they fail, and fresh
    // ones work.
    void staleHandlesFailCleanly()
    {
        load(u"<p>first</p>"_s);
        const TextRange range = m_surface->bodyRange();
        const Element body = m_surface->body();
        QVERIFY(!range.isNull() && !body.isNull());
        load(u"<p>second</p>"_s);
        QCOMPARE(m_surface->attribute(body, u"id"_s), QString());
        QVERIFY(m_surface->lastCallFailed());
        QVERIFY(!m_surface->body().isNull());
        QVERIFY(!m_surface->lastCallFailed());
        QCOMPARE(m_surface->rangeText(range), QString());
        QVERIFY(m_surface->lastCallFailed());
        QVERIFY(!m_surface->findText(range, u"second"_s));
        QVERIFY(m_surface->lastCallFailed());
        QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), u"second"_s);
        QVERIFY(!m_surface->lastCallFailed());
    }

    void selectionsOfTextAndOfControls()
    {
        const QString image = u"<p>a <img src=\"x.png\" alt=\"pic\"> b</p>"_s;
        const QString markup
            = image + u"<table border=\"1\"><tbody><tr><td>c</td></tr></tbody></table>"_s;
        load(markup);
        const QList<Element> images = m_surface->images();
        QCOMPARE(images.size(), 1);
        QVERIFY(m_surface->selectElement(images.first()));
        QCOMPARE(m_surface->selectionType(), SelectionType::Control);
        const TextRange controls = m_surface->selectionRange();
        QVERIFY(m_surface->isControlRange(controls));
        QCOMPARE(m_surface->controlCount(controls), 1);
        QCOMPARE(m_surface->tagName(m_surface->controlItem(controls, 0)), u"IMG"_s);
        QCOMPARE(m_surface->rangeText(controls), QString());
        QVERIFY(m_surface->lastCallFailed());
        // The control frame never reaches the markup.
        QCOMPARE(m_surface->bodyInnerHTML(), markup);
        m_editor->setReturnFullDocument(true);
        QVERIFY(!m_editor->GetHtmlSource().contains(u"outline"_s));
        m_editor->setReturnFullDocument(false);

        // Selecting text ends the control selection and its frame; a collapsed range selects
        // nothing.
        QVERIFY(m_surface->selectRange(found(u"c"_s)));
        QCOMPARE(m_surface->selectionType(), SelectionType::Text);
        const TextRange selected = m_surface->selectionRange();
        QVERIFY(!m_surface->isControlRange(selected));
        QCOMPARE(m_surface->rangeText(selected), u"c"_s);
        m_surface->collapseRange(selected, true);
        QVERIFY(m_surface->selectRange(selected));
        QCOMPARE(m_surface->selectionType(), SelectionType::None);

        // Clearing a selection removes what it holds, a control whole.
        QVERIFY(m_surface->selectElement(m_surface->elementsByTagName(u"TABLE"_s).first()));
        QVERIFY(m_surface->clearSelection());
        QCOMPARE(m_surface->bodyInnerHTML(), image);
        QCOMPARE(m_surface->selectionType(), SelectionType::None);
        QVERIFY(m_surface->selectRange(found(u"a "_s)));
        QVERIFY(m_surface->clearSelection());
        QCOMPARE(m_surface->bodyInnerHTML(), u"<p><img src=\"x.png\" alt=\"pic\"> b</p>"_s);
    }

    void clickingChoosesElementsWhole_data()
    {
        columns<QString, QPointF, bool>("tag", "offset", "whole");
        // Where to click, from the element's top left corner.
        row("image", "IMG", QPointF(20, 15), true);
        row("form control", "INPUT", QPointF(10, 5), true);
        row("table frame", "TABLE", QPointF(4, 20), true);
        row("table cell", "TD", QPointF(10, 8), false);
        row("positioned edge", "DIV", QPointF(2, 50), true);
        row("inside positioned", "DIV", QPointF(40, 12), false);
    }

    void clickingChoosesElementsWhole()
    {
        auto [tag, offset, whole] = fetch<QString, QPointF, bool>("tag", "offset", "whole");
        load(u"<p>text <img src=\"data:image/gif;base64,R0lGODlhAQABAIAAAP///wAAACH5"
             "BAEAAAAALAAAAAABAAEAAAICRAEAOw==\" width=\"40\" height=\"30\"> "
             "<input value=\"field\"></p>"
             "<table border=\"1\" cellspacing=\"12\"><tbody><tr><td>a cell with "
             "text</td></tr></tbody></table>"
             "<div style=\"position: absolute; left: 300px; top: 150px; width: 200px; "
             "height: 100px\">positioned text</div>"_s);
        const Element element = m_surface->elementsByTagName(tag).first();
        QTRY_VERIFY(m_surface->boundingRect(element).width() > 0);
        waitForFrame();
        m_surface->selectRange(found(u"text"_s));
        QTest::mouseClick(VantryTest::inputOf(*m_surface), Qt::LeftButton, Qt::NoModifier,
            (m_surface->boundingRect(element).topLeft() + offset).toPoint());
        if (whole) {
            QTRY_COMPARE(m_surface->selectionType(), SelectionType::Control);
            QCOMPARE(
                m_surface->tagName(m_surface->controlItem(m_surface->selectionRange(), 0)), tag);
        } else {
            QTRY_COMPARE(m_surface->selectionType(), SelectionType::None);
        }
    }

    void elementAccess()
    {
        load(u"<p>text<script>1</script></p>"_s);
        const Element paragraph = m_surface->elementsByTagName(u"P"_s).first();
        QCOMPARE(m_surface->tagName(m_surface->parentElement(paragraph)), u"BODY"_s);
        QCOMPARE(m_surface->scripts().size(), 1);
        QVERIFY(m_surface->setInnerHTML(paragraph, u"<b>new</b>"_s));
        QCOMPARE(m_surface->innerHTML(paragraph), u"<b>new</b>"_s);
        QCOMPARE(m_surface->scripts().size(), 0);
        QVERIFY(m_surface->setOuterHTML(paragraph, u"<h1>head</h1>"_s));
        QCOMPARE(m_surface->bodyInnerHTML(), u"<h1>head</h1>"_s);
        QVERIFY(m_surface->parentElement(paragraph).isNull());
        QVERIFY(!m_surface->setOuterHTML(paragraph, u"<p>again</p>"_s));
    }

    void findFirstAndNextWalkTheBody()
    {
        // The text up to each hit's end; null when nothing is found.
        const auto first = [this](const QString &needle) {
            return m_editor->FindFirstText(needle) ? textUpToSelectionEnd() : QString();
        };
        const auto next = [this](const QString &needle) {
            return m_editor->FindNextText(needle) ? textUpToSelectionEnd() : QString();
        };
        const QString body = u"<p>lorem a</p><p>b <b>Lo</b>rem</p><p>c LOREM</p>"_s;
        load(body);
        // Before a first search, a next one finds nothing and replaces nothing.
        QVERIFY(next(u"lorem"_s).isNull());
        QVERIFY(!m_editor->ReplaceNextText(u"lorem"_s, u"x"_s));
        QCOMPARE(m_surface->bodyInnerHTML(), body);
        QCOMPARE(first(u"lorem"_s), u"lorem"_s);
        QCOMPARE(next(u"lorem"_s), u"lorem a\r\nb Lorem"_s);
        QCOMPARE(selectedText(), u"Lorem"_s);
        QCOMPARE(next(u"LoReM"_s), u"lorem a\r\nb Lorem\r\nc LOREM"_s);
        // A miss leaves the last hit selected, and a new first search starts at the top.
        QVERIFY(next(u"lorem"_s).isNull());
        QCOMPARE(selectedText(), u"LOREM"_s);
        QCOMPARE(first(u"lorem"_s), u"lorem"_s);

        // Two hits in one word count as one.
        load(u"<p>aaaa xaa</p>"_s);
        QCOMPARE(first(u"aa"_s), u"aa"_s);
        QCOMPARE(next(u"aa"_s), u"aaaa xaa"_s);
        QVERIFY(next(u"aa"_s).isNull());
    }

    void replaceFirstAndNext()
    {
        load(u"<p>lorem lorem <i>lorem</i></p>"_s);
        m_editor->setisDirty(false);
        QVERIFY(m_editor->ReplaceFirstText(u"LOREM"_s, u"ipsum"_s));
        QVERIFY(m_editor->ReplaceNextText(u"lorem"_s, u"dolor"_s));
        QCOMPARE(m_surface->bodyInnerHTML(), u"<p>ipsum dolor <i>lorem</i></p>"_s);
        QVERIFY(m_editor->ReplaceNextText(u"lorem"_s, QString()));
        QVERIFY(!m_editor->ReplaceNextText(u"lorem"_s, u"x"_s));
        QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), u"ipsum dolor"_s);
        QVERIFY(!m_editor->isDirty());
    }

    void replaceAllTextReturnsFalseWhenDone_data()
    {
        // caret: the text up to the caret, which stands before the last replacement.
        columns<QString, QString, QString, QString, QString>(
            "body", "find", "replacement", "text", "caret");
        row("every hit", "<p>lorem a Lorem</p><p>b lo<b>rem</b></p>", "lorem", "ipsum",
            "ipsum a ipsum\r\nb ipsum", "ipsum a ipsum\r\nb ");
        row("replacement holds the text", "<p>lorem x lorem</p>", "lorem", "lorem lorem",
            "lorem lorem x lorem lorem", "lorem lorem x ");
        row("several hits in one node", "<p>a lorem, b lorem c <i>d</i> lorem e</p>", "lorem", "xy",
            "a xy, b xy c d xy e", "a xy, b xy c d ");
        row("no hit", "<p>dolor</p>", "lorem", "ipsum", "dolor", "");
        row("never in scripts", "<p>lorem</p><script>lorem()</script><p>xlorem</p>", "lorem",
            "ipsum", "ipsum\r\nxipsum", "ipsum\r\nx");
        row("text with a space", "<p>lorem \n ipsum, lorem <b>ipsum</b></p>", "lorem ipsum", "x",
            "x, x", "x, ");
        row("one hit per word", "<p>aaaa aa</p>", "aa", "b", "baa b", "baa ");
        // The word move after a removal starts on what now reads first in the line.
        row("empty replacement", "<p>lorem lorem, a lorem</p>", "lorem", "", "lorem, a",
            "lorem, a");
    }

    void replaceAllTextReturnsFalseWhenDone()
    {
        auto [body, find, replacement, text, caret]
            = fetch<QString, QString, QString, QString, QString>(
                "body", "find", "replacement", "text", "caret");
        load(body);
        QVERIFY(!m_editor->ReplaceAllText(find, replacement));
        QVERIFY(!m_surface->lastCallFailed());
        QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), text);
        QVERIFY(!m_surface->bodyInnerHTML().contains(u"<script>ipsum"_s));
        QCOMPARE(textUpToSelectionEnd(), caret);
    }

    void inSelectionMethodsRefuseAControl()
    {
        const QString body = u"<p>lorem<img src=\"x.png\">lorem</p>"_s;
        load(body);
        QVERIFY(m_surface->selectElement(m_surface->images().first()));
        const QString lorem = u"lorem"_s, ipsum = u"ipsum"_s;
        QVERIFY(!m_editor->FindFirstTextInSelection(lorem));
        QVERIFY(!m_editor->ReplaceFirstTextInSelection(lorem, ipsum));
        QVERIFY(!m_editor->ReplaceAllTextInSelection(lorem, ipsum));
        QVERIFY(!m_editor->FindNextTextInSelection(lorem));
        QVERIFY(!m_editor->ReplaceNextTextInSelection(lorem, ipsum));
        QCOMPARE(m_surface->bodyInnerHTML(), body);
        QCOMPARE(m_surface->selectionType(), SelectionType::Control);
    }

    void findNextInSelectionWrapsToTheFirstHit_data()
    {
        // hits: the text up to each hit's end, the first search's, then each next search's.
        columns<QString, QString, QStringList>("body", "selected", "hits");
        row("hits inside", "<p>lorem 1 lorem 2 lorem 3</p>", "lorem 1 lorem 2",
            QStringList{u"lorem"_s, u"lorem 1 lorem"_s, u"lorem"_s, u"lorem 1 lorem"_s});
        row("last hit ends the selection and the body", "<p>lorem a lorem b lorem</p>",
            "a lorem b lorem",
            QStringList{u"lorem a lorem"_s, u"lorem a lorem b lorem"_s, u"lorem a lorem"_s});
        row("last hit is the body's last", "<p>x lorem a</p>", "lorem a",
            QStringList{u"x lorem"_s, u"x lorem"_s});
    }

    // Past the last hit in the selection the search starts over at its first.
    void findNextInSelectionWrapsToTheFirstHit()
    {
        auto [body, selected, hits]
            = fetch<QString, QString, QStringList>("body", "selected", "hits");
        load(body);
        select(selected);
        const QString lorem = u"lorem"_s;
        QVERIFY(m_editor->FindFirstTextInSelection(lorem));
        QCOMPARE(textUpToSelectionEnd(), hits.first());
        for (qsizetype i = 1; i < hits.size(); ++i) {
            QVERIFY2(m_editor->FindNextTextInSelection(lorem), qPrintable(QString::number(i)));
            QCOMPARE(textUpToSelectionEnd(), hits.at(i));
        }
    }

    void replaceInSelectionStaysInside()
    {
        load(u"<p>lorem 1 lorem 2 lorem 3 ipsum</p>"_s);
        select(u"lorem 1"_s);
        const QString lorem = u"lorem"_s;
        // A hit beyond the selection is neither found nor replaced, and the selection stays.
        QVERIFY(!m_editor->FindFirstTextInSelection(u"ipsum"_s));
        QVERIFY(!m_editor->ReplaceFirstTextInSelection(u"ipsum"_s, u"x"_s));
        QCOMPARE(selectedText(), u"lorem 1"_s);

        select(u"lorem 1 lorem 2"_s);
        QVERIFY(m_editor->ReplaceFirstTextInSelection(lorem, u"a"_s));
        QVERIFY(m_editor->ReplaceNextTextInSelection(lorem, u"b"_s));
        // The next hit lies beyond the selection; from the selection's start again the only
        // one left is beyond it as well.
        QVERIFY(!m_editor->ReplaceNextTextInSelection(lorem, u"c"_s));
        QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), u"a 1 b 2 lorem 3 ipsum"_s);
    }

    void replaceAllInSelection_data()
    {
        // caret: the text up to the selection's end after the replacements.
        columns<QString, QString, QString, QString, QString>(
            "body", "selected", "replacement", "text", "caret");
        row("in any case, nothing outside", "<p>lorem 1 <b>lorem</b> 2</p><p>lorem 3</p>",
            "1 lorem 2", "ipsum", "lorem 1 ipsum 2\r\nlorem 3", "lorem 1 ");
        // Hits after the selection send the search back to its start, where none is left.
        row("hits after the selection", "<p>x lorem lorem y lorem</p>", "lorem lorem", "ipsum",
            "x ipsum ipsum y lorem", "x ipsum ");
        // A replacement holding the searched text is not searched again.
        row("replacement holds the text", "<p>x lorem y <b>lorem</b> z</p><p>lorem lorem</p>",
            "lorem y lorem", "(lorem)", "x (lorem) y (lorem) z\r\nlorem lorem", "x (lorem) y ");
    }

    void replaceAllInSelection()
    {
        auto [body, selected, replacement, text, caret]
            = fetch<QString, QString, QString, QString, QString>(
                "body", "selected", "replacement", "text", "caret");
        load(body);
        select(selected);
        QVERIFY(!m_editor->ReplaceAllTextInSelection(u"LOREM"_s, replacement));
        QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), text);
        QCOMPARE(selectedText(), QString());
        QCOMPARE(textUpToSelectionEnd(), caret);
    }

    void aLookupEndsTheSearch()
    {
        load(u"<p>lorem lorem</p>"_s);
        QVERIFY(m_editor->FindFirstText(u"lorem"_s));
        QVERIFY(!m_editor->GetSelectedElementObject().isNull());
        QVERIFY(!m_editor->FindNextText(u"lorem"_s));

        // So does a new document.
        QVERIFY(m_editor->FindFirstText(u"lorem"_s));
        load(u"<p>lorem lorem</p>"_s);
        QVERIFY(!m_editor->FindNextText(u"lorem"_s));
    }

    // The kept search range and selection copy belong to the search, however many other
    // ranges are made and dropped meanwhile.
    void theSearchOutlivesOtherCalls()
    {
        load(u"<p>lorem a lorem b lorem c</p>"_s);
        const QString lorem = u"lorem"_s;
        QVERIFY(m_editor->FindFirstText(lorem));
        for (int i = 0; i < 300; ++i)
            m_editor->GetSelectedHTML();
        QVERIFY(m_editor->FindNextText(lorem));
        QCOMPARE(textUpToSelectionEnd(), u"lorem a lorem"_s);

        select(u"a lorem b lorem c"_s);
        QVERIFY(m_editor->FindFirstTextInSelection(lorem));
        for (int i = 0; i < 300; ++i)
            m_editor->GetSelectedHTML();
        QVERIFY(m_editor->FindNextTextInSelection(lorem));
        QCOMPARE(textUpToSelectionEnd(), u"lorem a lorem b lorem"_s);
    }

    void editsAreUndoneOneAtATime_data()
    {
        columns<int, QString>("edit", "changed");
        row("replace first", 0, "<p>ipsum a lorem</p>");
        row("replace all", 1, "<p>ipsum a ipsum</p>");
        row("replace all in selection", 2, "<p>ipsum a ipsum</p>");
        row("find and replace markup", 3, "<p>ipsum a ipsum</p>");
        row("table appended", 4, "<table");
    }

    // Each edit is one undo step on top of the history before it: undo takes it back, and
    // the earlier step is still there to undo.
    void editsAreUndoneOneAtATime()
    {
        auto [edit, changed] = fetch<int, QString>("edit", "changed");
        load(u"<p>lorem a dolor</p>"_s);
        select(u"dolor"_s);
        m_editor->InsertHTML(u"lorem"_s);
        const QString before = m_surface->bodyInnerHTML();
        QCOMPARE(before, u"<p>lorem a lorem</p>"_s);

        const QString lorem = u"lorem"_s, ipsum = u"ipsum"_s, one = u"1"_s;
        QString none;
        QVariant find(lorem), replacement(ipsum);
        if (edit == 2)
            select(u"lorem a lorem"_s);
        if (edit == 0)
            QVERIFY(m_editor->ReplaceFirstText(lorem, ipsum));
        else if (edit == 1)
            m_editor->ReplaceAllText(lorem, ipsum);
        else if (edit == 2)
            m_editor->ReplaceAllTextInSelection(lorem, ipsum);
        else if (edit == 3)
            m_editor->FindAndReplaceHTML(find, replacement);
        else
            m_editor->InsertTABLENoPrompt2(
                none, none, one, one, none, none, none, none, none, none, none, none, none, none);
        QVERIFY2(
            m_surface->bodyInnerHTML().contains(changed), qPrintable(m_surface->bodyInnerHTML()));
        m_editor->UnDo();
        QCOMPARE(m_surface->bodyInnerHTML(), before);
        m_editor->UnDo();
        QCOMPARE(m_surface->bodyInnerHTML(), u"<p>lorem a dolor</p>"_s);
    }

    void findDialogSearchesWithItsOptions()
    {
        // The dialog's search goes on from the selection, honours case, whole words and
        // direction, goes round the end, and leaves the selection alone when nothing is found.
        load(u"<p>Cat catalogue</p><p>the <b>cat</b> sat</p><p>CAT</p><p>x<br>cat</p>"_s);
        const auto hitContext = [this] {
            const TextRange range = m_surface->selectionRange();
            return textUpToSelectionEnd().size() - m_surface->rangeText(range).size();
        };
        select(u"sat"_s);
        const QString all = m_surface->bodyInnerText();
        const auto startOf = [&all](const QString &needle) { return int(all.indexOf(needle)); };

        Platform::SearchOptions options;
        // Where the hit found next starts, -1 when there is none.
        const auto next = [&](const QString &needle) {
            return m_surface->findNext(needle, options) ? int(hitContext()) : -1;
        };
        const int lastCat = int(all.lastIndexOf(QLatin1String("cat")));
        QCOMPARE(next(u"cat"_s), startOf(u"CAT"_s));
        QCOMPARE(next(u"cat"_s), lastCat);
        QCOMPARE(next(u"cat"_s), startOf(u"Cat"_s));

        options.matchCase = true;
        QCOMPARE(next(u"cat"_s), startOf(u"catalogue"_s));
        options.wholeWord = true;
        QCOMPARE(next(u"cat"_s), startOf(u"cat sat"_s));
        QCOMPARE(selectedText(), u"cat"_s);

        options.matchCase = false;
        options.backwards = true;
        QCOMPARE(next(u"cat"_s), startOf(u"Cat"_s));
        // Round the start to the last hit; a line break ends a word as a block does.
        QCOMPARE(next(u"cat"_s), lastCat);
        QCOMPARE(next(u"cat"_s), startOf(u"CAT"_s));
        QCOMPARE(selectedText(), u"CAT"_s);

        QCOMPARE(next(u"dog"_s), -1);
        QVERIFY(!m_surface->lastCallFailed());
        QCOMPARE(next(u"catal"_s), -1);
        QCOMPARE(selectedText(), u"CAT"_s);
    }

    void wholeWordsEndAtEveryBlock_data()
    {
        QTest::addColumn<QString>("tag");
        for (const char *tag : {"section", "article", "header", "footer", "nav", "main", "figure",
                 "center", "fieldset"})
            row(tag, QString::fromLatin1(tag));
    }

    void wholeWordsEndAtEveryBlock()
    {
        QFETCH(QString, tag);
        load(u"<%1>s</%1><%1>cat</%1><%1>s</%1>"_s.arg(tag));
        Platform::SearchOptions options;
        options.wholeWord = true;
        QVERIFY(m_surface->findNext(u"cat"_s, options));
        QCOMPARE(selectedText(), u"cat"_s);
    }

private:
    // A collapsed range at the body's start or end.
    TextRange caret(bool atStart)
    {
        const TextRange range = m_surface->bodyRange();
        m_surface->collapseRange(range, atStart);
        return range;
    }

    // The text from the body's start to the selection's end.
    QString textUpToSelectionEnd()
    {
        const TextRange range = m_surface->selectionRange();
        m_surface->moveRangeStart(range, TextUnit::TextEdit, -1);
        return m_surface->rangeText(range);
    }
};

QTEST_MAIN(tst_TextRanges)
#include "tst_textranges.moc"
