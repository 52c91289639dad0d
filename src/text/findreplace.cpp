#include "text/findreplace.h"

namespace Vantry::Text {

using Platform::SelectionType;
using Platform::TextRange;
using Platform::TextUnit;
using ReplaceScope = Platform::DesignSurface::ReplaceScope;

FindReplace::FindReplace(Platform::DesignSurface &surface, Platform::DocumentReferences &references)
    : m_surface(surface)
    , m_references(references)
{ }

TextRange FindReplace::searchRange() const
{
    const auto *range = std::get_if<TextRange>(&m_references.current);
    return range ? *range : TextRange{};
}

// Makes range the search range; for a search inside the selection also keeps its copy
// and bookmark.
bool FindReplace::startOver(const TextRange &range, bool keepSelection)
{
    if (failed() || range.isNull())
        return false;
    m_references.current = range;
    if (!keepSelection)
        return true;
    m_selectionCopy = m_surface.duplicateRange(range);
    if (failed())
        return false;
    m_selectionBookmark = m_surface.rangeBookmark(range);
    return !failed();
}

// Selects the hit and, when asked, replaces it.
bool FindReplace::handle(const TextRange &range, Hit hit, const QString &replacement)
{
    if (!m_surface.selectRange(range))
        return false;
    return hit == Hit::Select || m_surface.setRangeText(range, replacement);
}

// Collapses the search range and moves it on to the next word's start, so that the next
// search starts beyond the last hit's word.
void FindReplace::advance(const TextRange &range)
{
    m_surface.moveRange(range, TextUnit::Word, 1);
}

bool FindReplace::insideSelection(const TextRange &range)
{
    return m_surface.rangeInRange(m_selectionCopy, range);
}

bool FindReplace::first(
    const TextRange &range, const QString &find, Hit hit, const QString &replacement)
{
    if (!startOver(range, false))
        return false;
    const bool found = m_surface.findText(range, find);
    if (found && handle(range, hit, replacement))
        advance(range);
    return found;
}

bool FindReplace::next(const QString &find, Hit hit, const QString &replacement)
{
    const TextRange range = searchRange();
    if (range.isNull())
        return false;
    const bool found = m_surface.findText(range, find);
    if (found && handle(range, hit, replacement))
        advance(range);
    return found;
}

bool FindReplace::firstInSelection(const QString &find, Hit hit, const QString &replacement)
{
    if (m_surface.selectionType() == SelectionType::Control || failed())
        return false;
    const TextRange range = m_surface.selectionRange();
    if (!startOver(range, true))
        return false;
    bool found = m_surface.findText(range, find);
    if (!found || failed())
        return false;
    if (hit == Hit::SelectAndReplace) {
        // A hit beyond a selection that held the text only in part is no hit.
        const bool inside = insideSelection(range);
        if (failed())
            return false;
        if (inside) {
            if (!handle(range, hit, replacement))
                return found;
        } else {
            found = false;
        }
    } else if (!handle(range, hit, replacement)) {
        return found;
    }
    advance(range);
    return found;
}

bool FindReplace::nextInSelection(const QString &find, Hit hit, const QString &replacement)
{
    // Like the First methods, never search while elements are selected whole.
    if (m_surface.selectionType() == SelectionType::Control || failed())
        return false;
    const TextRange range = searchRange();
    if (range.isNull())
        return false;
    bool found = m_surface.findText(range, find);
    if (failed() || (hit == Hit::SelectAndReplace && !found))
        return false;
    // A miss found nothing up to the body's end, so nothing is left ahead in the selection
    // either, wherever the search range stands (at the selection's last word, or in the
    // gap after its last character, which lies inside it).
    bool accepted = found && insideSelection(range);
    if (failed())
        return false;
    if (!accepted) {
        // Past the selection's end: start again at its beginning.
        if (!m_surface.moveRangeToBookmark(range, m_selectionBookmark))
            return false;
        found = m_surface.findText(range, find);
        if (!found)
            return false;
        accepted = insideSelection(range);
        if (failed())
            return false;
        if (!accepted)
            found = false;
    }
    if (accepted && !handle(range, hit, replacement))
        return found;
    advance(range);
    return found;
}

bool FindReplace::replaceAll(ReplaceScope scope, const QString &find, const QString &replacement)
{
    // The whole loop runs in the surface as one step: a round trip per hit would take
    // seconds on a large document.
    const auto result = m_surface.replaceAll(scope, find, replacement);
    if (failed() || result.controlSelected)
        return false;
    m_references.current = result.searchRange;
    m_selectionCopy = result.selectionCopy;
    m_selectionBookmark = result.bookmark;
    return result.found;
}

bool FindReplace::findFirstText(const QString &find)
{
    return first(m_surface.bodyRange(), find, Hit::Select, {});
}

bool FindReplace::findNextText(const QString &find)
{
    return next(find, Hit::Select, {});
}

bool FindReplace::findFirstTextInSelection(const QString &find)
{
    return firstInSelection(find, Hit::Select, {});
}

bool FindReplace::findNextTextInSelection(const QString &find)
{
    return nextInSelection(find, Hit::Select, {});
}

bool FindReplace::replaceFirstText(const QString &find, const QString &replacement)
{
    return first(m_surface.bodyRange(), find, Hit::SelectAndReplace, replacement);
}

bool FindReplace::replaceNextText(const QString &find, const QString &replacement)
{
    return next(find, Hit::SelectAndReplace, replacement);
}

bool FindReplace::replaceFirstTextInSelection(const QString &find, const QString &replacement)
{
    return firstInSelection(find, Hit::SelectAndReplace, replacement);
}

bool FindReplace::replaceNextTextInSelection(const QString &find, const QString &replacement)
{
    return nextInSelection(find, Hit::SelectAndReplace, replacement);
}

bool FindReplace::replaceAllTextInSelection(const QString &find, const QString &replacement)
{
    return replaceAll(ReplaceScope::Selection, find, replacement);
}

bool FindReplace::replaceAllText(const QString &find, const QString &replacement)
{
    return replaceAll(ReplaceScope::Body, find, replacement);
}

} // namespace Vantry::Text
