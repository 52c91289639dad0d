#include "subjects.h"

#include "benchsupport.h"

#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include "platform/webengine/webenginedesignsurface.h"

#include <QTest>
#include <QUrl>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineView>

namespace VantryBench {

using namespace std::chrono_literals;

// ---- Subject -------------------------------------------------------------------------

Subject::~Subject() = default;

QWidget *Subject::input() const
{
    QWidget *v = view();
    return v->focusProxy() ? v->focusProxy() : v;
}

bool Subject::waitForFrame(std::chrono::milliseconds timeout)
{
    const int ticket = frameTicket();
    if (ticket <= 0)
        return false;
    // Each check is one round trip; they queue behind the rendering work they wait for.
    return pollUntil([&] { return frameRendered(ticket); }, timeout);
}

QVariant Subject::evaluate(const QString &script, std::chrono::milliseconds timeout, bool *ok) const
{
    return runScript(page(), script, world(), timeout, ok);
}

bool Subject::focusInput()
{
    QWidget *w = window();
    w->activateWindow();
    if (!QTest::qWaitForWindowActive(w, 5000))
        return false;
    w->setFocus(Qt::OtherFocusReason);
    // The page learns of the focus a moment after the widget; a key sent before that gets
    // lost.
    return spinUntil([this] { return input()->hasFocus(); }, 5s)
        && spinUntil(
            [this] { return evaluate(QStringLiteral("document.hasFocus()")).toBool(); }, 5s);
}

// ---- EditorSubject -------------------------------------------------------------------

EditorSubject::EditorSubject()
    : m_editor(std::make_unique<Vantry::HTMLEditorComponent>())
{
    m_editor->resize(width, height);
    m_editor->show();
    m_surface = m_editor->findChild<Vantry::Platform::WebEngineDesignSurface *>();
}

EditorSubject::~EditorSubject() = default;

QWidget *EditorSubject::window() const
{
    return m_editor.get();
}

QWidget *EditorSubject::view() const
{
    return m_surface ? m_surface->widget() : m_editor.get();
}

QWebEnginePage *EditorSubject::page() const
{
    return m_surface ? m_surface->page() : nullptr;
}

quint32 EditorSubject::world() const
{
    return Vantry::Platform::WebEngineDesignSurface::adapterWorld();
}

bool EditorSubject::isReady() const
{
    return m_editor->isDocumentReady();
}

QVariant EditorSubject::call(const QString &operation, const QVariantList &arguments) const
{
    const auto result = m_surface->call(operation, arguments);
    if (!result.ok)
        qWarning("ours: %s failed: %s", qPrintable(operation), qPrintable(result.error));
    return result.value;
}

bool EditorSubject::load(const QString &html)
{
    m_editor->setSetHtmlSource(html);
    return !m_surface->lastCallFailed();
}

QString EditorSubject::fetch(bool wholeDocument)
{
    if (m_editor->ReturnFullDocument() != wholeDocument)
        m_editor->setReturnFullDocument(wholeDocument);
    return m_editor->GetHtmlSource();
}

QString EditorSubject::adapterFetch(bool wholeDocument) const
{
    return wholeDocument ? m_surface->documentHTML() : m_surface->bodyInnerHTML();
}

bool EditorSubject::placeCaret(const QString &tag, int index, int offset)
{
    return call(QStringLiteral("placeCaret"), {tag, index, offset}).toBool();
}

QString EditorSubject::elementText(const QString &tag, int index)
{
    return call(QStringLiteral("elementText"), {tag, index}).toString();
}

int EditorSubject::frameTicket()
{
    return call(QStringLiteral("frameTicket")).toInt();
}

bool EditorSubject::frameRendered(int ticket)
{
    return call(QStringLiteral("frameRendered"), {ticket}).toBool();
}

// ---- RawSubject ----------------------------------------------------------------------

namespace {

// The baseline's helpers are the adapter's operations written out in plain JavaScript,
// so that both sides do the same work in the page.
const char rawPlaceCaret[] = R"JS(
((tag, index, offset) => {
    const list = document.getElementsByTagName(tag);
    if (!list.length)
        return false;
    const block = list[Math.min(index, list.length - 1)];
    let node = block;
    while (node && node.firstChild)
        node = node.firstChild;
    const range = document.createRange();
    if (node && node.nodeType === Node.TEXT_NODE)
        range.setStart(node, Math.min(offset, node.length));
    else
        range.setStart(block, 0);
    range.collapse(true);
    const selection = document.getSelection();
    selection.removeAllRanges();
    selection.addRange(range);
    block.scrollIntoView({ block: 'center' });
    return true;
})
)JS";

const char rawFrameTicket[] = R"JS(
(() => {
    const f = window.__benchFrames || (window.__benchFrames = { taken: 0, rendered: 0 });
    const ticket = ++f.taken;
    requestAnimationFrame(() => {
        const channel = new MessageChannel();
        channel.port1.onmessage = () => {
            f.rendered = Math.max(f.rendered, ticket);
            channel.port1.close();
        };
        channel.port2.postMessage(null);
    });
    return ticket;
})()
)JS";

} // namespace

RawSubject::RawSubject()
    : m_view(std::make_unique<QWebEngineView>())
{
    m_view->resize(width, height);
    m_view->show();
    QObject::connect(m_view.get(), &QWebEngineView::loadFinished, m_view.get(),
        [this](bool ok) { m_loaded = ok; });
    m_view->setHtml(QStringLiteral("<html><head></head><body contenteditable=\"true\"></body>"
                                   "</html>"),
        QUrl(QStringLiteral("file:///")));
}

RawSubject::~RawSubject() = default;

QWidget *RawSubject::window() const
{
    return m_view.get();
}

QWidget *RawSubject::view() const
{
    return m_view.get();
}

QWebEnginePage *RawSubject::page() const
{
    return m_view->page();
}

quint32 RawSubject::world() const
{
    return QWebEngineScript::MainWorld;
}

bool RawSubject::load(const QString &html)
{
    // Encoded inside the measurement: a caller of the bare engine has to do it too.
    const QString script = QStringLiteral("((text) => { document.open(); document.write(text); "
                                          "document.close(); document.designMode = 'on'; "
                                          "return true; })(")
        + jsString(html) + QStringLiteral(")");
    bool ok = false;
    const QVariant value
        = evaluate(script, 10s + std::chrono::milliseconds(html.size() / 1000), &ok);
    return ok && value.toBool();
}

QString RawSubject::fetch(bool wholeDocument)
{
    return evaluate(wholeDocument ? QStringLiteral("document.documentElement.outerHTML")
                                  : QStringLiteral("document.body.innerHTML"),
        60s)
        .toString();
}

bool RawSubject::placeCaret(const QString &tag, int index, int offset)
{
    return evaluate(QLatin1String(rawPlaceCaret)
        + QStringLiteral("(%1, %2, %3)").arg(jsString(tag)).arg(index).arg(offset))
        .toBool();
}

QString RawSubject::elementText(const QString &tag, int index)
{
    return evaluate(QStringLiteral("((tag, index) => { const list = "
                                   "document.getElementsByTagName(tag); return index < "
                                   "list.length ? list[index].textContent : null; })(%1, %2)")
                        .arg(jsString(tag))
                        .arg(index))
        .toString();
}

int RawSubject::frameTicket()
{
    return evaluate(QLatin1String(rawFrameTicket)).toInt();
}

bool RawSubject::frameRendered(int ticket)
{
    return evaluate(QStringLiteral("(window.__benchFrames ? window.__benchFrames.rendered : 0) "
                                   ">= %1")
                        .arg(ticket))
        .toBool();
}

} // namespace VantryBench
