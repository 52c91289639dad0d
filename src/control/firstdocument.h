#pragma once

#include <QString>

#include <functional>

namespace Vantry::Platform {
class DesignSurface;
}

namespace Vantry::Control {

class ContentExchange;
struct Settings;

// The surface takes no document until its first one has loaded. When that one completes,
// this hands it what the host assigned before: the base address, the element formatting,
// the layout and, when the host asked for a page meanwhile, that page.
class FirstDocument
{
public:
    struct Hooks
    {
        std::function<void()> layout;
        // Assigns the field its own value again, which announces it once more.
        std::function<void(QString Settings::*field)> reassign;
    };

    FirstDocument(const Settings &settings, ContentExchange &exchange,
        Platform::DesignSurface &surface, Hooks hooks);

    // The surface finished a document.
    void documentComplete();

private:
    const Settings &m_settings;
    ContentExchange &m_exchange;
    Platform::DesignSurface &m_surface;
    Hooks m_hooks;
    bool m_handled = false;
};

} // namespace Vantry::Control
