#include "control/firstdocument.h"

#include "control/contentexchange.h"
#include "control/settings.h"
#include "platform/designsurface.h"

namespace Vantry::Control {

FirstDocument::FirstDocument(const Settings &settings, ContentExchange &exchange,
    Platform::DesignSurface &surface, Hooks hooks)
    : m_settings(settings)
    , m_exchange(exchange)
    , m_surface(surface)
    , m_hooks(std::move(hooks))
{ }

void FirstDocument::documentComplete()
{
    if (m_exchange.isDocumentReady())
        return;
    m_exchange.setDocumentReady();
    if (m_handled)
        return;
    m_handled = true;
    m_surface.useElementFormatting();
    // Properties read from a bag ran no side effects; the surface still needs the base
    // address for relative images.
    if (!m_settings.BaseURL.isEmpty())
        m_surface.setBaseUrl(m_settings.BaseURL);
    m_hooks.layout();
    // Replays a load the host asked for before the surface was ready; the host heard of
    // that assignment when it made it.
    if (!m_exchange.isLoadPending())
        return;
    if (!m_settings.SetHtmlSource.isEmpty())
        m_exchange.load(m_settings.SetHtmlSource);
    for (QString Settings::*field :
        {&Settings::DefaultFontColor, &Settings::DefaultFontName, &Settings::DefaultFontSize}) {
        if (!(m_settings.*field).isEmpty())
            m_hooks.reassign(field);
    }
}

} // namespace Vantry::Control
