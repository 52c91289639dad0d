#include "commands/commandtables.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace Vantry::Commands {

namespace {

using P = CommandAction;
namespace C = DesignCommand;
constexpr int DoDefault = 0;
constexpr int PromptUser = 1;
constexpr int DontPrompt = 2;

// Indexed by command number; the option decides whether the surface may show its own dialog.
constexpr std::array<CommandEntry, 57> commandTable{{
    {},
    {P::Plain, C::Bold, DontPrompt},
    {P::Plain, C::Italic, DontPrompt},
    {P::Plain, C::Underline, DontPrompt},
    {P::Plain, C::OrderList, DontPrompt},
    {P::Plain, C::UnorderList, DontPrompt},
    {P::Plain, C::Outdent, DontPrompt},
    {P::Plain, C::Indent, DontPrompt},
    {P::Plain, C::JustifyLeft, DontPrompt},
    {P::Plain, C::JustifyCenter, DontPrompt},
    {P::Plain, C::JustifyRight, DontPrompt},
    {P::ColorPick, C::SetForeColor, DontPrompt},
    {P::ColorPick, C::SetBackColor, DontPrompt},
    {P::Hyperlink, C::Hyperlink, DontPrompt},
    {P::UploadImage, 0, 0},
    {P::InsertImage, 0, 0},
    {P::Plain, C::Cut, DontPrompt},
    {P::Plain, C::Copy, DontPrompt},
    {P::Plain, C::Paste, DoDefault},
    {P::Plain, C::Undo, DoDefault},
    {P::Plain, C::Redo, DoDefault},
    {P::ToggleBorders, 0, 0},
    {P::ToggleDetails, 0, 0},
    {P::AbsolutePosition, C::MakeAbsolute, DoDefault},
    {P::Plain, C::LockElement, DoDefault},
    {},
    {P::ToggleSnapToGrid, 0, 0},
    {P::InsertTableDialog, C::InsertTable, DontPrompt},
    {P::Plain, C::InsertRow, DoDefault},
    {P::GuardedDelete, C::DeleteRows, DoDefault},
    {P::Plain, C::InsertCol, DoDefault},
    {P::GuardedDelete, C::DeleteCols, DoDefault},
    {P::Plain, C::InsertCell, DoDefault},
    {P::GuardedDelete, C::DeleteCells, DoDefault},
    {P::Plain, C::MergeCells, DoDefault},
    {P::Plain, C::SplitCell, DoDefault},
    {P::Plain, C::Font, PromptUser},
    {P::Plain, C::SelectAll, DoDefault},
    {P::Plain, C::FindText, PromptUser},
    {P::Plain, C::BringToFront, DoDefault},
    {P::Plain, C::SendToBack, DoDefault},
    {P::Plain, C::BringForward, DoDefault},
    {P::Plain, C::SendBackward, DoDefault},
    {P::Plain, C::BringAboveText, DoDefault},
    {P::Plain, C::SendBelowText, DoDefault},
    {},
    {P::SpellCheck, 0, 0},
    {P::ImageFromArguments, 0, 0},
    {P::TableFromArguments, 0, 0},
    {},
    {P::PageProperties, 0, 0},
    {},
    {},
    {},
    {P::TableFromArgumentsToBody, 0, 0},
    {P::TableProperties, 0, 0},
    {P::CellProperties, 0, 0},
}};

// The rows are indexed by number; these pin the names to them.
static_assert(commandTable[std::size_t(Command::Bold)].platformCommand == C::Bold);
static_assert(
    commandTable[std::size_t(Command::SendBelowText)].platformCommand == C::SendBelowText);
static_assert(commandTable[std::size_t(Command::SpellCheck)].action == P::SpellCheck);
static_assert(commandTable[std::size_t(Command::CellProperties)].action == P::CellProperties);

struct KeyCommand
{
    const char *key;
    Command command;
};

// Matched in this order; "uploadimage" is lower case because that is the button's key.
using enum Command;
constexpr std::array<KeyCommand, 38> keyTable{{
    {"Bold", Bold},
    {"Italic", Italic},
    {"Underline", Underline},
    {"Numbers", NumberBullets},
    {"Bullets", Bullets},
    {"LeftAlign", LeftAlign},
    {"CenterAlign", CenterAlign},
    {"RightAlign", RightAlign},
    {"ForeColor", ForeColor},
    {"BackColor", BackColor},
    {"Outdent", Outdent},
    {"Indent", Indent},
    {"Hyperlink", Hyperlink},
    {"uploadimage", UploadImage},
    {"InsertImage", InsertImage},
    {"Cut", Cut},
    {"Copy", Copy},
    {"Paste", Paste},
    {"UnDo", UnDo},
    {"ReDo", ReDo},
    {"Border", Border},
    {"Details", Details},
    {"Absolute", AbsolutePosition},
    {"Lock", LockElement},
    {"ZOrder", ZOrder},
    {"SnapToGrid", SnapToGrid},
    {"SpellCheck", SpellCheck},
    {"InsertTable", InsertTable},
    {"InsertRow", InsertRow},
    {"DeleteRow", DeleteRow},
    {"InsertColumn", InsertColumn},
    {"DeleteColumn", DeleteColumn},
    {"InsertCell", InsertCell},
    {"DeleteCell", DeleteCell},
    {"MergeCells", MergeCells},
    {"SplitCells", SplitCells},
    {"PageProperties", PageProperties},
    {"InsertFlash", InsertFlash},
}};

QString quoted(QLatin1String name, const QString &value)
{
    return name + QLatin1String("=\"") + value + QLatin1String("\" ");
}

// Whole and fractional numbers count, as the host's scripts pass them; NaN, when it comes,
// is no count at all.
double partCount(const QString &value, int whenEmpty)
{
    if (value.isEmpty())
        return whenEmpty;
    bool ok = false;
    const double number = value.trimmed().toDouble(&ok);
    if (!ok || std::isnan(number))
        return 1;
    return number;
}

int boundedCount(double count, int maximum)
{
    return static_cast<int>(std::clamp(count, 0.0, double(maximum)));
}

} // namespace

CommandEntry commandEntry(Command command)
{
    const int number = static_cast<int>(command);
    if (number < 0 || number >= static_cast<int>(commandTable.size()))
        return {};
    return commandTable[static_cast<std::size_t>(number)];
}

std::optional<Command> toolbarKeyCommand(QStringView key)
{
    for (const KeyCommand &entry : keyTable) {
        if (key == QLatin1String(entry.key))
            return entry.command;
    }
    return std::nullopt;
}

QList<QString> toolbarKeys()
{
    QList<QString> keys;
    for (const KeyCommand &entry : keyTable)
        keys.append(QLatin1String(entry.key));
    return keys;
}

QString absolutePositionToolTip(CommandState makeAbsoluteStatus)
{
    // The misspelling is the product's own; hosts and users know the text as it is.
    return makeAbsoluteStatus == CommandState::Latched
        ? QStringLiteral("Set Position Attribute To Relitive")
        : QStringLiteral("Set Position Attribute To Absolute");
}

QString lastTablePartMessage(Command command)
{
    switch (command) {
    case Command::DeleteRow:
        return QStringLiteral("Unable to remove the last table row.");
    case Command::DeleteColumn:
        return QStringLiteral("Unable to remove the last table column.");
    case Command::DeleteCell:
        return QStringLiteral("Unable to remove the last table cell.");
    default:
        return {};
    }
}

QString tableArgumentsProblem(const TableArguments &table)
{
    const double rows = partCount(table.rows, 1);
    const double columns = partCount(table.columns, 3);
    if (rows >= 1 && rows < maxTableRows + 1 && columns >= 1 && columns < maxTableColumns + 1)
        return {};
    return QStringLiteral("A table needs 1 to %1 rows and 1 to %2 columns.")
        .arg(maxTableRows)
        .arg(maxTableColumns);
}

std::optional<TableArguments> tableArgumentsFromMap(
    const QVariantMap &arguments, bool withClass, QString *error)
{
    TableArguments table;
    const std::array<std::pair<QLatin1StringView, QString *>, 14> fields{{
        {QLatin1StringView("width"), &table.width},
        {QLatin1StringView("height"), &table.height},
        {QLatin1StringView("rows"), &table.rows},
        {QLatin1StringView("columns"), &table.columns},
        {QLatin1StringView("align"), &table.align},
        {QLatin1StringView("valign"), &table.valign},
        {QLatin1StringView("bgimage"), &table.bgImage},
        {QLatin1StringView("bgcolor"), &table.bgColor},
        {QLatin1StringView("border"), &table.border},
        {QLatin1StringView("cellspacing"), &table.cellSpacing},
        {QLatin1StringView("cellpadding"), &table.cellPadding},
        {QLatin1StringView("bordercolor"), &table.borderColor},
        {QLatin1StringView("style"), &table.style},
        {QLatin1StringView("class"), &table.className},
    }};
    const auto known = withClass ? fields.end() : fields.end() - 1;
    for (auto it = arguments.cbegin(); it != arguments.cend(); ++it) {
        const auto field = std::find_if(fields.begin(), known, [&](const auto &entry) {
            return it.key().compare(entry.first, Qt::CaseInsensitive) == 0;
        });
        if (field == known) {
            if (error)
                *error
                    = QStringLiteral("\"%1\" is not an argument of the table method").arg(it.key());
            return std::nullopt;
        }
        *field->second = it.value().toString();
    }
    return table;
}

QString tableMarkup(const TableArguments &table)
{
    int rows = boundedCount(partCount(table.rows, 1), maxTableRows);
    const int columns = boundedCount(partCount(table.columns, 3), maxTableColumns);

    QString markup = QStringLiteral("<TABLE ");
    const auto add = [&markup](QLatin1String name, const QString &value, bool leadingBlank) {
        if (value.isEmpty())
            return;
        if (leadingBlank)
            markup += QLatin1Char(' ');
        markup += quoted(name, value);
    };
    add(QLatin1String("Class"), table.className, false);
    add(QLatin1String("style"), table.style, false);
    add(QLatin1String("border"), table.border, false);
    add(QLatin1String("cellPadding"), table.cellPadding, true);
    add(QLatin1String("cellSpacing"), table.cellSpacing, true);
    add(QLatin1String("width"), table.width, true);
    add(QLatin1String("height"), table.height, true);
    add(QLatin1String("bordercolor"), table.borderColor, true);
    add(QLatin1String("bgcolor"), table.bgColor, true);
    add(QLatin1String("background"), table.bgImage, true);
    add(QLatin1String("align"), table.align, true);
    add(QLatin1String("valign"), table.valign, true);
    markup += QLatin1Char('>');

    // The empty division gives the caret a place to stand in each new cell.
    QString row = QStringLiteral("<TR>");
    for (int column = 0; column < columns; ++column)
        row += QLatin1String("<TD ><div></div></TD>");
    row += QLatin1String("</TR>");
    for (; rows > 0; --rows)
        markup += row;
    markup += QLatin1String("</TABLE>");
    return markup;
}

QString imageMarkup(const ImageArguments &image)
{
    const auto part = [](QLatin1String name, const QString &value) {
        return value.isEmpty() ? QString() : quoted(name, value);
    };
    QString style = QStringLiteral("STYLE=\"");
    if (!image.width.isEmpty())
        style += QLatin1String("WIDTH:") + image.width + QLatin1Char(';');
    if (!image.height.isEmpty())
        style += QLatin1String("HEIGHT:") + image.height + QLatin1Char(';');
    style += image.style + QLatin1String("\" ");

    return QLatin1String("<IMG ") + part(QLatin1String("Width"), image.width)
        + part(QLatin1String("Height"), image.height) + part(QLatin1String("VSPACE"), image.vspace)
        + style + part(QLatin1String("HSPACE"), image.hspace)
        + part(QLatin1String("ALIGN"), image.align) + part(QLatin1String("SRC"), image.src)
        + part(QLatin1String("BORDER"), image.border) + part(QLatin1String("ALT"), image.alt)
        + QLatin1Char('>');
}

} // namespace Vantry::Commands
