#pragma once

#include <VantryHTMLEditor/LinkDialogValues.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// The link dialog's rules: the host's XML lists, the target list and the content-management
// reference an anchor keeps. Qt Core and QtXml only.
namespace Vantry::Dialogs {

enum class LinkListKind
{
    Sites,
    Pages,
    PortalPages
};

struct LinkListEntry
{
    qint32 id = 0;
    QString name;
    QString address;
};

// One drop-down list: entry 0 is the prompt with an empty address, then the entries in
// document order. current is the index of the entry selected on opening.
struct LinkList
{
    QStringList names;
    QList<qint32> ids;
    QStringList addresses;
    int current = 0;
};

// Why a list could not be loaded; the list it was to fill stays as it was.
struct LinkListError
{
    QString reason;
    int line = 0;
    int column = 0;
    // "Could not read the portal pages: REASON (line L, column C)."
    QString message(LinkListKind kind) const;
};

struct LinkListLoad
{
    std::optional<LinkList> list;
    LinkListError error;
};

// The prompt entry of each list ("Select a Site -->" ...).
QString linkListPrompt(LinkListKind kind);
// Loads a list from the host's text. Portal pages are wrapped in "<xml>...</xml>", so a bare
// run of sibling elements will do; the other two must be one document. Only attributes are
// read: sites "ArticleSiteID", "ArticleSiteName"; pages "ArticleSiteID" (only those equal
// to siteId are listed), "ArticleSectionID", "ArticleSectionName", "PageURL"; portal pages
// "PortalPageID", "PortalPageName", "PageURL". Page identifiers are 16-bit, the others
// 32-bit: an identifier that is missing or out of range fails the load, naming its place.
// The entry whose identifier equals currentId (as numbers) is selected.
LinkListLoad loadLinkList(
    LinkListKind kind, const QString &xml, const QString &currentId, qint32 siteId = 0);

// The target list from the host's LinkTargets: frame names separated by ";", "," or line
// breaks, or, when the text starts with "<", elements read like the portal pages whose
// "Target" attribute (else "Name", else their text) is the name. Empty, or unreadable,
// gives "_blank", "_parent", "_self", "_top".
QStringList linkTargets(const QString &hostText);

// The message OK shows when the chosen kind lacks its page, else empty. Indexes are those
// of the lists, 0 the prompt.
QString linkValidationMessage(int kind, int siteIndex, int pageIndex, int portalIndex);

// A colour as a style gives it back ("rgb(192, 0, 0)") in the dialogs' "#RRGGBB"; anything
// else (a name, a colour with transparency) as it is.
QString styleColorText(const QString &color);

// The reference an anchor keeps in dataFld: "cms:SITE:PAGE" for a content page,
// "portal:PAGE" for a portal page, nothing for an address.
QString linkReference(const LinkPropertiesValues &values);
// Sets LinkOption and the identifiers from a reference; anything else is an address.
void readLinkReference(const QString &reference, LinkPropertiesValues &values);

} // namespace Vantry::Dialogs
