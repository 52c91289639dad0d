#pragma once

#include "report.h"

#include <QList>
#include <QString>
#include <QVariant>

#include <chrono>
#include <functional>

class QWebEnginePage;

namespace VantryBench {

// Milliseconds since start, from a monotonic clock.
double elapsedMs(std::chrono::steady_clock::time_point start);

// Runs the event loop until done() holds or the time is up; returns done().
bool spinUntil(const std::function<bool()> &done, std::chrono::milliseconds timeout);

// Asks done() again as soon as the event loop has nothing to do, for predicates that ask
// the engine themselves: an idle wait between checks would add its own length to every
// figure.
bool pollUntil(const std::function<bool()> &done, std::chrono::milliseconds timeout);

// Runs the event loop for a while, letting the engine settle between measurements.
void idle(std::chrono::milliseconds duration);

// runJavaScript made synchronous the way the editor's bridge does it: a local event loop
// that excludes user input. ok reports whether the answer came in time.
QVariant runScript(QWebEnginePage *page, const QString &script, quint32 worldId,
    std::chrono::milliseconds timeout, bool *ok = nullptr);

// A JavaScript literal of text, as the bridge encodes arguments.
QString jsString(const QString &text);

} // namespace VantryBench
