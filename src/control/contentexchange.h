#pragma once

#include "control/settings.h"

#include <QString>

#include <functional>
#include <optional>

namespace Vantry::Platform {
class DesignSurface;
}

namespace Vantry::Control {

// The two roads of the document between host and editor: loading a text into the design
// surface and fetching it back, with the transformations on each road.
class ContentExchange
{
public:
    struct Hooks
    {
        // Makes the design view current, carrying source-view text into the surface.
        std::function<void()> ensureDesignView;
        // The LINK markup of the document's style sheets.
        std::function<QString()> styleSheetLinks;
        // Lets pending user-interface events run once.
        std::function<void()> settle;
        // The source editor's text while the source view shows; nothing otherwise.
        std::function<std::optional<QString>()> sourceViewText;
    };

    ContentExchange(Settings &settings, Platform::DesignSurface &surface, Hooks hooks);

    bool isDocumentReady() const { return m_ready; }
    void setDocumentReady() { m_ready = true; }
    bool isLoadPending() const { return m_loadPending; }
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }

    // Loads a SetHtmlSource text. Held and marked pending while the surface is not ready.
    void load(const QString &text);
    // Puts a whole document, as it is, into the surface (the design view shown first);
    // false when the surface is not ready, the editor is disabled or the load failed.
    bool loadIntoSurface(const QString &html);
    // The document as HTML, before the BASE tag is removed (what saving and view switching
    // use). *ok, when given, tells an empty document from a surface that did not answer.
    QString fetchDocumentHTML(bool *ok = nullptr);
    // The same, taken from the view that shows: a save from the source view keeps the
    // source view, its caret and its undo history.
    QString fetchDocumentHTMLFromCurrentView(bool *ok = nullptr);
    // Reading GetHtmlSource: also stores the result.
    QString getHtmlSource();
    // Reading GetPlainText: also stores the result.
    QString getPlainText();

private:
    bool loadWithBase(const QString &html);
    QString finishFetched(QString html, bool *ok) const;

    Settings &m_settings;
    Platform::DesignSurface &m_surface;
    Hooks m_hooks;
    bool m_ready = false;
    bool m_loadPending = false;
    bool m_enabled = true;
};

} // namespace Vantry::Control
