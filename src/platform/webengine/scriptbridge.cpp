#include "platform/webengine/scriptbridge.h"

#include "platform/logging.h"
#include "platform/webengine/adapteroperations.h"

#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPointer>
#include <QTimer>
#include <QWebEnginePage>

#include <memory>

namespace Vantry::Platform {

namespace {

struct PendingCall
{
    bool done = false;
    QVariant value;
    QEventLoop *loop = nullptr;
};

ScriptBridge::Result failed(const QString &operation, const QString &error)
{
    qCDebug(lcBridge).noquote() << operation << QStringLiteral("failed:") << error;
    return {false, {}, error};
}

ScriptBridge::Result resultOf(const QString &operation, const QVariant &value)
{
    const QVariantMap answer = value.toMap();
    if (answer.contains(QStringLiteral("e")))
        return failed(operation, answer.value(QStringLiteral("e")).toString());
    if (!answer.contains(QStringLiteral("r"))) {
        qCWarning(lcBridge).noquote() << operation << QStringLiteral("came back without an answer");
        return {
            false, {}, QStringLiteral("The editing surface gave no answer to %1").arg(operation)};
    }
    return {true, answer.value(QStringLiteral("r")), {}};
}

} // namespace

ScriptBridge::ScriptBridge(QWebEnginePage *page, quint32 worldId)
    : m_page(page)
    , m_worldId(worldId)
{ }

namespace {

QString jsonList(const QVariantList &values)
{
    return QString::fromUtf8(
        QJsonDocument(QJsonArray::fromVariantList(values)).toJson(QJsonDocument::Compact));
}

} // namespace

QString ScriptBridge::script(const QString &operation, const QVariantList &arguments,
    const QVariantList &released, quint64 serial)
{
    QString invoke = QStringLiteral("window.__vantry.invoke(\"") + operation
        + QStringLiteral("\", ") + jsonList(arguments);
    if (serial)
        invoke += QStringLiteral(", ") + QString::number(serial);
    invoke += QLatin1Char(')');
    if (!released.isEmpty())
        invoke = QStringLiteral("(window.__vantry.invoke(\"") + AdapterOperation::releaseRanges
            + QStringLiteral("\", [") + jsonList(released) + QStringLiteral("]), ") + invoke
            + QLatin1Char(')');
    return QStringLiteral("window.__vantry ? ") + invoke
        + QStringLiteral(" : {e: \"The editing adapter is not loaded\"}");
}

ScriptBridge::Result ScriptBridge::call(const QString &operation, const QVariantList &arguments,
    std::chrono::milliseconds timeout, const QVariantList &released, quint64 serial) const
{
    if (!m_page)
        return failed(operation, QStringLiteral("No page"));

    // Shared with the callback, which may outlive this call when the engine answers late.
    auto pending = std::make_shared<PendingCall>();
    m_page->runJavaScript(script(operation, arguments, released, serial), m_worldId,
        [pending](const QVariant &value) {
            pending->done = true;
            pending->value = value;
            if (pending->loop)
                pending->loop->quit();
        });

    if (!pending->done) {
        QEventLoop loop;
        QTimer timer;
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
        timer.start(timeout);
        pending->loop = &loop;
        loop.exec(QEventLoop::ExcludeUserInputEvents);
        pending->loop = nullptr;
    }

    if (!pending->done) {
        qCWarning(lcBridge).noquote()
            << operation << QStringLiteral("timed out after") << timeout.count() << "ms";
        return {false, {},
            QStringLiteral("The editing surface did not answer %1 in time").arg(operation)};
    }
    return resultOf(operation, pending->value);
}

void ScriptBridge::callLater(const QString &operation, const QVariantList &arguments,
    const QVariantList &released, std::function<void(const Result &)> done, quint64 serial) const
{
    if (!m_page) {
        done(failed(operation, QStringLiteral("No page")));
        return;
    }
    // The engine runs the callback inside its own task, where nothing could wait for another
    // answer; done runs from the event loop instead, as if it were a notification.
    const QPointer<QWebEnginePage> page(m_page);
    m_page->runJavaScript(script(operation, arguments, released, serial), m_worldId,
        [page, operation, done = std::move(done)](const QVariant &value) {
            if (!page)
                return;
            QMetaObject::invokeMethod(
                page, [done, result = resultOf(operation, value)] { done(result); },
                Qt::QueuedConnection);
        });
}

} // namespace Vantry::Platform
