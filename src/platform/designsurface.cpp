#include "platform/designsurface.h"

#include "platform/logging.h"

#include <QVariantMap>

namespace Vantry::Platform {

DesignSurface::DesignSurface(QObject *parent)
    : QObject(parent)
{ }

DesignSurface::~DesignSurface() = default;

void DesignSurface::setLastError(const QString &error)
{
    m_lastError = error;
    if (!error.isEmpty())
        qCDebug(lcSurface).noquote() << error;
}

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

DesignSurface::SpellingText DesignSurface::spellingText(quint64)
{
    setLastError(QStringLiteral("Spelling is not supported"));
    return {};
}

void DesignSurface::requestVisibleSpellingText(SpellingTextAnswer done)
{
    const SpellingText text = spellingText();
    done(!lastCallFailed(), text);
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

bool DesignSurface::underlineSpellingText(const QList<std::pair<TextPoint, TextPoint>> &)
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

DesignSurface::ElementFields DesignSurface::elementFields(
    const Element &element, const QStringList &attributes, const QStringList &styles)
{
    ElementFields fields;
    for (const QString &name : attributes) {
        const QString value = attribute(element, name);
        fields.attributes.append(value.isEmpty() ? std::nullopt : std::optional<QString>(value));
    }
    for (const QString &name : styles)
        fields.styles.append(styleProperty(element, name));
    return fields;
}

bool DesignSurface::editElementFields(const Element &element, const QList<FieldEdit> &edits)
{
    for (const FieldEdit &edit : edits) {
        const bool done = edit.style
            ? setStyleProperty(element, edit.name, edit.value.value_or(QString()))
            : edit.value ? setAttribute(element, edit.name, *edit.value)
                         : removeAttribute(element, edit.name);
        if (!done)
            return false;
    }
    return true;
}

QHash<int, CommandState> DesignSurface::queryStatus(
    const QList<int> &commandIds, QHash<int, QVariant> *)
{
    QHash<int, CommandState> status;
    for (int id : commandIds)
        status.insert(id, NotSupported);
    return status;
}

void DesignSurface::requestStatus(const QList<int> &commandIds, StatusAnswer done)
{
    QHash<int, QVariant> values;
    const QHash<int, CommandState> states = queryStatus(commandIds, &values);
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
