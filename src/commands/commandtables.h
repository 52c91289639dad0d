#pragma once

#include "dialogs/tablemarkup.h"
#include "commands/command.h"
#include "commands/commandsink.h"

#include <QList>
#include <QString>
#include <QStringView>
#include <QVariantMap>

#include <optional>

namespace Vantry::Commands {

// What a command does.
enum class CommandAction
{
    Inert,
    Plain,
    ColorPick,
    Hyperlink,
    UploadImage,
    InsertImage,
    ToggleBorders,
    ToggleDetails,
    AbsolutePosition,
    ToggleSnapToGrid,
    InsertTableDialog,
    GuardedDelete,
    SpellCheck,
    ImageFromArguments,
    TableFromArguments,
    PageProperties,
    TableFromArgumentsToBody,
    TableProperties,
    CellProperties
};

struct CommandEntry
{
    CommandAction action = CommandAction::Inert;
    // The surface command and the option it runs with; 0 when the action runs none.
    int platformCommand = 0;
    int option = 0;
};

// The entry of a command; numbers outside 1 to 56 are inert.
CommandEntry commandEntry(Command command);

// The command of a toolbar button key, compared case-sensitively.
std::optional<Command> toolbarKeyCommand(QStringView key);

// The toolbar keys in the order they are matched.
QList<QString> toolbarKeys();

// The tooltip of the "Absolute" button after a toggle, naming what the next click does.
QString absolutePositionToolTip(CommandState makeAbsoluteStatus);

// The refusal of a guarded deletion (DeleteRow, DeleteColumn, DeleteCell); empty for other
// commands.
QString lastTablePartMessage(Command command);

// The arguments of the table-from-arguments commands, as passed by the host.
struct TableArguments
{
    QString width;
    QString height;
    QString rows;
    QString columns;
    QString align;
    QString valign;
    QString bgImage;
    QString bgColor;
    QString border;
    QString cellSpacing;
    QString cellPadding;
    QString borderColor;
    QString style;
    QString className;
};

using Dialogs::maxTableColumns;
using Dialogs::maxTableRows;

// Why no table can be built from these arguments (rows or columns out of 1 to the maximum);
// empty when one can.
QString tableArgumentsProblem(const TableArguments &table);

// The table's markup; rows and columns out of range are brought into it.
QString tableMarkup(const TableArguments &table);

// Table arguments a host passes by name: keys are the argument names without their prefix
// ("Width", "BGColor", "Class"), in any letter case. Nothing, with *error naming the key,
// for a key that is no argument ("Class" only counts with withClass).
std::optional<TableArguments> tableArgumentsFromMap(
    const QVariantMap &arguments, bool withClass, QString *error);

// The arguments of the image-from-arguments command.
struct ImageArguments
{
    QString width;
    QString height;
    QString vspace;
    QString hspace;
    QString align;
    QString border;
    QString alt;
    QString src;
    QString style;
};

QString imageMarkup(const ImageArguments &image);

} // namespace Vantry::Commands
