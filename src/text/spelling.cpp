#include "text/spelling.h"

#include <algorithm>

namespace Vantry::Text {

namespace {

bool isApostrophe(QChar c)
{
    return c == u'\'' || c == u'\u2019';
}

bool isWordChar(QChar c)
{
    return c.isLetterOrNumber() || c.isMark();
}

// Addresses are checked as whole tokens: their letters are no words of the text.
bool isAddress(QStringView token)
{
    if (token.contains(u'@') || token.contains(QLatin1String("://")))
        return true;
    if (token.startsWith(QLatin1String("www."), Qt::CaseInsensitive)
        || token.startsWith(QLatin1String("mailto:"), Qt::CaseInsensitive))
        return true;
    // File paths: "/usr/share", "~/notes", "C:\\work".
    if (token.startsWith(u'/') || token.startsWith(QLatin1String("~/")))
        return true;
    return token.size() > 2 && token[0].isLetter() && token[1] == u':'
        && (token[2] == u'\\' || token[2] == u'/');
}

// Calls emit for every word of one token, digits included.
template <typename Emit>
void wordsOfToken(QStringView text, qsizetype from, qsizetype to, Emit onWord)
{
    qsizetype i = from;
    while (i < to) {
        if (!isWordChar(text[i])) {
            ++i;
            continue;
        }
        const qsizetype start = i;
        bool digits = false;
        while (i < to) {
            if (isWordChar(text[i])) {
                digits = digits || text[i].isDigit();
                ++i;
            } else if (isApostrophe(text[i]) && i + 1 < to && isWordChar(text[i + 1])) {
                ++i;
            } else {
                break;
            }
        }
        onWord(WordSpan{start, i - start}, digits);
    }
}

template <typename Emit> void tokens(QStringView text, Emit onToken)
{
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n) {
        while (i < n && text[i].isSpace())
            ++i;
        const qsizetype start = i;
        while (i < n && !text[i].isSpace())
            ++i;
        if (i > start)
            onToken(start, i);
    }
}

} // namespace

QList<WordSpan> checkableWords(QStringView text)
{
    QList<WordSpan> words;
    tokens(text, [&](qsizetype from, qsizetype to) {
        if (isAddress(text.sliced(from, to - from)))
            return;
        wordsOfToken(text, from, to, [&](WordSpan word, bool digits) {
            if (!digits)
                words.append(word);
        });
    });
    return words;
}

QList<WordSpan> doubledWords(QStringView text)
{
    QList<WordSpan> doubled;
    WordSpan previous{-1, 0};
    tokens(text, [&](qsizetype from, qsizetype to) {
        wordsOfToken(text, from, to, [&](WordSpan word, bool) {
            if (previous.start >= 0) {
                const QStringView gap = text.sliced(previous.end(), word.start - previous.end());
                const bool spaceOnly = !gap.isEmpty()
                    && std::all_of(gap.begin(), gap.end(), [](QChar c) { return c.isSpace(); });
                if (spaceOnly
                    && text.sliced(word.start, word.length)
                            .compare(
                                text.sliced(previous.start, previous.length), Qt::CaseInsensitive)
                        == 0)
                    doubled.append(word);
            }
            previous = word;
        });
    });
    return doubled;
}

QString dictionaryForLanguage(QStringView tag, const QStringList &installed)
{
    QString wanted = tag.trimmed().toString().replace(u'-', u'_');
    if (wanted.isEmpty())
        return {};
    for (const QString &name : installed) {
        if (name.compare(wanted, Qt::CaseInsensitive) == 0)
            return name;
    }
    const QString language = wanted.section(u'_', 0, 0).toLower();
    const QString home = language + u'_' + language.toUpper();
    QString first;
    for (const QString &name : installed) {
        if (name.section(u'_', 0, 0).toLower() != language)
            continue;
        if (name == home)
            return name;
        if (first.isEmpty())
            first = name;
    }
    return first;
}

WordInContext sentenceAround(QStringView text, WordSpan word, qsizetype maxLength)
{
    const auto endsSentence = [&text](qsizetype i) {
        const QChar c = text[i];
        return (c == u'.' || c == u'!' || c == u'?')
            && (i + 1 >= text.size() || text[i + 1].isSpace());
    };
    qsizetype start = word.start;
    while (start > 0 && !endsSentence(start - 1) && word.start - start < maxLength / 2)
        --start;
    qsizetype end = word.end();
    while (end < text.size() && end - start < maxLength) {
        ++end;
        if (endsSentence(end - 1))
            break;
    }
    const QStringView sentence = text.sliced(start, end - start);
    qsizetype lead = 0;
    while (lead < sentence.size() && sentence[lead].isSpace())
        ++lead;
    return {sentence.sliced(lead).trimmed().toString(), word.start - start - lead};
}

} // namespace Vantry::Text
