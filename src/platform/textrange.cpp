#include "platform/textrange.h"

#include <QVariantMap>

namespace Vantry::Platform {

QVariant TextRange::toVariant() const
{
    if (isNull())
        return {};
    return QVariantMap{{QStringLiteral("id"), id}, {QStringLiteral("generation"), generation}};
}

TextRange TextRange::fromVariant(const QVariant &value)
{
    const QVariantMap map = value.toMap();
    if (map.isEmpty())
        return {};
    TextRange range;
    range.id = map.value(QStringLiteral("id")).toInt();
    range.generation = map.value(QStringLiteral("generation"), -1).toInt();
    return range;
}

QString selectionTypeName(SelectionType type)
{
    switch (type) {
    case SelectionType::Text:
        return QStringLiteral("Text");
    case SelectionType::Control:
        return QStringLiteral("Control");
    case SelectionType::None:
        break;
    }
    return QStringLiteral("None");
}

QString textUnitName(TextUnit unit)
{
    switch (unit) {
    case TextUnit::Word:
        return QStringLiteral("word");
    case TextUnit::TextEdit:
        return QStringLiteral("textedit");
    case TextUnit::Character:
        break;
    }
    return QStringLiteral("character");
}

std::optional<TextUnit> textUnitFromName(QStringView name)
{
    for (TextUnit unit : {TextUnit::Character, TextUnit::Word, TextUnit::TextEdit}) {
        if (name.compare(textUnitName(unit), Qt::CaseInsensitive) == 0)
            return unit;
    }
    return std::nullopt;
}

} // namespace Vantry::Platform
