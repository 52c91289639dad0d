#pragma once

#include <QWebEngineUrlRequestInterceptor>

namespace Vantry::Platform {

// Lets through only what drawing the edited document needs. Hints that only speed up
// browsing (prefetch, preload and modulepreload of scripts) would fetch from servers the
// user never asked for, and scripts, workers, pings and reports have no place in an editor
// whose documents never run. Preloads of images, sheets and fonts look like the real
// requests here; the adapter keeps their links inert instead.
class RequestFilter : public QWebEngineUrlRequestInterceptor
{
    Q_OBJECT

public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    void interceptRequest(QWebEngineUrlRequestInfo &info) override;

    // Whether a request of this kind may go out.
    static bool allows(QWebEngineUrlRequestInfo::ResourceType type);
};

} // namespace Vantry::Platform
