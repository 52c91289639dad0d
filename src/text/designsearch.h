#pragma once

#include "platform/designsurface.h"
#include "platform/searchtarget.h"

namespace Vantry::Text {

// The find dialog's view of the design surface: finding only, since replacing in the
// design view is the host's business through the editor's methods.
class DesignSearch final : public Platform::SearchTarget
{
public:
    explicit DesignSearch(Platform::DesignSurface &surface)
        : m_surface(surface)
    { }

    bool findNext(const QString &text, const Platform::SearchOptions &options) override
    {
        return m_surface.findNext(text, options);
    }

private:
    Platform::DesignSurface &m_surface;
};

} // namespace Vantry::Text
