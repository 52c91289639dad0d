#include <VantryHTMLEditor/StyleDialogValues.h>

namespace Vantry {

void SelectStyleValues::ClearValues()
{
    StyleSheet = -1;
    ClassName.clear();
    CssText.clear();
    NewStyleSheet.clear();
    Cancel = false;
}

void FlashPropertiesValues::ClearValues()
{
    MovieURL.clear();
    Quality.clear();
    WindowMode.clear();
    BGColor.clear();
    Play = 1;
    Loop = 1;
    ShowMenu = 1;
    DeviceFont = 0;
    EmbedMovie = 0;
    Cancel = false;
}

void ElementPropertiesValues::ClearValues()
{
    TagName.clear();
    Attributes.clear();
    Cancel = false;
}

} // namespace Vantry
