#pragma once

#include "platform/designsurface.h"
#include "text/spelling.h"

#include <QPoint>
#include <QString>
#include <QStringList>

#include <optional>

namespace Vantry {
class EditorDialogs;
class UserPrompts;
} // namespace Vantry

namespace Vantry::Platform {
class Dictionaries;
}

namespace Vantry::Text {

// Spell checking of the design document with the installed dictionaries: the dialog's walk
// over every misspelt word, the find methods that select the next misspelt or doubled word
// after the selection, and the context menu's suggestions for the word under the pointer.
//
// Text without a lang attribute of its own, or with the document's, is checked with the
// current dictionary: the document's language where a dictionary for it is installed, else
// the system's, until the user picks another in the dialog. Text marked with another
// language is checked with that language's dictionary, or skipped when none is installed.
class SpellingCheck
{
public:
    SpellingCheck(Platform::DesignSurface &surface, Platform::Dictionaries &dictionaries);
    ~SpellingCheck();

    // The walk of command 46: asks the dialogs about each misspelt word, from the start of
    // the body, and carries out the answers. True when it changed the document.
    bool checkDocument(EditorDialogs &dialogs, UserPrompts &prompts);
    // Select the next misspelt (or doubled) word after the selection. False, with the
    // selection left alone, when there is none before the end of the document.
    bool findSpellingError();
    bool findDoubledWord();

    // The word at a point of the view when it is misspelt, with its suggestions.
    struct MisspeltWord
    {
        QString word;
        QStringList suggestions;
    };
    std::optional<MisspeltWord> misspeltAt(const QPoint &viewPoint);
    // Puts the replacement in place of the word misspeltAt found last, as one undoable edit.
    bool replaceMisspelt(const QString &replacement);

    // Every misspelt word of the body in reading order (one read, no selection).
    QStringList misspeltWords();
    // The misspelt words of text read elsewhere (the underlines read only what is in view),
    // as spans of that text.
    QList<std::pair<Platform::DesignSurface::TextPoint, Platform::DesignSurface::TextPoint>>
    misspeltSpans(Platform::DesignSurface::SpellingText text);

    // The dictionary for text in the document's own language, as the last read found it
    // (or the user chose during the walk); empty before any.
    QString dictionary() const { return m_dictionary; }

    // Where the walk stands: a run of text and an offset in it.
    struct Position
    {
        qsizetype run = 0;
        qsizetype offset = 0;
    };
    struct Found
    {
        Position at;
        WordSpan word;
        QString text;
        QString dictionary;
    };

private:
    struct Run
    {
        QString text;
        QList<int> nodes;
        QList<qsizetype> starts;
        QString language;
    };

    bool read();
    void take(Platform::DesignSurface::SpellingText text);
    void chooseDictionary();
    void rebuildRuns();
    void applyChanges(const QList<std::pair<int, QString>> &changed);
    // The dictionary a run is checked with; empty to skip it.
    QString dictionaryOf(const Run &run) const;
    Position positionOf(Platform::DesignSurface::TextPoint point) const;
    Platform::DesignSurface::TextPoint pointOf(qsizetype run, qsizetype offset, bool atEnd) const;
    std::optional<Found> nextMisspelt(Position from);
    std::optional<Found> nextDoubled(Position from);
    // Every misspelt word of the text last taken, in reading order.
    QList<Found> allMisspelt();
    bool select(const Found &found);
    bool replace(const QList<std::pair<Found, QString>> &replacements);

    Platform::DesignSurface &m_surface;
    Platform::Dictionaries &m_dictionaries;
    QString m_dictionary;
    Platform::DesignSurface::SpellingText m_text;
    QList<Run> m_runs;
    std::optional<Found> m_menuWord;
};

} // namespace Vantry::Text
