#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace Vantry::Text {

// A word of a text: where it starts and how long it is, in UTF-16 code units.
struct WordSpan
{
    qsizetype start = 0;
    qsizetype length = 0;

    qsizetype end() const { return start + length; }
    bool operator==(const WordSpan &) const = default;
};

// The words a spelling check looks at, in order: runs of letters with apostrophes inside
// them ("don't"). Words with digits, web and file addresses and e-mail addresses are left
// out, as are the letters glued to them.
QList<WordSpan> checkableWords(QStringView text);

// Every word written twice in a row, with only white space between the two and letter case
// ignored ("The the"): the span of the second one.
QList<WordSpan> doubledWords(QStringView text);

// The installed dictionary for a language tag ("en-GB", "de", "en_us"): an exact match
// first, then the first dictionary of the same language (preferring "xx_XX"). Empty when
// none fits.
QString dictionaryForLanguage(QStringView tag, const QStringList &installed);

// The sentence around a word, cut at sentence ends and to about maxLength characters, with
// where the word starts in it.
struct WordInContext
{
    QString sentence;
    qsizetype wordStart = 0;
};
WordInContext sentenceAround(QStringView text, WordSpan word, qsizetype maxLength = 160);

} // namespace Vantry::Text
