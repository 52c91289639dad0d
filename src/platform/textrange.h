#pragma once

#include <QString>
#include <QStringView>
#include <QVariant>

#include <memory>
#include <optional>

namespace Vantry::Platform {

// A range of the surface's current document, as a handle: a text range, or the control
// range that a selection of whole elements gives. Like an element handle, a range from
// an earlier document fails cleanly when used.
//
// The surface keeps a range alive as long as any copy of the handle it gave out exists:
// the copies share the lease, and the last one dropped lets the surface free the range.
struct TextRange
{
    int id = 0;
    int generation = -1;
    std::shared_ptr<const void> lease;

    bool isNull() const { return id == 0; }
    QVariant toVariant() const;
    static TextRange fromVariant(const QVariant &value);
};

// What the selection holds: nothing but a caret, text, or elements chosen as a whole.
enum class SelectionType
{
    None,
    Text,
    Control
};

// "None", "Text" or "Control".
QString selectionTypeName(SelectionType type);

// The units ranges move by. TextEdit is the whole body.
enum class TextUnit
{
    Character,
    Word,
    TextEdit
};

QString textUnitName(TextUnit unit);
// The unit a name ("character", "Word", "textedit"; any case) stands for.
std::optional<TextUnit> textUnitFromName(QStringView name);

} // namespace Vantry::Platform
