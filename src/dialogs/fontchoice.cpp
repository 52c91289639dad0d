#include "dialogs/fontchoice.h"

#include <QRegularExpression>

#include <array>
#include <cmath>

namespace Vantry::Dialogs {

namespace {

// Point sizes of the seven HTML sizes, as word processors have always shown them.
constexpr std::array<int, 7> htmlSizePoints{8, 10, 12, 14, 18, 24, 36};

} // namespace

int pointSizeForHtmlSize(int htmlSize)
{
    if (htmlSize < 1 || htmlSize > int(htmlSizePoints.size()))
        return 0;
    return htmlSizePoints[htmlSize - 1];
}

int htmlSizeForPointSize(double points)
{
    if (!(points > 0))
        return 0;
    int best = 0;
    for (int i = 1; i < int(htmlSizePoints.size()); ++i) {
        if (std::abs(htmlSizePoints[i] - points) < std::abs(htmlSizePoints[best] - points))
            best = i;
    }
    return best + 1;
}

QColor colorFromCss(const QString &text)
{
    static const QRegularExpression functional(QStringLiteral(
        R"(^\s*rgba?\(\s*(\d+)\s*,\s*(\d+)\s*,\s*(\d+)\s*(?:,\s*([0-9.]+)\s*)?\)\s*$)"));
    const QRegularExpressionMatch match = functional.match(text);
    if (match.hasMatch()) {
        const auto channel = [&match](int n) { return qBound(0, match.captured(n).toInt(), 255); };
        QColor color(channel(1), channel(2), channel(3));
        if (match.hasCaptured(4))
            color.setAlphaF(qBound(0.0f, match.captured(4).toFloat(), 1.0f));
        return color;
    }
    return QColor::fromString(text.trimmed());
}

} // namespace Vantry::Dialogs
