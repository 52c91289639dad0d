#include "text/scriptinjection.h"

namespace Vantry::Text {

namespace {
const QString swapImageName = QStringLiteral("SwapImage");
}

QString libraryScript(const QString &functionName)
{
    // Kept as hosts have always received it, missing semicolon included.
    if (functionName == swapImageName)
        return QStringLiteral("function SwapImage(oImage,sImage){\r\n"
                              "    oImage.src = sImage\r\n"
                              "}\r\n");
    return {};
}

ScriptInjection::ScriptInjection(Platform::DesignSurface &surface,
    ElementLookup findSelectedElementByTag, Platform::DocumentReferences &references)
    : m_surface(surface)
    , m_findSelectedElementByTag(std::move(findSelectedElementByTag))
    , m_references(references)
{ }

void ScriptInjection::addJavaScript(const QVariant &functionName)
{
    if (!m_surface.isReady())
        return;
    // The engine writes elements rather than styles before anything touches the document.
    m_surface.useElementFormatting();
    const QString name = functionName.toString();
    const QString script = libraryScript(name);
    if (script.isEmpty())
        return;

    const QList<Platform::Element> scripts = m_surface.scripts();
    if (m_surface.lastCallFailed())
        return;
    if (!scripts.isEmpty()) {
        for (const Platform::Element &block : scripts) {
            // A script element's markup is its raw text.
            const QString text = m_surface.innerHTML(block);
            if (m_surface.lastCallFailed())
                return;
            if (!text.contains(name, Qt::CaseSensitive))
                m_surface.setElementText(block, text + QStringLiteral("\r\n") + script);
        }
        return;
    }

    const Platform::Element element = m_surface.createElement(QStringLiteral("SCRIPT"));
    if (element.isNull() || m_surface.lastCallFailed())
        return;
    m_surface.setAttribute(element, QStringLiteral("language"), QStringLiteral("JavaScript"));
    m_surface.setElementText(element, script);
    // The walk from the selection ends at the HTML element; with nothing selected there is
    // no walk, and the body's parent is that element.
    Platform::Element html;
    if (m_findSelectedElementByTag(QStringLiteral("HTML")))
        html = m_references.found;
    else if (!m_surface.lastCallFailed())
        html = m_surface.parentElement(m_surface.body());
    if (html.isNull() || m_surface.lastCallFailed())
        return;
    m_surface.appendChild(html, element);
}

} // namespace Vantry::Text
