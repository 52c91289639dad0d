#include "control/contentexchange.h"

#include "control/contentrules.h"
#include "platform/designsurface.h"

namespace Vantry::Control {

using namespace ContentRules;

ContentExchange::ContentExchange(Settings &settings, Platform::DesignSurface &surface, Hooks hooks)
    : m_settings(settings)
    , m_surface(surface)
    , m_hooks(std::move(hooks))
{ }

void ContentExchange::load(const QString &text)
{
    m_settings.SetHtmlSource = text;
    if (!m_ready) {
        m_loadPending = true;
        return;
    }
    m_loadPending = false;

    QString html = m_settings.PreserveWhiteSpace ? text : removeLineBreaks(text);
    html = wrapInDefaultFont(
        html, m_settings.DefaultFontName, m_settings.DefaultFontColor, m_settings.DefaultFontSize);
    html = insertBase(html, m_settings.BaseURL);
    // The assignment itself was announced; a replayed one was announced when it was made.
    m_settings.SetHtmlSource = html;

    // The source view clears the enabled flag while it shows; switching back restores it,
    // so a load into a source view still reaches the surface.
    if (m_hooks.ensureDesignView)
        m_hooks.ensureDesignView();
    if (m_enabled)
        loadWithBase(html);
}

bool ContentExchange::loadIntoSurface(const QString &html)
{
    if (!m_ready)
        return false;
    if (m_hooks.ensureDesignView)
        m_hooks.ensureDesignView();
    return m_enabled && loadWithBase(html);
}

bool ContentExchange::loadWithBase(const QString &html)
{
    // The surface tells the editor's BASE from a document's own by its address, which must
    // be BaseURL even when that was read from a bag or reset without side effects.
    if (m_surface.baseUrl() != m_settings.BaseURL)
        m_surface.setBaseUrl(m_settings.BaseURL);
    return m_surface.setDocumentHTML(html);
}

QString ContentExchange::fetchDocumentHTML(bool *ok)
{
    if (ok)
        *ok = false;
    if (!m_ready)
        return {};
    if (m_hooks.ensureDesignView)
        m_hooks.ensureDesignView();

    QString html;
    if (m_settings.ReturnFullDocument) {
        if (m_hooks.settle)
            m_hooks.settle();
        html = m_surface.documentHTML();
    } else {
        html = m_surface.bodyInnerHTML();
    }
    if (m_surface.lastCallFailed())
        return {};
    return finishFetched(html, ok);
}

QString ContentExchange::fetchDocumentHTMLFromCurrentView(bool *ok)
{
    if (m_ready && m_hooks.sourceViewText) {
        if (const std::optional<QString> source = m_hooks.sourceViewText())
            return finishFetched(*source, ok);
    }
    return fetchDocumentHTML(ok);
}

QString ContentExchange::finishFetched(QString html, bool *ok) const
{
    html = normaliseStyleSheetLinks(
        html, m_hooks.styleSheetLinks ? m_hooks.styleSheetLinks() : QString());
    if (!m_settings.RelativePathToRoot.isEmpty() && m_settings.MakePathsRelativeOnSave
        && (m_settings.CopyImagesWhenInserted || m_settings.UploadImagesWhenInserted)) {
        html = removeRootPath(html, m_settings.RelativePathToRoot);
        html = insertBase(html, m_settings.BaseURL);
    }
    if (ok)
        *ok = true;
    return html;
}

QString ContentExchange::getHtmlSource()
{
    QString html = removeBase(fetchDocumentHTML(), m_settings.BaseURL);
    if (!m_settings.PreserveWhiteSpace)
        html = removeLineBreaks(html);
    m_settings.GetHtmlSource = html;
    return html;
}

QString ContentExchange::getPlainText()
{
    if (!m_ready)
        return {};
    if (m_hooks.ensureDesignView)
        m_hooks.ensureDesignView();
    const QString text = m_surface.bodyInnerText();
    m_settings.GetPlainText = text;
    return text;
}

} // namespace Vantry::Control
