#include "platform/webengine/webenginedesignsurface.h"

#include "platform/webengine/adapteroperations.h"

#include <QPointer>

// The surface's typed operations: each is one call into the adapter, its answer read into
// the surface's types.
namespace Vantry::Platform {

bool WebEngineDesignSurface::setDocumentHTML(const QString &html)
{
    // Big documents take the parser a while; the bound grows with the text.
    const auto timeout
        = ScriptBridge::defaultTimeout + std::chrono::milliseconds(html.size() / 1000);
    const bool ok = call(AdapterOperation::load, {html}, timeout).ok;
    if (ok)
        Q_EMIT documentComplete();
    return ok;
}

QString WebEngineDesignSurface::documentHTML()
{
    return callValue(AdapterOperation::documentHTML, {}, std::chrono::seconds(60)).toString();
}

QString WebEngineDesignSurface::bodyInnerHTML()
{
    return callValue(AdapterOperation::bodyInnerHTML, {}, std::chrono::seconds(60)).toString();
}

QString WebEngineDesignSurface::bodyInnerText()
{
    return callValue(AdapterOperation::bodyInnerText, {}, std::chrono::seconds(60)).toString();
}

bool WebEngineDesignSurface::setBodyInnerHTML(const QString &html)
{
    const auto timeout
        = ScriptBridge::defaultTimeout + std::chrono::milliseconds(html.size() / 1000);
    return call(AdapterOperation::setBodyInnerHTML, {html}, timeout).ok;
}

bool WebEngineDesignSurface::editBodyInnerHTML(const QString &html)
{
    const auto timeout
        = ScriptBridge::defaultTimeout + std::chrono::milliseconds(html.size() / 1000);
    return call(AdapterOperation::editBodyInnerHTML, {html}, timeout).ok;
}

QString WebEngineDesignSurface::title()
{
    return callValue(AdapterOperation::title).toString();
}

bool WebEngineDesignSurface::setTitle(const QString &title)
{
    return callBool(AdapterOperation::setTitle, {title});
}

QList<Element> WebEngineDesignSurface::elementsByName(const QString &name)
{
    return elementList(callValue(AdapterOperation::elementsByName, {name}));
}

QList<Element> WebEngineDesignSurface::elementsByTagName(const QString &tagName)
{
    return elementList(callValue(AdapterOperation::elementsByTagName, {tagName}));
}

Element WebEngineDesignSurface::head()
{
    return Element::fromVariant(callValue(AdapterOperation::head));
}

Element WebEngineDesignSurface::body()
{
    return Element::fromVariant(callValue(AdapterOperation::body));
}

Element WebEngineDesignSurface::createElement(const QString &tagName)
{
    return Element::fromVariant(callValue(AdapterOperation::createElement, {tagName}));
}

bool WebEngineDesignSurface::appendChild(const Element &parent, const Element &child)
{
    return callBool(AdapterOperation::appendChild, {parent.toVariant(), child.toVariant()});
}

QString WebEngineDesignSurface::tagName(const Element &element)
{
    return callValue(AdapterOperation::tagName, {element.toVariant()}).toString();
}

QString WebEngineDesignSurface::attribute(const Element &element, const QString &name)
{
    return callValue(AdapterOperation::attribute, {element.toVariant(), name}).toString();
}

bool WebEngineDesignSurface::setAttribute(
    const Element &element, const QString &name, const QString &value)
{
    return callBool(AdapterOperation::setAttribute, {element.toVariant(), name, value});
}

QString WebEngineDesignSurface::outerHTML(const Element &element)
{
    return callValue(AdapterOperation::outerHTML, {element.toVariant()}).toString();
}

bool WebEngineDesignSurface::setElementText(const Element &element, const QString &text)
{
    return callBool(AdapterOperation::setText, {element.toVariant(), text});
}

QRectF WebEngineDesignSurface::boundingRect(const Element &element)
{
    const QVariantList r
        = callValue(AdapterOperation::boundingRect, {element.toVariant()}).toList();
    if (r.size() != 4)
        return {};
    return {r.at(0).toDouble(), r.at(1).toDouble(), r.at(2).toDouble(), r.at(3).toDouble()};
}

QStringList WebEngineDesignSurface::styleSheetHrefs()
{
    return callValue(AdapterOperation::styleSheetHrefs).toStringList();
}

QPoint WebEngineDesignSurface::scrollPosition()
{
    const QVariantList position = callValue(AdapterOperation::scrollPosition).toList();
    if (position.size() != 2)
        return {};
    return {qRound(position.at(0).toDouble()), qRound(position.at(1).toDouble())};
}

bool WebEngineDesignSurface::setScrollLeft(int left)
{
    return callBool(AdapterOperation::setScrollPosition, {left, QVariant::fromValue(nullptr)});
}

bool WebEngineDesignSurface::setScrollTop(int top)
{
    return callBool(AdapterOperation::setScrollPosition, {QVariant::fromValue(nullptr), top});
}

Element WebEngineDesignSurface::parentElement(const Element &element)
{
    return Element::fromVariant(callValue(AdapterOperation::parentElement, {element.toVariant()}));
}

QList<DesignSurface::PathStep> WebEngineDesignSurface::elementPath(const Element &element)
{
    QList<PathStep> path;
    const QVariantList steps
        = callValue(AdapterOperation::elementPath, {element.toVariant()}).toList();
    path.reserve(steps.size());
    for (const QVariant &step : steps) {
        const QVariantList pair = step.toList();
        if (pair.size() == 2)
            path.append({Element::fromVariant(pair.at(0)), pair.at(1).toString()});
    }
    return path;
}

QString WebEngineDesignSurface::innerHTML(const Element &element)
{
    return callValue(AdapterOperation::innerHTML, {element.toVariant()}).toString();
}

bool WebEngineDesignSurface::setInnerHTML(const Element &element, const QString &html)
{
    return callBool(AdapterOperation::setInnerHTML, {element.toVariant(), html});
}

bool WebEngineDesignSurface::setOuterHTML(const Element &element, const QString &html)
{
    return callBool(AdapterOperation::setOuterHTML, {element.toVariant(), html});
}

bool WebEngineDesignSurface::removeAttribute(const Element &element, const QString &name)
{
    return callBool(AdapterOperation::removeAttribute, {element.toVariant(), name});
}

QString WebEngineDesignSurface::styleProperty(const Element &element, const QString &name)
{
    return callValue(AdapterOperation::styleProperty, {element.toVariant(), name}).toString();
}

bool WebEngineDesignSurface::setStyleProperty(
    const Element &element, const QString &name, const QString &value)
{
    return callBool(AdapterOperation::setStyleProperty, {element.toVariant(), name, value});
}

DesignSurface::ElementFields WebEngineDesignSurface::elementFields(
    const Element &element, const QStringList &attributes, const QStringList &styles)
{
    const QVariantMap answer
        = callValue(AdapterOperation::elementFields, {element.toVariant(), attributes, styles})
              .toMap();
    ElementFields fields;
    // An absent attribute comes back as null.
    for (const QVariant &value : answer.value(QStringLiteral("attributes")).toList()) {
        fields.attributes.append(
            value.isNull() ? std::nullopt : std::optional<QString>(value.toString()));
    }
    fields.styles = answer.value(QStringLiteral("styles")).toStringList();
    return fields;
}

bool WebEngineDesignSurface::editElementFields(
    const Element &element, const QList<FieldEdit> &edits)
{
    QVariantList list;
    for (const FieldEdit &edit : edits) {
        const QString kind = edit.style ? QStringLiteral("style")
            : edit.value                ? QStringLiteral("set")
                                        : QStringLiteral("remove");
        list.append(QVariant(QVariantList{kind, edit.name, edit.value.value_or(QString())}));
    }
    return callBool(AdapterOperation::editElementFields, {element.toVariant(), list});
}

TableParts WebEngineDesignSurface::tableParts(const Element &table)
{
    const QVariantMap answer = callValue(AdapterOperation::tableParts, {table.toVariant()}).toMap();
    const auto count
        = [&answer](const char *name) { return answer.value(QLatin1String(name)).toInt(); };
    return {count("rows"), count("columns"), count("cells"), count("selectedRows"),
        count("selectedColumns"), count("selectedCells")};
}

QList<Element> WebEngineDesignSurface::images()
{
    return elementList(callValue(AdapterOperation::imageElements));
}

QList<Element> WebEngineDesignSurface::scripts()
{
    return elementList(callValue(AdapterOperation::scriptElements));
}

SelectionType WebEngineDesignSurface::selectionType()
{
    const QString type = callValue(AdapterOperation::selectionType).toString();
    if (type == QLatin1String("Control"))
        return SelectionType::Control;
    if (type == QLatin1String("Text"))
        return SelectionType::Text;
    return SelectionType::None;
}

TextRange WebEngineDesignSurface::selectionRange()
{
    return adoptRange(callValue(AdapterOperation::selectionRange));
}

bool WebEngineDesignSurface::clearSelection()
{
    return callBool(AdapterOperation::selectionClear);
}

bool WebEngineDesignSurface::selectElement(const Element &element)
{
    return callBool(AdapterOperation::selectElement, {element.toVariant()});
}

TextRange WebEngineDesignSurface::bodyRange()
{
    return adoptRange(callValue(AdapterOperation::bodyRange));
}

bool WebEngineDesignSurface::isControlRange(const TextRange &range)
{
    return callBool(AdapterOperation::rangeIsControl, {range.toVariant()});
}

int WebEngineDesignSurface::controlCount(const TextRange &range)
{
    return callValue(AdapterOperation::rangeLength, {range.toVariant()}).toInt();
}

Element WebEngineDesignSurface::controlItem(const TextRange &range, int index)
{
    return Element::fromVariant(callValue(AdapterOperation::rangeItem, {range.toVariant(), index}));
}

Element WebEngineDesignSurface::rangeParentElement(const TextRange &range)
{
    return Element::fromVariant(
        callValue(AdapterOperation::rangeParentElement, {range.toVariant()}));
}

QString WebEngineDesignSurface::rangeText(const TextRange &range)
{
    return callValue(AdapterOperation::rangeText, {range.toVariant()}).toString();
}

bool WebEngineDesignSurface::setRangeText(const TextRange &range, const QString &text)
{
    return callBool(AdapterOperation::rangeSetText, {range.toVariant(), text});
}

QString WebEngineDesignSurface::rangeHtmlText(const TextRange &range)
{
    return callValue(AdapterOperation::rangeHtmlText, {range.toVariant()}).toString();
}

bool WebEngineDesignSurface::pasteHTML(const TextRange &range, const QString &html)
{
    return callBool(AdapterOperation::rangePasteHTML, {range.toVariant(), html});
}

int WebEngineDesignSurface::moveBy(
    const QString &operation, const TextRange &range, TextUnit unit, int count)
{
    return callValue(operation, {range.toVariant(), textUnitName(unit), count}).toInt();
}

int WebEngineDesignSurface::moveRange(const TextRange &range, TextUnit unit, int count)
{
    return moveBy(AdapterOperation::rangeMove, range, unit, count);
}

int WebEngineDesignSurface::moveRangeStart(const TextRange &range, TextUnit unit, int count)
{
    return moveBy(AdapterOperation::rangeMoveStart, range, unit, count);
}

int WebEngineDesignSurface::moveRangeEnd(const TextRange &range, TextUnit unit, int count)
{
    return moveBy(AdapterOperation::rangeMoveEnd, range, unit, count);
}

bool WebEngineDesignSurface::collapseRange(const TextRange &range, bool toStart)
{
    return callBool(AdapterOperation::rangeCollapse, {range.toVariant(), toStart});
}

TextRange WebEngineDesignSurface::duplicateRange(const TextRange &range)
{
    return adoptRange(callValue(AdapterOperation::rangeDuplicate, {range.toVariant()}));
}

QString WebEngineDesignSurface::rangeBookmark(const TextRange &range)
{
    return callValue(AdapterOperation::rangeBookmark, {range.toVariant()}).toString();
}

bool WebEngineDesignSurface::moveRangeToBookmark(const TextRange &range, const QString &bookmark)
{
    return callBool(AdapterOperation::rangeMoveToBookmark, {range.toVariant(), bookmark});
}

bool WebEngineDesignSurface::rangeInRange(const TextRange &outer, const TextRange &inner)
{
    return callBool(AdapterOperation::rangeInRange, {outer.toVariant(), inner.toVariant()});
}

bool WebEngineDesignSurface::rangesEqual(const TextRange &a, const TextRange &b)
{
    return callBool(AdapterOperation::rangeIsEqual, {a.toVariant(), b.toVariant()});
}

bool WebEngineDesignSurface::findText(const TextRange &range, const QString &text)
{
    return callBool(AdapterOperation::rangeFindText, {range.toVariant(), text});
}

bool WebEngineDesignSurface::selectRange(const TextRange &range)
{
    return callBool(AdapterOperation::rangeSelect, {range.toVariant()});
}

DesignSurface::ReplaceAllResult WebEngineDesignSurface::replaceAll(
    ReplaceScope scope, const QString &find, const QString &replacement)
{
    // The adapter bounds its own loop well below this.
    const QVariantMap answer = callValue(AdapterOperation::replaceAll,
        {scope == ReplaceScope::Selection, find, replacement}, std::chrono::seconds(60))
                                   .toMap();
    ReplaceAllResult result;
    result.found = answer.value(QStringLiteral("found")).toBool();
    result.controlSelected = answer.value(QStringLiteral("control")).toBool();
    result.replaced = answer.value(QStringLiteral("replaced")).toInt();
    result.searchRange = adoptRange(answer.value(QStringLiteral("search")));
    result.selectionCopy = adoptRange(answer.value(QStringLiteral("copy")));
    result.bookmark = answer.value(QStringLiteral("bookmark")).toString();
    return result;
}

bool WebEngineDesignSurface::execCommand(
    int commandId, int option, const QVariant &argument, QVariant *result)
{
    // Commands that prompt the user open our own dialogs, never the engine's.
    if (option == OptionPromptUser || option == OptionShowHelp) {
        setLastError(QStringLiteral("Command %1 has no dialog of its own").arg(commandId));
        return false;
    }
    if (m_reportedIds.isEmpty()) {
        const ScriptBridge::Result answer
            = call(AdapterOperation::commandExec, {commandId, option, argument});
        if (answer.ok && result)
            *result = answer.value;
        return answer.ok;
    }
    // The answer brings the followed states along: the refresh after a command asks nothing.
    const quint64 serial = m_callSerial + 1;
    const quint64 input = m_inputSerial;
    const ScriptBridge::Result answer
        = call(AdapterOperation::commandExec, {commandId, option, argument, true});
    const QVariantMap both = answer.value.toMap();
    if (answer.ok && result)
        *result = both.value(QStringLiteral("value"));
    if (answer.ok)
        takeReport(both.value(QStringLiteral("status")), serial, input);
    return answer.ok;
}

namespace {

// Reads the adapter's status answer; false when it does not match the question.
bool readStatus(const QVariant &value, const QList<int> &commandIds,
    QHash<int, CommandState> &status, QHash<int, QVariant> *values)
{
    const QVariantMap answer = value.toMap();
    const QVariantList states = answer.value(QStringLiteral("states")).toList();
    if (states.size() != commandIds.size())
        return false;
    for (qsizetype i = 0; i < commandIds.size(); ++i) {
        const std::optional<CommandState> state = commandStateFromInt(states.at(i).toInt());
        if (!state)
            return false;
        status.insert(commandIds.at(i), *state);
    }
    if (values) {
        const QVariantMap read = answer.value(QStringLiteral("values")).toMap();
        for (auto it = read.cbegin(); it != read.cend(); ++it)
            values->insert(it.key().toInt(), it.value());
    }
    return true;
}

QHash<int, CommandState> unsupported(const QList<int> &commandIds)
{
    QHash<int, CommandState> status;
    for (int id : commandIds)
        status.insert(id, NotSupported);
    return status;
}

QVariantList idList(const QList<int> &commandIds)
{
    QVariantList ids;
    ids.reserve(commandIds.size());
    for (int id : commandIds)
        ids.append(id);
    return ids;
}

const QString statusMismatch = QStringLiteral("The status answer does not match the question");

} // namespace

void WebEngineDesignSurface::takeReport(const QVariant &report, quint64 serial, quint64 input)
{
    // A report from before the last call may miss what that call changed.
    if (serial != m_callSerial || m_reportedIds.isEmpty() || !report.isValid() || report.isNull())
        return;
    // Input since the question may have changed what the answer says.
    if (input != m_inputSerial)
        return;
    Report taken{serial, input, {}, {}};
    if (readStatus(report, m_reportedIds, taken.states, &taken.values))
        m_report = std::move(taken);
}

bool WebEngineDesignSurface::answerFromReport(const QList<int> &commandIds,
    QHash<int, CommandState> &status, QHash<int, QVariant> *values) const
{
    if (!m_report || m_report->call != m_callSerial || m_report->input != m_inputSerial)
        return false;
    for (int id : commandIds) {
        if (!m_report->states.contains(id))
            return false;
    }
    for (int id : commandIds) {
        status.insert(id, m_report->states.value(id));
        if (values && m_report->values.contains(id))
            values->insert(id, m_report->values.value(id));
    }
    return true;
}

QHash<int, CommandState> WebEngineDesignSurface::queryStatus(
    const QList<int> &commandIds, QHash<int, QVariant> *values)
{
    QHash<int, CommandState> status = unsupported(commandIds);
    if (answerFromReport(commandIds, status, values)) {
        setLastError(QString());
        return status;
    }
    const quint64 serial = m_callSerial + 1;
    const quint64 input = m_inputSerial;
    const ScriptBridge::Result answer = call(AdapterOperation::commandStatus,
        QVariantList{QVariant(idList(commandIds)), values != nullptr});
    if (answer.ok && !readStatus(answer.value, commandIds, status, values))
        setLastError(statusMismatch);
    else if (answer.ok && values && commandIds == m_reportedIds)
        takeReport(answer.value, serial, input);
    return status;
}

void WebEngineDesignSurface::requestStatus(const QList<int> &commandIds, StatusAnswer done)
{
    if (!m_ready) {
        done(false, unsupported(commandIds), {});
        return;
    }
    {
        QHash<int, CommandState> status = unsupported(commandIds);
        QHash<int, QVariant> values;
        if (answerFromReport(commandIds, status, &values)) {
            done(true, status, values);
            return;
        }
    }
    QVariantList released;
    released.swap(*m_releasedRanges);
    const quint64 serial = ++m_callSerial;
    const quint64 input = m_inputSerial;
    const QPointer<WebEngineDesignSurface> self(this);
    // Asked this way, the commands are followed: from now on every display change and
    // every command brings their states along, and the next question is answered from that.
    m_reportedIds = commandIds;
    m_bridge->callLater(
        AdapterOperation::commandStatus, {QVariant(idList(commandIds)), true, true}, released,
        [self, commandIds, serial, input, done = std::move(done)](
            const ScriptBridge::Result &answer) {
            if (!self)
                return;
            QHash<int, CommandState> status = unsupported(commandIds);
            QHash<int, QVariant> values;
            const bool answered
                = answer.ok && readStatus(answer.value, commandIds, status, &values);
            if (answered)
                self->takeReport(answer.value, serial, input);
            done(answered, status, values);
        },
        serial);
}

bool WebEngineDesignSurface::findNext(const QString &text, const SearchOptions &options)
{
    return callBool(AdapterOperation::findNext,
        {text, options.matchCase, options.wholeWord, options.backwards});
}

} // namespace Vantry::Platform
