// The spelling check on the real engine with Debian's dictionaries: the dialog's walk fed
// from a script, the find methods, the context menu's suggestions and the underlines.

#include "../common/datarows.h"
#include "../common/recordingprompts.h"
#include "../common/surfacefixture.h"

#include "platform/hunspell/dictionaries.h"
#include "text/spellingcheck.h"

#include <VantryHTMLEditor/EditorDialogs.h>

#include <QFile>
#include <QImage>
#include <QQueue>
#include <QStandardPaths>

using namespace Vantry;
using namespace Qt::StringLiterals;
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

QStringList words(const char *list)
{
    return QString::fromUtf8(list).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

EditorDialogs::SpellingAnswer change(const char *text)
{
    return {Action::Change, QString::fromUtf8(text)};
}
EditorDialogs::SpellingAnswer just(Action action)
{
    return {action, {}};
}

} // namespace

class tst_SpellCheck : public VantryTest::SurfaceFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QFile::remove(Platform::Dictionaries::defaultPersonalWordList());
        QVERIFY(start());
    }

    void init()
    {
        auto prompts = std::make_unique<RecordingPrompts>();
        m_prompts = prompts.get();
        m_editor->setUserPrompts(std::move(prompts));
        auto dialogs = std::make_unique<ScriptedSpelling>(m_editor.get());
        m_dialogs = dialogs.get();
        m_editor->setEditorDialogs(std::move(dialogs));
    }

    void walk_data()
    {
        // after empty: the body is not compared.
        columns<QString, Answers, QStringList, QString, bool>(
            "body", "answers", "asked", "after", "completed");
        row("change keeps the formatting around", "<p>A <b>wrod</b> and <i>x speling</i>.</p>",
            Answers{change("word"), change("spelling")}, words("wrod speling"),
            "<p>A <b>word</b> and <i>x spelling</i>.</p>", true);
        row("word across formatting", "<p>one mis<b>spelt</b>t two</p>",
            Answers{change("misspelt")}, words("misspeltt"), "<p>one misspelt<b></b> two</p>",
            true);
        row("skip rules",
            "<p>Mail bob@exmple.com, see http://exmple.com/pth or abc123.</p>"
            "<script>var zqxw;</script><style>.qzxw{}</style>"
            "<textarea>tzxq</textarea><p lang=\"fr\">Bonjur</p>"
            "<p lang=\"de\">Die Stra\u00dfe ist gros.</p>",
            Answers{}, words("gros"), QString(), false);
        row("ignore all, then cancel", "<p>tehh cat, tehh dog and wrold.</p>",
            Answers{just(Action::IgnoreAll)}, words("tehh wrold"),
            "<p>tehh cat, tehh dog and wrold.</p>", false);
        row("change all", "<p>thw cat <u>thw</u> dog thwx</p>",
            Answers{{Action::ChangeAll, u"the"_s}, just(Action::Ignore)}, words("thw thwx"),
            "<p>the cat <u>the</u> dog thwx</p>", true);
        row("undo last change and ignore", "<p>wrdo and spelng</p>",
            Answers{change("word"), just(Action::UndoLast), just(Action::Ignore),
                just(Action::UndoLast), just(Action::Ignore), just(Action::Ignore)},
            words("wrdo spelng wrdo spelng wrdo spelng"), "<p>wrdo and spelng</p>", true);
        row("add to dictionary", "<p>Vantryzed here, Vantryzed there.</p>",
            Answers{just(Action::AddToDictionary)}, words("Vantryzed"),
            "<p>Vantryzed here, Vantryzed there.</p>", true);
        row("switch dictionary", "<p>Stra\u00dfe</p>",
            Answers{{Action::SwitchDictionary, u"de_DE"_s}}, words("Stra\u00dfe"),
            "<p>Stra\u00dfe</p>", true);
        row("empty document", QString(), Answers{}, QStringList{}, QString(), true);
    }

    void walk()
    {
        auto [body, answers, asked, after, completed]
            = fetch<QString, Answers, QStringList, QString, bool>(
                "body", "answers", "asked", "after", "completed");
        load(body);
        for (const auto &answer : std::as_const(answers))
            m_dialogs->answers.enqueue(answer);

        m_editor->SpellCheck();

        QCOMPARE(m_dialogs->asked, asked);
        QCOMPARE(m_dialogs->done, 1);
        // Each question shows the word in its sentence, with the dictionaries to choose from.
        for (const EditorDialogs::SpellingQuestion &question :
            std::as_const(m_dialogs->questions)) {
            QCOMPARE(
                question.sentence.mid(question.wordStart, question.word.size()), question.word);
            QVERIFY(question.dictionaries.contains(u"de_DE"_s));
        }
        if (!after.isEmpty())
            QCOMPARE(m_surface->bodyInnerHTML(), after);
        // Each correction is one undo step, a change of every occurrence included.
        if (!after.isEmpty() && after != body) {
            QVERIFY(m_editor->isDirty());
            for (const auto &answer : std::as_const(answers)) {
                if (answer.action == Action::Change || answer.action == Action::ChangeAll)
                    QVERIFY(m_surface->execCommand(5049));
            }
            QCOMPARE(m_surface->bodyInnerHTML(), body);
        }
        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Information),
            completed ? QStringList{u"The spelling check is complete."_s} : QStringList{});
        if (qstrcmp(QTest::currentDataTag(), "add to dictionary") == 0) {
            QFile list(Platform::Dictionaries::defaultPersonalWordList());
            QVERIFY(list.open(QIODevice::ReadOnly));
            QVERIFY(list.readAll().contains("Vantryzed\n"));
        }
    }

    void findMethods_data()
    {
        // after: the caret starts after this text, or at the start when empty.
        columns<bool, QString, QString, QString>("doubled", "body", "after", "selected");
        row("misspelt at start", false, "<p>wrod is here</p>", QString(), "wrod");
        row("misspelt in the middle", false, "<p>wrod is here</p><p>and <b>speling</b> ok</p>",
            "is", "speling");
        row("misspelt none after the selection", false, "<p>wrod is here</p>", "here", QString());
        row("misspelt, empty document", false, QString(), QString(), QString());
        row("doubled across formatting", true, "<p>the the a cat <b>cat</b> sat</p>", "a", "cat");
        row("doubled only before the selection", true, "<p>so so far</p>", "far", QString());
        row("doubled across paragraphs is none", true, "<p>end</p><p>end</p>", QString(),
            QString());
    }

    void findMethods()
    {
        auto [doubled, body, after, selected]
            = fetch<bool, QString, QString, QString>("doubled", "body", "after", "selected");
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

    void contextMenuSuggestsAndReplaces()
    {
        load(u"<p id=\"p\">Some <i>wrod</i> here</p>"_s);
        Platform::Dictionaries dictionaries;
        Text::SpellingCheck check(*m_surface, dictionaries);
        const QRectF word = m_surface->boundingRect(m_surface->elementsByTagName(u"i"_s).first());
        QVERIFY(!check.misspeltAt(QPoint(2, 2)));
        const auto misspelt = check.misspeltAt(word.center().toPoint());
        QVERIFY(misspelt);
        QCOMPARE(misspelt->word, u"wrod"_s);
        QVERIFY(misspelt->suggestions.contains(u"word"_s));
        QVERIFY(check.replaceMisspelt(u"word"_s));
        QCOMPARE(m_surface->bodyInnerHTML(), u"<p id=\"p\">Some <i>word</i> here</p>"_s);
    }

    void rereadsOnlyAfterChanges_data()
    {
        // change: what happens to the document between two reads of one check.
        columns<QString, QStringList>("change", "misspelt");
        row("nothing", "", words("wrod"));
        row("typing", "type", words("wrod tiped"));
        row("language marked", "lang", QStringList{});
        row("replace all", "replace", words("wrod zqxv"));
        row("undo", "undo", words("wrod"));
        row("new document", "load", words("speling"));
    }

    void rereadsOnlyAfterChanges()
    {
        const auto [change, misspelt] = fetch<QString, QStringList>("change", "misspelt");
        load(u"<p>wrod here</p>"_s);
        Platform::Dictionaries dictionaries;
        Text::SpellingCheck check(*m_surface, dictionaries);
        QCOMPARE(check.misspeltWords(), words("wrod"));
        if (change == u"type" || change == u"undo") {
            QWidget *keys = VantryTest::giveFocus(m_surface->widget());
            QVERIFY(keys);
            caretAt(u"here"_s, true);
            QTest::keyClicks(keys, u" tiped"_s);
            QTRY_VERIFY(body().contains(u"tiped"_s));
            if (change == u"undo") {
                QCOMPARE(check.misspeltWords(), words("wrod tiped"));
                QVERIFY(m_surface->execCommand(5049));
            }
        } else if (change == u"lang") {
            QVERIFY(m_surface->setAttribute(
                m_surface->elementsByTagName(u"p"_s).first(), u"lang"_s, u"fr"_s));
        } else if (change == u"replace") {
            QVERIFY(
                m_surface
                    ->replaceAll(Platform::DesignSurface::ReplaceScope::Body, u"here"_s, u"zqxv"_s)
                    .replaced
                > 0);
        } else if (change == u"load") {
            load(u"<p>speling</p>"_s);
        }
        QCOMPARE(check.misspeltWords(), misspelt);
        // With nothing changed since, a read is answered without the texts.
        const quint64 read = m_surface->spellingText().read;
        QVERIFY(read != 0);
        QVERIFY(m_surface->spellingText(read).unchanged);
    }

    void underlinesWhileTyping_data()
    {
        QTest::addColumn<bool>("on");
        row("on", true);
        row("switched off", false);
    }

    void underlinesWhileTyping()
    {
        const bool on = std::get<0>(fetch<bool>("on"));
        m_editor->setSpellCheckAsYouType(on);
        // The underlines follow the walk's rules: a word added to the dictionary there, text in
        // a language without a dictionary, addresses and words with digits are no errors.
        load(u"<p>x</p><p>Vantryqz</p><p lang=\"fr\">Bonjur</p>"_s);
        m_dialogs->answers.enqueue({Action::AddToDictionary, {}});
        m_editor->SpellCheck();
        QWidget *input = VantryTest::giveFocus(m_surface->widget());
        QVERIFY(input);
        select(u"x"_s);
        QTest::keyClicks(
            input, u"Thiss abc123 http://exmple.com/pth bob@exmple.com Vantryqz is wrng. "_s);
        QTRY_VERIFY(m_surface->bodyInnerText().contains(QLatin1String("wrng")));
        if (on) {
            QTRY_COMPARE_WITH_TIMEOUT(underlined(), words("Thiss wrng"), 10000);
            QTRY_VERIFY_WITH_TIMEOUT(redPixels() > 10, 10000);
        } else {
            QTest::qWait(1500);
            QCOMPARE(underlined(), QStringList());
            QCOMPARE(redPixels(), 0);
        }
        m_editor->setSpellCheckAsYouType(true);
    }

    void underlinesFollowTheView()
    {
        // Only the text in view is checked: a word far down is underlined once it is scrolled
        // to, not after the load.
        m_editor->setSetHtmlSource(u"<p>Topp wrd here.</p>"_s
            + u"<p>The quick brown fox jumps over the lazy dog.</p>"_s.repeated(3000)
            + u"<h2>Farr down</h2>"_s + u"<p>The end.</p>"_s.repeated(300));
        QTRY_COMPARE_WITH_TIMEOUT(underlined(), words("Topp wrd"), 10000);
        const QList<Platform::Element> far = m_surface->elementsByTagName(u"h2"_s);
        QCOMPARE(far.size(), 1);
        const QPoint scroll = m_surface->scrollPosition();
        QVERIFY(m_surface->setScrollTop(scroll.y() + int(m_surface->boundingRect(far[0]).top())));
        QTRY_VERIFY_WITH_TIMEOUT(underlined().contains(u"Farr"_s), 10000);
    }

private:
    void load(const QString &body)
    {
        SurfaceFixture::load(body);
        m_editor->setisDirty(false);
    }

    QStringList underlined() { return js(u"underlinedWords"_s).toStringList(); }

    // Red pixels of the view, where the underlines are drawn.
    int redPixels()
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

    RecordingPrompts *m_prompts = nullptr;
    ScriptedSpelling *m_dialogs = nullptr;
};

QTEST_MAIN(tst_SpellCheck)
#include "tst_spellcheck.moc"
