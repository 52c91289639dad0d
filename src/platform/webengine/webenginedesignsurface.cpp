#include "platform/webengine/webenginedesignsurface.h"

#include "platform/logging.h"
#include "platform/webengine/adapteroperations.h"
#include "platform/webengine/requestfilter.h"
#include "platform/webengine/scriptsource.h"

#include <QApplication>
#include <QChildEvent>
#include <QEventLoop>
#include <QFile>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPoint>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <QWebChannel>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>
#include <QWebEngineView>

#include <tuple>
#include <utility>

namespace Vantry::Platform {

namespace {

// Loads nothing on its own: the only navigation it allows is the blank editing document
// the surface itself asks for.
class EditingPage : public QWebEnginePage
{
public:
    using QWebEnginePage::QWebEnginePage;

    void expectOwnLoad() { m_ownLoadPending = true; }

protected:
    bool acceptNavigationRequest(const QUrl &, NavigationType, bool isMainFrame) override
    {
        if (isMainFrame && m_ownLoadPending) {
            m_ownLoadPending = false;
            return true;
        }
        return false;
    }

    QWebEnginePage *createWindow(WebWindowType) override { return nullptr; }

    void javaScriptConsoleMessage(
        JavaScriptConsoleMessageLevel, const QString &, int, const QString &) override
    { }

private:
    bool m_ownLoadPending = false;
};

QString resourceText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

// The channel's client, the adapter and its modules as one script: the page compiles and
// runs one source per document instead of fourteen, and the text is put together once per
// process. Each part runs guarded, so that one that throws does not keep the rest out. The
// view's initial empty document runs none of it: the editor's own replaces it at once.
const QString &adapterSource()
{
    static const QString source = [] {
        QString text = QStringLiteral("if (location.href !== 'about:blank') {\n");
        const auto append = [&text](const QString &path) {
            text += QStringLiteral("try {\n") + compactScript(resourceText(path))
                + QStringLiteral("\n} catch (e) { console.error('") + path
                + QStringLiteral(": ' + e); }\n");
        };
        append(QStringLiteral(":/qtwebchannel/qwebchannel.js"));
        for (const char *name : {"adapter", "texttags", "reader", "selection", "search", "elements",
                 "commands", "tables", "positioning", "marks", "find", "spelling", "resize",
                 "styles", "typingblock", "typinghost", "farblocks"})
            append(
                QLatin1String(":/vantry/webengine/") + QLatin1String(name) + QLatin1String(".js"));
        text += QStringLiteral("}\n");
        return text;
    }();
    return source;
}

QWebEngineScript adapterScript()
{
    QWebEngineScript script;
    script.setName(QStringLiteral("vantry-adapter"));
    script.setSourceCode(adapterSource());
    script.setWorldId(WebEngineDesignSurface::adapterWorld());
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setRunsOnSubFrames(false);
    return script;
}

// The keys of a press that could be a shortcut: with Ctrl, Alt or Meta, or a function
// key. Plain typing never is one, and is not looked at further.
QKeySequence shortcutKeys(const QKeyEvent *event)
{
    const int key = event->key();
    const bool modified
        = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (!modified && !(key >= Qt::Key_F1 && key <= Qt::Key_F35))
        return {};
    return QKeySequence(event->keyCombination());
}

// The blank document the surface starts with. The file URL lets documents show local
// images, as an editor of local pages must.
const char blankDocument[] = "<html><head></head><body></body></html>";

} // namespace

WebEngineDesignSurface::WebEngineDesignSurface(QWidget *parent)
    : DesignSurface(parent)
{
    m_view = new QWebEngineView(parent);
    auto *page = new EditingPage(m_view);
    m_view->setPage(page);
    m_view->setContextMenuPolicy(Qt::NoContextMenu);
    // The engine's render widget takes the keys; it comes and goes with the page's process.
    m_view->installEventFilter(this);
    for (QWidget *child : m_view->findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
        child->installEventFilter(this);

    QWebEngineSettings *settings = page->settings();
    settings->setAttribute(QWebEngineSettings::JavascriptEnabled, false);
    settings->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
    settings->setAttribute(QWebEngineSettings::JavascriptCanAccessClipboard, true);
    // The Paste command is the engine's own paste, the one Ctrl+V runs; without this the
    // engine refuses it to scripts, and only documents' scripts never run here.
    settings->setAttribute(QWebEngineSettings::JavascriptCanPaste, true);
    settings->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, true);
    settings->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    settings->setAttribute(QWebEngineSettings::PluginsEnabled, false);
    settings->setAttribute(QWebEngineSettings::AutoLoadIconsForPage, false);
    settings->setAttribute(QWebEngineSettings::FocusOnNavigationEnabled, false);
    settings->setAttribute(QWebEngineSettings::ErrorPageEnabled, false);
    settings->setAttribute(QWebEngineSettings::PdfViewerEnabled, false);
    settings->setAttribute(QWebEngineSettings::DnsPrefetchEnabled, false);
    page->setUrlRequestInterceptor(new RequestFilter(page));

    m_notifier = new SurfaceNotifier(this);
    m_channel = new QWebChannel(this);
    m_channel->registerObject(QStringLiteral("host"), m_notifier);
    page->setWebChannel(m_channel, adapterWorld());
    // Queued: a handler may call back into the page synchronously, which cannot be answered
    // while the engine is still delivering the notification.
    connect(m_notifier, &SurfaceNotifier::notified, this,
        &WebEngineDesignSurface::handleNotification, Qt::QueuedConnection);
    m_notifier->setDeliveryDone([this] {
        if (m_callDepth == 0 && !m_deferred.isEmpty())
            scheduleDeferredNotifications();
    });

    page->scripts().insert(adapterScript());

    m_bridge = std::make_unique<ScriptBridge>(page, adapterWorld());

    // The adapter starts at DOMContentLoaded, so the editing document's finished load
    // says it listens; the adapter's own word comes a channel handshake later. Queued, as
    // the notifications are: the first handler makes calls.
    connect(
        page, &QWebEnginePage::loadFinished, this,
        [this](bool ok) {
            if (ok)
                handleNotification(QStringLiteral("adapterReady"), {});
        },
        Qt::QueuedConnection);
    // The load waits for the host's turn to place and show the editor: the engine's render
    // widget, made by the load, would otherwise be resized and drawn in full once more on
    // its way to the screen.
    QTimer::singleShot(0, this, [page = QPointer<EditingPage>(page)] {
        if (!page)
            return;
        page->expectOwnLoad();
        page->setHtml(QString::fromLatin1(blankDocument), QUrl(QStringLiteral("file:///")));
    });
}

WebEngineDesignSurface::~WebEngineDesignSurface() = default;

quint32 WebEngineDesignSurface::adapterWorld()
{
    return QWebEngineScript::ApplicationWorld;
}

QWebEnginePage *WebEngineDesignSurface::page() const
{
    return m_view->page();
}

QWidget *WebEngineDesignSurface::widget() const
{
    return m_view;
}

// The render widget accepts the shortcut override of every key it has an editing binding
// for, so that Qt's shortcuts never see those keys. The editor's own come first: their
// override is left unaccepted. A press that still arrives found no shortcut on: it goes to
// the engine when its binding does what the command would, else nowhere but to a beep.
bool WebEngineDesignSurface::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_view) {
        if (event->type() == QEvent::ChildAdded) {
            QObject *child = static_cast<QChildEvent *>(event)->child();
            if (child->isWidgetType())
                child->installEventFilter(this);
        }
        return false;
    }
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::InputMethod:
    case QEvent::Drop:
        // The page may change under the user's hand: what it last reported is old news.
        ++m_inputSerial;
        break;
    default:
        break;
    }
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return false;
    auto *key = static_cast<QKeyEvent *>(event);
    const QKeySequence keys = shortcutKeys(key);
    if (keys.isEmpty())
        return false;
    const KeyClaim claim = shortcutClaim(keys);
    if (claim == KeyClaim::Engine)
        return false;
    if (event->type() == QEvent::ShortcutOverride) {
        key->ignore();
        return true;
    }
    if (claim == KeyClaim::ApplicationThenEngine)
        return false;
    key->accept();
    QApplication::beep();
    return true;
}

void WebEngineDesignSurface::handleNotification(const QString &kind, const QVariantList &args)
{
    // A handler may call into the page, and a call lets notifications through while it
    // waits; delivering them then would nest handlers inside handlers without bound. They
    // wait until the outermost call has returned, in their order. Events pumped while the
    // channel still delivers (a host waiting in a slot) bring them here too early as well:
    // no call could be answered then.
    if (m_callDepth > 0 || m_notifier->delivering()) {
        m_deferred.append({kind, args});
        return;
    }
    deliverNotification(kind, args);
}

void WebEngineDesignSurface::scheduleDeferredNotifications()
{
    QMetaObject::invokeMethod(
        this, &WebEngineDesignSurface::flushDeferredNotifications, Qt::QueuedConnection);
}

void WebEngineDesignSurface::flushDeferredNotifications()
{
    while (m_callDepth == 0 && !m_notifier->delivering() && !m_deferred.isEmpty()) {
        const auto [kind, args] = m_deferred.takeFirst();
        deliverNotification(kind, args);
    }
}

void WebEngineDesignSurface::deliverNotification(const QString &kind, const QVariantList &args)
{
    auto number = [&args](int i) { return i < args.size() ? args.at(i).toDouble() : 0.0; };
    auto integer = [&args](int i) { return i < args.size() ? args.at(i).toInt() : 0; };

    if (kind == QLatin1String("adapterReady")) {
        // The blank document is loaded and the adapter is listening: the surface is ready.
        // Both the load and the adapter say so; the first of them counts.
        if (m_ready)
            return;
        m_ready = true;
        if (!m_earlySettings.isEmpty())
            post(AdapterOperation::configure, {std::exchange(m_earlySettings, {})});
        Q_EMIT documentComplete();
    } else if (kind == QLatin1String("displayChanged")) {
        takeReport(args.value(1), args.value(0).toULongLong(), m_inputSerial);
        Q_EMIT displayChanged();
    } else if (kind == QLatin1String("contentChanged")) {
        Q_EMIT contentChanged();
    } else if (kind == QLatin1String("keyDown")) {
        Q_EMIT keyDown(integer(0), integer(1));
    } else if (kind == QLatin1String("mouseDown")) {
        Q_EMIT mouseDown(integer(0), integer(1), number(2), number(3));
    } else if (kind == QLatin1String("mouseMove")) {
        Q_EMIT mouseMove(integer(0), integer(1), number(2), number(3));
    } else if (kind == QLatin1String("mouseUp")) {
        Q_EMIT mouseUp(integer(0), integer(1), number(2), number(3));
    } else if (kind == QLatin1String("click")) {
        Q_EMIT clicked();
    } else if (kind == QLatin1String("doubleClick")) {
        Q_EMIT doubleClicked();
    } else if (kind == QLatin1String("contextMenu")) {
        const QPoint position(integer(0), integer(1));
        takeMenuRequest(position, args.value(2).toULongLong(), args.value(3).toMap());
        Q_EMIT contextMenuRequested(position);
    } else if (kind == QLatin1String("viewScrolled")) {
        Q_EMIT viewScrolled();
    }
}

void SurfaceNotifier::notify(const QString &kind, const QVariantList &args)
{
    ++m_delivering;
    Q_EMIT notified(kind, args);
    if (--m_delivering == 0 && m_deliveryDone)
        m_deliveryDone();
}

ScriptBridge::Result WebEngineDesignSurface::call(
    const QString &operation, const QVariantList &arguments, std::chrono::milliseconds timeout)
{
    // Nothing in the page could answer yet.
    if (!m_ready) {
        const QString error = QStringLiteral("The editing surface is not ready yet");
        setLastError(error);
        return {false, {}, error};
    }
    if (m_notifier->delivering()) {
        // Waiting here would only ever end at the bound, with the window frozen until then.
        ScriptBridge::Result refused{false, {},
            QStringLiteral("The editing surface cannot answer %1 while it delivers a "
                           "notification")
                .arg(operation)};
        qCWarning(lcSurface).noquote() << refused.error;
        setLastError(refused.error);
        return refused;
    }
    QVariantList released;
    released.swap(*m_releasedRanges);
    ++m_callDepth;
    ScriptBridge::Result result
        = m_bridge->call(operation, arguments, timeout, released, ++m_callSerial);
    --m_callDepth;
    setLastError(result.ok ? QString() : result.error);
    if (m_callDepth == 0 && !m_deferred.isEmpty())
        scheduleDeferredNotifications();
    return result;
}

QVariant WebEngineDesignSurface::callValue(
    const QString &operation, const QVariantList &arguments, std::chrono::milliseconds timeout)
{
    return call(operation, arguments, timeout).value;
}

bool WebEngineDesignSurface::callBool(const QString &operation, const QVariantList &arguments)
{
    const ScriptBridge::Result result = call(operation, arguments);
    return result.ok && result.value.toBool();
}

namespace {

class RangeLease
{
public:
    RangeLease(int id, std::weak_ptr<QVariantList> released)
        : m_id(id)
        , m_released(std::move(released))
    { }
    RangeLease(const RangeLease &) = delete;
    RangeLease &operator=(const RangeLease &) = delete;

    ~RangeLease()
    {
        if (const auto list = m_released.lock())
            list->append(m_id);
    }

private:
    int m_id;
    std::weak_ptr<QVariantList> m_released;
};

} // namespace

TextRange WebEngineDesignSurface::adoptRange(const QVariant &value)
{
    TextRange range = TextRange::fromVariant(value);
    if (!range.isNull())
        range.lease = std::make_shared<const RangeLease>(range.id, m_releasedRanges);
    return range;
}

QList<Element> WebEngineDesignSurface::elementList(const QVariant &value) const
{
    QList<Element> elements;
    const QVariantList list = value.toList();
    elements.reserve(list.size());
    for (const QVariant &item : list)
        elements.append(Element::fromVariant(item));
    return elements;
}

namespace {

// Printing is asynchronous in the engine; the surface's calls are not. A job that never
// reports back must not hang the caller.
constexpr int printTimeoutMs = 120000;

template <typename Signal, typename Start>
bool waitForPrint(QWebEngineView *view, Signal finished, Start start)
{
    QEventLoop loop;
    bool done = false;
    bool success = false;
    const auto connection = QObject::connect(view, finished, &loop, [&](auto... args) {
        done = true;
        success = std::get<sizeof...(args) - 1>(std::make_tuple(args...));
        loop.quit();
    });
    QTimer::singleShot(printTimeoutMs, &loop, &QEventLoop::quit);
    start();
    if (!done)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    QObject::disconnect(connection);
    return done && success;
}

} // namespace

bool WebEngineDesignSurface::print(QPrinter *printer)
{
    if (!m_ready || !printer) {
        setLastError(QStringLiteral("print: no document or printer"));
        return false;
    }
    const bool ok = waitForPrint(
        m_view, &QWebEngineView::printFinished, [this, printer] { m_view->print(printer); });
    setLastError(ok ? QString() : QStringLiteral("print: the engine did not finish the job"));
    return ok;
}

bool WebEngineDesignSurface::printToPdf(const QString &path)
{
    if (!m_ready || path.isEmpty()) {
        setLastError(QStringLiteral("printToPdf: no document or path"));
        return false;
    }
    const bool ok = waitForPrint(
        m_view, &QWebEngineView::pdfPrintingFinished, [this, &path] { m_view->printToPdf(path); });
    setLastError(ok ? QString() : QStringLiteral("printToPdf: the engine did not write the file"));
    return ok;
}

bool WebEngineDesignSurface::keepUntilReady(const QString &name, const QVariant &value)
{
    m_earlySettings.insert(name, value);
    setLastError(QString());
    return true;
}

bool WebEngineDesignSurface::setEditable(bool editable)
{
    if (!m_ready)
        return keepUntilReady(QStringLiteral("editable"), editable);
    return callBool(AdapterOperation::setEditable, {editable});
}

bool WebEngineDesignSurface::isEditable()
{
    if (!m_ready)
        return m_earlySettings.value(QStringLiteral("editable"), true).toBool();
    return callBool(AdapterOperation::isEditable);
}

bool WebEngineDesignSurface::setScrollBarsVisible(bool visible)
{
    if (!m_ready)
        return keepUntilReady(QStringLiteral("scrollBarsVisible"), visible);
    return callBool(AdapterOperation::setScrollBarsVisible, {visible});
}

bool WebEngineDesignSurface::setBaseUrl(const QString &url)
{
    m_baseUrl = url;
    if (!m_ready)
        return keepUntilReady(QStringLiteral("baseUrl"), url);
    return callBool(AdapterOperation::setBaseUrl, {url});
}

bool WebEngineDesignSurface::setDocumentAddress(const QString &url)
{
    return callBool(AdapterOperation::setDocumentAddress, {url});
}

bool WebEngineDesignSurface::refresh()
{
    m_view->update();
    return callBool(AdapterOperation::refresh);
}

bool WebEngineDesignSurface::useElementFormatting()
{
    post(AdapterOperation::execCommand, {QStringLiteral("styleWithCSS"), false, false});
    return true;
}

// For operations that answer nothing worth a wait; the page runs them before any call
// sent after them, so that no later call can miss their effect.
void WebEngineDesignSurface::post(const QString &operation, const QVariantList &arguments)
{
    page()->runJavaScript(ScriptBridge::script(operation, arguments), adapterWorld());
}

bool WebEngineDesignSurface::focusDocument()
{
    m_view->setFocus(Qt::OtherFocusReason);
    // Sent without waiting: asked while the engine still handles a click, the page's focus
    // call is not answered before the bridge gives up, which froze the editor for the whole
    // bound after every click. Focusing has nothing to answer anyway.
    page()->runJavaScript(
        ScriptBridge::script(AdapterOperation::focus, {}, {}, ++m_callSerial), adapterWorld());
    return true;
}

namespace {

bool isDisplaySwitch(const QString &name)
{
    return name == QLatin1String("borders") || name == QLatin1String("details")
        || name == QLatin1String("snapToGrid");
}

} // namespace

bool WebEngineDesignSurface::display(const QString &name)
{
    if (!m_ready)
        return m_earlySettings.value(QStringLiteral("display")).toMap().value(name).toBool();
    return callBool(AdapterOperation::display, {name});
}

bool WebEngineDesignSurface::setDisplay(const QString &name, bool on)
{
    if (!m_ready) {
        if (!isDisplaySwitch(name)) {
            setLastError(QStringLiteral("Unknown display switch ") + name);
            return false;
        }
        QVariantMap switches = m_earlySettings.value(QStringLiteral("display")).toMap();
        switches.insert(name, on);
        return keepUntilReady(QStringLiteral("display"), switches);
    }
    return callBool(AdapterOperation::setDisplay, {name, on});
}

DesignSurface *createDesignSurface(QWidget *parent)
{
    return new WebEngineDesignSurface(parent);
}

} // namespace Vantry::Platform
