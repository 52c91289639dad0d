#pragma once

#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QString>
#include <QStringList>

namespace Vantry {

// What the link dialog shows and returns. The editor calls ClearValues, fills the values
// and shows the dialog; nothing is written when Cancel is true.
struct VANTRYHTMLEDITOR_EXPORT LinkPropertiesValues
{
    // The three kinds of link, and the panel shown for each.
    enum LinkKind
    {
        LinkAddress = 0,
        LinkContentPage = 1,
        LinkPortalPage = 2
    };

    // Set by the editor from its ContentSites, ContentPages and PortalPages properties, and
    // the target list read from LinkTargets.
    QString ContentSites;
    QString ContentPages;
    QString PortalPages;
    QStringList Targets;

    // Both ways: the kind, the identifiers of the linked site, content page and portal page
    // (as text; entries with these identifiers are selected), and the address.
    int LinkOption = LinkAddress;
    QString SiteID;
    QString PageID;
    QString PortalPageID;
    QString URL;
    // The target frame, the pop-up text (the link's title, which pops up over it), and the
    // style's colour and text decoration.
    QString Target;
    QString Popup;
    QString LinkColor;
    QString Decoration;
    bool Cancel = false;

    // Empties everything the user sets; the host's lists stay.
    void ClearValues();
};

} // namespace Vantry
