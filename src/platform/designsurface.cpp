#include "platform/designsurface.h"

#include <QVariantMap>

namespace Vantry::Platform {

DesignSurface::DesignSurface(QObject *parent)
    : QObject(parent)
{ }

DesignSurface::~DesignSurface() = default;

bool DesignSurface::execCommand(int commandId, int, const QVariant &, QVariant *)
{
    setLastError(QStringLiteral("Command %1 is not supported").arg(commandId));
    return false;
}

bool DesignSurface::setElementText(const Element &, const QString &)
{
    setLastError(QStringLiteral("Setting an element's text is not supported"));
    return false;
}

bool DesignSurface::findNext(const QString &, const SearchOptions &)
{
    setLastError(QStringLiteral("Finding is not supported"));
    return false;
}

DesignSurface::SpellingText DesignSurface::spellingText()
{
    setLastError(QStringLiteral("Spelling is not supported"));
    return {};
}

bool DesignSurface::selectSpellingText(TextPoint, TextPoint)
{
    setLastError(QStringLiteral("Spelling is not supported"));
    return false;
}

QList<std::pair<int, QString>> DesignSurface::replaceSpellingText(const QList<SpellingEdit> &)
{
    setLastError(QStringLiteral("Spelling is not supported"));
    return {};
}

DesignSurface::TextAtPoint DesignSurface::spellingTextAt(const QPoint &)
{
    setLastError(QStringLiteral("Spelling is not supported"));
    return {};
}

bool DesignSurface::setSpellingUnderlines(bool, const QStringList &)
{
    return false;
}

bool DesignSurface::displaySwitch(const QString &)
{
    return false;
}

bool DesignSurface::setDisplaySwitch(const QString &name, bool)
{
    setLastError(QStringLiteral("Display switch %1 is not supported").arg(name));
    return false;
}

QHash<int, int> DesignSurface::queryStatus(const QList<int> &commandIds, QHash<int, QVariant> *)
{
    QHash<int, int> status;
    for (int id : commandIds)
        status.insert(id, StatusNotSupported);
    return status;
}

void DesignSurface::requestStatus(const QList<int> &commandIds, StatusAnswer done)
{
    QHash<int, QVariant> values;
    const QHash<int, int> states = queryStatus(commandIds, &values);
    done(!lastCallFailed(), states, values);
}

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
