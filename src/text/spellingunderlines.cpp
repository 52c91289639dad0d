#include "text/spellingunderlines.h"

#include <QPointer>

namespace Vantry::Text {

namespace {

// Long enough that a typist's next key usually comes first.
constexpr int pauseMs = 400;
// The page already rests when the surface reports a scroll.
constexpr int scrollPauseMs = 50;

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
    connect(&surface, &Platform::DesignSurface::contentChanged, this,
        &SpellingUnderlines::documentChanged);
    connect(&surface, &Platform::DesignSurface::documentComplete, this,
        &SpellingUnderlines::documentChanged);
    connect(&surface, &Platform::DesignSurface::viewScrolled, this, [this] {
        if (m_wanted() && !m_pause.isActive())
            m_pause.start(scrollPauseMs);
    });
}

void SpellingUnderlines::documentChanged()
{
    // A read on its way describes the document as it was.
    ++m_reading;
    schedule();
}

void SpellingUnderlines::schedule()
{
    if (m_wanted() || m_drawn)
        m_pause.start(pauseMs);
}

void SpellingUnderlines::refresh()
{
    m_pause.stop();
    const int reading = ++m_reading;
    if (!m_wanted()) {
        if (m_drawn)
            m_surface.underlineSpellingText({});
        m_drawn = false;
        return;
    }
    const QPointer<SpellingUnderlines> self(this);
    m_surface.requestVisibleSpellingText(
        [self, reading](bool answered, const Platform::DesignSurface::SpellingText &text) {
            if (!self || !answered || reading != self->m_reading || !self->m_wanted())
                return;
            const auto spans = self->m_check.misspeltSpans(text);
            self->m_drawn = self->m_surface.underlineSpellingText(spans) && !spans.isEmpty();
        });
}

} // namespace Vantry::Text
