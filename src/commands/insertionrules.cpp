#include "commands/insertionrules.h"

namespace Vantry::Commands {

std::optional<QString> insertionMarkup(int kind, const QString &html)
{
    switch (static_cast<InsertKind>(kind)) {
    case InsertKind::Button:
        return QStringLiteral("<BUTTON TITLE=Button>Button!</BUTTON>");
    case InsertKind::SubmitButton:
        return QStringLiteral("<input type=\"submit\" value=\"Submit\">");
    case InsertKind::ResetButton:
        return QStringLiteral("<input type=\"reset\" value=\"reset\">");
    case InsertKind::CheckBox:
        return QStringLiteral("<input type=\"checkbox\" checked value=\"ON\">");
    case InsertKind::Radio:
        return QStringLiteral("<input type=\"radio\" checked value=\"V1\">");
    case InsertKind::DropDown:
        return QStringLiteral("<select size=\"1\"><option></option></select>");
    case InsertKind::ListBox:
        return QStringLiteral("<select size=\"4\"><option></option></select>");
    case InsertKind::TextBox:
        return QStringLiteral("<input type=\"text\" size=\"24\" value=\"\">");
    case InsertKind::TextArea:
        return QStringLiteral("<textarea rows=\"3\" cols=\"30\"></textarea>");
    case InsertKind::Form:
        return QStringLiteral("<FORM action=\"\" method=POST></FORM>");
    case InsertKind::Html:
        return html;
    }
    return std::nullopt;
}

bool CheckBoolean(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::QString:
    case QMetaType::QByteArray: {
        const QString text = value.toString();
        return text == QLatin1String("1") || text.toLower() == QLatin1String("true");
    }
    default:
        break;
    }
    bool numeric = false;
    const double number = value.toDouble(&numeric);
    return numeric && number == 1.0;
}

// Case-insensitive search that is fast on markup: a needle that starts with a character
// without case variants ('<' for tags) is found by its first character, which QString
// scans for with SIMD, and only the candidates are compared ignoring case. The generic
// case-insensitive search folds every character of the document.
qsizetype indexOfNoCase(QStringView text, QStringView needle, qsizetype from)
{
    const QChar first = needle.front();
    if (first.toLower() != first || first.toUpper() != first)
        return text.indexOf(needle, from, Qt::CaseInsensitive);
    const QStringView rest = needle.sliced(1);
    for (qsizetype at = text.indexOf(first, from); at >= 0; at = text.indexOf(first, at + 1)) {
        if (text.size() - at < needle.size())
            return -1;
        if (text.sliced(at + 1, rest.size()).compare(rest, Qt::CaseInsensitive) == 0)
            return at;
    }
    return -1;
}

QString ReplaceNoCase(const QString &text, const QString &find, const QString &replacement)
{
    if (find.isEmpty())
        return text;
    qsizetype hit = indexOfNoCase(text, find, 0);
    if (hit < 0)
        return text;

    // One pass with a single growing result: repeated in-place replacement would move the
    // tail of a large document once per hit.
    QString result;
    result.reserve(text.size());
    qsizetype from = 0;
    do {
        result.append(QStringView(text).sliced(from, hit - from));
        result.append(replacement);
        from = hit + find.size();
        hit = indexOfNoCase(text, find, from);
    } while (hit >= 0);
    result.append(QStringView(text).sliced(from));
    return result;
}

} // namespace Vantry::Commands
