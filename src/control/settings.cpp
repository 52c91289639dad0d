#include "control/settings.h"

#include <array>
#include <string_view>
#include <type_traits>

namespace Vantry::Control {

namespace {

// A field with its interface name, which is the field's own.
#define VANTRY_FIELD(field) QLatin1StringView(#field), &Settings::field

// Stored, persisted and announced under its own name.
constexpr PropertyInfo plain(
    QLatin1StringView name, SettingsField field, PropertyEffect effect = PropertyEffect::None)
{
    return {name, field, name, name, effect};
}

// Persisted or announced under another name; hosts and saved bags depend on these spellings.
constexpr PropertyInfo renamed(
    QLatin1StringView name, SettingsField field, const char *bagName, const char *announcedName)
{
    return {name, field, QLatin1StringView(bagName), QLatin1StringView(announcedName)};
}

using enum PropertyEffect;

constexpr PropertyInfo propertyTable[] = {
    plain(VANTRY_FIELD(isDirty)),
    plain(VANTRY_FIELD(UploadImagesWhenInserted)),
    plain(VANTRY_FIELD(CopyImagesWhenInserted)),
    plain(VANTRY_FIELD(SetDisplayHeight), Layout),
    plain(VANTRY_FIELD(ScrollTop), ScrollSideways),
    plain(VANTRY_FIELD(ScrollLeft), ScrollLeft),
    plain(VANTRY_FIELD(GetHtmlSource)),
    renamed(VANTRY_FIELD(GetPlainText), "GetHtmlText", ""),
    plain(VANTRY_FIELD(SetHtmlSource), Load),
    plain(VANTRY_FIELD(FTP_ServerName)),
    renamed(VANTRY_FIELD(FTP_UserName), "FTP_Username", "FTP_UserName"),
    plain(VANTRY_FIELD(FTP_Password)),
    plain(VANTRY_FIELD(FTP_InitialDir)),
    plain(VANTRY_FIELD(SetDisplayWidth), Layout),
    plain(VANTRY_FIELD(ContentPages)),
    plain(VANTRY_FIELD(PortalPages)),
    plain(VANTRY_FIELD(ContentSites)),
    plain(VANTRY_FIELD(BaseURL), BaseUrl),
    plain(VANTRY_FIELD(ImageDirectory)),
    plain(VANTRY_FIELD(ImageVCDirectory)),
    plain(VANTRY_FIELD(FTP_FileNamePrefix)),
    plain(VANTRY_FIELD(FTP_FileNameSuffix)),
    plain(VANTRY_FIELD(FTP_RistrictedDirectory)),
    plain(VANTRY_FIELD(FTP_AllowMultiableFiles)),
    plain(VANTRY_FIELD(FTP_OverWriteFiles)),
    plain(VANTRY_FIELD(FTP_IncermentExistingFileNames)),
    renamed(VANTRY_FIELD(IncermentExistingFileNames), "IncermentExistingFileNames",
        "FTP_IncermentExistingFileNames"),
    plain(VANTRY_FIELD(FTP_StripInvalidCharacters)),
    plain(VANTRY_FIELD(PreserveWhiteSpace)),
    plain(VANTRY_FIELD(ReturnFullDocument), PagePropertiesButton),
    plain(VANTRY_FIELD(MakePathsRelativeOnSave)),
    plain(VANTRY_FIELD(Enabled), EditingEnabled),
    plain(VANTRY_FIELD(LinkTargets)),
    plain(VANTRY_FIELD(ToolbarDisplay), ToolbarDisplay),
    plain(VANTRY_FIELD(TabStripDisplay), TabStripDisplay),
    plain(VANTRY_FIELD(PageTitle), PageTitle),
    plain(VANTRY_FIELD(KeyWords), KeyWords),
    plain(VANTRY_FIELD(ChangeImageOnDblClickTags)),
    plain(VANTRY_FIELD(RelativePathToRoot)),
    plain(VANTRY_FIELD(DefaultFontName)),
    plain(VANTRY_FIELD(DefaultFontSize)),
    plain(VANTRY_FIELD(DefaultFontColor)),
    plain(VANTRY_FIELD(ApplicationDirectoryPath)),
    plain(VANTRY_FIELD(ChangeImageOnDblClick)),
    plain(VANTRY_FIELD(DisableContextMenus)),
    plain(VANTRY_FIELD(ScrollBars), ScrollBars),
    plain(VANTRY_FIELD(SpellCheckAsYouType), SpellingUnderlines),
};

#undef VANTRY_FIELD

// The order of the saved format, which is not the interface order.
constexpr std::string_view bagOrderNames[] = {
    "SetDisplayHeight",
    "ScrollTop",
    "ScrollLeft",
    "GetHtmlSource",
    "GetHtmlText",
    "SetHtmlSource",
    "SetDisplayWidth",
    "BaseURL",
    "ImageDirectory",
    "ImageVCDirectory",
    "ContentPages",
    "PortalPages",
    "ContentSites",
    "FTP_ServerName",
    "FTP_Username",
    "FTP_Password",
    "FTP_InitialDir",
    "isDirty",
    "UploadImagesWhenInserted",
    "CopyImagesWhenInserted",
    "FTP_FileNamePrefix",
    "FTP_FileNameSuffix",
    "FTP_RistrictedDirectory",
    "FTP_AllowMultiableFiles",
    "FTP_OverWriteFiles",
    "FTP_IncermentExistingFileNames",
    "FTP_StripInvalidCharacters",
    "PreserveWhiteSpace",
    "ReturnFullDocument",
    "MakePathsRelativeOnSave",
    "Enabled",
    "LinkTargets",
    "ToolbarDisplay",
    "TabStripDisplay",
    "PageTitle",
    "KeyWords",
    "ChangeImageOnDblClickTags",
    "RelativePathToRoot",
    "ChangeImageOnDblClick",
    "DisableContextMenus",
    "ScrollBars",
    "IncermentExistingFileNames",
    "DefaultFontName",
    "DefaultFontSize",
    "DefaultFontColor",
    "ApplicationDirectoryPath",
    "SpellCheckAsYouType",
};

constexpr std::string_view toStdView(QLatin1StringView view)
{
    return {view.data(), std::size_t(view.size())};
}

constexpr auto bagOrderTable = [] {
    std::array<const PropertyInfo *, std::size(bagOrderNames)> order{};
    for (std::size_t i = 0; i < order.size(); ++i) {
        for (const PropertyInfo &info : propertyTable) {
            if (toStdView(info.bagName) == bagOrderNames[i])
                order[i] = &info;
        }
    }
    return order;
}();

// Every property is read and written exactly once.
constexpr bool isPermutation()
{
    if (bagOrderTable.size() != std::size(propertyTable))
        return false;
    for (std::size_t i = 0; i < bagOrderTable.size(); ++i) {
        if (!bagOrderTable[i])
            return false;
        for (std::size_t j = 0; j < i; ++j) {
            if (bagOrderTable[j] == bagOrderTable[i])
                return false;
        }
    }
    return true;
}
static_assert(isPermutation(), "the bag order must name every stored property once");

template <typename T> constexpr PropertyBag::Kind kindOf()
{
    if constexpr (std::is_same_v<T, QString>)
        return PropertyBag::Kind::String;
    else if constexpr (std::is_same_v<T, bool>)
        return PropertyBag::Kind::Boolean;
    else
        return PropertyBag::Kind::Integer;
}

} // namespace

PropertyBag::Kind PropertyInfo::kind() const
{
    return std::visit(
        [](auto member) {
            return kindOf<std::remove_cvref_t<decltype(std::declval<Settings>().*member)>>();
        },
        field);
}

QVariant PropertyInfo::defaultValue() const
{
    static const Settings defaults;
    return get(defaults);
}

QVariant PropertyInfo::get(const Settings &settings) const
{
    return std::visit(
        [&settings](auto member) -> QVariant {
            const auto &value = settings.*member;
            if constexpr (std::is_same_v<std::remove_cvref_t<decltype(value)>, qint16>)
                return int(value);
            else
                return value;
        },
        field);
}

void PropertyInfo::set(Settings &settings, const QVariant &value) const
{
    std::visit(
        [&settings, &value](auto member) {
            auto &target = settings.*member;
            using T = std::remove_cvref_t<decltype(target)>;
            if constexpr (std::is_same_v<T, QString>)
                target = value.toString();
            else if constexpr (std::is_same_v<T, bool>)
                target = value.toBool();
            else
                target = static_cast<qint16>(value.toInt());
        },
        field);
}

std::span<const PropertyInfo> storedProperties()
{
    return propertyTable;
}

std::span<const PropertyInfo *const> bagOrder()
{
    return bagOrderTable;
}

const PropertyInfo *findProperty(QStringView name)
{
    for (const PropertyInfo &info : propertyTable) {
        if (name == info.name)
            return &info;
    }
    return nullptr;
}

const PropertyInfo *findProperty(SettingsField field)
{
    for (const PropertyInfo &info : propertyTable) {
        if (field == info.field)
            return &info;
    }
    return nullptr;
}

void initProperties(Settings &settings)
{
    settings = Settings();
}

void readProperties(Settings &settings, PropertyBag &bag)
{
    for (const PropertyInfo *info : bagOrder())
        info->set(settings, bag.readProperty(info->bagName, info->defaultValue(), info->kind()));
}

void writeProperties(const Settings &settings, PropertyBag &bag)
{
    for (const PropertyInfo *info : bagOrder())
        bag.writeProperty(info->bagName, info->get(settings), info->defaultValue());
}

} // namespace Vantry::Control
