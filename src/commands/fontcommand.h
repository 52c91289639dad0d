#pragma once

#include "dialogs/fontchoice.h"

#include <optional>

namespace Vantry {
class UserPrompts;
} // namespace Vantry

namespace Vantry::Platform {
class DesignSurface;
using Vantry::UserPrompts;
} // namespace Vantry::Platform

namespace Vantry::Commands {

// The selection's font as the font dialog shows it, read in one round trip; nothing when
// the surface cannot say.
std::optional<Vantry::FontChoice> selectionFont(Platform::DesignSurface &surface);

// Runs the formatting commands that turn before into after, and only those; returns
// whether any of them changed the document.
bool applyFontChoice(Platform::DesignSurface &surface, const Vantry::FontChoice &before,
    const Vantry::FontChoice &after);

// The font dialog's command: shows the selection's font and applies what the user chose.
bool chooseFont(Platform::DesignSurface &surface, Platform::UserPrompts &prompts);

} // namespace Vantry::Commands
