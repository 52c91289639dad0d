#include "platform/designsurface.h"

#include <QVariantMap>

namespace Vantry::Platform {

DesignSurface::DesignSurface(QObject *parent)
    : QObject(parent)
{
}

DesignSurface::~DesignSurface() = default;

QVariant Element::toVariant() const
{
    if (isNull())
        return {};
    return QVariantMap{{QStringLiteral("id"), id}, {QStringLiteral("generation"), generation}};
}

Element Element::fromVariant(const QVariant &value)
{
    const QVariantMap map = value.toMap();
    if (map.isEmpty())
        return {};
    return {map.value(QStringLiteral("id")).toInt(),
            map.value(QStringLiteral("generation"), -1).toInt()};
}

} // namespace Vantry::Platform
