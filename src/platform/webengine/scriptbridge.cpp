#include "platform/webengine/scriptbridge.h"

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

} // namespace

ScriptBridge::ScriptBridge(QWebEnginePage *page, quint32 worldId)
    : m_page(page)
    , m_worldId(worldId)
{ }

QString ScriptBridge::script(const QString &operation, const QVariantList &arguments)
{
    const QByteArray args
        = QJsonDocument(QJsonArray::fromVariantList(arguments)).toJson(QJsonDocument::Compact);
    return QStringLiteral("window.__vantry ? window.__vantry.invoke(\"") + operation
        + QStringLiteral("\", ") + QString::fromUtf8(args)
        + QStringLiteral(") : {e: \"The editing adapter is not loaded\"}");
}

ScriptBridge::Result ScriptBridge::call(const QString &operation, const QVariantList &arguments,
    std::chrono::milliseconds timeout) const
{
    if (!m_page)
        return {false, {}, QStringLiteral("No page")};

    // Shared with the callback, which may outlive this call when the engine answers late.
    auto pending = std::make_shared<PendingCall>();
    m_page->runJavaScript(
        script(operation, arguments), m_worldId, [pending](const QVariant &value) {
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

    if (!pending->done)
        return {false, {},
            QStringLiteral("The editing surface did not answer %1 in time").arg(operation)};

    const QVariantMap answer = pending->value.toMap();
    if (answer.contains(QStringLiteral("e")))
        return {false, {}, answer.value(QStringLiteral("e")).toString()};
    if (!answer.contains(QStringLiteral("r")))
        return {
            false, {}, QStringLiteral("The editing surface gave no answer to %1").arg(operation)};
    return {true, answer.value(QStringLiteral("r")), {}};
}

} // namespace Vantry::Platform
