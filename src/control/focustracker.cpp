#include "control/focustracker.h"

#include <limits>

namespace Vantry::Control {

bool FocusTracker::enter()
{
    if (m_hasFocus)
        return false;
    if (m_entries < std::numeric_limits<int>::max())
        ++m_entries;
    m_hasFocus = true;
    m_focusSeen = true;
    return true;
}

bool FocusTracker::leave()
{
    const bool had = m_hasFocus;
    m_hasFocus = false;
    m_focusSeen = false;
    return had;
}

} // namespace Vantry::Control
