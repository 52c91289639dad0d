// The spelling rules that need no document, and the dictionaries on Debian's own files.

#include "platform/hunspell/dictionaries.h"
#include "text/spelling.h"

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using Vantry::Platform::Dictionaries;
using namespace Vantry::Text;

class tst_Spelling : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void checkableWords_data();
    void checkableWords();
    void doubledWords_data();
    void doubledWords();
    void dictionaryForLanguage_data();
    void dictionaryForLanguage();
    void sentenceAround();
    void dictionariesCheckAndSuggest_data();
    void dictionariesCheckAndSuggest();
    void personalWordsPersistAndUnreadableListIsReported();

private:
    static QStringList words(QStringView text, const QList<WordSpan> &spans)
    {
        QStringList result;
        for (const WordSpan &span : spans)
            result.append(text.sliced(span.start, span.length).toString());
        return result;
    }
};

void tst_Spelling::checkableWords_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("expected");
    const auto row
        = [](const char *name, const char *text, std::initializer_list<const char *> expected) {
              QStringList words;
              for (const char *word : expected)
                  words.append(QString::fromUtf8(word));
              QTest::newRow(name) << QString::fromUtf8(text) << words;
          };
    row("punctuation", "Hello, world. (Again)!", {"Hello", "world", "Again"});
    row("apostrophes inside", "don't 'quoted' it\u2019s", {"don't", "quoted", "it\u2019s"});
    row("hyphen splits", "well-known", {"well", "known"});
    row("digits", "abc123 route66 4th 2024 ok", {"ok"});
    row("web addresses", "see http://exmple.com/pth and www.exmple.org. now",
        {"see", "and", "now"});
    row("e-mail", "mail bob@exmple.com or mailto:ann@x.org today", {"mail", "or", "today"});
    row("file paths", "open /usr/shre/dict or C:\\wrk\\fle or ~/notse please",
        {"open", "or", "or", "please"});
    row("non-latin letters", "Stra\u00dfe \u00fcber na\u00efve",
        {"Stra\u00dfe", "\u00fcber", "na\u00efve"});
    row("empty", "", {});
}

void tst_Spelling::checkableWords()
{
    QFETCH(QString, text);
    QFETCH(QStringList, expected);
    QCOMPARE(words(text, Vantry::Text::checkableWords(text)), expected);
}

void tst_Spelling::doubledWords_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<WordSpan>>("expected");
    QTest::newRow("plain") << QStringLiteral("the the cat") << QList<WordSpan>{{4, 3}};
    QTest::newRow("letter case") << QStringLiteral("The the cat") << QList<WordSpan>{{4, 3}};
    QTest::newRow("line break") << QStringLiteral("a\n a") << QList<WordSpan>{{3, 1}};
    QTest::newRow("three") << QStringLiteral("la la la") << QList<WordSpan>{{3, 2}, {6, 2}};
    QTest::newRow("comma between") << QStringLiteral("the, the") << QList<WordSpan>{};
    QTest::newRow("different") << QStringLiteral("that the") << QList<WordSpan>{};
    QTest::newRow("glued") << QStringLiteral("thethe") << QList<WordSpan>{};
}

void tst_Spelling::doubledWords()
{
    QFETCH(QString, text);
    QFETCH(QList<WordSpan>, expected);
    QCOMPARE(Vantry::Text::doubledWords(text), expected);
}

void tst_Spelling::dictionaryForLanguage_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("expected");
    QTest::newRow("exact") << QStringLiteral("en-GB") << QStringLiteral("en_GB");
    QTest::newRow("letter case, underscore") << QStringLiteral("en_us") << QStringLiteral("en_US");
    QTest::newRow("language only prefers xx_XX") << QStringLiteral("de") << QStringLiteral("de_DE");
    QTest::newRow("language only, first") << QStringLiteral("en") << QStringLiteral("en_GB");
    QTest::newRow("other region") << QStringLiteral("de-CH") << QStringLiteral("de_DE");
    QTest::newRow("not installed") << QStringLiteral("fr") << QString();
    QTest::newRow("none") << QString() << QString();
}

void tst_Spelling::dictionaryForLanguage()
{
    QFETCH(QString, tag);
    QFETCH(QString, expected);
    const QStringList installed{QStringLiteral("de_AT"), QStringLiteral("de_DE"),
        QStringLiteral("en_GB"), QStringLiteral("en_US")};
    QCOMPARE(Vantry::Text::dictionaryForLanguage(tag, installed), expected);
}

void tst_Spelling::sentenceAround()
{
    const QString text = QStringLiteral("First one. The wrod is here! Last one.");
    const WordInContext context = Vantry::Text::sentenceAround(text, {15, 4});
    QCOMPARE(context.sentence, QStringLiteral("The wrod is here!"));
    QCOMPARE(context.sentence.mid(context.wordStart, 4), QStringLiteral("wrod"));
}

void tst_Spelling::dictionariesCheckAndSuggest_data()
{
    QTest::addColumn<QString>("dictionary");
    QTest::addColumn<QString>("word");
    QTest::addColumn<bool>("correct");
    QTest::addColumn<QString>("suggested");
    QTest::newRow("en correct") << QStringLiteral("en_US") << QStringLiteral("word") << true
                                << QString();
    QTest::newRow("en wrong") << QStringLiteral("en_US") << QStringLiteral("wrod") << false
                              << QStringLiteral("word");
    // Letters beyond ASCII go through the dictionary's own encoding.
    QTest::newRow("de umlaut") << QStringLiteral("de_DE") << QStringLiteral("Stra\u00dfe") << true
                               << QString();
    QTest::newRow("de wrong") << QStringLiteral("de_DE") << QStringLiteral("Strase") << false
                              << QStringLiteral("Stra\u00dfe");
    QTest::newRow("not installed counts as correct")
        << QStringLiteral("xx_XX") << QStringLiteral("wrod") << true << QString();
}

void tst_Spelling::dictionariesCheckAndSuggest()
{
    QFETCH(QString, dictionary);
    QFETCH(QString, word);
    QFETCH(bool, correct);
    QFETCH(QString, suggested);
    QTemporaryDir dir;
    Dictionaries dictionaries(Dictionaries::defaultFolders(), dir.filePath(QStringLiteral("w")));
    QVERIFY(dictionaries.installed().contains(QStringLiteral("en_US")));
    QVERIFY(dictionaries.installed().contains(QStringLiteral("de_DE")));
    QCOMPARE(dictionaries.isCorrect(dictionary, word), correct);
    if (!suggested.isEmpty())
        QVERIFY2(dictionaries.suggestions(dictionary, word).contains(suggested),
            qPrintable(dictionaries.suggestions(dictionary, word).join(u',')));
}

void tst_Spelling::personalWordsPersistAndUnreadableListIsReported()
{
    QTemporaryDir dir;
    const QString list = dir.filePath(QStringLiteral("sub/words.txt"));
    const QString word = QStringLiteral("Vantryish");
    {
        Dictionaries dictionaries(Dictionaries::defaultFolders(), list);
        QVERIFY(!dictionaries.isCorrect(QStringLiteral("en_US"), word));
        QVERIFY(dictionaries.addPersonal(word));
        QVERIFY(dictionaries.isCorrect(QStringLiteral("en_US"), word));
    }
    Dictionaries again(Dictionaries::defaultFolders(), list);
    QVERIFY(again.isCorrect(QStringLiteral("en_US"), word));
    QVERIFY(again.removePersonal(word));
    QVERIFY(!again.isCorrect(QStringLiteral("en_US"), word));

    // A list in a place that cannot be written: the word still counts for the session.
    Dictionaries blocked(Dictionaries::defaultFolders(), list + QStringLiteral("/in/a/file"));
    QVERIFY(!blocked.addPersonal(word));
    QVERIFY(blocked.lastError().contains(QLatin1String("cannot be written")));
    QVERIFY(blocked.isCorrect(QStringLiteral("en_US"), word));
}

QTEST_GUILESS_MAIN(tst_Spelling)
#include "tst_spelling.moc"
