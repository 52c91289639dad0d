#pragma once

#include "platform/designsurface.h"
#include "platform/documentreferences.h"

#include <QString>

namespace Vantry::Text {

// Finding and replacing text in the design view, in the whole body or inside the
// selection. The search position is kept between calls: a method named First starts a
// search, the Next methods go on from where it stands. After every handled hit the search
// range moves on one word, so two hits inside one word count as one.
//
// The search range is the control-wide current reference, shared with the selection
// lookups; a lookup in between ends a search. Every method returns false when a document
// call fails. None raises an event or marks the document changed.
class FindReplace
{
public:
    FindReplace(Platform::DesignSurface &surface, Platform::DocumentReferences &references);

    bool findFirstText(const QString &find);
    bool findNextText(const QString &find);
    bool findFirstTextInSelection(const QString &find);
    // Wraps to the start of the selection after its last hit, so it never ends by itself.
    bool findNextTextInSelection(const QString &find);
    bool replaceFirstText(const QString &find, const QString &replacement);
    bool replaceNextText(const QString &find, const QString &replacement);
    bool replaceFirstTextInSelection(const QString &find, const QString &replacement);
    bool replaceNextTextInSelection(const QString &find, const QString &replacement);
    // The replace-all methods return false once they are done, whatever they replaced:
    // every way out of their loop is a failed search or a hit outside the selection.
    bool replaceAllTextInSelection(const QString &find, const QString &replacement);
    bool replaceAllText(const QString &find, const QString &replacement);

private:
    enum class Hit
    {
        Select,
        SelectAndReplace
    };

    bool failed() const { return m_surface.lastCallFailed(); }
    Platform::TextRange searchRange() const;
    bool startOver(const Platform::TextRange &range, bool keepSelection);
    bool first(
        const Platform::TextRange &range, const QString &find, Hit hit, const QString &replacement);
    bool next(const QString &find, Hit hit, const QString &replacement);
    bool nextInSelection(const QString &find, Hit hit, const QString &replacement);
    bool firstInSelection(const QString &find, Hit hit, const QString &replacement);
    bool handle(const Platform::TextRange &range, Hit hit, const QString &replacement);
    void advance(const Platform::TextRange &range);
    bool insideSelection(const Platform::TextRange &range);
    bool replaceAll(Platform::DesignSurface::ReplaceScope scope, const QString &find,
        const QString &replacement);

    Platform::DesignSurface &m_surface;
    Platform::DocumentReferences &m_references;
    Platform::TextRange m_selectionCopy;
    QString m_selectionBookmark;
};

} // namespace Vantry::Text
