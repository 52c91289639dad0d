#include "platform/webengine/webenginedesignsurface.h"

#include "platform/webengine/adapteroperations.h"

// The operations of the style, Flash and element-properties dialogs: style sheets, an
// element's attributes and an OBJECT's PARAMs, each one call into the adapter.
namespace Vantry::Platform {

namespace {

QList<std::pair<QString, QString>> pairs(const QVariant &list)
{
    QList<std::pair<QString, QString>> out;
    for (const QVariant &item : list.toList()) {
        const QVariantList pair = item.toList();
        out.append({pair.value(0).toString(), pair.value(1).toString()});
    }
    return out;
}

} // namespace

QList<StyleSheetInfo> WebEngineDesignSurface::styleSheets()
{
    QList<StyleSheetInfo> sheets;
    for (const QVariant &item : callValue(AdapterOperation::styleSheets).toList()) {
        const QVariantList sheet = item.toList();
        StyleSheetInfo info;
        info.href = sheet.value(0).toString();
        info.index = int(sheets.size());
        info.rulesReadable = sheet.value(1).toBool();
        for (const auto &[selector, cssText] : pairs(sheet.value(2)))
            info.rules.append({selector, cssText});
        sheets.append(info);
    }
    return sheets;
}

bool WebEngineDesignSurface::addStyleSheet(const QString &href)
{
    return callBool(AdapterOperation::addStyleSheet, {href});
}

DesignSurface::AttributeList WebEngineDesignSurface::elementAttributes(const Element &element)
{
    const QVariantMap answer
        = callValue(AdapterOperation::elementAttributes, {element.toVariant()}).toMap();
    return {answer.value(QStringLiteral("tag")).toString(),
        pairs(answer.value(QStringLiteral("attributes")))};
}

QList<std::pair<QString, QString>> WebEngineDesignSurface::objectParams(const Element &object)
{
    return pairs(callValue(AdapterOperation::objectParams, {object.toVariant()}));
}

bool WebEngineDesignSurface::setObjectParams(
    const Element &object, const QList<std::pair<QString, QString>> &params)
{
    QVariantList list;
    for (const auto &[name, value] : params)
        list.append(QVariant(QVariantList{name, value}));
    return callBool(AdapterOperation::setObjectParams, {object.toVariant(), list});
}

} // namespace Vantry::Platform
