// The spelling rules that need no document, and the dictionaries on Debian's own files.

#include "../common/datarows.h"

#include "platform/hunspell/dictionaries.h"
#include "text/spelling.h"

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using Vantry::Platform::Dictionaries;
using namespace Vantry::Text;
using namespace Qt::StringLiterals;

class tst_Spelling : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void checkableWords_data()
    {
        // expected: the words separated by blanks.
        columns<QString, QString>("text", "expected");
        row("punctuation", "Hello, world. (Again)!", "Hello world Again");
        row("apostrophes inside", "don't 'quoted' it\u2019s", "don't quoted it\u2019s");
        row("hyphen splits", "well-known", "well known");
        row("digits", "abc123 route66 4th 2024 ok", "ok");
        row("web addresses", "see http://exmple.com/pth and www.exmple.org. now", "see and now");
        row("e-mail", "mail bob@exmple.com or mailto:ann@x.org today", "mail or today");
        row("file paths", "open /usr/shre/dict or C:\\wrk\\fle or ~/notse please",
            "open or or please");
        row("non-latin letters", "Stra\u00dfe \u00fcber na\u00efve",
            "Stra\u00dfe \u00fcber na\u00efve");
        row("empty", "", "");
    }

    void checkableWords()
    {
        auto [text, expected] = fetch<QString, QString>("text", "expected");
        QCOMPARE(words(text, Vantry::Text::checkableWords(text)).join(u' '), expected);
    }

    void doubledWords_data()
    {
        columns<QString, QList<WordSpan>>("text", "expected");
        row("plain", "the the cat", QList<WordSpan>{{4, 3}});
        row("letter case", "The the cat", QList<WordSpan>{{4, 3}});
        row("line break", "a\n a", QList<WordSpan>{{3, 1}});
        row("three", "la la la", QList<WordSpan>{{3, 2}, {6, 2}});
        row("comma between", "the, the", QList<WordSpan>{});
        row("different", "that the", QList<WordSpan>{});
        row("glued", "thethe", QList<WordSpan>{});
    }

    void doubledWords()
    {
        auto [text, expected] = fetch<QString, QList<WordSpan>>("text", "expected");
        QCOMPARE(Vantry::Text::doubledWords(text), expected);
    }

    void dictionaryForLanguage_data()
    {
        columns<QString, QString>("tag", "expected");
        row("exact", "en-GB", "en_GB");
        row("letter case, underscore", "en_us", "en_US");
        row("language only prefers xx_XX", "de", "de_DE");
        row("language only, first", "en", "en_GB");
        row("other region", "de-CH", "de_DE");
        row("not installed", "fr", QString());
        row("none", QString(), QString());
    }

    void dictionaryForLanguage()
    {
        auto [tag, expected] = fetch<QString, QString>("tag", "expected");
        const QStringList installed{u"de_AT"_s, u"de_DE"_s, u"en_GB"_s, u"en_US"_s};
        QCOMPARE(Vantry::Text::dictionaryForLanguage(tag, installed), expected);
    }

    void sentenceAround()
    {
        const QString text = u"First one. The wrod is here! Last one."_s;
        const WordInContext context = Vantry::Text::sentenceAround(text, {15, 4});
        QCOMPARE(context.sentence, u"The wrod is here!"_s);
        QCOMPARE(context.sentence.mid(context.wordStart, 4), u"wrod"_s);
    }

    void dictionariesCheckAndSuggest_data()
    {
        columns<QString, QString, bool, QString>("dictionary", "word", "correct", "suggested");
        row("en correct", "en_US", "word", true, QString());
        row("en wrong", "en_US", "wrod", false, "word");
        // Letters beyond ASCII go through the dictionary's own encoding.
        row("de umlaut", "de_DE", "Stra\u00dfe", true, QString());
        row("de wrong", "de_DE", "Strase", false, "Stra\u00dfe");
        row("not installed counts as correct", "xx_XX", "wrod", true, QString());
    }

    void dictionariesCheckAndSuggest()
    {
        auto [dictionary, word, correct, suggested]
            = fetch<QString, QString, bool, QString>("dictionary", "word", "correct", "suggested");
        QTemporaryDir dir;
        Dictionaries dictionaries(Dictionaries::defaultFolders(), dir.filePath(u"w"_s));
        QVERIFY(dictionaries.installed().contains(u"en_US"_s));
        QVERIFY(dictionaries.installed().contains(u"de_DE"_s));
        QCOMPARE(dictionaries.isCorrect(dictionary, word), correct);
        if (!suggested.isEmpty())
            QVERIFY2(dictionaries.suggestions(dictionary, word).contains(suggested),
                qPrintable(dictionaries.suggestions(dictionary, word).join(u',')));
    }

    void personalWordsPersistAndUnreadableListIsReported()
    {
        QTemporaryDir dir;
        const QString list = dir.filePath(u"sub/words.txt"_s);
        const QString word = u"Vantryish"_s;
        {
            Dictionaries dictionaries(Dictionaries::defaultFolders(), list);
            QVERIFY(!dictionaries.isCorrect(u"en_US"_s, word));
            QVERIFY(dictionaries.addPersonal(word));
            QVERIFY(dictionaries.isCorrect(u"en_US"_s, word));
        }
        Dictionaries again(Dictionaries::defaultFolders(), list);
        QVERIFY(again.isCorrect(u"en_US"_s, word));
        QVERIFY(again.removePersonal(word));
        QVERIFY(!again.isCorrect(u"en_US"_s, word));

        // A list in a place that cannot be written: the word still counts for the session.
        Dictionaries blocked(Dictionaries::defaultFolders(), list + u"/in/a/file"_s);
        QVERIFY(!blocked.addPersonal(word));
        QVERIFY(blocked.lastError().contains(QLatin1String("cannot be written")));
        QVERIFY(blocked.isCorrect(u"en_US"_s, word));
    }

private:
    static QStringList words(QStringView text, const QList<WordSpan> &spans)
    {
        QStringList result;
        for (const WordSpan &span : spans)
            result.append(text.sliced(span.start, span.length).toString());
        return result;
    }
};

QTEST_GUILESS_MAIN(tst_Spelling)
#include "tst_spelling.moc"
