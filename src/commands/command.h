#pragma once

namespace Vantry::Commands {

// The editor's own command numbers, shared by the public methods, the toolbar buttons and
// the context menus. Numbers missing here run nothing; a value from outside (a host's
// number, a key that names none) may hold any number and is treated the same.
enum class Command : int
{
    Bold = 1,
    Italic = 2,
    Underline = 3,
    NumberBullets = 4,
    Bullets = 5,
    Outdent = 6,
    Indent = 7,
    LeftAlign = 8,
    CenterAlign = 9,
    RightAlign = 10,
    ForeColor = 11,
    BackColor = 12,
    Hyperlink = 13,
    UploadImage = 14,
    InsertImage = 15,
    Cut = 16,
    Copy = 17,
    Paste = 18,
    UnDo = 19,
    ReDo = 20,
    Border = 21,
    Details = 22,
    AbsolutePosition = 23,
    LockElement = 24,
    ZOrder = 25,
    SnapToGrid = 26,
    InsertTable = 27,
    InsertRow = 28,
    DeleteRow = 29,
    InsertColumn = 30,
    DeleteColumn = 31,
    InsertCell = 32,
    DeleteCell = 33,
    MergeCells = 34,
    SplitCells = 35,
    Font = 36,
    SelectAll = 37,
    Find = 38,
    BringToFront = 39,
    SendToBack = 40,
    BringForward = 41,
    SendBack = 42,
    BringAboveText = 43,
    SendBelowText = 44,
    SpellCheck = 46,
    ImageFromArguments = 47,
    TableFromArguments = 48,
    PageProperties = 50,
    InsertFlash = 53,
    TableFromArgumentsToBody = 54,
    TableProperties = 55,
    CellProperties = 56,
};

} // namespace Vantry::Commands
