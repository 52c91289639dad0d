#pragma once

#include <VantryHTMLEditor/PropertyBag.h>

#include <QLatin1StringView>
#include <QString>
#include <QVariant>

#include <span>
#include <variant>

namespace Vantry::Control {

// One field per stored property of the control. Boolean and Integer fields are the
// interface's 16-bit kinds; FTP switches are texts holding "true" or "false".
struct Settings
{
    bool isDirty = false;
    bool UploadImagesWhenInserted = false;
    bool CopyImagesWhenInserted = false;
    qint16 SetDisplayHeight = 0;
    qint16 ScrollTop = 0;
    qint16 ScrollLeft = 0;
    QString GetHtmlSource;
    QString GetPlainText;
    QString SetHtmlSource;
    QString FTP_ServerName;
    QString FTP_UserName;
    QString FTP_Password;
    QString FTP_InitialDir;
    qint16 SetDisplayWidth = 0;
    QString ContentPages;
    QString PortalPages;
    QString ContentSites;
    QString BaseURL;
    QString ImageDirectory;
    QString ImageVCDirectory;
    QString FTP_FileNamePrefix;
    QString FTP_FileNameSuffix;
    QString FTP_RistrictedDirectory;
    QString FTP_AllowMultiableFiles = QStringLiteral("true");
    QString FTP_OverWriteFiles = QStringLiteral("false");
    QString FTP_IncermentExistingFileNames = QStringLiteral("true");
    bool IncermentExistingFileNames = false;
    QString FTP_StripInvalidCharacters = QStringLiteral("true");
    bool PreserveWhiteSpace = false;
    bool ReturnFullDocument = false;
    bool MakePathsRelativeOnSave = false;
    bool Enabled = true;
    QString LinkTargets;
    QString ToolbarDisplay;
    QString TabStripDisplay;
    QString PageTitle;
    QString KeyWords;
    QString ChangeImageOnDblClickTags;
    QString RelativePathToRoot;
    QString DefaultFontName = QStringLiteral("arial");
    QString DefaultFontSize = QStringLiteral("10pt");
    QString DefaultFontColor = QStringLiteral("#000000");
    QString ApplicationDirectoryPath;
    bool ChangeImageOnDblClick = false;
    bool DisableContextMenus = false;
    bool ScrollBars = false;
    bool SpellCheckAsYouType = true;
};

using SettingsField = std::variant<QString Settings::*, bool Settings::*, qint16 Settings::*>;

// What assigning a property does beyond storing and announcing it.
enum class PropertyEffect
{
    None,
    Layout,
    // ScrollTop moves the page sideways, as hosts have always relied on.
    ScrollSideways,
    ScrollLeft,
    Load,
    BaseUrl,
    PagePropertiesButton,
    EditingEnabled,
    ToolbarDisplay,
    TabStripDisplay,
    PageTitle,
    KeyWords,
    ScrollBars,
    SpellingUnderlines
};

// The description of one stored property: its interface name, where it lives in Settings,
// its bag key, the name announced to the container when it is assigned (empty when the
// assignment announces nothing) and what the assignment does to the editor.
struct PropertyInfo
{
    QLatin1StringView name;
    SettingsField field;
    QLatin1StringView bagName;
    QLatin1StringView announcedName;
    PropertyEffect effect = PropertyEffect::None;

    PropertyBag::Kind kind() const;
    QVariant defaultValue() const;
    QVariant get(const Settings &settings) const;
    // Stores value (already of the right kind) in settings.
    void set(Settings &settings, const QVariant &value) const;
};

// Every stored property in interface order.
std::span<const PropertyInfo> storedProperties();
// The stored properties in the order they are read from and written to the bag.
std::span<const PropertyInfo *const> bagOrder();
// Lookup by interface name (exact spelling); nullptr when unknown.
const PropertyInfo *findProperty(QStringView name);
// The property stored in the field; nullptr for a field no property stores.
const PropertyInfo *findProperty(SettingsField field);

// Fresh instance: every field to its default.
void initProperties(Settings &settings);
// Reads every field from the bag with its default, in bag order; no side effects.
void readProperties(Settings &settings, PropertyBag &bag);
// Writes every field to the bag in bag order, with the same defaults.
void writeProperties(const Settings &settings, PropertyBag &bag);

} // namespace Vantry::Control
