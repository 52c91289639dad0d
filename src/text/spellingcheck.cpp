#include "text/spellingcheck.h"

#include "platform/hunspell/dictionaries.h"

#include <VantryHTMLEditor/EditorDialogs.h>
#include <VantryHTMLEditor/UserPrompts.h>

#include <QStack>

namespace Vantry::Text {

using Platform::DesignSurface;
using Answer = EditorDialogs::SpellingAnswer;

namespace {

// The editor's undo command: a correction is one step of the editor's history.
constexpr int undoCommand = 5049;

} // namespace

SpellingCheck::SpellingCheck(DesignSurface &surface, Platform::Dictionaries &dictionaries)
    : m_surface(surface)
    , m_dictionaries(dictionaries)
{ }

SpellingCheck::~SpellingCheck() = default;

bool SpellingCheck::read()
{
    DesignSurface::SpellingText text = m_surface.spellingText(m_text.read);
    if (m_surface.lastCallFailed())
        return false;
    if (!text.unchanged) {
        take(std::move(text));
        return true;
    }
    // The runs still stand; only the selection and the document's language are new.
    m_text.selectionEnd = text.selectionEnd;
    m_text.documentLanguage = std::move(text.documentLanguage);
    chooseDictionary();
    return true;
}

void SpellingCheck::take(DesignSurface::SpellingText text)
{
    m_text = std::move(text);
    chooseDictionary();
    rebuildRuns();
}

void SpellingCheck::chooseDictionary()
{
    const QString own = dictionaryForLanguage(m_text.documentLanguage, m_dictionaries.installed());
    m_dictionary = own.isEmpty() ? m_dictionaries.systemDictionary() : own;
}

// A run is text that reads on without a break, in one language.
void SpellingCheck::rebuildRuns()
{
    m_runs.clear();
    for (qsizetype i = 0; i < m_text.texts.size(); ++i) {
        const QString language = m_text.languages.value(m_text.languageOf[i]);
        if (m_runs.isEmpty() || m_text.runStarts[i] || m_runs.last().language != language)
            m_runs.append(Run{{}, {}, {}, language});
        Run &run = m_runs.last();
        run.nodes.append(int(i));
        run.starts.append(run.text.size());
        run.text += m_text.texts[i];
    }
}

void SpellingCheck::applyChanges(const QList<std::pair<int, QString>> &changed)
{
    for (const auto &[node, text] : changed) {
        if (node >= 0 && node < m_text.texts.size())
            m_text.texts[node] = text;
    }
    // The texts are no longer as the read left them.
    m_text.read = 0;
    rebuildRuns();
}

QString SpellingCheck::dictionaryOf(const Run &run) const
{
    if (run.language.isEmpty()
        || run.language.compare(m_text.documentLanguage, Qt::CaseInsensitive) == 0)
        return m_dictionary;
    return dictionaryForLanguage(run.language, m_dictionaries.installed());
}

SpellingCheck::Position SpellingCheck::positionOf(DesignSurface::TextPoint point) const
{
    for (qsizetype r = 0; r < m_runs.size(); ++r) {
        const Run &run = m_runs[r];
        const qsizetype k = run.nodes.indexOf(point.node);
        if (k >= 0)
            return {r, run.starts[k] + point.offset};
    }
    return {m_runs.size(), 0};
}

DesignSurface::TextPoint SpellingCheck::pointOf(qsizetype run, qsizetype offset, bool atEnd) const
{
    const Run &r = m_runs[run];
    qsizetype k = r.nodes.size() - 1;
    // A word's start lies in the node where its first letter is, its end in the node of its
    // last letter.
    while (k > 0 && (atEnd ? r.starts[k] >= offset : r.starts[k] > offset))
        --k;
    return {r.nodes[k], int(offset - r.starts[k])};
}

std::optional<SpellingCheck::Found> SpellingCheck::nextMisspelt(Position from)
{
    for (qsizetype r = from.run; r < m_runs.size(); ++r) {
        const QString dictionary = dictionaryOf(m_runs[r]);
        if (dictionary.isEmpty())
            continue;
        for (const WordSpan &word : checkableWords(m_runs[r].text)) {
            if (r == from.run && word.start < from.offset)
                continue;
            const QString text = m_runs[r].text.mid(word.start, word.length);
            if (!m_dictionaries.isCorrect(dictionary, text))
                return Found{{r, word.start}, word, text, dictionary};
        }
    }
    return std::nullopt;
}

std::optional<SpellingCheck::Found> SpellingCheck::nextDoubled(Position from)
{
    for (qsizetype r = from.run; r < m_runs.size(); ++r) {
        for (const WordSpan &word : doubledWords(m_runs[r].text)) {
            if (r == from.run && word.start < from.offset)
                continue;
            return Found{{r, word.start}, word, m_runs[r].text.mid(word.start, word.length), {}};
        }
    }
    return std::nullopt;
}

bool SpellingCheck::select(const Found &found)
{
    return m_surface.selectSpellingText(pointOf(found.at.run, found.word.start, false),
        pointOf(found.at.run, found.word.end(), true));
}

bool SpellingCheck::replace(const QList<std::pair<Found, QString>> &replacements)
{
    QList<DesignSurface::SpellingEdit> edits;
    for (const auto &[found, text] : replacements) {
        edits.append({pointOf(found.at.run, found.word.start, false),
            pointOf(found.at.run, found.word.end(), true), text});
    }
    const QList<std::pair<int, QString>> changed = m_surface.replaceSpellingText(edits);
    if (m_surface.lastCallFailed())
        return false;
    applyChanges(changed);
    return true;
}

bool SpellingCheck::findSpellingError()
{
    if (!read())
        return false;
    const std::optional<Found> found = nextMisspelt(positionOf(m_text.selectionEnd));
    return found && select(*found);
}

bool SpellingCheck::findDoubledWord()
{
    if (!read())
        return false;
    const std::optional<Found> found = nextDoubled(positionOf(m_text.selectionEnd));
    return found && select(*found);
}

QList<SpellingCheck::Found> SpellingCheck::allMisspelt()
{
    QList<Found> all;
    // One pass over the words: asking nextMisspelt again after each find would split its
    // run into words once more every time.
    for (qsizetype r = 0; r < m_runs.size(); ++r) {
        const QString dictionary = dictionaryOf(m_runs[r]);
        if (dictionary.isEmpty())
            continue;
        const QString &text = m_runs[r].text;
        for (const WordSpan &word : checkableWords(text)) {
            QString spelt = text.mid(word.start, word.length);
            if (!m_dictionaries.isCorrect(dictionary, spelt))
                all.append(Found{{r, word.start}, word, std::move(spelt), dictionary});
        }
    }
    return all;
}

QStringList SpellingCheck::misspeltWords()
{
    QStringList words;
    if (!read())
        return words;
    for (const Found &found : allMisspelt())
        words.append(found.text);
    return words;
}

QList<std::pair<DesignSurface::TextPoint, DesignSurface::TextPoint>> SpellingCheck::misspeltSpans(
    DesignSurface::SpellingText text)
{
    QList<std::pair<DesignSurface::TextPoint, DesignSurface::TextPoint>> spans;
    take(std::move(text));
    for (const Found &found : allMisspelt())
        spans.append({pointOf(found.at.run, found.word.start, false),
            pointOf(found.at.run, found.word.end(), true)});
    return spans;
}

std::optional<SpellingCheck::MisspeltWord> SpellingCheck::misspeltAt(const QPoint &viewPoint)
{
    m_menuWord.reset();
    const DesignSurface::TextAtPoint at = m_surface.spellingTextAt(viewPoint);
    if (m_surface.lastCallFailed() || at.offset < 0)
        return std::nullopt;
    // The one node read stands as the whole text until the next read.
    m_text = {};
    m_text.texts = {at.text};
    m_text.languageOf = {0};
    m_text.runStarts = {true};
    m_text.languages = {at.language};
    m_text.documentLanguage = at.language;
    rebuildRuns();
    if (m_dictionary.isEmpty())
        m_dictionary = m_dictionaries.systemDictionary();
    // Marked text takes its language's dictionary; the menu knows no document language, so
    // text of a language without one is checked with the current dictionary.
    QString dictionary = dictionaryForLanguage(at.language, m_dictionaries.installed());
    if (dictionary.isEmpty())
        dictionary = m_dictionary;
    for (const WordSpan &word : checkableWords(at.text)) {
        if (at.offset < word.start || at.offset > word.end())
            continue;
        const QString text = at.text.mid(word.start, word.length);
        if (m_dictionaries.isCorrect(dictionary, text))
            return std::nullopt;
        m_menuWord = Found{{0, word.start}, word, text, dictionary};
        return MisspeltWord{text, m_dictionaries.suggestions(dictionary, text)};
    }
    return std::nullopt;
}

bool SpellingCheck::replaceMisspelt(const QString &replacement)
{
    if (!m_menuWord)
        return false;
    const Found word = *std::exchange(m_menuWord, std::nullopt);
    return replace({{word, replacement}});
}

bool SpellingCheck::checkDocument(EditorDialogs &dialogs, UserPrompts &prompts)
{
    if (!read())
        return false;
    if (m_dictionaries.installed().isEmpty()) {
        prompts.critical(QStringLiteral("No spelling dictionary is installed."));
        return false;
    }
    // What Undo Last takes back: the word answered, and how.
    struct Step
    {
        Found found;
        Answer::Action action;
    };
    QStack<Step> history;
    bool changed = false;
    Position at;
    std::optional<Found> found = nextMisspelt(at);
    while (found) {
        if (!select(*found)) {
            prompts.critical(
                QStringLiteral("The spelling check stopped: ") + m_surface.lastError());
            break;
        }
        const WordInContext context = sentenceAround(m_runs[found->at.run].text, found->word);
        EditorDialogs::SpellingQuestion question{found->text, context.sentence, context.wordStart,
            m_dictionaries.suggestions(found->dictionary, found->text), found->dictionary,
            m_dictionaries.installed(), !history.isEmpty()};
        const Answer answer = dialogs.spellingWord(question);
        Position next{found->at.run, found->word.end()};
        switch (answer.action) {
        case Answer::Action::Cancel:
            dialogs.spellingDone();
            return changed;
        case Answer::Action::Ignore:
            break;
        case Answer::Action::IgnoreAll:
            m_dictionaries.ignore(found->text);
            break;
        case Answer::Action::AddToDictionary:
            if (!m_dictionaries.addPersonal(found->text))
                prompts.critical(m_dictionaries.lastError());
            break;
        case Answer::Action::Change:
        case Answer::Action::ChangeAll: {
            QList<std::pair<Found, QString>> replacements{{*found, answer.text}};
            if (answer.action == Answer::Action::ChangeAll) {
                for (std::optional<Found> later = nextMisspelt(next); later;
                     later = nextMisspelt({later->at.run, later->word.end()})) {
                    if (later->text == found->text)
                        replacements.append({*later, answer.text});
                }
            }
            if (!replace(replacements)) {
                prompts.critical(
                    QStringLiteral("The correction could not be made: ") + m_surface.lastError());
                dialogs.spellingDone();
                return changed;
            }
            changed = true;
            next.offset = found->word.start + answer.text.size();
            break;
        }
        case Answer::Action::UndoLast: {
            if (history.isEmpty())
                continue;
            const Step step = history.pop();
            if (step.action == Answer::Action::IgnoreAll) {
                m_dictionaries.unignore(step.found.text);
            } else if (step.action == Answer::Action::AddToDictionary) {
                m_dictionaries.removePersonal(step.found.text);
            } else if (step.action == Answer::Action::Change
                || step.action == Answer::Action::ChangeAll) {
                if (!m_surface.execCommand(undoCommand) || !read()) {
                    prompts.critical(QStringLiteral("The correction could not be undone: ")
                        + m_surface.lastError());
                    dialogs.spellingDone();
                    return changed;
                }
            }
            found = step.found;
            continue;
        }
        case Answer::Action::SwitchDictionary:
            if (m_dictionaries.installed().contains(answer.text))
                m_dictionary = answer.text;
            found = nextMisspelt(found->at);
            continue;
        }
        history.push({*found, answer.action});
        found = nextMisspelt(next);
    }
    dialogs.spellingDone();
    if (!m_surface.lastCallFailed())
        prompts.information(QStringLiteral("The spelling check is complete."));
    return changed;
}

} // namespace Vantry::Text
