#include "commands/fontcommand.h"

#include "commands/commandsink.h"
#include "platform/designsurface.h"
#include "platform/prompts/userprompts.h"

namespace Vantry::Commands {

using Platform::DesignSurface;
using Vantry::FontChoice;

namespace {

constexpr int GetForeColor = 5015;

} // namespace

std::optional<FontChoice> selectionFont(DesignSurface &surface)
{
    QHash<int, QVariant> values;
    const QHash<int, CommandState> states = surface.queryStatus(
        {DesignCommand::GetFontName, DesignCommand::GetFontSize, GetForeColor, DesignCommand::Bold,
            DesignCommand::Italic, DesignCommand::Underline},
        &values);
    if (surface.lastCallFailed() || states.value(DesignCommand::Bold) < Enabled)
        return std::nullopt;
    FontChoice font;
    font.family = values.value(DesignCommand::GetFontName).toString();
    font.htmlSize = values.value(DesignCommand::GetFontSize).toInt();
    font.color = Dialogs::colorFromCss(values.value(GetForeColor).toString());
    font.bold = states.value(DesignCommand::Bold) == Latched;
    font.italic = states.value(DesignCommand::Italic) == Latched;
    font.underline = states.value(DesignCommand::Underline) == Latched;
    return font;
}

bool applyFontChoice(DesignSurface &surface, const FontChoice &before, const FontChoice &after)
{
    bool changed = false;
    const auto run = [&surface, &changed](int command, const QVariant &argument = {}) {
        if (surface.execCommand(command, DesignSurface::OptionDontPromptUser, argument))
            changed = true;
    };
    if (!after.family.isEmpty() && after.family != before.family)
        run(DesignCommand::SetFontName, after.family);
    if (after.htmlSize >= 1 && after.htmlSize <= 7 && after.htmlSize != before.htmlSize)
        run(DesignCommand::SetFontSize, after.htmlSize);
    if (after.color.isValid() && after.color != before.color)
        run(DesignCommand::SetForeColor, after.color.name(QColor::HexRgb).toUpper());
    // The three styles toggle.
    if (after.bold != before.bold)
        run(DesignCommand::Bold);
    if (after.italic != before.italic)
        run(DesignCommand::Italic);
    if (after.underline != before.underline)
        run(DesignCommand::Underline);
    return changed;
}

bool chooseFont(DesignSurface &surface, Platform::UserPrompts &prompts)
{
    const std::optional<FontChoice> before = selectionFont(surface);
    if (!before)
        return false;
    const std::optional<FontChoice> after = prompts.font(*before);
    if (!after)
        return false;
    return applyFontChoice(surface, *before, *after);
}

} // namespace Vantry::Commands
