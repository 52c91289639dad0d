// Find and replace through the editor's public methods, on the real engine: where each
// search starts and stops, what it selects, and what the replace-all loops return.

#include "../common/enginetest.h"

using namespace Vantry;
using Platform::SelectionType;
using Platform::TextRange;
using Platform::TextUnit;

class tst_FindReplace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void findFirstAndNextWalkTheBody();
    void twoHitsInOneWordCountAsOne();
    void replaceFirstAndNext();
    void replaceAllTextReturnsFalseWhenDone_data();
    void replaceAllTextReturnsFalseWhenDone();
    void inSelectionMethodsRefuseAControl_data();
    void inSelectionMethodsRefuseAControl();
    void findNextInSelectionWrapsToTheFirstHit_data();
    void findNextInSelectionWrapsToTheFirstHit();
    void textNotInSelectionLeavesSelection();
    void replaceInSelectionStaysInside();
    void replaceAllInSelection();
    void aLookupEndsTheSearch();
    void theSearchOutlivesOtherCalls();
    void editsAreUndoneOneAtATime_data();
    void editsAreUndoneOneAtATime();
    void findDialogSearchesWithItsOptions();
    void wholeWordsEndAtEveryBlock_data();
    void wholeWordsEndAtEveryBlock();

private:
    void load(const QString &body);
    void select(const QString &needle);
    // The selected text, and the text from the body's start to the selection's end.
    QString selectedText();
    QString textUpToSelectionEnd();

    std::unique_ptr<HTMLEditorComponent> m_editor;
    Platform::WebEngineDesignSurface *m_surface = nullptr;
};

void tst_FindReplace::initTestCase()
{
    QVERIFY(VantryTest::startEditor(m_editor, m_surface));
}

void tst_FindReplace::load(const QString &body)
{
    QVERIFY(m_surface->setBodyInnerHTML(body));
}

void tst_FindReplace::select(const QString &needle)
{
    const TextRange range = m_surface->bodyRange();
    QVERIFY(m_surface->findText(range, needle));
    QVERIFY(m_surface->selectRange(range));
}

QString tst_FindReplace::selectedText()
{
    return m_surface->rangeText(m_surface->selectionRange());
}

QString tst_FindReplace::textUpToSelectionEnd()
{
    const TextRange range = m_surface->selectionRange();
    m_surface->moveRangeStart(range, TextUnit::TextEdit, -1);
    return m_surface->rangeText(range);
}

void tst_FindReplace::findFirstAndNextWalkTheBody()
{
    const QString body = QStringLiteral("<p>lorem a</p><p>b <b>Lo</b>rem</p><p>c LOREM</p>");
    load(body);
    // Before a first search, a next one finds nothing and replaces nothing.
    QVERIFY(!m_editor->FindNextText(QStringLiteral("lorem")));
    QVERIFY(!m_editor->ReplaceNextText(QStringLiteral("lorem"), QStringLiteral("x")));
    QCOMPARE(m_surface->bodyInnerHTML(), body);
    QVERIFY(m_editor->FindFirstText(QStringLiteral("lorem")));
    QCOMPARE(textUpToSelectionEnd(), QStringLiteral("lorem"));
    QVERIFY(m_editor->FindNextText(QStringLiteral("lorem")));
    QCOMPARE(selectedText(), QStringLiteral("Lorem"));
    QCOMPARE(textUpToSelectionEnd(), QStringLiteral("lorem a\r\nb Lorem"));
    QVERIFY(m_editor->FindNextText(QStringLiteral("LoReM")));
    QCOMPARE(selectedText(), QStringLiteral("LOREM"));
    QVERIFY(!m_editor->FindNextText(QStringLiteral("lorem")));
    // A miss leaves the last hit selected.
    QCOMPARE(selectedText(), QStringLiteral("LOREM"));
    // A new first search starts again at the top.
    QVERIFY(m_editor->FindFirstText(QStringLiteral("lorem")));
    QCOMPARE(textUpToSelectionEnd(), QStringLiteral("lorem"));
}

void tst_FindReplace::twoHitsInOneWordCountAsOne()
{
    load(QStringLiteral("<p>aaaa xaa</p>"));
    QVERIFY(m_editor->FindFirstText(QStringLiteral("aa")));
    QCOMPARE(textUpToSelectionEnd(), QStringLiteral("aa"));
    QVERIFY(m_editor->FindNextText(QStringLiteral("aa")));
    QCOMPARE(textUpToSelectionEnd(), QStringLiteral("aaaa xaa"));
    QVERIFY(!m_editor->FindNextText(QStringLiteral("aa")));
}

void tst_FindReplace::replaceFirstAndNext()
{
    load(QStringLiteral("<p>lorem lorem <i>lorem</i></p>"));
    QVERIFY(m_editor->ReplaceFirstText(QStringLiteral("LOREM"), QStringLiteral("ipsum")));
    QVERIFY(m_editor->ReplaceNextText(QStringLiteral("lorem"), QStringLiteral("dolor")));
    QCOMPARE(m_surface->bodyInnerHTML(), QStringLiteral("<p>ipsum dolor <i>lorem</i></p>"));
    QVERIFY(m_editor->ReplaceNextText(QStringLiteral("lorem"), QString()));
    QVERIFY(!m_editor->ReplaceNextText(QStringLiteral("lorem"), QStringLiteral("x")));
    QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), QStringLiteral("ipsum dolor"));
    QVERIFY(!m_editor->isDirty());
}

void tst_FindReplace::replaceAllTextReturnsFalseWhenDone_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("find");
    QTest::addColumn<QString>("replacement");
    QTest::addColumn<QString>("text");
    QTest::newRow("every hit") << QStringLiteral("<p>lorem a Lorem</p><p>b lo<b>rem</b></p>")
                               << QStringLiteral("lorem") << QStringLiteral("ipsum")
                               << QStringLiteral("ipsum a ipsum\r\nb ipsum");
    QTest::newRow("replacement holds the text")
        << QStringLiteral("<p>lorem x lorem</p>") << QStringLiteral("lorem")
        << QStringLiteral("lorem lorem") << QStringLiteral("lorem lorem x lorem lorem");
    QTest::newRow("no hit") << QStringLiteral("<p>dolor</p>") << QStringLiteral("lorem")
                            << QStringLiteral("ipsum") << QStringLiteral("dolor");
    QTest::newRow("never in scripts")
        << QStringLiteral("<p>lorem</p><script>lorem()</script><p>xlorem</p>")
        << QStringLiteral("lorem") << QStringLiteral("ipsum") << QStringLiteral("ipsum\r\nxipsum");
    QTest::newRow("text with a space")
        << QStringLiteral("<p>lorem \n ipsum, lorem <b>ipsum</b></p>")
        << QStringLiteral("lorem ipsum") << QStringLiteral("x") << QStringLiteral("x, x");
    QTest::newRow("one hit per word") << QStringLiteral("<p>aaaa aa</p>") << QStringLiteral("aa")
                                      << QStringLiteral("b") << QStringLiteral("baa b");
}

void tst_FindReplace::replaceAllTextReturnsFalseWhenDone()
{
    QFETCH(QString, body);
    QFETCH(QString, find);
    QFETCH(QString, replacement);
    QFETCH(QString, text);
    load(body);
    QVERIFY(!m_editor->ReplaceAllText(find, replacement));
    QVERIFY(!m_surface->lastCallFailed());
    QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), text);
    QVERIFY(!m_surface->bodyInnerHTML().contains(QStringLiteral("<script>ipsum")));
}

void tst_FindReplace::inSelectionMethodsRefuseAControl_data()
{
    QTest::addColumn<QString>("tag");
    QTest::newRow("image") << QStringLiteral("IMG");
    QTest::newRow("table") << QStringLiteral("TABLE");
}

void tst_FindReplace::inSelectionMethodsRefuseAControl()
{
    QFETCH(QString, tag);
    const QString body = QStringLiteral("<p>lorem<img src=\"x.png\"></p><table><tbody><tr><td>"
                                        "lorem</td></tr></tbody></table>");
    load(body);
    QVERIFY(m_surface->selectElement(m_surface->elementsByTagName(tag).first()));
    const QString lorem = QStringLiteral("lorem");
    const QString ipsum = QStringLiteral("ipsum");
    QVERIFY(!m_editor->FindFirstTextInSelection(lorem));
    QVERIFY(!m_editor->ReplaceFirstTextInSelection(lorem, ipsum));
    QVERIFY(!m_editor->ReplaceAllTextInSelection(lorem, ipsum));
    QVERIFY(!m_editor->FindNextTextInSelection(lorem));
    QVERIFY(!m_editor->ReplaceNextTextInSelection(lorem, ipsum));
    QCOMPARE(m_surface->bodyInnerHTML(), body);
    QCOMPARE(m_surface->selectionType(), SelectionType::Control);
}

void tst_FindReplace::findNextInSelectionWrapsToTheFirstHit_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("selected");
    // The text up to each hit's end: the first search's, then each next search's.
    QTest::addColumn<QStringList>("hits");
    QTest::newRow("hits inside") << QStringLiteral("<p>lorem 1 lorem 2 lorem 3</p>")
                                 << QStringLiteral("lorem 1 lorem 2")
                                 << QStringList{QStringLiteral("lorem"),
                                        QStringLiteral("lorem 1 lorem"), QStringLiteral("lorem"),
                                        QStringLiteral("lorem 1 lorem")};
    QTest::newRow("last hit ends the selection and the body")
        << QStringLiteral("<p>lorem a lorem b lorem</p>") << QStringLiteral("a lorem b lorem")
        << QStringList{QStringLiteral("lorem a lorem"), QStringLiteral("lorem a lorem b lorem"),
               QStringLiteral("lorem a lorem")};
    QTest::newRow("last hit is the body's last")
        << QStringLiteral("<p>x lorem a</p>") << QStringLiteral("lorem a")
        << QStringList{QStringLiteral("x lorem"), QStringLiteral("x lorem")};
}

// Past the last hit in the selection the search starts over at its first.
void tst_FindReplace::findNextInSelectionWrapsToTheFirstHit()
{
    QFETCH(QString, body);
    QFETCH(QString, selected);
    QFETCH(QStringList, hits);
    load(body);
    select(selected);
    const QString lorem = QStringLiteral("lorem");
    QVERIFY(m_editor->FindFirstTextInSelection(lorem));
    QCOMPARE(textUpToSelectionEnd(), hits.first());
    for (qsizetype i = 1; i < hits.size(); ++i) {
        QVERIFY2(m_editor->FindNextTextInSelection(lorem), qPrintable(QString::number(i)));
        QCOMPARE(textUpToSelectionEnd(), hits.at(i));
    }
}

void tst_FindReplace::textNotInSelectionLeavesSelection()
{
    load(QStringLiteral("<p>lorem 1 lorem 2 ipsum</p>"));
    select(QStringLiteral("lorem 1"));
    QVERIFY(!m_editor->FindFirstTextInSelection(QStringLiteral("ipsum")));
    QVERIFY(!m_editor->ReplaceFirstTextInSelection(QStringLiteral("ipsum"), QStringLiteral("x")));
    QCOMPARE(selectedText(), QStringLiteral("lorem 1"));
    QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), QStringLiteral("lorem 1 lorem 2 ipsum"));
}

void tst_FindReplace::replaceInSelectionStaysInside()
{
    load(QStringLiteral("<p>lorem 1 lorem 2 lorem 3</p>"));
    select(QStringLiteral("lorem 1 lorem 2"));
    const QString lorem = QStringLiteral("lorem");
    QVERIFY(m_editor->ReplaceFirstTextInSelection(lorem, QStringLiteral("a")));
    QVERIFY(m_editor->ReplaceNextTextInSelection(lorem, QStringLiteral("b")));
    // The next hit lies beyond the selection; from the selection's start again the only
    // one left is beyond it as well.
    QVERIFY(!m_editor->ReplaceNextTextInSelection(lorem, QStringLiteral("c")));
    QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), QStringLiteral("a 1 b 2 lorem 3"));
}

void tst_FindReplace::replaceAllInSelection()
{
    load(QStringLiteral("<p>lorem 1 <b>lorem</b> 2</p><p>lorem 3</p>"));
    select(QStringLiteral("1 lorem 2"));
    QVERIFY(!m_editor->ReplaceAllTextInSelection(QStringLiteral("LOREM"), QStringLiteral("ipsum")));
    QCOMPARE(
        m_surface->rangeText(m_surface->bodyRange()), QStringLiteral("lorem 1 ipsum 2\r\nlorem 3"));

    // Hits after the selection send the search back to its start, where none is left.
    load(QStringLiteral("<p>x lorem lorem y lorem</p>"));
    select(QStringLiteral("lorem lorem"));
    QVERIFY(!m_editor->ReplaceAllTextInSelection(QStringLiteral("lorem"), QStringLiteral("ipsum")));
    QCOMPARE(m_surface->rangeText(m_surface->bodyRange()), QStringLiteral("x ipsum ipsum y lorem"));
    QCOMPARE(selectedText(), QString());
    QCOMPARE(textUpToSelectionEnd(), QStringLiteral("x ipsum "));

    // A replacement holding the searched text is not searched again, nor is anything
    // beyond the selection touched.
    load(QStringLiteral("<p>x lorem y <b>lorem</b> z</p><p>lorem lorem</p>"));
    select(QStringLiteral("lorem y lorem"));
    QVERIFY(
        !m_editor->ReplaceAllTextInSelection(QStringLiteral("lorem"), QStringLiteral("(lorem)")));
    QCOMPARE(m_surface->rangeText(m_surface->bodyRange()),
        QStringLiteral("x (lorem) y (lorem) z\r\nlorem lorem"));
}

void tst_FindReplace::aLookupEndsTheSearch()
{
    load(QStringLiteral("<p>lorem lorem</p>"));
    QVERIFY(m_editor->FindFirstText(QStringLiteral("lorem")));
    QVERIFY(!m_editor->GetSelectedElementObject().isNull());
    QVERIFY(!m_editor->FindNextText(QStringLiteral("lorem")));

    // So does a new document.
    QVERIFY(m_editor->FindFirstText(QStringLiteral("lorem")));
    load(QStringLiteral("<p>lorem lorem</p>"));
    QVERIFY(!m_editor->FindNextText(QStringLiteral("lorem")));
}

void tst_FindReplace::findDialogSearchesWithItsOptions()
{
    // The dialog's search goes on from the selection, honours case, whole words and
    // direction, goes round the end, and leaves the selection alone when nothing is found.
    load(QStringLiteral("<p>Cat catalogue</p><p>the <b>cat</b> sat</p><p>CAT</p><p>x<br>cat</p>"));
    const auto hitContext = [this] {
        const TextRange range = m_surface->selectionRange();
        return textUpToSelectionEnd().size() - m_surface->rangeText(range).size();
    };
    select(QStringLiteral("sat"));
    const QString all = m_surface->bodyInnerText();
    const auto startOf
        = [&all](const QString &needle, int from = 0) { return int(all.indexOf(needle, from)); };

    Platform::SearchOptions options;
    QVERIFY(m_surface->findNext(QStringLiteral("cat"), options));
    QCOMPARE(selectedText(), QStringLiteral("CAT"));
    QVERIFY(m_surface->findNext(QStringLiteral("cat"), options));
    QCOMPARE(hitContext(), all.lastIndexOf(QLatin1String("cat")));
    QVERIFY(m_surface->findNext(QStringLiteral("cat"), options));
    QCOMPARE(hitContext(), startOf(QStringLiteral("Cat")));

    options.matchCase = true;
    QVERIFY(m_surface->findNext(QStringLiteral("cat"), options));
    QCOMPARE(hitContext(), startOf(QStringLiteral("catalogue")));

    options.wholeWord = true;
    QVERIFY(m_surface->findNext(QStringLiteral("cat"), options));
    QCOMPARE(hitContext(), startOf(QStringLiteral("cat sat")));
    QCOMPARE(selectedText(), QStringLiteral("cat"));

    options.matchCase = false;
    options.backwards = true;
    QVERIFY(m_surface->findNext(QStringLiteral("cat"), options));
    QCOMPARE(hitContext(), startOf(QStringLiteral("Cat")));
    // Round the start to the last hit; a line break ends a word as a block does.
    QVERIFY(m_surface->findNext(QStringLiteral("cat"), options));
    QCOMPARE(hitContext(), all.lastIndexOf(QLatin1String("cat")));
    QVERIFY(m_surface->findNext(QStringLiteral("cat"), options));
    QCOMPARE(selectedText(), QStringLiteral("CAT"));

    QVERIFY(!m_surface->findNext(QStringLiteral("dog"), options));
    QVERIFY(!m_surface->lastCallFailed());
    QCOMPARE(selectedText(), QStringLiteral("CAT"));
    options.wholeWord = true;
    QVERIFY(!m_surface->findNext(QStringLiteral("catal"), options));
    QCOMPARE(selectedText(), QStringLiteral("CAT"));
}

void tst_FindReplace::wholeWordsEndAtEveryBlock_data()
{
    QTest::addColumn<QString>("tag");
    for (const char *tag :
        {"section", "article", "header", "footer", "nav", "main", "figure", "center", "fieldset"})
        QTest::newRow(tag) << QString::fromLatin1(tag);
}

void tst_FindReplace::wholeWordsEndAtEveryBlock()
{
    QFETCH(QString, tag);
    load(QStringLiteral("<%1>s</%1><%1>cat</%1><%1>s</%1>").arg(tag));
    Platform::SearchOptions options;
    options.wholeWord = true;
    QVERIFY(m_surface->findNext(QStringLiteral("cat"), options));
    QCOMPARE(selectedText(), QStringLiteral("cat"));
}

// The kept search range and selection copy belong to the search, however many other
// ranges are made and dropped meanwhile.
void tst_FindReplace::theSearchOutlivesOtherCalls()
{
    load(QStringLiteral("<p>lorem a lorem b lorem c</p>"));
    const QString lorem = QStringLiteral("lorem");
    QVERIFY(m_editor->FindFirstText(lorem));
    for (int i = 0; i < 300; ++i)
        m_editor->GetSelectedHTML();
    QVERIFY(m_editor->FindNextText(lorem));
    QCOMPARE(textUpToSelectionEnd(), QStringLiteral("lorem a lorem"));

    select(QStringLiteral("a lorem b lorem c"));
    QVERIFY(m_editor->FindFirstTextInSelection(lorem));
    for (int i = 0; i < 300; ++i)
        m_editor->GetSelectedHTML();
    QVERIFY(m_editor->FindNextTextInSelection(lorem));
    QCOMPARE(textUpToSelectionEnd(), QStringLiteral("lorem a lorem b lorem"));
}

void tst_FindReplace::editsAreUndoneOneAtATime_data()
{
    QTest::addColumn<int>("edit");
    QTest::addColumn<QString>("changed");
    QTest::newRow("replace first") << 0 << "<p>ipsum a lorem</p>";
    QTest::newRow("replace all") << 1 << "<p>ipsum a ipsum</p>";
    QTest::newRow("replace all in selection") << 2 << "<p>ipsum a ipsum</p>";
    QTest::newRow("find and replace markup") << 3 << "<p>ipsum a ipsum</p>";
    QTest::newRow("table appended") << 4 << "<table";
}

// Each edit is one undo step on top of the history before it: undo takes it back, and
// the earlier step is still there to undo.
void tst_FindReplace::editsAreUndoneOneAtATime()
{
    QFETCH(int, edit);
    QFETCH(QString, changed);
    load(QStringLiteral("<p>lorem a dolor</p>"));
    select(QStringLiteral("dolor"));
    m_editor->InsertHTML(QStringLiteral("lorem"));
    const QString before = m_surface->bodyInnerHTML();
    QCOMPARE(before, QStringLiteral("<p>lorem a lorem</p>"));

    const QString lorem = QStringLiteral("lorem"), ipsum = QStringLiteral("ipsum");
    QVariant find(lorem), replacement(ipsum);
    QString none, one = QStringLiteral("1");
    switch (edit) {
    case 0:
        QVERIFY(m_editor->ReplaceFirstText(lorem, ipsum));
        break;
    case 1:
        m_editor->ReplaceAllText(lorem, ipsum);
        break;
    case 2:
        select(QStringLiteral("lorem a lorem"));
        m_editor->ReplaceAllTextInSelection(lorem, ipsum);
        break;
    case 3:
        m_editor->FindAndReplaceHTML(find, replacement);
        break;
    case 4:
        m_editor->InsertTABLENoPrompt2(
            none, none, one, one, none, none, none, none, none, none, none, none, none, none);
        break;
    }
    QVERIFY2(m_surface->bodyInnerHTML().contains(changed), qPrintable(m_surface->bodyInnerHTML()));
    m_editor->UnDo();
    QCOMPARE(m_surface->bodyInnerHTML(), before);
    m_editor->UnDo();
    QCOMPARE(m_surface->bodyInnerHTML(), QStringLiteral("<p>lorem a dolor</p>"));
}

QTEST_MAIN(tst_FindReplace)
#include "tst_findreplace.moc"
