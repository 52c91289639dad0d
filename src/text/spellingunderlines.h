#pragma once

#include "text/spellingcheck.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace Vantry::Text {

// Misspelt words underlined while the user types, found by the same rules and dictionaries
// as the spelling check (personal and ignored words, skipped addresses, words with digits
// and languages without a dictionary). Only the text in and near the view is checked, again
// once typing pauses and once scrolling stops, from a timer, never from inside the engine's
// notification; the read does not wait for the page, and one overtaken by an edit is
// dropped.
class SpellingUnderlines : public QObject
{
    Q_OBJECT
public:
    // wanted: the underlines are switched on and the document is ready to be read.
    SpellingUnderlines(Platform::DesignSurface &surface, Platform::Dictionaries &dictionaries,
        std::function<bool()> wanted, QObject *parent = nullptr);

    // Checks again, or takes the underlines away when they are no longer wanted, once
    // typing has paused.
    void schedule();
    // Checks the text in view now and underlines what it finds, once the page answers.
    void refresh();

private:
    void documentChanged();

    Platform::DesignSurface &m_surface;
    // A check of its own, so that a refresh never moves the dialog's walk.
    SpellingCheck m_check;
    std::function<bool()> m_wanted;
    QTimer m_pause;
    bool m_drawn = false;
    // Counts reads and edits: an answer counts only while nothing came after its read.
    int m_reading = 0;
};

} // namespace Vantry::Text
