#include "platform/scintilla/languagefile.h"

namespace Vantry::Platform::SourceText {

namespace {

bool isCommentLine(QStringView line)
{
    return line.trimmed().startsWith(QLatin1Char('#'))
        || line.trimmed().startsWith(QLatin1Char(';'));
}

} // namespace

QList<StyleColour> parseLanguageFile(const QString &content)
{
    QList<StyleColour> styles;
    const auto lines = QStringView(content).split(QLatin1Char('\n'));
    for (QStringView line : lines) {
        if (line.trimmed().isEmpty() || isCommentLine(line))
            continue;
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (equals <= 0)
            continue;
        StyleColour style;
        style.styleName = line.left(equals).trimmed().toString();
        const auto colours = line.mid(equals + 1).split(QLatin1Char(','));
        style.foreground = QColor::fromString(colours.first().trimmed());
        if (colours.size() > 1)
            style.background = QColor::fromString(colours.at(1).trimmed());
        if (style.styleName.isEmpty() || !style.foreground.isValid() || colours.size() > 2
            || (colours.size() == 2 && !style.background.isValid()))
            continue;
        styles.append(style);
    }
    return styles;
}

} // namespace Vantry::Platform::SourceText
