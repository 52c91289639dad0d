#pragma once

#include <QString>

namespace Vantry::Platform {
class DesignSurface;
}

// Properties that live in the loaded document rather than in the settings record.
namespace Vantry::Control::DocumentFields {

QString pageTitle(Platform::DesignSurface &surface);
bool setPageTitle(Platform::DesignSurface &surface, const QString &title);

// The content of the element named "keywords" (the META keywords tag).
QString keyWords(Platform::DesignSurface &surface);
// Sets the keywords, creating <META name="keywords"> in the head when there is none.
bool setKeyWords(Platform::DesignSurface &surface, const QString &keyWords);

} // namespace Vantry::Control::DocumentFields
