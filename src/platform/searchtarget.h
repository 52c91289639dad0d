#pragma once

#include <QString>

namespace Vantry::Platform {

struct SearchOptions
{
    bool matchCase = false;
    bool wholeWord = false;
    bool backwards = false;
};

// Something the find dialog searches: a view that selects what it finds and goes on from
// there. Replacing is optional.
class SearchTarget
{
public:
    virtual ~SearchTarget() = default;

    // Selects the next occurrence after the selection (before it, searching backwards),
    // going round the end once; false when there is none.
    virtual bool findNext(const QString &text, const SearchOptions &options) = 0;

    virtual bool canReplace() const { return false; }
    // Replaces the selection when it is an occurrence, then selects the next one.
    virtual bool replaceNext(const QString &, const QString &, const SearchOptions &)
    {
        return false;
    }
    // Replaces every occurrence as one undo step; returns how many.
    virtual int replaceAll(const QString &, const QString &, const SearchOptions &) { return 0; }
};

} // namespace Vantry::Platform
