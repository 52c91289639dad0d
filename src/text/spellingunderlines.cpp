#include "text/spellingunderlines.h"

namespace Vantry::Text {

namespace {

// Long enough that a typist's next key usually comes first.
constexpr int pauseMs = 400;

} // namespace

SpellingUnderlines::SpellingUnderlines(Platform::DesignSurface &surface,
    Platform::Dictionaries &dictionaries, std::function<bool()> wanted, QObject *parent)
    : QObject(parent)
    , m_surface(surface)
    , m_check(surface, dictionaries)
    , m_wanted(std::move(wanted))
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseMs);
    connect(&m_pause, &QTimer::timeout, this, &SpellingUnderlines::refresh);
    connect(
        &surface, &Platform::DesignSurface::contentChanged, this, &SpellingUnderlines::schedule);
    connect(
        &surface, &Platform::DesignSurface::documentComplete, this, &SpellingUnderlines::schedule);
}

void SpellingUnderlines::schedule()
{
    if (m_wanted() || m_drawn)
        m_pause.start();
}

void SpellingUnderlines::refresh()
{
    m_pause.stop();
    if (!m_wanted()) {
        if (m_drawn)
            m_surface.underlineSpellingText({});
        m_drawn = false;
        return;
    }
    const auto spans = m_check.misspeltSpans();
    if (m_surface.lastCallFailed())
        return;
    m_drawn = m_surface.underlineSpellingText(spans) && !spans.isEmpty();
}

} // namespace Vantry::Text
