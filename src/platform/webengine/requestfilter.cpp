#include "platform/webengine/requestfilter.h"

namespace Vantry::Platform {

bool RequestFilter::allows(QWebEngineUrlRequestInfo::ResourceType type)
{
    switch (type) {
    case QWebEngineUrlRequestInfo::ResourceTypeMainFrame:
    case QWebEngineUrlRequestInfo::ResourceTypeSubFrame:
    case QWebEngineUrlRequestInfo::ResourceTypeStylesheet:
    case QWebEngineUrlRequestInfo::ResourceTypeImage:
    case QWebEngineUrlRequestInfo::ResourceTypeFontResource:
    case QWebEngineUrlRequestInfo::ResourceTypeSubResource:
    case QWebEngineUrlRequestInfo::ResourceTypeObject:
    case QWebEngineUrlRequestInfo::ResourceTypeMedia:
        return true;
    default:
        return false;
    }
}

void RequestFilter::interceptRequest(QWebEngineUrlRequestInfo &info)
{
    if (!allows(info.resourceType()))
        info.block(true);
}

} // namespace Vantry::Platform
