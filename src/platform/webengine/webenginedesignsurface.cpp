#include "platform/webengine/webenginedesignsurface.h"

#include "platform/webengine/requestfilter.h"

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

QWebEngineScript adapterScript(const QString &name, const QString &source)
{
    QWebEngineScript script;
    script.setName(name);
    script.setSourceCode(source);
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

    page->scripts().insert(adapterScript(QStringLiteral("vantry-webchannel"),
        resourceText(QStringLiteral(":/qtwebchannel/qwebchannel.js"))));
    page->scripts().insert(adapterScript(QStringLiteral("vantry-adapter"),
        resourceText(QStringLiteral(":/vantry/webengine/adapter.js"))));
    page->scripts().insert(adapterScript(QStringLiteral("vantry-ranges"),
        resourceText(QStringLiteral(":/vantry/webengine/ranges.js"))));
    for (const char *name : {"commands", "tables", "positioning", "marks", "find", "styles"}) {
        const QString file = QLatin1String(name);
        page->scripts().insert(adapterScript(QLatin1String("vantry-") + file,
            resourceText(QLatin1String(":/vantry/webengine/") + file + QLatin1String(".js"))));
    }

    m_bridge = std::make_unique<ScriptBridge>(page, adapterWorld());

    page->expectOwnLoad();
    page->setHtml(QString::fromLatin1(blankDocument), QUrl(QStringLiteral("file:///")));
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
        m_ready = true;
        if (!m_earlySettings.isEmpty())
            call(QStringLiteral("configure"), {std::exchange(m_earlySettings, {})});
        Q_EMIT documentComplete();
    } else if (kind == QLatin1String("displayChanged")) {
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
        Q_EMIT contextMenuRequested(QPoint(integer(0), integer(1)));
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
        setLastError(refused.error);
        return refused;
    }
    QVariantList released;
    released.swap(*m_releasedRanges);
    ++m_callDepth;
    ScriptBridge::Result result = m_bridge->call(operation, arguments, timeout, released);
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

bool WebEngineDesignSurface::setDocumentHTML(const QString &html)
{
    // Big documents take the parser a while; the bound grows with the text.
    const auto timeout
        = ScriptBridge::defaultTimeout + std::chrono::milliseconds(html.size() / 1000);
    const bool ok = call(QStringLiteral("load"), {html}, timeout).ok;
    if (ok)
        Q_EMIT documentComplete();
    return ok;
}

QString WebEngineDesignSurface::documentHTML()
{
    return callValue(QStringLiteral("documentHTML"), {}, std::chrono::seconds(60)).toString();
}

QString WebEngineDesignSurface::bodyInnerHTML()
{
    return callValue(QStringLiteral("bodyInnerHTML"), {}, std::chrono::seconds(60)).toString();
}

QString WebEngineDesignSurface::bodyInnerText()
{
    return callValue(QStringLiteral("bodyInnerText"), {}, std::chrono::seconds(60)).toString();
}

bool WebEngineDesignSurface::setBodyInnerHTML(const QString &html)
{
    const auto timeout
        = ScriptBridge::defaultTimeout + std::chrono::milliseconds(html.size() / 1000);
    return call(QStringLiteral("setBodyInnerHTML"), {html}, timeout).ok;
}

bool WebEngineDesignSurface::editBodyInnerHTML(const QString &html)
{
    const auto timeout
        = ScriptBridge::defaultTimeout + std::chrono::milliseconds(html.size() / 1000);
    return call(QStringLiteral("editBodyInnerHTML"), {html}, timeout).ok;
}

QString WebEngineDesignSurface::title()
{
    return callValue(QStringLiteral("title")).toString();
}

bool WebEngineDesignSurface::setTitle(const QString &title)
{
    return callBool(QStringLiteral("setTitle"), {title});
}

QList<Element> WebEngineDesignSurface::elementsByName(const QString &name)
{
    return elementList(callValue(QStringLiteral("elementsByName"), {name}));
}

QList<Element> WebEngineDesignSurface::elementsByTagName(const QString &tagName)
{
    return elementList(callValue(QStringLiteral("elementsByTagName"), {tagName}));
}

Element WebEngineDesignSurface::head()
{
    return Element::fromVariant(callValue(QStringLiteral("head")));
}

Element WebEngineDesignSurface::body()
{
    return Element::fromVariant(callValue(QStringLiteral("body")));
}

Element WebEngineDesignSurface::createElement(const QString &tagName)
{
    return Element::fromVariant(callValue(QStringLiteral("createElement"), {tagName}));
}

bool WebEngineDesignSurface::appendChild(const Element &parent, const Element &child)
{
    return callBool(QStringLiteral("appendChild"), {parent.toVariant(), child.toVariant()});
}

QString WebEngineDesignSurface::tagName(const Element &element)
{
    return callValue(QStringLiteral("tagName"), {element.toVariant()}).toString();
}

QString WebEngineDesignSurface::attribute(const Element &element, const QString &name)
{
    return callValue(QStringLiteral("attribute"), {element.toVariant(), name}).toString();
}

bool WebEngineDesignSurface::setAttribute(
    const Element &element, const QString &name, const QString &value)
{
    return callBool(QStringLiteral("setAttribute"), {element.toVariant(), name, value});
}

QString WebEngineDesignSurface::outerHTML(const Element &element)
{
    return callValue(QStringLiteral("outerHTML"), {element.toVariant()}).toString();
}

bool WebEngineDesignSurface::setElementText(const Element &element, const QString &text)
{
    return callBool(QStringLiteral("setText"), {element.toVariant(), text});
}

QRectF WebEngineDesignSurface::boundingRect(const Element &element)
{
    const QVariantList r
        = callValue(QStringLiteral("boundingRect"), {element.toVariant()}).toList();
    if (r.size() != 4)
        return {};
    return {r.at(0).toDouble(), r.at(1).toDouble(), r.at(2).toDouble(), r.at(3).toDouble()};
}

QStringList WebEngineDesignSurface::styleSheetHrefs()
{
    return callValue(QStringLiteral("styleSheetHrefs")).toStringList();
}

QPoint WebEngineDesignSurface::scrollPosition()
{
    const QVariantList position = callValue(QStringLiteral("scrollPosition")).toList();
    if (position.size() != 2)
        return {};
    return {qRound(position.at(0).toDouble()), qRound(position.at(1).toDouble())};
}

bool WebEngineDesignSurface::setScrollLeft(int left)
{
    return callBool(QStringLiteral("setScrollPosition"), {left, QVariant::fromValue(nullptr)});
}

bool WebEngineDesignSurface::setScrollTop(int top)
{
    return callBool(QStringLiteral("setScrollPosition"), {QVariant::fromValue(nullptr), top});
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
    return callBool(QStringLiteral("setEditable"), {editable});
}

bool WebEngineDesignSurface::isEditable()
{
    if (!m_ready)
        return m_earlySettings.value(QStringLiteral("editable"), true).toBool();
    return callBool(QStringLiteral("isEditable"));
}

bool WebEngineDesignSurface::setScrollBarsVisible(bool visible)
{
    if (!m_ready)
        return keepUntilReady(QStringLiteral("scrollBarsVisible"), visible);
    return callBool(QStringLiteral("setScrollBarsVisible"), {visible});
}

bool WebEngineDesignSurface::setBaseUrl(const QString &url)
{
    m_baseUrl = url;
    if (!m_ready)
        return keepUntilReady(QStringLiteral("baseUrl"), url);
    return callBool(QStringLiteral("setBaseUrl"), {url});
}

bool WebEngineDesignSurface::setDocumentAddress(const QString &url)
{
    return callBool(QStringLiteral("setDocumentAddress"), {url});
}

bool WebEngineDesignSurface::refresh()
{
    m_view->update();
    return callBool(QStringLiteral("refresh"));
}

bool WebEngineDesignSurface::useElementFormatting()
{
    return call(QStringLiteral("execCommand"), {QStringLiteral("styleWithCSS"), false, false}).ok;
}

bool WebEngineDesignSurface::focusDocument()
{
    m_view->setFocus(Qt::OtherFocusReason);
    // Sent without waiting: asked while the engine still handles a click, the page's focus
    // call is not answered before the bridge gives up, which froze the editor for the whole
    // bound after every click. Focusing has nothing to answer anyway.
    page()->runJavaScript(ScriptBridge::script(QStringLiteral("focus"), {}), adapterWorld());
    return true;
}

Element WebEngineDesignSurface::parentElement(const Element &element)
{
    return Element::fromVariant(callValue(QStringLiteral("parentElement"), {element.toVariant()}));
}

QList<DesignSurface::PathStep> WebEngineDesignSurface::elementPath(const Element &element)
{
    QList<PathStep> path;
    const QVariantList steps
        = callValue(QStringLiteral("elementPath"), {element.toVariant()}).toList();
    path.reserve(steps.size());
    for (const QVariant &step : steps) {
        const QVariantList pair = step.toList();
        if (pair.size() == 2)
            path.append({Element::fromVariant(pair.at(0)), pair.at(1).toString()});
    }
    return path;
}

QString WebEngineDesignSurface::innerHTML(const Element &element)
{
    return callValue(QStringLiteral("innerHTML"), {element.toVariant()}).toString();
}

bool WebEngineDesignSurface::setInnerHTML(const Element &element, const QString &html)
{
    return callBool(QStringLiteral("setInnerHTML"), {element.toVariant(), html});
}

bool WebEngineDesignSurface::setOuterHTML(const Element &element, const QString &html)
{
    return callBool(QStringLiteral("setOuterHTML"), {element.toVariant(), html});
}

bool WebEngineDesignSurface::removeAttribute(const Element &element, const QString &name)
{
    return callBool(QStringLiteral("removeAttribute"), {element.toVariant(), name});
}

QString WebEngineDesignSurface::styleProperty(const Element &element, const QString &name)
{
    return callValue(QStringLiteral("styleProperty"), {element.toVariant(), name}).toString();
}

bool WebEngineDesignSurface::setStyleProperty(
    const Element &element, const QString &name, const QString &value)
{
    return callBool(QStringLiteral("setStyleProperty"), {element.toVariant(), name, value});
}

DesignSurface::ElementFields WebEngineDesignSurface::elementFields(
    const Element &element, const QStringList &attributes, const QStringList &styles)
{
    const QVariantMap answer
        = callValue(QStringLiteral("elementFields"), {element.toVariant(), attributes, styles})
              .toMap();
    ElementFields fields;
    // An absent attribute comes back as null.
    for (const QVariant &value : answer.value(QStringLiteral("attributes")).toList()) {
        fields.attributes.append(
            value.isNull() ? std::nullopt : std::optional<QString>(value.toString()));
    }
    fields.styles = answer.value(QStringLiteral("styles")).toStringList();
    return fields;
}

bool WebEngineDesignSurface::editElementFields(
    const Element &element, const QList<FieldEdit> &edits)
{
    QVariantList list;
    for (const FieldEdit &edit : edits) {
        const QString kind = edit.style ? QStringLiteral("style")
            : edit.value                ? QStringLiteral("set")
                                        : QStringLiteral("remove");
        list.append(QVariant(QVariantList{kind, edit.name, edit.value.value_or(QString())}));
    }
    return callBool(QStringLiteral("editElementFields"), {element.toVariant(), list});
}

namespace {

QList<std::pair<QString, QString>> pairs(const QVariant &list)
{
    QList<std::pair<QString, QString>> out;
    for (const QVariant &item : list.toList()) {
        const QVariantList pair = item.toList();
        out.append({pair.value(0).toString(), pair.value(1).toString()});
    }
    return out;
}

} // namespace

QList<StyleSheetInfo> WebEngineDesignSurface::styleSheets()
{
    QList<StyleSheetInfo> sheets;
    for (const QVariant &item : callValue(QStringLiteral("styleSheets")).toList()) {
        const QVariantList sheet = item.toList();
        StyleSheetInfo info;
        info.href = sheet.value(0).toString();
        info.index = int(sheets.size());
        info.rulesReadable = sheet.value(1).toBool();
        for (const auto &[selector, cssText] : pairs(sheet.value(2)))
            info.rules.append({selector, cssText});
        sheets.append(info);
    }
    return sheets;
}

bool WebEngineDesignSurface::addStyleSheet(const QString &href)
{
    return callBool(QStringLiteral("addStyleSheet"), {href});
}

DesignSurface::AttributeList WebEngineDesignSurface::elementAttributes(const Element &element)
{
    const QVariantMap answer
        = callValue(QStringLiteral("elementAttributes"), {element.toVariant()}).toMap();
    return {answer.value(QStringLiteral("tag")).toString(),
        pairs(answer.value(QStringLiteral("attributes")))};
}

QList<std::pair<QString, QString>> WebEngineDesignSurface::objectParams(const Element &object)
{
    return pairs(callValue(QStringLiteral("objectParams"), {object.toVariant()}));
}

bool WebEngineDesignSurface::setObjectParams(
    const Element &object, const QList<std::pair<QString, QString>> &params)
{
    QVariantList list;
    for (const auto &[name, value] : params)
        list.append(QVariant(QVariantList{name, value}));
    return callBool(QStringLiteral("setObjectParams"), {object.toVariant(), list});
}

TableParts WebEngineDesignSurface::tableParts(const Element &table)
{
    const QVariantMap answer = callValue(QStringLiteral("tableParts"), {table.toVariant()}).toMap();
    const auto count
        = [&answer](const char *name) { return answer.value(QLatin1String(name)).toInt(); };
    return {count("rows"), count("columns"), count("cells"), count("selectedRows"),
        count("selectedColumns"), count("selectedCells")};
}

QList<Element> WebEngineDesignSurface::images()
{
    return elementList(callValue(QStringLiteral("imageElements")));
}

QList<Element> WebEngineDesignSurface::scripts()
{
    return elementList(callValue(QStringLiteral("scriptElements")));
}

SelectionType WebEngineDesignSurface::selectionType()
{
    const QString type = callValue(QStringLiteral("selectionType")).toString();
    if (type == QLatin1String("Control"))
        return SelectionType::Control;
    if (type == QLatin1String("Text"))
        return SelectionType::Text;
    return SelectionType::None;
}

TextRange WebEngineDesignSurface::selectionRange()
{
    return adoptRange(callValue(QStringLiteral("selectionRange")));
}

bool WebEngineDesignSurface::clearSelection()
{
    return callBool(QStringLiteral("selectionClear"));
}

bool WebEngineDesignSurface::selectElement(const Element &element)
{
    return callBool(QStringLiteral("selectElement"), {element.toVariant()});
}

TextRange WebEngineDesignSurface::bodyRange()
{
    return adoptRange(callValue(QStringLiteral("bodyRange")));
}

bool WebEngineDesignSurface::isControlRange(const TextRange &range)
{
    return callBool(QStringLiteral("rangeIsControl"), {range.toVariant()});
}

int WebEngineDesignSurface::controlCount(const TextRange &range)
{
    return callValue(QStringLiteral("rangeLength"), {range.toVariant()}).toInt();
}

Element WebEngineDesignSurface::controlItem(const TextRange &range, int index)
{
    return Element::fromVariant(callValue(QStringLiteral("rangeItem"), {range.toVariant(), index}));
}

Element WebEngineDesignSurface::rangeParentElement(const TextRange &range)
{
    return Element::fromVariant(
        callValue(QStringLiteral("rangeParentElement"), {range.toVariant()}));
}

QString WebEngineDesignSurface::rangeText(const TextRange &range)
{
    return callValue(QStringLiteral("rangeText"), {range.toVariant()}).toString();
}

bool WebEngineDesignSurface::setRangeText(const TextRange &range, const QString &text)
{
    return callBool(QStringLiteral("rangeSetText"), {range.toVariant(), text});
}

QString WebEngineDesignSurface::rangeHtmlText(const TextRange &range)
{
    return callValue(QStringLiteral("rangeHtmlText"), {range.toVariant()}).toString();
}

bool WebEngineDesignSurface::pasteHTML(const TextRange &range, const QString &html)
{
    return callBool(QStringLiteral("rangePasteHTML"), {range.toVariant(), html});
}

int WebEngineDesignSurface::moveBy(
    const QString &operation, const TextRange &range, TextUnit unit, int count)
{
    return callValue(operation, {range.toVariant(), textUnitName(unit), count}).toInt();
}

int WebEngineDesignSurface::moveRange(const TextRange &range, TextUnit unit, int count)
{
    return moveBy(QStringLiteral("rangeMove"), range, unit, count);
}

int WebEngineDesignSurface::moveRangeStart(const TextRange &range, TextUnit unit, int count)
{
    return moveBy(QStringLiteral("rangeMoveStart"), range, unit, count);
}

int WebEngineDesignSurface::moveRangeEnd(const TextRange &range, TextUnit unit, int count)
{
    return moveBy(QStringLiteral("rangeMoveEnd"), range, unit, count);
}

bool WebEngineDesignSurface::collapseRange(const TextRange &range, bool toStart)
{
    return callBool(QStringLiteral("rangeCollapse"), {range.toVariant(), toStart});
}

TextRange WebEngineDesignSurface::duplicateRange(const TextRange &range)
{
    return adoptRange(callValue(QStringLiteral("rangeDuplicate"), {range.toVariant()}));
}

QString WebEngineDesignSurface::rangeBookmark(const TextRange &range)
{
    return callValue(QStringLiteral("rangeBookmark"), {range.toVariant()}).toString();
}

bool WebEngineDesignSurface::moveRangeToBookmark(const TextRange &range, const QString &bookmark)
{
    return callBool(QStringLiteral("rangeMoveToBookmark"), {range.toVariant(), bookmark});
}

bool WebEngineDesignSurface::rangeInRange(const TextRange &outer, const TextRange &inner)
{
    return callBool(QStringLiteral("rangeInRange"), {outer.toVariant(), inner.toVariant()});
}

bool WebEngineDesignSurface::rangesEqual(const TextRange &a, const TextRange &b)
{
    return callBool(QStringLiteral("rangeIsEqual"), {a.toVariant(), b.toVariant()});
}

bool WebEngineDesignSurface::findText(const TextRange &range, const QString &text)
{
    return callBool(QStringLiteral("rangeFindText"), {range.toVariant(), text});
}

bool WebEngineDesignSurface::selectRange(const TextRange &range)
{
    return callBool(QStringLiteral("rangeSelect"), {range.toVariant()});
}

DesignSurface::ReplaceAllResult WebEngineDesignSurface::replaceAll(
    ReplaceScope scope, const QString &find, const QString &replacement)
{
    // The adapter bounds its own loop well below this.
    const QVariantMap answer = callValue(QStringLiteral("replaceAll"),
        {scope == ReplaceScope::Selection, find, replacement}, std::chrono::seconds(60))
                                   .toMap();
    ReplaceAllResult result;
    result.found = answer.value(QStringLiteral("found")).toBool();
    result.controlSelected = answer.value(QStringLiteral("control")).toBool();
    result.replaced = answer.value(QStringLiteral("replaced")).toInt();
    result.searchRange = adoptRange(answer.value(QStringLiteral("search")));
    result.selectionCopy = adoptRange(answer.value(QStringLiteral("copy")));
    result.bookmark = answer.value(QStringLiteral("bookmark")).toString();
    return result;
}

bool WebEngineDesignSurface::execCommand(
    int commandId, int option, const QVariant &argument, QVariant *result)
{
    // Commands that prompt the user open our own dialogs, never the engine's.
    if (option == OptionPromptUser || option == OptionShowHelp) {
        setLastError(QStringLiteral("Command %1 has no dialog of its own").arg(commandId));
        return false;
    }
    const ScriptBridge::Result answer
        = call(QStringLiteral("commandExec"), {commandId, option, argument});
    if (answer.ok && result)
        *result = answer.value;
    return answer.ok;
}

namespace {

// Reads the adapter's status answer; false when it does not match the question.
bool readStatus(const QVariant &value, const QList<int> &commandIds, QHash<int, int> &status,
    QHash<int, QVariant> *values)
{
    const QVariantMap answer = value.toMap();
    const QVariantList states = answer.value(QStringLiteral("states")).toList();
    if (states.size() != commandIds.size())
        return false;
    for (qsizetype i = 0; i < commandIds.size(); ++i)
        status.insert(commandIds.at(i), states.at(i).toInt());
    if (values) {
        const QVariantMap read = answer.value(QStringLiteral("values")).toMap();
        for (auto it = read.cbegin(); it != read.cend(); ++it)
            values->insert(it.key().toInt(), it.value());
    }
    return true;
}

QHash<int, int> unsupported(const QList<int> &commandIds)
{
    QHash<int, int> status;
    for (int id : commandIds)
        status.insert(id, DesignSurface::StatusNotSupported);
    return status;
}

QVariantList idList(const QList<int> &commandIds)
{
    QVariantList ids;
    ids.reserve(commandIds.size());
    for (int id : commandIds)
        ids.append(id);
    return ids;
}

const QString statusMismatch = QStringLiteral("The status answer does not match the question");

} // namespace

QHash<int, int> WebEngineDesignSurface::queryStatus(
    const QList<int> &commandIds, QHash<int, QVariant> *values)
{
    QHash<int, int> status = unsupported(commandIds);
    const ScriptBridge::Result answer = call(QStringLiteral("commandStatus"),
        QVariantList{QVariant(idList(commandIds)), values != nullptr});
    if (answer.ok && !readStatus(answer.value, commandIds, status, values))
        setLastError(statusMismatch);
    return status;
}

void WebEngineDesignSurface::requestStatus(const QList<int> &commandIds, StatusAnswer done)
{
    if (!m_ready) {
        done(false, unsupported(commandIds), {});
        return;
    }
    QVariantList released;
    released.swap(*m_releasedRanges);
    const QPointer<WebEngineDesignSurface> self(this);
    m_bridge->callLater(QStringLiteral("commandStatus"), {QVariant(idList(commandIds)), true},
        released, [self, commandIds, done = std::move(done)](const ScriptBridge::Result &answer) {
            if (!self)
                return;
            QHash<int, int> status = unsupported(commandIds);
            QHash<int, QVariant> values;
            const bool answered
                = answer.ok && readStatus(answer.value, commandIds, status, &values);
            done(answered, status, values);
        });
}

bool WebEngineDesignSurface::findNext(const QString &text, const SearchOptions &options)
{
    return callBool(QStringLiteral("findNext"),
        {text, options.matchCase, options.wholeWord, options.backwards});
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
    return callBool(QStringLiteral("display"), {name});
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
    return callBool(QStringLiteral("setDisplay"), {name, on});
}

DesignSurface *createDesignSurface(QWidget *parent)
{
    return new WebEngineDesignSurface(parent);
}

} // namespace Vantry::Platform
