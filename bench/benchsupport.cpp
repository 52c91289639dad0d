#include "benchsupport.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTimer>
#include <QWebEnginePage>

#include <memory>

namespace VantryBench {

double elapsedMs(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

bool spinUntil(const std::function<bool()> &done, std::chrono::milliseconds timeout)
{
    const QDeadlineTimer deadline(timeout);
    // Every state a predicate reads changes in an event handler, so waiting for events
    // loses nothing; the timer only bounds the wait.
    QTimer wake;
    wake.start(10);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

bool pollUntil(const std::function<bool()> &done, std::chrono::milliseconds timeout)
{
    const QDeadlineTimer deadline(timeout);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    return true;
}

void idle(std::chrono::milliseconds duration)
{
    spinUntil([] { return false; }, duration);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

namespace {

struct Pending
{
    bool done = false;
    QVariant value;
    QEventLoop *loop = nullptr;
};

} // namespace

QVariant runScript(QWebEnginePage *page, const QString &script, quint32 worldId,
    std::chrono::milliseconds timeout, bool *ok)
{
    // Shared with the callback, which outlives this call when the answer comes late.
    auto pending = std::make_shared<Pending>();
    page->runJavaScript(script, worldId, [pending](const QVariant &value) {
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
    if (ok)
        *ok = pending->done;
    return pending->value;
}

QString jsString(const QString &text)
{
    // The array's brackets come off; what stays is a JSON string, a valid JS literal.
    const QByteArray json
        = QJsonDocument(QJsonArray{QJsonValue(text)}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(json.constData() + 1, json.size() - 2);
}

} // namespace VantryBench
