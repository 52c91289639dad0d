#include "commands/selectionaccess.h"

#include "platform/prompts/userprompts.h"

namespace Vantry::Commands {

using Platform::Element;
using Platform::SelectionType;
using Platform::TextRange;
using Platform::TextUnit;

SelectionAccess::SelectionAccess(
    Platform::DesignSurface &surface, DocumentReferences &references, Hooks hooks)
    : m_surface(surface)
    , m_references(references)
    , m_hooks(std::move(hooks))
{ }

// Item 0 of a control range; should the selection have turned to text meanwhile, the
// item of a freshly taken range.
Element SelectionAccess::selectedControl(const TextRange &range)
{
    Element element = m_surface.controlItem(range, 0);
    if (failed())
        element = m_surface.controlItem(m_surface.selectionRange(), 0);
    return failed() ? Element{} : element;
}

Element SelectionAccess::selectedElement()
{
    if (!m_hooks.isReady())
        return {};
    const SelectionType type = m_surface.selectionType();
    if (failed())
        return {};
    const TextRange range = m_surface.selectionRange();
    if (failed())
        return {};
    const Element element = type == SelectionType::Control ? selectedControl(range)
                                                           : m_surface.rangeParentElement(range);
    if (failed() || element.isNull())
        return {};
    m_references.current = element;
    return element;
}

bool SelectionAccess::findSelectedElementByTag(const QString &tagName)
{
    const Element element = selectedElement();
    if (element.isNull())
        return false;
    const QList<Platform::DesignSurface::PathStep> path = m_surface.elementPath(element);
    if (failed())
        return false;
    const QString wanted = tagName.toUpper();
    for (const auto &step : path) {
        const QString tag = step.tagName.toUpper();
        if (tag == wanted) {
            m_references.found = step.element;
            return true;
        }
        // The walk ends at the document's root element, which itself can be found.
        if (tag == QLatin1String("HTML"))
            break;
    }
    return false;
}

bool SelectionAccess::findSelectedTable()
{
    return findSelectedElementByTag(QStringLiteral("TABLE"));
}

void SelectionAccess::removeSelectedElementObject(const QString &tagName)
{
    Q_UNUSED(tagName)
    const Element element = selectedElement();
    if (element.isNull())
        return;
    const QString tag = m_surface.tagName(element);
    if (!failed() && tag == QLatin1String("IMG"))
        m_surface.clearSelection();
}

QString SelectionAccess::selectedMarkup()
{
    if (!m_hooks.isReady())
        return {};
    const SelectionType type = m_surface.selectionType();
    if (failed())
        return {};
    const TextRange range = m_surface.selectionRange();
    if (failed())
        return {};
    if (type == SelectionType::Control) {
        const Element element = selectedControl(range);
        return element.isNull() ? QString() : m_surface.outerHTML(element);
    }
    return m_surface.rangeHtmlText(range);
}

void SelectionAccess::replaceSelection(const QString &html)
{
    if (!m_hooks.isReady())
        return;
    const SelectionType type = m_surface.selectionType();
    if (failed())
        return;
    const TextRange range = m_surface.selectionRange();
    if (failed())
        return;
    switch (type) {
    case SelectionType::Control: {
        const Element element = selectedControl(range);
        if (!element.isNull())
            m_surface.setOuterHTML(element, html);
        return;
    }
    case SelectionType::Text:
        m_references.current = range;
        // Both moves belong to the behaviour hosts know: together they settle the range's
        // end on the last character before what follows it.
        if (!html.endsWith(QLatin1Char('>'))) {
            m_surface.moveRangeEnd(range, TextUnit::Character, 1);
            if (failed())
                return;
            m_surface.moveRangeEnd(range, TextUnit::Character, -1);
            if (failed())
                return;
        }
        if (!m_surface.clearSelection())
            return;
        m_surface.pasteHTML(range, html);
        return;
    case SelectionType::None:
        m_surface.pasteHTML(range, html);
        return;
    }
}

void SelectionAccess::insertMarkupAtSelection(int kind, const QString &html)
{
    if (!m_hooks.isReady())
        return;
    const SelectionType type = m_surface.selectionType();
    if (failed())
        return;
    if (type == SelectionType::Control) {
        m_hooks.prompts().information(
            QStringLiteral("You cannot insert a control element on a selected control element"));
        return;
    }
    const std::optional<QString> markup = insertionMarkup(kind, html);
    if (!markup)
        return;
    const TextRange range = m_surface.selectionRange();
    if (!failed())
        m_surface.pasteHTML(range, *markup);
}

void SelectionAccess::findAndReplaceHTML(const QString &find, const QString &replacement)
{
    if (!m_hooks.isReady())
        return;
    const QString markup = m_surface.bodyInnerHTML();
    if (failed())
        return;
    m_surface.editBodyInnerHTML(ReplaceNoCase(markup, find, replacement));
}

} // namespace Vantry::Commands
