#include <VantryHTMLEditor/LinkDialogValues.h>
#include <VantryHTMLEditor/PageDialogValues.h>

namespace Vantry {

void LinkPropertiesValues::ClearValues()
{
    LinkPropertiesValues cleared;
    cleared.ContentSites = ContentSites;
    cleared.ContentPages = ContentPages;
    cleared.PortalPages = PortalPages;
    cleared.Targets = Targets;
    *this = cleared;
}

void PagePropertiesValues::ClearValues()
{
    PagePropertiesValues cleared;
    cleared.ImageDirectory = ImageDirectory;
    *this = cleared;
}

} // namespace Vantry
