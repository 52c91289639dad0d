// The spelling check on the real engine with Debian's dictionaries: the dialog's walk fed
// from a script, the find methods, the context menu's suggestions and the underlines.

#include "../common/enginetest.h"
#include "../common/recordingprompts.h"

#include "platform/hunspell/dictionaries.h"
#include "text/spellingcheck.h"

#include <VantryHTMLEditor/EditorDialogs.h>

#include <QFile>
#include <QImage>
#include <QQueue>
#include <QStandardPaths>

using namespace Vantry;
using Platform::WebEngineDesignSurface;
using Action = EditorDialogs::SpellingAnswer::Action;
using VantryTest::RecordingPrompts;

namespace {

// Answers the spelling dialog from a script and records what it was asked; out of answers
// it cancels.
class ScriptedSpelling : public WidgetDialogs
{
public:
    using WidgetDialogs::WidgetDialogs;

    SpellingAnswer spellingWord(const SpellingQuestion &question) override
    {
        asked.append(question.word);
        questions.append(question);
        return answers.isEmpty() ? SpellingAnswer{} : answers.dequeue();
    }
    void spellingDone() override { ++done; }

    QQueue<SpellingAnswer> answers;
    QStringList asked;
    QList<SpellingQuestion> questions;
    int done = 0;
};

using Answers = QList<EditorDialogs::SpellingAnswer>;

QStringList words(std::initializer_list<const char *> list)
{
    QStringList result;
    for (const char *word : list)
        result.append(QString::fromUtf8(word));
    return result;
}

} // namespace

class tst_SpellCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void walk_data();
    void walk();
    void correctionsAreOneUndoStep();
    void findMethods_data();
    void findMethods();
    void contextMenuSuggestsAndReplaces();
    void underlinesWhileTyping_data();
    void underlinesWhileTyping();
    void underlinesFollowTheView();

private:
    void load(const QString &body);
    QString selectedText();
    int redPixels();

    std::unique_ptr<HTMLEditorComponent> m_editor;
    WebEngineDesignSurface *m_surface = nullptr;
    RecordingPrompts *m_prompts = nullptr;
    ScriptedSpelling *m_dialogs = nullptr;
};

void tst_SpellCheck::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QFile::remove(Platform::Dictionaries::defaultPersonalWordList());
    QVERIFY(VantryTest::startEditor(m_editor, m_surface));
}

void tst_SpellCheck::init()
{
    auto prompts = std::make_unique<RecordingPrompts>();
    m_prompts = prompts.get();
    m_editor->setUserPrompts(std::move(prompts));
    auto dialogs = std::make_unique<ScriptedSpelling>(m_editor.get());
    m_dialogs = dialogs.get();
    m_editor->setEditorDialogs(std::move(dialogs));
}

void tst_SpellCheck::load(const QString &body)
{
    QVERIFY(m_surface->setBodyInnerHTML(body));
    m_editor->setisDirty(false);
}

QString tst_SpellCheck::selectedText()
{
    return m_surface->rangeText(m_surface->selectionRange());
}

void tst_SpellCheck::walk_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<Answers>("answers");
    QTest::addColumn<QStringList>("asked");
    QTest::addColumn<QString>("after");
    QTest::addColumn<bool>("completed");

    const auto change = [](const char *text) {
        return EditorDialogs::SpellingAnswer{Action::Change, QString::fromUtf8(text)};
    };
    const auto just = [](Action action) { return EditorDialogs::SpellingAnswer{action, {}}; };

    QTest::newRow("change keeps the formatting around")
        << QStringLiteral("<p>A <b>wrod</b> and <i>x speling</i>.</p>")
        << Answers{change("word"), change("spelling")} << words({"wrod", "speling"})
        << QStringLiteral("<p>A <b>word</b> and <i>x spelling</i>.</p>") << true;
    QTest::newRow("word across formatting")
        << QStringLiteral("<p>one mis<b>spelt</b>t two</p>") << Answers{change("misspelt")}
        << words({"misspeltt"}) << QStringLiteral("<p>one misspelt<b></b> two</p>") << true;
    QTest::newRow("skip rules") << QStringLiteral(
        "<p>Mail bob@exmple.com, see http://exmple.com/pth or abc123.</p>"
        "<script>var zqxw;</script><style>.qzxw{}</style>"
        "<textarea>tzxq</textarea><p lang=\"fr\">Bonjur</p>"
        "<p lang=\"de\">Die Stra\u00dfe ist gros.</p>")
                                << Answers{} << words({"gros"}) << QString() << false;
    QTest::newRow("ignore all, then cancel")
        << QStringLiteral("<p>tehh cat, tehh dog and wrold.</p>")
        << Answers{just(Action::IgnoreAll)} << words({"tehh", "wrold"})
        << QStringLiteral("<p>tehh cat, tehh dog and wrold.</p>") << false;
    QTest::newRow("change all") << QStringLiteral("<p>thw cat <u>thw</u> dog thwx</p>")
                                << Answers{{Action::ChangeAll, QStringLiteral("the")},
                                       just(Action::Ignore)}
                                << words({"thw", "thwx"})
                                << QStringLiteral("<p>the cat <u>the</u> dog thwx</p>") << true;
    QTest::newRow("undo last change and ignore")
        << QStringLiteral("<p>wrdo and spelng</p>")
        << Answers{change("word"), just(Action::UndoLast), just(Action::Ignore),
               just(Action::UndoLast), just(Action::Ignore), just(Action::Ignore)}
        << words({"wrdo", "spelng", "wrdo", "spelng", "wrdo", "spelng"})
        << QStringLiteral("<p>wrdo and spelng</p>") << true;
    QTest::newRow("add to dictionary")
        << QStringLiteral("<p>Vantryzed here, Vantryzed there.</p>")
        << Answers{just(Action::AddToDictionary)} << words({"Vantryzed"})
        << QStringLiteral("<p>Vantryzed here, Vantryzed there.</p>") << true;
    QTest::newRow("switch dictionary")
        << QStringLiteral("<p>Stra\u00dfe</p>")
        << Answers{{Action::SwitchDictionary, QStringLiteral("de_DE")}} << words({"Stra\u00dfe"})
        << QStringLiteral("<p>Stra\u00dfe</p>") << true;
    QTest::newRow("empty document") << QString() << Answers{} << QStringList{} << QString() << true;
}

void tst_SpellCheck::walk()
{
    QFETCH(QString, body);
    QFETCH(Answers, answers);
    QFETCH(QStringList, asked);
    QFETCH(QString, after);
    QFETCH(bool, completed);
    load(body);
    for (const auto &answer : answers)
        m_dialogs->answers.enqueue(answer);

    m_editor->SpellCheck();

    QCOMPARE(m_dialogs->asked, asked);
    QCOMPARE(m_dialogs->done, 1);
    if (!after.isEmpty())
        QCOMPARE(m_surface->bodyInnerHTML(), after);
    QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Information),
        completed ? QStringList{QStringLiteral("The spelling check is complete.")} : QStringList{});
    if (qstrcmp(QTest::currentDataTag(), "add to dictionary") == 0) {
        QFile list(Platform::Dictionaries::defaultPersonalWordList());
        QVERIFY(list.open(QIODevice::ReadOnly));
        QVERIFY(list.readAll().contains("Vantryzed\n"));
    }
}

void tst_SpellCheck::correctionsAreOneUndoStep()
{
    const QString body = QStringLiteral("<p>a qwz b <i>qwz</i></p>");
    load(body);
    m_dialogs->answers.enqueue({Action::ChangeAll, QStringLiteral("quiz")});
    m_editor->SpellCheck();
    QCOMPARE(m_surface->bodyInnerHTML(), QStringLiteral("<p>a quiz b <i>quiz</i></p>"));
    QVERIFY(m_editor->isDirty());
    // The question showed the word in its sentence with the dictionary's suggestions.
    const EditorDialogs::SpellingQuestion &question = m_dialogs->questions.first();
    QCOMPARE(question.sentence.mid(question.wordStart, 3), QStringLiteral("qwz"));
    QVERIFY(question.dictionaries.contains(QStringLiteral("de_DE")));
    QVERIFY(m_surface->execCommand(5049));
    QCOMPARE(m_surface->bodyInnerHTML(), body);
}

void tst_SpellCheck::findMethods_data()
{
    QTest::addColumn<bool>("doubled");
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("selected");

    QTest::newRow("misspelt at start")
        << false << QStringLiteral("<p>wrod is here</p>") << QString() << QStringLiteral("wrod");
    QTest::newRow("misspelt in the middle")
        << false << QStringLiteral("<p>wrod is here</p><p>and <b>speling</b> ok</p>")
        << QStringLiteral("is") << QStringLiteral("speling");
    QTest::newRow("misspelt none after the selection")
        << false << QStringLiteral("<p>wrod is here</p>") << QStringLiteral("here") << QString();
    QTest::newRow("misspelt, empty document") << false << QString() << QString() << QString();
    QTest::newRow("doubled at start")
        << true << QStringLiteral("<p>The the cat</p>") << QString() << QStringLiteral("the");
    QTest::newRow("doubled across formatting")
        << true << QStringLiteral("<p>the the a cat <b>cat</b> sat</p>") << QStringLiteral("a")
        << QStringLiteral("cat");
    QTest::newRow("doubled only before the selection")
        << true << QStringLiteral("<p>so so far</p>") << QStringLiteral("far") << QString();
    QTest::newRow("doubled across paragraphs is none")
        << true << QStringLiteral("<p>end</p><p>end</p>") << QString() << QString();
}

void tst_SpellCheck::findMethods()
{
    QFETCH(bool, doubled);
    QFETCH(QString, body);
    QFETCH(QString, after);
    QFETCH(QString, selected);
    load(body);
    const Platform::TextRange range = m_surface->bodyRange();
    if (after.isEmpty())
        QVERIFY(m_surface->collapseRange(range, true));
    else
        QVERIFY(m_surface->findText(range, after));
    QVERIFY(m_surface->selectRange(range));

    const bool found = doubled ? m_editor->FindDoubledWord() : m_editor->FindSpellingError();

    QCOMPARE(found, !selected.isEmpty());
    // Nothing found leaves the selection where it was.
    QCOMPARE(selectedText(), found ? selected : after);
    QVERIFY(!m_editor->isDirty());
}

void tst_SpellCheck::contextMenuSuggestsAndReplaces()
{
    load(QStringLiteral("<p id=\"p\">Some <i>wrod</i> here</p>"));
    Platform::Dictionaries dictionaries;
    Text::SpellingCheck check(*m_surface, dictionaries);
    const QRectF word
        = m_surface->boundingRect(m_surface->elementsByTagName(QStringLiteral("i")).first());
    QVERIFY(!check.misspeltAt(QPoint(2, 2)));
    const auto misspelt = check.misspeltAt(word.center().toPoint());
    QVERIFY(misspelt);
    QCOMPARE(misspelt->word, QStringLiteral("wrod"));
    QVERIFY(misspelt->suggestions.contains(QStringLiteral("word")));
    QVERIFY(check.replaceMisspelt(QStringLiteral("word")));
    QCOMPARE(m_surface->bodyInnerHTML(), QStringLiteral("<p id=\"p\">Some <i>word</i> here</p>"));
}

// Red pixels of the view, where the underlines are drawn.
int tst_SpellCheck::redPixels()
{
    const QImage image = m_surface->widget()->grab().toImage();
    int red = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            red += c.red() > 150 && c.green() < 100 && c.blue() < 100;
        }
    }
    return red;
}

void tst_SpellCheck::underlinesWhileTyping_data()
{
    QTest::addColumn<bool>("on");
    QTest::newRow("on") << true;
    QTest::newRow("switched off") << false;
}

void tst_SpellCheck::underlinesWhileTyping()
{
    QFETCH(bool, on);
    m_editor->setSpellCheckAsYouType(on);
    // The underlines follow the walk's rules: a word added to the dictionary there, text in
    // a language without a dictionary, addresses and words with digits are no errors.
    load(QStringLiteral("<p>x</p><p>Vantryqz</p><p lang=\"fr\">Bonjur</p>"));
    m_dialogs->answers.enqueue({Action::AddToDictionary, {}});
    m_editor->SpellCheck();
    QWidget *input = VantryTest::giveFocus(m_surface->widget());
    QVERIFY(input);
    const Platform::TextRange range = m_surface->bodyRange();
    QVERIFY(m_surface->findText(range, QStringLiteral("x")));
    QVERIFY(m_surface->selectRange(range));
    QTest::keyClicks(input,
        QStringLiteral("Thiss abc123 http://exmple.com/pth bob@exmple.com Vantryqz is wrng. "));
    QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("wrng")));
    const auto underlined = [this] {
        return VantryTest::adapterValue(*m_editor, QStringLiteral("underlinedWords"))
            .toStringList();
    };
    if (on) {
        QTRY_COMPARE_WITH_TIMEOUT(
            underlined(), (QStringList{QStringLiteral("Thiss"), QStringLiteral("wrng")}), 10000);
        QTRY_VERIFY_WITH_TIMEOUT(redPixels() > 10, 10000);
    } else {
        QTest::qWait(1500);
        QCOMPARE(underlined(), QStringList());
        QCOMPARE(redPixels(), 0);
    }
    m_editor->setSpellCheckAsYouType(true);
}

void tst_SpellCheck::underlinesFollowTheView()
{
    // Only the text in view is checked: a word far down is underlined once it is scrolled
    // to, not after the load.
    QString html = QStringLiteral("<p>Topp wrd here.</p>");
    for (int i = 0; i < 3000; ++i)
        html += QStringLiteral("<p>The quick brown fox jumps over the lazy dog.</p>");
    html += QStringLiteral("<h2>Farr down</h2>");
    for (int i = 0; i < 300; ++i)
        html += QStringLiteral("<p>The end.</p>");
    m_editor->setSetHtmlSource(html);
    const auto underlined = [this] {
        return VantryTest::adapterValue(*m_editor, QStringLiteral("underlinedWords"))
            .toStringList();
    };
    QTRY_COMPARE_WITH_TIMEOUT(
        underlined(), (QStringList{QStringLiteral("Topp"), QStringLiteral("wrd")}), 10000);
    const QList<Platform::Element> far = m_surface->elementsByTagName(QStringLiteral("h2"));
    QCOMPARE(far.size(), 1);
    const QPoint scroll = m_surface->scrollPosition();
    QVERIFY(m_surface->setScrollTop(scroll.y() + int(m_surface->boundingRect(far[0]).top())));
    QTRY_VERIFY_WITH_TIMEOUT(underlined().contains(QStringLiteral("Farr")), 10000);
}

QTEST_MAIN(tst_SpellCheck)
#include "tst_spellcheck.moc"
