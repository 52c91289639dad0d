#pragma once

#include "benchsupport.h"

#include <QString>
#include <QVariantList>

#include <chrono>

namespace VantryBench {

class Subject;

// Real key presses into the middle of a paragraph, each timed until its character is in
// the document and until the frame after it has been rendered. Keys are spaced out like
// a person's, so that every press meets an engine that finished the previous one.
class TypingSession
{
public:
    TypingSession(Subject &side, int paragraph, int offset = 100);

    // Places the caret after what was typed so far and types keys more.
    bool typeBlock(int keys, std::chrono::milliseconds gap = std::chrono::milliseconds(30));
    // Checks that the keys came out together where the caret was; sets error() if not.
    bool verify();

    Subject &side() const { return m_side; }
    const Samples &toDocument() const { return m_toDocument; }
    const Samples &toFrame() const { return m_toFrame; }
    QString error() const { return m_error; }
    bool failed() const { return !m_error.isEmpty(); }

private:
    bool fail(const QString &why);

    Subject &m_side;
    int m_paragraph;
    int m_offset;
    bool m_started = false;
    QString m_original;
    QString m_typed;
    Samples m_toDocument;
    Samples m_toFrame;
    QString m_error;
};

// The number of P elements in the side's document.
int paragraphCount(Subject &side);

// Listeners in the page that time the phases of each key press with the page's clock.
namespace KeyProbe {
bool install(Subject &side);
// The phases of the presses since the last call, one map per press (ms): "handlers"
// (keydown listeners), "toKeypress", "toBeforeinput" and "insertion" (until input), which
// together make "edit", "input" (input listeners), "toFrame" (until the next frame
// starts) and "frame" (the frame's own work).
QVariantList take(Subject &side);
} // namespace KeyProbe

// Breaks the time of a key press down: document size, the editor-only style rules, the
// cost of polling, and the phases inside the page. Prints its own tables.
// A real page (extraPage, when not empty) joins the generated ones. A non-empty `only`
// keeps the pages named there: paragraph counts (50, 5000, 15000, 25000) or "article";
// "alone" measures only the layout of a changed block laid out on its own.
// Candidate rules, when given, are measured against the editor's own.
void typingStudy(Subject &ours, Subject &baseline, int keys, const QString &extraPage = {},
    const QString &extraLabel = {}, const QStringList &only = {},
    const QString &candidateRules = {});

} // namespace VantryBench
