#include "dialogs/linklists.h"

#include <QDomDocument>
#include <QRegularExpression>

namespace Vantry::Dialogs {

namespace {

struct ListAttributes
{
    const char *id;
    const char *name;
    const char *address;
};

ListAttributes attributesOf(LinkListKind kind)
{
    switch (kind) {
    case LinkListKind::Sites:
        return {"ArticleSiteID", "ArticleSiteName", nullptr};
    case LinkListKind::Pages:
        return {"ArticleSectionID", "ArticleSectionName", "PageURL"};
    case LinkListKind::PortalPages:
        break;
    }
    return {"PortalPageID", "PortalPageName", "PageURL"};
}

QString listName(LinkListKind kind)
{
    switch (kind) {
    case LinkListKind::Sites:
        return QStringLiteral("content sites");
    case LinkListKind::Pages:
        return QStringLiteral("content pages");
    case LinkListKind::PortalPages:
        break;
    }
    return QStringLiteral("portal pages");
}

// The identifier an attribute holds, 16 or 32 bits wide.
std::optional<qint32> identifier(const QDomElement &element, const char *attribute, bool narrow)
{
    bool ok = false;
    const QString text = element.attribute(QLatin1String(attribute)).trimmed();
    const qint32 value = narrow ? text.toShort(&ok) : text.toInt(&ok);
    return ok ? std::optional<qint32>(value) : std::nullopt;
}

LinkListError badIdentifier(const QDomElement &element, const char *attribute)
{
    const QString value = element.attribute(QLatin1String(attribute));
    return {value.isEmpty()
            ? QStringLiteral("%1 has no %2.").arg(element.tagName(), QLatin1String(attribute))
            : QStringLiteral("%1 \"%2\" is not an identifier this list can hold.")
                  .arg(QLatin1String(attribute), value),
        element.lineNumber(), element.columnNumber()};
}

const QLatin1String wrapStart("<xml>");
const QLatin1String wrapEnd("</xml>");

// Positions are the host's: a wrapper put around the text is not counted.
bool parse(const QString &text, bool wrap, QDomDocument *document, LinkListError *error)
{
    QString reason;
    int line = 0;
    int column = 0;
    if (document->setContent(wrap ? wrapStart + text + wrapEnd : text, &reason, &line, &column))
        return true;
    if (wrap && line == 1)
        column = qMax(1, column - int(wrapStart.size()));
    *error = {reason, line, column};
    return false;
}

} // namespace

QString LinkListError::message(LinkListKind kind) const
{
    return QStringLiteral("Could not read the %1 (line %2, column %3): %4")
        .arg(listName(kind))
        .arg(line)
        .arg(column)
        .arg(reason);
}

QString linkListPrompt(LinkListKind kind)
{
    switch (kind) {
    case LinkListKind::Sites:
        return QStringLiteral("Select a Site -->");
    case LinkListKind::Pages:
        return QStringLiteral("Select a page -->");
    case LinkListKind::PortalPages:
        break;
    }
    return QStringLiteral("Select a portal page -->");
}

LinkListLoad loadLinkList(
    LinkListKind kind, const QString &xml, const QString &currentId, qint32 siteId)
{
    QDomDocument document;
    LinkListLoad load;
    if (!parse(xml, kind == LinkListKind::PortalPages, &document, &load.error))
        return load;

    bool currentOk = false;
    const qint32 current = currentId.trimmed().toInt(&currentOk);
    const ListAttributes names = attributesOf(kind);
    const bool narrow = kind == LinkListKind::Pages;
    LinkList list;
    list.names.append(linkListPrompt(kind));
    list.ids.append(0);
    list.addresses.append(QString());
    for (QDomElement element = document.documentElement().firstChildElement(); !element.isNull();
         element = element.nextSiblingElement()) {
        if (kind == LinkListKind::Pages) {
            const std::optional<qint32> site = identifier(element, "ArticleSiteID", true);
            if (!site) {
                load.error = badIdentifier(element, "ArticleSiteID");
                return load;
            }
            if (*site != siteId)
                continue;
        }
        const std::optional<qint32> id = identifier(element, names.id, narrow);
        if (!id) {
            load.error = badIdentifier(element, names.id);
            return load;
        }
        if (currentOk && *id == current)
            list.current = int(list.names.size());
        list.ids.append(*id);
        list.names.append(element.attribute(QLatin1String(names.name)));
        list.addresses.append(
            names.address ? element.attribute(QLatin1String(names.address)) : QString());
    }
    load.list = list;
    return load;
}

QStringList linkTargets(const QString &hostText)
{
    const QString text = hostText.trimmed();
    QStringList targets;
    if (text.startsWith(QLatin1Char('<'))) {
        QDomDocument document;
        LinkListError ignored;
        if (parse(text, true, &document, &ignored)) {
            for (QDomElement element = document.documentElement().firstChildElement();
                 !element.isNull(); element = element.nextSiblingElement()) {
                QString name = element.attribute(QStringLiteral("Target"));
                if (name.isEmpty())
                    name = element.attribute(QStringLiteral("Name"));
                if (name.isEmpty())
                    name = element.text();
                if (!name.trimmed().isEmpty())
                    targets.append(name.trimmed());
            }
        }
    } else {
        static const QRegularExpression separators(QStringLiteral("[;,\\r\\n]"));
        for (const QString &name : text.split(separators, Qt::SkipEmptyParts)) {
            if (!name.trimmed().isEmpty())
                targets.append(name.trimmed());
        }
    }
    if (targets.isEmpty()) {
        targets = {QStringLiteral("_blank"), QStringLiteral("_parent"), QStringLiteral("_self"),
            QStringLiteral("_top")};
    }
    return targets;
}

QString linkValidationMessage(int kind, int siteIndex, int pageIndex, int portalIndex)
{
    if (kind == LinkPropertiesValues::LinkPortalPage && portalIndex <= 0)
        return QStringLiteral("Please select a Portal Page.");
    if (kind == LinkPropertiesValues::LinkContentPage) {
        if (siteIndex <= 0)
            return QStringLiteral("Please select a CMS Site.");
        if (pageIndex <= 0)
            return QStringLiteral("Please select a CMS Page.");
    }
    return {};
}

QString styleColorText(const QString &color)
{
    static const QRegularExpression rgb(
        QStringLiteral(
            "^\\s*rgb\\(\\s*(\\d{1,3})\\s*,\\s*(\\d{1,3})\\s*,\\s*(\\d{1,3})\\s*\\)\\s*$"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = rgb.match(color);
    if (!match.hasMatch())
        return color;
    QString html = QStringLiteral("#");
    for (int part = 1; part <= 3; ++part) {
        const int value = match.captured(part).toInt();
        if (value > 255)
            return color;
        html += QStringLiteral("%1").arg(value, 2, 16, QLatin1Char('0')).toUpper();
    }
    return html;
}

QString linkReference(const LinkPropertiesValues &values)
{
    switch (values.LinkOption) {
    case LinkPropertiesValues::LinkContentPage:
        return QLatin1String("cms:") + values.SiteID + QLatin1Char(':') + values.PageID;
    case LinkPropertiesValues::LinkPortalPage:
        return QLatin1String("portal:") + values.PortalPageID;
    default:
        return {};
    }
}

void readLinkReference(const QString &reference, LinkPropertiesValues &values)
{
    const QStringList parts = reference.trimmed().split(QLatin1Char(':'));
    if (parts.size() == 3 && parts.at(0).compare(QLatin1String("cms"), Qt::CaseInsensitive) == 0) {
        values.LinkOption = LinkPropertiesValues::LinkContentPage;
        values.SiteID = parts.at(1);
        values.PageID = parts.at(2);
    } else if (parts.size() == 2
        && parts.at(0).compare(QLatin1String("portal"), Qt::CaseInsensitive) == 0) {
        values.LinkOption = LinkPropertiesValues::LinkPortalPage;
        values.PortalPageID = parts.at(1);
    } else {
        values.LinkOption = LinkPropertiesValues::LinkAddress;
    }
}

} // namespace Vantry::Dialogs
