#pragma once

#include <QString>
#include <QStringView>
#include <QVariant>

#include <optional>

// Rules of selection access and HTML insertion that need no document.
namespace Vantry::Commands {

// What the insert methods paste; the numbers are the kinds hosts and commands pass.
enum class InsertKind
{
    Button = 1,
    SubmitButton,
    ResetButton,
    CheckBox,
    Radio,
    DropDown,
    ListBox,
    TextBox,
    TextArea,
    Form,
    Html
};

// The markup a kind pastes, exactly as written (case and quoting are part of it); html is
// used by Html only. Nothing for a number outside the kinds.
std::optional<QString> insertionMarkup(int kind, const QString &html);

// True for the text "1", the number 1, Boolean true, and any text that lower-cased is
// "true"; false for everything else ("yes", "0", -1 ...).
bool CheckBoolean(const QVariant &value);

// Replaces every occurrence of find, ignoring letter case, by replacement; the rest of
// the text is left as it is and the search continues after each inserted replacement.
// An empty find text leaves the text unchanged.
QString ReplaceNoCase(const QString &text, const QString &find, const QString &replacement);

// The first occurrence of needle in text at or after from, ignoring letter case; -1 when
// there is none. Fast on markup: a needle starting with a character without case variants
// ('<' for tags) is found by that character, which QString scans for with SIMD.
qsizetype indexOfNoCase(QStringView text, QStringView needle, qsizetype from);

} // namespace Vantry::Commands
