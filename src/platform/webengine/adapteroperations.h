#pragma once

#include <QLatin1StringView>

namespace Vantry::Platform::AdapterOperation {

// The operations the C++ side calls in the editing adapter, by the names the adapter
// registers them under. Call sites use these constants, so that a test can hold the list
// against what the loaded adapter offers.
// clang-format off
#define VANTRY_ADAPTER_OPERATIONS(X) \
    X(appendChild) X(attribute) X(body) X(bodyInnerHTML) X(bodyInnerText) X(bodyRange) \
    X(boundingRect) X(commandExec) X(commandStatus) X(configure) X(createElement) X(display) \
    X(documentHTML) X(editBodyInnerHTML) X(editElementFields) X(elementFields) X(elementPath) X(elementsByName) X(elementsByTagName) \
    X(execCommand) X(findNext) X(focus) X(head) X(imageElements) X(innerHTML) X(isEditable) \
    X(load) X(outerHTML) X(parentElement) X(rangeBookmark) X(rangeCollapse) X(rangeDuplicate) \
    X(rangeFindText) X(rangeHtmlText) X(rangeInRange) X(rangeIsControl) X(rangeIsEqual) \
    X(rangeItem) X(rangeLength) X(rangeMove) X(rangeMoveEnd) X(rangeMoveStart) \
    X(rangeMoveToBookmark) X(rangeParentElement) X(rangePasteHTML) X(rangeSelect) \
    X(rangeSetText) X(rangeText) X(refresh) X(releaseRanges) X(removeAttribute) X(replaceAll) \
    X(scriptElements) X(scrollPosition) X(selectElement) X(selectionClear) X(selectionRange) \
    X(styleSheets) X(addStyleSheet) X(elementAttributes) X(objectParams) X(setObjectParams) \
    X(selectionType) X(setAttribute) X(setBaseUrl) X(setBodyInnerHTML) X(setDisplay) \
    X(setDocumentAddress) X(setEditable) X(setInnerHTML) X(setOuterHTML) \
    X(setScrollBarsVisible) X(setScrollPosition) X(setStyleProperty) X(setText) X(setTitle) \
    X(styleProperty) X(styleSheetHrefs) X(tableParts) X(tagName) X(title)
// clang-format on

#define VANTRY_DECLARE_OPERATION(name) inline constexpr QLatin1StringView name{#name};
VANTRY_ADAPTER_OPERATIONS(VANTRY_DECLARE_OPERATION)
#undef VANTRY_DECLARE_OPERATION

#define VANTRY_LIST_OPERATION(name) name,
inline constexpr QLatin1StringView all[] = {VANTRY_ADAPTER_OPERATIONS(VANTRY_LIST_OPERATION)};
#undef VANTRY_LIST_OPERATION

} // namespace Vantry::Platform::AdapterOperation
