// The spelling side of the WebEngine design surface: the text walk through the adapter's
// spelling operations, and the underlines of the words found misspelt.

#include "platform/webengine/webenginedesignsurface.h"

#include "platform/logging.h"

#include <QPointer>
#include <QWebEngineView>

#include <optional>

#include <utility>

namespace Vantry::Platform {

namespace {

QVariantList pointArguments(DesignSurface::TextPoint start, DesignSurface::TextPoint end)
{
    return {start.node, start.offset, end.node, end.offset};
}

const QString malformedText = QStringLiteral("spellingText: the adapter's answer is malformed");

// The adapter's packed form of the text (see spelling.js); nothing when it does not add up.
std::optional<DesignSurface::SpellingText> unpackSpellingText(const QVariantMap &answer)
{
    DesignSurface::SpellingText text;
    text.read = answer.value(QStringLiteral("r")).toULongLong();
    const QString joined = answer.value(QStringLiteral("t")).toString();
    // One text rather than a list: a value per node would cost more to cross than the text.
    const QString lengths = answer.value(QStringLiteral("n")).toString();
    const QString languages = answer.value(QStringLiteral("l")).toString();
    const QString starts = answer.value(QStringLiteral("b")).toString();
    text.texts.reserve(languages.size());
    text.languageOf.reserve(languages.size());
    text.runStarts.reserve(languages.size());
    qsizetype at = 0;
    qsizetype length = 0;
    bool digits = false;
    qsizetype i = 0;
    for (const QChar c : lengths) {
        if (c.isDigit() && c.unicode() < 128 && length < joined.size()) {
            length = length * 10 + (c.unicode() - u'0');
            digits = true;
            continue;
        }
        if (c != u',' || !digits || at + length > joined.size() || i >= languages.size()
            || i >= starts.size())
            return std::nullopt;
        text.texts.append(joined.mid(at, length));
        text.languageOf.append(languages[i].unicode());
        text.runStarts.append(starts[i] == u'1');
        at += length;
        length = 0;
        digits = false;
        ++i;
    }
    text.languages = answer.value(QStringLiteral("langs")).toStringList();
    text.documentLanguage = answer.value(QStringLiteral("d")).toString();
    const QVariantList selection = answer.value(QStringLiteral("s")).toList();
    text.selectionEnd = {selection.value(0).toInt(), selection.value(1).toInt()};
    if (digits || at != joined.size() || languages.size() != i || starts.size() != i)
        return std::nullopt;
    return text;
}

} // namespace

DesignSurface::SpellingText WebEngineDesignSurface::spellingText(quint64 since)
{
    m_menuTextTaken = false;
    const QVariantMap answer
        = callValue(QStringLiteral("spellingText"), {since}, std::chrono::seconds(60)).toMap();
    if (lastCallFailed())
        return {};
    if (answer.contains(QStringLiteral("u"))) {
        SpellingText text;
        text.read = answer.value(QStringLiteral("r")).toULongLong();
        text.unchanged = true;
        text.documentLanguage = answer.value(QStringLiteral("d")).toString();
        const QVariantList selection = answer.value(QStringLiteral("s")).toList();
        text.selectionEnd = {selection.value(0).toInt(), selection.value(1).toInt()};
        if (since != 0 && text.read == since)
            return text;
        setLastError(malformedText);
        return {};
    }
    std::optional<SpellingText> text = unpackSpellingText(answer);
    if (!text) {
        setLastError(malformedText);
        return {};
    }
    return *text;
}

void WebEngineDesignSurface::requestVisibleSpellingText(SpellingTextAnswer done)
{
    if (!m_ready) {
        done(false, {});
        return;
    }
    QVariantList released;
    released.swap(*m_releasedRanges);
    const QPointer<WebEngineDesignSurface> self(this);
    // A band of a screen above and below, so that a little scrolling finds its words
    // already underlined.
    const int margin = m_view->height();
    m_bridge->callLater(QStringLiteral("spellingVisibleText"), {margin}, released,
        [self, done = std::move(done)](const ScriptBridge::Result &answer) {
            if (!self)
                return;
            if (!answer.ok) {
                qCWarning(lcSurface).noquote() << answer.error;
                done(false, {});
                return;
            }
            const std::optional<SpellingText> text = unpackSpellingText(answer.value.toMap());
            if (!text)
                qCWarning(lcSurface).noquote() << malformedText;
            done(text.has_value(), text.value_or(SpellingText{}));
        });
}

bool WebEngineDesignSurface::selectSpellingText(TextPoint start, TextPoint end)
{
    return callBool(QStringLiteral("spellingSelect"),
        pointArguments(start, end) << std::exchange(m_menuTextTaken, false));
}

QList<std::pair<int, QString>> WebEngineDesignSurface::replaceSpellingText(
    const QList<SpellingEdit> &edits)
{
    QVariantList list;
    for (const SpellingEdit &edit : edits)
        list.append(QVariant(pointArguments(edit.start, edit.end) + QVariantList{edit.text}));
    const QVariantList answer = callValue(QStringLiteral("spellingReplace"),
        {QVariant(list), std::exchange(m_menuTextTaken, false)}, std::chrono::seconds(60))
                                    .toList();
    QList<std::pair<int, QString>> changed;
    for (const QVariant &entry : answer) {
        const QVariantList pair = entry.toList();
        changed.append({pair.value(0).toInt(), pair.value(1).toString()});
    }
    return changed;
}

void WebEngineDesignSurface::takeMenuRequest(
    const QPoint &position, quint64 serial, const QVariantMap &context)
{
    m_menu = {position, serial, std::nullopt, std::nullopt};
    if (context.contains(QStringLiteral("path"))) {
        m_menu.target = MenuTarget{context.value(QStringLiteral("path")).toStringList(),
            commandStateFromInt(context.value(QStringLiteral("position")).toInt())
                .value_or(NotSupported)};
    }
    if (context.contains(QStringLiteral("textAt"))) {
        const QVariantList answer = context.value(QStringLiteral("textAt")).toList();
        m_menu.text = TextAtPoint{};
        if (answer.size() >= 3)
            m_menu.text
                = TextAtPoint{answer[0].toString(), answer[1].toInt(), answer[2].toString()};
    }
}

std::optional<MenuTarget> WebEngineDesignSurface::menuTarget(const QPoint &position) const
{
    // A call since may have moved the selection the target was taken from.
    if (m_menu.at != position || m_menu.call != m_callSerial)
        return std::nullopt;
    return m_menu.target;
}

DesignSurface::TextAtPoint WebEngineDesignSurface::spellingTextAt(const QPoint &viewPoint)
{
    // The menu's own point: the request for the menu brought the text there along.
    if (m_menu.text && m_menu.at == viewPoint && m_menu.call == m_callSerial) {
        setLastError(QString());
        m_menuTextTaken = true;
        return *std::exchange(m_menu.text, std::nullopt);
    }
    m_menuTextTaken = false;
    const QVariantList answer
        = callValue(QStringLiteral("spellingTextAt"), {viewPoint.x(), viewPoint.y()}).toList();
    if (answer.size() < 3)
        return {};
    return {answer[0].toString(), answer[1].toInt(), answer[2].toString()};
}

bool WebEngineDesignSurface::underlineSpellingText(
    const QList<std::pair<TextPoint, TextPoint>> &words)
{
    QVariantList list;
    list.reserve(words.size());
    for (const auto &[start, end] : words)
        list.append(QVariant(pointArguments(start, end)));
    if (!m_ready)
        return false;
    QVariantList released;
    released.swap(*m_releasedRanges);
    m_bridge->callLater(QStringLiteral("spellingUnderline"), {QVariant(list)}, released,
        [](const ScriptBridge::Result &answer) {
            if (!answer.ok)
                qCWarning(lcSurface).noquote() << answer.error;
        });
    return true;
}

} // namespace Vantry::Platform
