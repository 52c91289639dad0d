#include "dialogs/pagerules.h"

#include <QStringList>

namespace Vantry::Dialogs {

namespace {

using V = PagePropertiesValues;

PageField field(const char *attribute, QString V::*value)
{
    return {QLatin1String(attribute), value};
}

} // namespace

QList<PageField> pageReadOrder()
{
    return {field("background", &V::BackgroundImage), field("bgColor", &V::BackgroundColor),
        field("", &V::Title), field("Text", &V::TextColor), field("link", &V::LinkColor),
        field("vLink", &V::VisitedLinkColor), field("aLink", &V::ActiveLinkColor),
        field("leftMargin", &V::LeftMargin), field("topMargin", &V::TopMargin),
        field("bottomMargin", &V::BottomMargin), field("rightMargin", &V::RightMargin)};
}

QList<PageField> pageWriteOrder()
{
    return {field("bgColor", &V::BackgroundColor), field("Text", &V::TextColor),
        field("link", &V::LinkColor), field("vLink", &V::VisitedLinkColor),
        field("aLink", &V::ActiveLinkColor), field("leftMargin", &V::LeftMargin),
        field("topMargin", &V::TopMargin), field("bottomMargin", &V::BottomMargin),
        field("rightMargin", &V::RightMargin), field("background", &V::BackgroundImage),
        field("", &V::Title)};
}

QStringList pageReadAttributes()
{
    QStringList names;
    for (const PageField &page : pageReadOrder()) {
        if (!page.attribute.isEmpty())
            names.append(page.attribute);
    }
    return names;
}

void fillPageValues(PagePropertiesValues &values, const QList<std::optional<QString>> &attributes,
    const QString &title)
{
    qsizetype next = 0;
    for (const PageField &page : pageReadOrder()) {
        values.*page.value
            = page.attribute.isEmpty() ? title : attributes.value(next++).value_or(QString());
    }
}

QList<PageEdit> pageEdits(const PagePropertiesValues &values)
{
    QList<PageEdit> edits;
    for (const PageField &page : pageWriteOrder()) {
        if (page.attribute.isEmpty())
            continue;
        const QString &value = values.*page.value;
        edits.append({page.attribute, value.isEmpty() ? std::nullopt : std::optional(value)});
    }
    return edits;
}

QString documentPropertyAttribute(const QString &property)
{
    static const char *const pairs[][2]
        = {{"DocumentBackgroundColor", "bgColor"}, {"DocumentForegroundColor", "Text"},
            {"DocumentBackgroundImage", "background"}, {"DocumentLinkColor", "link"},
            {"DocumentvLinkColor", "vLink"}, {"DocumentaLinkColor", "aLink"},
            {"DocumentLeftMargin", "leftMargin"}, {"DocumentTopMargin", "topMargin"},
            {"DocumentRightMargin", "rightMargin"}, {"DocumentBottomMargin", "bottomMargin"}};
    for (const auto &pair : pairs) {
        if (property == QLatin1String(pair[0]))
            return QLatin1String(pair[1]);
    }
    return {};
}

} // namespace Vantry::Dialogs
