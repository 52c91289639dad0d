#pragma once

#include "platform/commandstate.h"

#include <QVariant>

namespace Vantry::Commands {

// Identifiers of the design surface's editing commands, numbered as the editing engine
// numbers them.
namespace DesignCommand {
constexpr int Bold = 5000;
constexpr int Copy = 5002;
constexpr int Cut = 5003;
constexpr int DeleteCells = 5005;
constexpr int DeleteCols = 5006;
constexpr int DeleteRows = 5007;
constexpr int FindText = 5008;
constexpr int Font = 5009;
constexpr int GetBlockFormatNames = 5012;
constexpr int GetFontName = 5013;
constexpr int GetFontSize = 5014;
constexpr int Hyperlink = 5016;
constexpr int Image = 5017;
constexpr int Indent = 5018;
constexpr int InsertCell = 5019;
constexpr int InsertCol = 5020;
constexpr int InsertRow = 5021;
constexpr int InsertTable = 5022;
constexpr int Italic = 5023;
constexpr int JustifyCenter = 5024;
constexpr int JustifyLeft = 5025;
constexpr int JustifyRight = 5026;
constexpr int LockElement = 5027;
constexpr int MakeAbsolute = 5028;
constexpr int MergeCells = 5029;
constexpr int OrderList = 5030;
constexpr int Outdent = 5031;
constexpr int Paste = 5032;
constexpr int Redo = 5033;
constexpr int SelectAll = 5035;
constexpr int SendBackward = 5036;
constexpr int BringForward = 5037;
constexpr int SendBelowText = 5038;
constexpr int BringAboveText = 5039;
constexpr int SendToBack = 5040;
constexpr int BringToFront = 5041;
constexpr int SetBackColor = 5042;
constexpr int SetFontName = 5044;
constexpr int SetFontSize = 5045;
constexpr int SetForeColor = 5046;
constexpr int SplitCell = 5047;
constexpr int Underline = 5048;
constexpr int Undo = 5049;
constexpr int UnorderList = 5051;
} // namespace DesignCommand

using Platform::CommandState;
using enum Platform::CommandState;

// Runs design commands on the document without prompting the user.
class CommandSink
{
public:
    virtual ~CommandSink() = default;

    // Returns whether the command ran.
    virtual bool execute(int commandId, const QVariant &argument = {}) = 0;
};

// A sink that runs nothing, for an editor whose surface has not been connected yet.
CommandSink &noCommandSink();

} // namespace Vantry::Commands
