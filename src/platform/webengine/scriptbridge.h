#pragma once

#include <QString>
#include <QVariant>
#include <QVariantList>

#include <chrono>
#include <functional>

class QWebEnginePage;

namespace Vantry::Platform {

// Synchronous calls into the adapter. The caller waits in a local event loop that lets
// engine traffic and timers run but no user input, for a bounded time; an answer that
// comes after the bound is dropped harmlessly.
class ScriptBridge
{
public:
    struct Result
    {
        bool ok = false;
        QVariant value;
        QString error;
    };

    ScriptBridge(QWebEnginePage *page, quint32 worldId);

    // released: range handles the caller no longer holds; the adapter frees them before
    // the operation, in the same round trip. serial: the caller's number for the call,
    // which the adapter's notifications carry afterwards (0 for none).
    [[nodiscard]] Result call(const QString &operation, const QVariantList &arguments = {},
        std::chrono::milliseconds timeout = defaultTimeout, const QVariantList &released = {},
        quint64 serial = 0) const;

    // The same call without waiting: done runs with the result when the answer comes, from
    // the event loop. Never runs when the page goes away first.
    void callLater(const QString &operation, const QVariantList &arguments,
        const QVariantList &released, std::function<void(const Result &)> done,
        quint64 serial = 0) const;

    // Builds the script text for one call: the arguments travel as a JSON literal.
    static QString script(const QString &operation, const QVariantList &arguments,
        const QVariantList &released = {}, quint64 serial = 0);

    static constexpr std::chrono::milliseconds defaultTimeout{10000};

private:
    QWebEnginePage *m_page;
    quint32 m_worldId;
};

} // namespace Vantry::Platform
