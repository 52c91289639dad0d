#include "commands/toolbarmodel.h"

#include "commands/commandsink.h"

#include <algorithm>
#include <numeric>

namespace Vantry::Commands {

int twipsToPixels(int twips, qreal logicalDpi)
{
    return qRound(twips / 15.0 * logicalDpi / 96.0);
}

namespace {

// Indexed by button member minus one. Two spellings differ from the toolbar's own keys;
// the case-insensitive lookups make them meet.
constexpr std::array<QLatin1String, ToolbarModel::lastButton> buttonKeys{QLatin1String("Font"),
    QLatin1String("FontSize"), QLatin1String("Bold"), QLatin1String("Italic"),
    QLatin1String("Underline"), QLatin1String("ForeColor"), QLatin1String("BackColor"),
    QLatin1String("LeftAlign"), QLatin1String("CenterAlign"), QLatin1String("RightAlign"),
    QLatin1String("Numbers"), QLatin1String("Bullets"), QLatin1String("Cut"), QLatin1String("Copy"),
    QLatin1String("Paste"), QLatin1String("UnDo"), QLatin1String("ReDo"), QLatin1String("Outdent"),
    QLatin1String("Indent"), QLatin1String("Hyperlink"), QLatin1String("UploadImage"),
    QLatin1String("InsertImage"), QLatin1String("InsertFlash"), QLatin1String("Border"),
    QLatin1String("Details"), QLatin1String("Absolute"), QLatin1String("Lock"),
    QLatin1String("SnapToGrid"), QLatin1String("SpellCheck"), QLatin1String("PageProperties"),
    QLatin1String("InsertTABLE"), QLatin1String("InsertRow"), QLatin1String("DeleteRow"),
    QLatin1String("InsertColumn"), QLatin1String("DeleteColumn"), QLatin1String("InsertCell"),
    QLatin1String("DeleteCell"), QLatin1String("MergeCells"), QLatin1String("SplitCells")};

using Entry = ToolbarModel::StateEntry;
namespace C = DesignCommand;

// The order is the order in which the host hears about the buttons.
constexpr std::array<Entry, ToolbarModel::stateEntryCount> entries{{
    {QLatin1String("Bold"), C::Bold},
    {QLatin1String("Italic"), C::Italic},
    {QLatin1String("Underline"), C::Underline},
    {QLatin1String("ForeColor"), C::SetForeColor},
    {QLatin1String("BackColor"), C::SetBackColor},
    {QLatin1String("LeftAlign"), C::JustifyLeft},
    {QLatin1String("CenterAlign"), C::JustifyCenter},
    {QLatin1String("RightAlign"), C::JustifyRight},
    {QLatin1String("Numbers"), C::OrderList},
    {QLatin1String("Bullets"), C::UnorderList},
    {QLatin1String("Outdent"), C::Outdent},
    {QLatin1String("Indent"), C::Indent},
    {QLatin1String("Hyperlink"), C::Hyperlink},
    {QLatin1String("InsertImage"), C::Image},
    {QLatin1String("Cut"), C::Cut},
    {QLatin1String("Copy"), C::Copy},
    {QLatin1String("Paste"), C::Paste},
    {QLatin1String("UnDo"), C::Undo},
    {QLatin1String("ReDo"), C::Redo},
    {QLatin1String("Border"), 0},
    {QLatin1String("Details"), 0},
    {QLatin1String("Absolute"), C::MakeAbsolute},
    {QLatin1String("Lock"), C::LockElement},
    {QLatin1String("ZOrder"), 0},
    {QLatin1String("SnapToGrid"), 0},
    {QLatin1String("InsertTable"), C::InsertTable},
    {QLatin1String("InsertRow"), C::InsertRow},
    {QLatin1String("DeleteRow"), C::DeleteRows},
    {QLatin1String("InsertColumn"), C::InsertCol},
    {QLatin1String("DeleteColumn"), C::DeleteCols},
    {QLatin1String("InsertCell"), C::InsertCell},
    {QLatin1String("DeleteCell"), C::DeleteCells},
    {QLatin1String("MergeCells"), C::MergeCells},
    {QLatin1String("SplitCells"), C::SplitCell},
    {QLatin1String("uploadimage"), 0},
    {QLatin1String("SpellCheck"), 0},
    {QLatin1String("PageProperties"), 0},
    {QLatin1String("InsertFlash"), 0},
}};

QString dictionaryKey(const QString &key)
{
    return key.toLower();
}

} // namespace

ToolbarModel::ToolbarModel()
{
    resetStates();
}

QString ToolbarModel::buttonKey(int member)
{
    if (!isButtonMember(member))
        return {};
    return buttonKeys[static_cast<std::size_t>(member - firstButton)];
}

const std::array<ToolbarModel::StateEntry, ToolbarModel::stateEntryCount> &
ToolbarModel::stateEntries()
{
    return entries;
}

QList<int> ToolbarModel::statusCommands()
{
    QList<int> ids;
    for (const Entry &entry : entries) {
        if (entry.statusCommand != 0 && !ids.contains(entry.statusCommand))
            ids.append(entry.statusCommand);
    }
    return ids;
}

int ToolbarModel::displayOrder(int toolbar) const
{
    if (!isToolbar(toolbar))
        return 0;
    const auto row = std::find(rowTops.begin(), rowTops.end(), m_tops[toolbar]);
    return row == rowTops.end() ? 0 : static_cast<int>(row - rowTops.begin());
}

bool ToolbarModel::setDisplayOrder(int toolbar, int order)
{
    if (!isToolbar(toolbar) || order < 0 || order >= toolbarCount)
        return false;
    const int wanted = rowTops[order];
    const auto occupant = std::find(m_tops.begin(), m_tops.end(), wanted);
    if (occupant != m_tops.end())
        *occupant = m_tops[toolbar];
    m_tops[toolbar] = wanted;
    return true;
}

int ToolbarModel::toolbarTop(int toolbar) const
{
    return isToolbar(toolbar) ? m_tops[toolbar] : 0;
}

std::array<int, ToolbarModel::toolbarCount> ToolbarModel::toolbarsTopToBottom() const
{
    std::array<int, toolbarCount> order{};
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(
        order.begin(), order.end(), [this](int a, int b) { return m_tops[a] < m_tops[b]; });
    return order;
}

void ToolbarModel::resetStates()
{
    m_enabled.clear();
    m_latched.clear();
    for (const Entry &entry : entries) {
        m_enabled.insert(dictionaryKey(entry.key), true);
        m_latched.insert(dictionaryKey(entry.key), true);
    }
}

std::optional<bool> ToolbarModel::permission(const QString &key) const
{
    const auto found = m_enabled.constFind(dictionaryKey(key));
    if (found == m_enabled.constEnd())
        return std::nullopt;
    return *found;
}

void ToolbarModel::setPermission(const QString &key, bool allowed)
{
    m_enabled.insert(dictionaryKey(key), allowed);
}

std::optional<bool> ToolbarModel::latched(const QString &key) const
{
    const auto found = m_latched.constFind(dictionaryKey(key));
    if (found == m_latched.constEnd())
        return std::nullopt;
    return *found;
}

void ToolbarModel::setLatched(const QString &key, bool latched)
{
    m_latched.insert(dictionaryKey(key), latched);
}

} // namespace Vantry::Commands
